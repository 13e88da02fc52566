// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/CFArray.h"

#include <algorithm>
#include <cstring>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/collections/ValueArrayInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"

namespace quoll::inline v1 {

namespace {

const void* retainObject(CFAllocatorRef, const void* value) { return detail::retained(detail::object(value)); }
void releaseObject(CFAllocatorRef, const void* value) { detail::drop(value); }
Ref<NSString> describeObject(const void* value) { return value ? detail::object(value)->description() : nullptr; }
bool sameObjects(const void* a, const void* b) { return isEqual(detail::object(a), detail::object(b)); }

bool meansObjects(const CFArrayCallBacks* callBacks) {
  return callBacks && callBacks->retain == &retainObject && callBacks->equal == &sameObjects;
}

}  // namespace

constinit const CFArrayCallBacks kCFTypeArrayCallBacks{0, &retainObject, &releaseObject, &describeObject, &sameObjects};

Class* CFArray::classObject() {
  static Class* const cls = ClassBuilder<CFArray>("CFArray").build();
  return cls;
}

void CFArray::makeRoom(uint64_t& capacity, uint64_t count) {
  if (count <= capacity) return;
  const uint64_t wanted = detail::grown(capacity, count);
  items_ = detail::resized(items_, wanted);
  capacity = wanted;
}

void CFArray::insertItem(uint64_t index, void* item, uint64_t& capacity) {
  makeRoom(capacity, count_ + 1);
  std::memmove(items_ + index + 1, items_ + index, (count_ - index) * sizeof(void*));
  items_[index] = item;
  ++count_;
  ++mutations_;
}

void* CFArray::takeItem(uint64_t index) {
  void* const item = items_[index];
  --count_;
  std::memmove(items_ + index, items_ + index + 1, (count_ - index) * sizeof(void*));
  ++mutations_;
  return item;
}

namespace detail {

struct ArrayAccess {
  static void* const* items(CFArrayRef array) { return array->items_; }
};

namespace {

[[noreturn]] void raiseImmutable(const CFArray* array, std::string_view function) {
  raise(NSInvalidArgumentException, std::string(function) + ": " + plainDescription(array) + " cannot be changed");
}
[[noreturn]] void raiseBounds(std::string_view function, CFIndex index, uint64_t count) {
  raise(NSRangeException, std::string(function) + ": index " + std::to_string(index) + " beyond bounds; the count is " +
                              std::to_string(count));
}

/// Calls one of two functions with the array that may be changed.
template <class OnObjects, class OnValues>
void change(CFArray* array, std::string_view function, OnObjects onObjects, OnValues onValues) {
  if (!array) return;
  if (auto* objects = as<NSMutableArray>(array)) return onObjects(objects);
  auto* values = as<ValueArray>(array);
  if (!values || !values->isMutable()) raiseImmutable(array, function);
  onValues(values);
}

uint64_t checkedIndex(const CFArray* array, std::string_view function, CFIndex index, uint64_t limit) {
  if (index < 0 || static_cast<uint64_t>(index) >= limit) raiseBounds(function, index, array->count());
  return static_cast<uint64_t>(index);
}

NSRange checkedRange(const CFArray* array, std::string_view function, CFRange range) {
  const NSRange checked = {static_cast<uint64_t>(range.location), static_cast<uint64_t>(range.length)};
  if (range.location < 0 || range.length < 0 || !rangeFits(checked, array->count())) {
    raise(NSRangeException, std::string(function) + ": range {" + std::to_string(range.location) + ", " +
                                std::to_string(range.length) + "} beyond bounds; the count is " +
                                std::to_string(array->count()));
  }
  return checked;
}

bool sameIn(const CFArray* array, const void* a, const void* b) {
  if (a == b) return true;
  if (auto* values = as<const ValueArray>(array)) return values->same(a, b);
  return a && b && object(a)->isEqual(object(b));
}

}  // namespace

Class* ValueArray::classObject() {
  static Class* const cls = ClassBuilder<ValueArray>("QFValueArray").build();
  return cls;
}

ValueArray::ValueArray(const CFArrayCallBacks* callBacks, CFAllocatorRef allocator, bool isMutable)
    : callBacks_(callBacks ? *callBacks : CFArrayCallBacks{}), allocator_(allocator), isMutable_(isMutable) {}

ValueArray::~ValueArray() { clear(); }

const void* ValueArray::kept(const void* value) const {
  return callBacks_.retain ? callBacks_.retain(allocator_, value) : value;
}
void ValueArray::release(const void* value) const {
  if (callBacks_.release) callBacks_.release(allocator_, value);
}
bool ValueArray::same(const void* a, const void* b) const {
  return a == b || (callBacks_.equal && callBacks_.equal(a, b));
}

void ValueArray::insert(uint64_t index, const void* value) {
  makeRoom(capacity_, count_ + 1);
  insertItem(index, const_cast<void*>(kept(value)), capacity_);
}
void ValueArray::replace(uint64_t index, const void* value) {
  const void* old = std::exchange(items_[index], const_cast<void*>(kept(value)));
  ++mutations_;
  release(old);
}
void ValueArray::remove(uint64_t index) { release(takeItem(index)); }

void ValueArray::clear() {
  void** const items = std::exchange(items_, nullptr);
  const uint64_t count = std::exchange(count_, 0);
  capacity_ = 0;
  ++mutations_;
  for (uint64_t i = 0; i < count; ++i) release(items[i]);
  std::free(items);
}

void ValueArray::exchange(uint64_t a, uint64_t b) {
  std::swap(items_[a], items_[b]);
  ++mutations_;
}

void ValueArray::append(const void* const* values, uint64_t count) {
  for (uint64_t i = 0; i < count; ++i) insert(count_, values[i]);
}

bool ValueArray::isEqual(const NSObject* other) const {
  auto* array = as<const ValueArray>(other);
  if (this == other) return true;
  if (!array || array->count() != count_) return false;
  for (uint64_t i = 0; i < count_; ++i) {
    if (!same(items_[i], array->value(i))) return false;
  }
  return true;
}

Ref<NSObject> ValueArray::copyWithZone(NSZone*) const {
  if (!isMutable_) return const_cast<ValueArray*>(this);
  return CFArrayCreateCopy(nullptr, this);
}
Ref<NSObject> ValueArray::mutableCopyWithZone(NSZone*) const { return CFArrayCreateMutableCopy(nullptr, 0, this); }

namespace {

Ref<CFArray> arrayOfValues(const void* const* values, uint64_t count, const CFArrayCallBacks* callBacks,
                           CFAllocatorRef allocator, bool isMutable) {
  Ref<ValueArray> array = make<ValueArray>(callBacks, allocator, true);
  array->append(values, count);
  if (!isMutable) array->freeze();
  return array;
}

Ref<CFArray> arrayOfObjects(void* const* values, uint64_t count, bool isMutable) {
  auto* objects = reinterpret_cast<NSObject* const*>(values);
  if (isMutable) return NSMutableArray::initWithObjects_count<NSMutableArray>(objects, count);
  return NSArray::initWithObjects_count(objects, count);
}

Ref<CFArray> copied(CFArrayRef array, CFAllocatorRef allocator, bool isMutable, std::string_view function) {
  if (!array) raise(NSInvalidArgumentException, std::string(function) + ": the array is null");
  void* const* items = ArrayAccess::items(array);
  auto* values = as<const ValueArray>(array);
  if (!values) {
    if (!isMutable) return cast<CFArray>(array->copy());
    return arrayOfObjects(items, array->count(), true);
  }
  return arrayOfValues(items, array->count(), &values->callBacks(), allocator, isMutable);
}

}  // namespace
}  // namespace detail

Ref<CFArray> CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex count,
                           const CFArrayCallBacks* callBacks) {
  if (count < 0)
    raise(NSInvalidArgumentException, "CFArrayCreate: the count " + std::to_string(count) + " is negative");
  if (count && !values) raise(NSInvalidArgumentException, "CFArrayCreate: the values are null");
  const auto length = static_cast<uint64_t>(count);
  if (meansObjects(callBacks)) return detail::arrayOfObjects(const_cast<void* const*>(values), length, false);
  return detail::arrayOfValues(values, length, callBacks, allocator, false);
}

