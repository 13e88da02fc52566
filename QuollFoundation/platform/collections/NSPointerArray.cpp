// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSPointerArray.h"

#include <algorithm>

#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Class* NSPointerArray::classObject() {
  static Class* const cls =
      ClassBuilder<NSPointerArray>("NSPointerArray")
          .classMethod<&NSPointerArray::pointerArrayWithOptions_ofClass>("pointerArrayWithOptions:"_sel)
          .classMethod<&NSPointerArray::pointerArrayWithPointerFunctions_ofClass>(
              "pointerArrayWithPointerFunctions:"_sel)
          .classMethod<&NSPointerArray::strongObjectsPointerArray_ofClass>("strongObjectsPointerArray"_sel)
          .initializer<&NSPointerArray::initWithOptions_ofClass>("initWithOptions:"_sel)
          .initializer<&NSPointerArray::initWithPointerFunctions_ofClass>("initWithPointerFunctions:"_sel)
          .method<&NSPointerArray::pointerFunctions>("pointerFunctions"_sel)
          .method<&NSPointerArray::count>("count"_sel)
          .method<&NSPointerArray::setCount>("setCount:"_sel)
          .method<&NSPointerArray::pointerAtIndex>("pointerAtIndex:"_sel)
          .method<&NSPointerArray::addPointer>("addPointer:"_sel)
          .method<&NSPointerArray::insertPointer_atIndex>("insertPointer:atIndex:"_sel)
          .method<&NSPointerArray::removePointerAtIndex>("removePointerAtIndex:"_sel)
          .method<&NSPointerArray::replacePointerAtIndex_withPointer>("replacePointerAtIndex:withPointer:"_sel)
          .method<&NSPointerArray::compact>("compact"_sel)
          .method<&NSPointerArray::allObjects>("allObjects"_sel)
          .build();
  return cls;
}

NSPointerArray::NSPointerArray() : functions_(NSPointerFunctions::initWithOptions(0)->frozen()) {}

NSPointerArray::~NSPointerArray() { setCount(0); }

void NSPointerArray::raisePastEnd(std::string_view selector, uint64_t index) const {
  detail::raiseIndex(this, selector, index, count());
}

Ref<NSPointerArray> NSPointerArray::initWithOptions_ofClass(uint64_t options, Class* cls) {
  return initWithPointerFunctions_ofClass(NSPointerFunctions::initWithOptions(options), cls);
}

Ref<NSPointerArray> NSPointerArray::initWithPointerFunctions_ofClass(const NSPointerFunctions* functions, Class* cls) {
  Ref<NSPointerArray> array = create<NSPointerArray>(cls);
  if (!functions) detail::raiseNilArgument(array, "initWithPointerFunctions:");
  array->functions_ = functions->frozen();
  return array;
}

Ref<NSPointerArray> NSPointerArray::pointerArrayWithOptions_ofClass(uint64_t options, Class* cls) {
  return made<NSPointerArray>(cls, "initWithOptions:"_sel, options);
}
Ref<NSPointerArray> NSPointerArray::pointerArrayWithPointerFunctions_ofClass(const NSPointerFunctions* functions,
                                                                             Class* cls) {
  return made<NSPointerArray>(cls, "initWithPointerFunctions:"_sel, functions);
}
Ref<NSPointerArray> NSPointerArray::strongObjectsPointerArray_ofClass(Class* cls) {
  return pointerArrayWithOptions_ofClass(NSPointerFunctionsStrongMemory, cls);
}

// What goes is relinquished after the array is whole again.

void NSPointerArray::setCount(uint64_t count) {
  if (count >= pointers_.size()) {
    if (count > SIZE_MAX / 2 / sizeof(void*)) raise(NSMallocException, "no memory for the elements of a collection");
    pointers_.resize(count);
    ++mutations_;
    return;
  }
  const std::vector<void*> dropped(pointers_.begin() + static_cast<std::ptrdiff_t>(count), pointers_.end());
  pointers_.resize(count);
  ++mutations_;
  for (void* item : dropped) functions_->relinquish(item);
}

void NSPointerArray::addPointer(const void* pointer) { insertPointer_atIndex(pointer, count()); }

void NSPointerArray::insertPointer_atIndex(const void* pointer, uint64_t index) {
  if (index > count()) detail::raiseIndex(this, "insertPointer:atIndex:", index, count() + 1);
  if (pointers_.size() == pointers_.capacity()) pointers_.reserve(detail::grown(pointers_.capacity(), count() + 1));
  void* const item = functions_->acquire(pointer);
  pointers_.insert(pointers_.begin() + static_cast<std::ptrdiff_t>(index), item);
  ++mutations_;
}

void NSPointerArray::removePointerAtIndex(uint64_t index) {
  if (index >= count()) raisePastEnd("removePointerAtIndex:", index);
  void* const item = pointers_[index];
  pointers_.erase(pointers_.begin() + static_cast<std::ptrdiff_t>(index));
  ++mutations_;
  functions_->relinquish(item);
}

void NSPointerArray::replacePointerAtIndex_withPointer(uint64_t index, const void* pointer) {
  if (index >= count()) raisePastEnd("replacePointerAtIndex:withPointer:", index);
  void* const old = std::exchange(pointers_[index], functions_->acquire(pointer));
  ++mutations_;
  functions_->relinquish(old);
}

void NSPointerArray::compact() {
  std::erase(pointers_, nullptr);
  ++mutations_;
}

void NSPointerArray::checkObjects(std::string_view selector) const {
  if (functions_->areObjects()) return;
  raise(NSInvalidArgumentException, detail::methodName(this, selector) + ": the pointers are no objects");
}

Ref<NSArray> NSPointerArray::allObjects() const {
  checkObjects("allObjects");
  std::vector<NSObject*> objects;
  for (void* item : pointers_) {
    if (item) objects.push_back(detail::object(item));
  }
  return NSArray::arrayWithObjects_count(objects.data(), objects.size());
}

uint64_t NSPointerArray::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                                   uint64_t count) {
  checkObjects("countByEnumeratingWithState:objects:count:");
  state->mutationsPtr = &mutations_;
  state->itemsPtr = objects;
  uint64_t given = 0;
  for (; given < count && state->state < pointers_.size(); ++state->state) {
    objects[given++] = detail::object(pointers_[state->state]);
  }
  return given;
}

bool NSPointerArray::isEqual(const NSObject* other) const {
  if (this == other) return true;
  auto* array = as<const NSPointerArray>(other);
  return array && functions_->options() == array->functions_->options() &&
         functions_->sizeFunction() == array->functions_->sizeFunction() &&
         std::equal(pointers_.begin(), pointers_.end(), array->pointers_.begin(), array->pointers_.end(),
                    [&](const void* a, const void* b) { return functions_->same(a, b); });
}
uint64_t NSPointerArray::hash() const { return count(); }

Ref<NSString> NSPointerArray::description() const {
  std::string text = detail::plainDescription(this) + " (";
  for (const void* item : pointers_) {
    const Ref<NSString> part = functions_->describe(item);
    text += "\n    " + (part ? part->utf8() : "(null)");
  }
  return NSString::stringWithUTF8(text + "\n)");
}

Ref<NSObject> NSPointerArray::copyWithZone(NSZone*) const {
  Ref<NSPointerArray> copy = create<NSPointerArray>(isa());
  copy->functions_ = functions_;
  for (const void* item : pointers_) copy->addPointer(item);
  return copy;
}

}  // namespace quoll::inline v1
