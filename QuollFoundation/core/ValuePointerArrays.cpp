// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/ValuePointerArrays.h"

#include <cstring>
#include <string>
#include <string_view>

#include "QuollFoundation/core/StructPointerFunctions.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/StructTexts.h"

namespace quoll::inline v1 {
namespace {

[[noreturn]] void raiseOtherElements(const NSPointerArray* array, std::string_view selector, size_t size) {
  raise(NSInvalidArgumentException, detail::methodName(array, selector) + ": the elements are no copied structs of " +
                                        std::to_string(size) + " bytes");
}

/// Anything but copies of just this size would be read or written past its end, or die with the caller's variable.
void checkElements(const NSPointerArray* array, std::string_view selector, const void* element, size_t size) {
  const Ref<NSPointerFunctions> functions = array->pointerFunctions();
  const bool fits = functions->options() == QFStructPointerFunctionsOptions && functions->sizeFunction() &&
                    functions->sizeFunction()(element) == size;
  if (!fits) raiseOtherElements(array, selector, size);
}

template <class S> void add(NSPointerArray* array, const S& plain, std::string_view selector) {
  if (!array) return;
  checkElements(array, selector, &plain, sizeof plain);
  array->addPointer(&plain);
}

template <class S> S valueAt(const NSPointerArray* array, uint64_t index, std::string_view selector) {
  if (!array) return {};
  const void* element = index < array->count() ? array->pointerAtIndex(index) : nullptr;
  if (!element) {
    if (index >= array->count()) detail::raiseIndex(array, selector, index, array->count());
    raise(NSInvalidArgumentException,
          detail::methodName(array, selector) + ": the element at index " + std::to_string(index) + " is null");
  }
  checkElements(array, selector, element, sizeof(S));
  S plain;
  std::memcpy(&plain, element, sizeof plain);
  return plain;
}

Ref<NSPointerArray> arrayWith(const NSPointerFunctions* functions, Class* cls) {
  return made<NSPointerArray>(cls, "initWithPointerFunctions:"_sel, functions);
}

}  // namespace

Ref<NSPointerArray> rangePointerArray_ofClass(Class* cls) { return arrayWith(pointerFunctionsForNSRange(), cls); }
Ref<NSPointerArray> rectPointerArray_ofClass(Class* cls) { return arrayWith(pointerFunctionsForCGRect(), cls); }
Ref<NSPointerArray> pointPointerArray_ofClass(Class* cls) { return arrayWith(pointerFunctionsForCGPoint(), cls); }
Ref<NSPointerArray> sizePointerArray_ofClass(Class* cls) { return arrayWith(pointerFunctionsForCGSize(), cls); }

void addRange(NSPointerArray* receiver, NSRange range) { add(receiver, range, "addRange:"); }
void addRect(NSPointerArray* receiver, CGRect rect) { add(receiver, rect, "addRect:"); }
void addPoint(NSPointerArray* receiver, CGPoint point) { add(receiver, point, "addPoint:"); }
void addSize(NSPointerArray* receiver, CGSize size) { add(receiver, size, "addSize:"); }

NSRange rangeAtIndex(const NSPointerArray* receiver, uint64_t index) {
  return valueAt<NSRange>(receiver, index, "rangeAtIndex:");
}
CGRect rectAtIndex(const NSPointerArray* receiver, uint64_t index) {
  return valueAt<CGRect>(receiver, index, "rectAtIndex:");
}
CGPoint pointAtIndex(const NSPointerArray* receiver, uint64_t index) {
  return valueAt<CGPoint>(receiver, index, "pointAtIndex:");
}
CGSize sizeAtIndex(const NSPointerArray* receiver, uint64_t index) {
  return valueAt<CGSize>(receiver, index, "sizeAtIndex:");
}

void enumeratePointersUsingBlock(const NSPointerArray* receiver,
                                 BlockRef<void(uint64_t index, void* pointer, bool* stop)> visit) {
  if (!receiver) return;
  const Ref<const NSPointerArray> pinned = receiver;  // the callback may drop the last other reference
  bool stop = false;
  for (uint64_t i = 0; i < receiver->count() && !stop; ++i) visit(i, receiver->pointerAtIndex(i), &stop);
}

Ref<NSString> rangesDescription(const NSPointerArray* receiver) {
  if (!receiver) return nullptr;
  std::string text = std::to_string(receiver->count()) + " ranges";
  for (uint64_t i = 0; i < receiver->count(); ++i) {
    text += "\n" + NSStringFromRange(valueAt<NSRange>(receiver, i, "rangesDescription"))->utf8();
  }
  return NSString::stringWithUTF8(text);
}

namespace detail {

extern constinit const AdditionGroup<NSPointerArray> valuePointerArrayAdditions{
    "QFAdditions",
    {classMethod<&rangePointerArray_ofClass>("rangePointerArray"_sel),
     classMethod<&rectPointerArray_ofClass>("rectPointerArray"_sel),
     classMethod<&pointPointerArray_ofClass>("pointPointerArray"_sel),
     classMethod<&sizePointerArray_ofClass>("sizePointerArray"_sel), method<&addRange>("addRange:"_sel),
     method<&addRect>("addRect:"_sel), method<&addPoint>("addPoint:"_sel), method<&addSize>("addSize:"_sel),
     method<&rangeAtIndex>("rangeAtIndex:"_sel), method<&rectAtIndex>("rectAtIndex:"_sel),
     method<&pointAtIndex>("pointAtIndex:"_sel), method<&sizeAtIndex>("sizeAtIndex:"_sel),
     method<&enumeratePointersUsingBlock>("enumeratePointersUsingBlock:"_sel),
     method<&rangesDescription>("rangesDescription"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