Ref<CFArray> CFArrayCreateMutable(CFAllocatorRef allocator, CFIndex, const CFArrayCallBacks* callBacks) {
  if (meansObjects(callBacks)) return NSMutableArray::array();
  return detail::arrayOfValues(nullptr, 0, callBacks, allocator, true);
}

Ref<CFArray> CFArrayCreateCopy(CFAllocatorRef allocator, CFArrayRef array) {
  return detail::copied(array, allocator, false, "CFArrayCreateCopy");
}
Ref<CFArray> CFArrayCreateMutableCopy(CFAllocatorRef allocator, CFIndex, CFArrayRef array) {
  return detail::copied(array, allocator, true, "CFArrayCreateMutableCopy");
}

CFIndex CFArrayGetCount(CFArrayRef array) { return array ? static_cast<CFIndex>(array->count()) : 0; }

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
  if (!array) return nullptr;
  return detail::ArrayAccess::items(
      array)[detail::checkedIndex(array, "CFArrayGetValueAtIndex", index, array->count())];
}

void CFArrayGetValues(CFArrayRef array, CFRange range, const void** values) {
  if (!array) return;
  const NSRange checked = detail::checkedRange(array, "CFArrayGetValues", range);
  if (checked.length && !values) raise(NSInvalidArgumentException, "CFArrayGetValues: the values are null");
  std::copy_n(detail::ArrayAccess::items(array) + checked.location, checked.length, values);
}

CFIndex CFArrayGetFirstIndexOfValue(CFArrayRef array, CFRange range, const void* value) {
  if (!array) return kCFNotFound;
  const NSRange checked = detail::checkedRange(array, "CFArrayGetFirstIndexOfValue", range);
  for (uint64_t i = checked.location; i < NSMaxRange(checked) && i < array->count(); ++i) {
    if (detail::sameIn(array, value, detail::ArrayAccess::items(array)[i])) return static_cast<CFIndex>(i);
  }
  return kCFNotFound;
}

