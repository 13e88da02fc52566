// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "QuollFoundation/platform/collections/NSArray.h"
#include "QuollFoundation/platform/collections/NSPointerFunctions.h"

namespace quoll::inline v1 {

/// A growable array of pointers, null among them, that pointer functions keep. Indices count from 0; one past the end
/// raises NSRangeException. For ranges, points, sizes and rectangles there are ready-made ones, see
/// ValuePointerArrays.h.
///
///     auto pixels = NSPointerArray::initWithPointerFunctions(functions);      // copied-in structs
///     pixels->addPointer(&pixel);
///     auto* first = static_cast<const Pixel*>(pixels->pointerAtIndex(0));
///
/// Lifetime: what `pointerAtIndex` gives is good while that place is unchanged. Threads: caller-locked.
class QF_EXPORT NSPointerArray : public NSObject {
  QF_CLASS(NSPointerArray, NSObject)
 public:
  template <class T = NSPointerArray> static Ref<T> initWithOptions(uint64_t options) {
    return cast<T>(initWithOptions_ofClass(options, T::classObject()));
  }
  template <class T = NSPointerArray> static Ref<T> initWithPointerFunctions(const NSPointerFunctions* functions) {
    return cast<T>(initWithPointerFunctions_ofClass(functions, T::classObject()));
  }
  template <class T = NSPointerArray> static Ref<T> pointerArrayWithOptions(uint64_t options) {
    return cast<T>(pointerArrayWithOptions_ofClass(options, T::classObject()));
  }
  template <class T = NSPointerArray> static Ref<T> pointerArrayWithPointerFunctions(
      const NSPointerFunctions* functions) {
    return cast<T>(pointerArrayWithPointerFunctions_ofClass(functions, T::classObject()));
  }
  /// Of objects, which it holds.
  template <class T = NSPointerArray> static Ref<T> strongObjectsPointerArray() {
    return cast<T>(strongObjectsPointerArray_ofClass(T::classObject()));
  }
  static Ref<NSPointerArray> initWithOptions_ofClass(uint64_t options, Class* cls);
  static Ref<NSPointerArray> initWithPointerFunctions_ofClass(const NSPointerFunctions* functions, Class* cls);
  static Ref<NSPointerArray> pointerArrayWithOptions_ofClass(uint64_t options, Class* cls);
  static Ref<NSPointerArray> pointerArrayWithPointerFunctions_ofClass(const NSPointerFunctions* functions, Class* cls);
  static Ref<NSPointerArray> strongObjectsPointerArray_ofClass(Class* cls);

  Ref<NSPointerFunctions> pointerFunctions() const { return functions_; }  ///< They can't be changed any more.
  uint64_t count() const { return pointers_.size(); }
  void setCount(uint64_t count);  ///< More are null; fewer drop the last ones.
  void* pointerAtIndex(uint64_t index) const {
    if (index >= pointers_.size()) [[unlikely]]
      raisePastEnd("pointerAtIndex:", index);
    return pointers_[index];
  }
  void addPointer(const void* pointer);
  void insertPointer_atIndex(const void* pointer, uint64_t index);
  void removePointerAtIndex(uint64_t index);
  void replacePointerAtIndex_withPointer(uint64_t index, const void* pointer);
  void compact();                   ///< Removes what is null.
  Ref<NSArray> allObjects() const;  ///< Those that are not null; of an array of objects only, else it raises.

  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;  ///< Of objects only.
  bool isEqual(const NSObject* other) const override;  ///< The same options, and element for element.
  uint64_t hash() const override;
  Ref<NSString> description() const override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;

  ~NSPointerArray() override;

 protected:
  NSPointerArray();

 private:
  [[noreturn]] void raisePastEnd(std::string_view selector, uint64_t index) const;
  void checkObjects(std::string_view selector) const;

  Ref<NSPointerFunctions> functions_;
  std::vector<void*> pointers_;
  uint64_t mutations_ = 0;
};

}  // namespace quoll::inline v1
