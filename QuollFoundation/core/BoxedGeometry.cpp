// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/BoxedGeometry.h"

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {
namespace {

template <class S> Ref<NSValue> boxOf(const S& plain, Class* cls) {
  const char* type = StructEncoding<S>::text;
  if (cls == NSValue::classObject()) return NSValue::initWithBytes_objCType_ofClass(&plain, type, cls);
  return made<NSValue>(cls, "initWithBytes:objCType:"_sel, static_cast<const void*>(&plain), type);
}

}  // namespace

Ref<NSValue> initWithRect_ofClass(CGRect rect, Class* cls) { return boxOf(rect, cls); }
Ref<NSValue> initWithRange_ofClass(NSRange range, Class* cls) { return boxOf(range, cls); }
Ref<NSValue> initWithSize_ofClass(CGSize size, Class* cls) { return boxOf(size, cls); }
Ref<NSValue> initWithPoint_ofClass(CGPoint point, Class* cls) { return boxOf(point, cls); }

NSComparisonResult compareRangeValueLocation(const NSValue* receiver, const NSValue* other) {
  if (!receiver) return NSOrderedSame;
  if (!other) detail::raiseNilArgument(receiver, "compareRangeValueLocation:");
  return compareValues(receiver->rangeValue().location, other->rangeValue().location);
}

namespace detail {

extern constinit const AdditionGroup<NSValue> boxedGeometryAdditions{
    "QFAdditions",
    {initializer<&initWithRect_ofClass>("initWithRect:"_sel), initializer<&initWithRange_ofClass>("initWithRange:"_sel),
     initializer<&initWithSize_ofClass>("initWithSize:"_sel), initializer<&initWithPoint_ofClass>("initWithPoint:"_sel),
     method<&compareRangeValueLocation>("compareRangeValueLocation:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