CFIndex CFArrayGetLastIndexOfValue(CFArrayRef array, CFRange range, const void* value) {
  if (!array) return kCFNotFound;
  const NSRange checked = detail::checkedRange(array, "CFArrayGetLastIndexOfValue", range);
  for (uint64_t i = NSMaxRange(checked); i-- > checked.location;) {
    if (i < array->count() && detail::sameIn(array, value, detail::ArrayAccess::items(array)[i])) {
      return static_cast<CFIndex>(i);
    }
  }
  return kCFNotFound;
}

bool CFArrayContainsValue(CFArrayRef array, CFRange range, const void* value) {
  if (array) static_cast<void>(detail::checkedRange(array, "CFArrayContainsValue", range));
  return CFArrayGetFirstIndexOfValue(array, range, value) != kCFNotFound;
}

CFIndex CFArrayGetCountOfValue(CFArrayRef array, CFRange range, const void* value) {
  CFIndex count = 0;
  if (!array) return count;
  const NSRange checked = detail::checkedRange(array, "CFArrayGetCountOfValue", range);
  for (uint64_t i = checked.location; i < NSMaxRange(checked) && i < array->count(); ++i) {
    count += detail::sameIn(array, value, detail::ArrayAccess::items(array)[i]);
  }
  return count;
}

void CFArrayApplyFunction(CFArrayRef array, CFRange range, void (*apply)(const void*, void*), void* context) {
  if (!array) return;
  const NSRange checked = detail::checkedRange(array, "CFArrayApplyFunction", range);
  if (!apply) raise(NSInvalidArgumentException, "CFArrayApplyFunction: the function is null");
  for (uint64_t i = checked.location; i < NSMaxRange(checked); ++i) {
    apply(CFArrayGetValueAtIndex(array, static_cast<CFIndex>(i)), context);
  }
}

void CFArrayAppendValue(CFMutableArrayRef array, const void* value) {
  detail::change(
      array, "CFArrayAppendValue", [&](NSMutableArray* objects) { objects->addObject(detail::object(value)); },
      [&](detail::ValueArray* values) { values->insert(values->count(), value); });
}

void CFArrayInsertValueAtIndex(CFMutableArrayRef array, CFIndex index, const void* value) {
  if (!array) return;
  const uint64_t at = detail::checkedIndex(array, "CFArrayInsertValueAtIndex", index, array->count() + 1);
  detail::change(
      array, "CFArrayInsertValueAtIndex",
      [&](NSMutableArray* objects) { objects->insertObject_atIndex(detail::object(value), at); },
      [&](detail::ValueArray* values) { values->insert(at, value); });
}

void CFArraySetValueAtIndex(CFMutableArrayRef array, CFIndex index, const void* value) {
  if (!array) return;
  const uint64_t at = detail::checkedIndex(array, "CFArraySetValueAtIndex", index, array->count() + 1);
  if (at == array->count()) return CFArrayAppendValue(array, value);
  detail::change(
      array, "CFArraySetValueAtIndex",
      [&](NSMutableArray* objects) { objects->replaceObjectAtIndex_withObject(at, detail::object(value)); },
      [&](detail::ValueArray* values) { values->replace(at, value); });
}

void CFArrayRemoveValueAtIndex(CFMutableArrayRef array, CFIndex index) {
  if (!array) return;
  const uint64_t at = detail::checkedIndex(array, "CFArrayRemoveValueAtIndex", index, array->count());
  detail::change(
      array, "CFArrayRemoveValueAtIndex", [&](NSMutableArray* objects) { objects->removeObjectAtIndex(at); },
      [&](detail::ValueArray* values) { values->remove(at); });
}

void CFArrayRemoveAllValues(CFMutableArrayRef array) {
  detail::change(
      array, "CFArrayRemoveAllValues", [](NSMutableArray* objects) { objects->removeAllObjects(); },
      [](detail::ValueArray* values) { values->clear(); });
}

void CFArrayExchangeValuesAtIndices(CFMutableArrayRef array, CFIndex a, CFIndex b) {
  if (!array) return;
  const uint64_t first = detail::checkedIndex(array, "CFArrayExchangeValuesAtIndices", a, array->count());
  const uint64_t second = detail::checkedIndex(array, "CFArrayExchangeValuesAtIndices", b, array->count());
  detail::change(
      array, "CFArrayExchangeValuesAtIndices",
      [&](NSMutableArray* objects) { objects->exchangeObjectAtIndex_withObjectAtIndex(first, second); },
      [&](detail::ValueArray* values) { values->exchange(first, second); });
}

void CFArrayAppendArray(CFMutableArrayRef array, CFArrayRef other, CFRange range) {
  if (!array || !other) return;
  const NSRange checked = detail::checkedRange(other, "CFArrayAppendArray", range);
  for (uint64_t i = checked.location; i < NSMaxRange(checked); ++i) {
    CFArrayAppendValue(array, CFArrayGetValueAtIndex(other, static_cast<CFIndex>(i)));
  }
}

}  // namespace quoll::inline v1
