// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/Casting.h"

namespace quoll::inline v1 {

/// How a pointer collection keeps its pointers: one of the kinds of memory, one of the personalities, and bits.
enum NSPointerFunctionsOptions : uint64_t {
  // Memory
  NSPointerFunctionsStrongMemory = 0,  ///< Objects are held; other pointers are as they are.
  NSPointerFunctionsOpaqueMemory = 2,  ///< Nothing is kept or freed.
  NSPointerFunctionsMallocMemory = 3,  ///< Freed on removal, with `free`.
  // What the pointers are
  NSPointerFunctionsObjectPersonality = 0,           ///< Objects, by `isEqual:`.
  NSPointerFunctionsOpaquePersonality = 256,         ///< Addresses.
  NSPointerFunctionsObjectPointerPersonality = 512,  ///< Objects, by address.
  NSPointerFunctionsCStringPersonality = 768,        ///< Texts that end in a zero byte.
  NSPointerFunctionsStructPersonality = 1024,        ///< Structs of the size function's size, by their bytes.
  NSPointerFunctionsIntegerPersonality = 1280,       ///< Numbers of a pointer's size.
  // Bits
  NSPointerFunctionsCopyIn = 65536,  ///< Each pointer that comes in is replaced by a copy of what it points to.
};
constexpr NSPointerFunctionsOptions operator|(NSPointerFunctionsOptions a, NSPointerFunctionsOptions b) {
  return static_cast<NSPointerFunctionsOptions>(static_cast<uint64_t>(a) | static_cast<uint64_t>(b));
}

/// What a pointer collection does with its pointers: options, and functions that take their place.
///
///     auto functions = NSPointerFunctions::initWithOptions(NSPointerFunctionsCopyIn |
///                                                          NSPointerFunctionsStructPersonality |
///                                                          NSPointerFunctionsMallocMemory);
///     functions->setSizeFunction([](const void*) -> uint64_t { return sizeof(Pixel); });
///     auto pixels = NSPointerArray::initWithPointerFunctions(functions);
///
/// A collection takes a copy; one that it gives back can't be changed. Threads: caller-locked until then, immutable
/// after.
class QF_EXPORT NSPointerFunctions : public NSObject {
  QF_CLASS(NSPointerFunctions, NSObject)
 public:
  using Size = uint64_t (*)(const void* item);
  using Hash = uint64_t (*)(const void* item, Size size);
  using Equal = bool (*)(const void* a, const void* b, Size size);
  using Describe = Ref<NSString> (*)(const void* item);
  using Acquire = void* (*)(const void* source, Size size, bool copies);
  using Relinquish = void (*)(const void* item, Size size);

  /// Other kinds of memory and personalities raise NSInvalidArgumentException.
  template <class T = NSPointerFunctions> static Ref<T> initWithOptions(uint64_t options) {
    return cast<T>(initWithOptions_ofClass(options, T::classObject()));
  }
  template <class T = NSPointerFunctions> static Ref<T> pointerFunctionsWithOptions(uint64_t options) {
    return cast<T>(pointerFunctionsWithOptions_ofClass(options, T::classObject()));
  }
  static Ref<NSPointerFunctions> initWithOptions_ofClass(uint64_t options, Class* cls);
  static Ref<NSPointerFunctions> pointerFunctionsWithOptions_ofClass(uint64_t options, Class* cls);

  uint64_t options() const { return options_; }
  // Null: as the options have it.
  Size sizeFunction() const { return size_; }
  Hash hashFunction() const { return hash_; }
  Equal isEqualFunction() const { return equal_; }
  Describe descriptionFunction() const { return describe_; }
  Acquire acquireFunction() const { return acquire_; }
  Relinquish relinquishFunction() const { return relinquish_; }
  void setSizeFunction(Size function) { set(size_, function, "setSizeFunction:"); }
  void setHashFunction(Hash function) { set(hash_, function, "setHashFunction:"); }
  void setIsEqualFunction(Equal function) { set(equal_, function, "setIsEqualFunction:"); }
  void setDescriptionFunction(Describe function) { set(describe_, function, "setDescriptionFunction:"); }
  void setAcquireFunction(Acquire function) { set(acquire_, function, "setAcquireFunction:"); }
  void setRelinquishFunction(Relinquish function) { set(relinquish_, function, "setRelinquishFunction:"); }

  // What collections do. A null pointer is kept as it is.
  void* acquire(const void* source) const;
  void relinquish(void* item) const;
  bool same(const void* a, const void* b) const;
  uint64_t hashOf(const void* item) const;
  Ref<NSString> describe(const void* item) const;
  bool areObjects() const;
  Ref<NSPointerFunctions> frozen() const;  ///< A copy that can't be changed.

  Ref<NSObject> copyWithZone(NSZone* zone) const override;

 protected:
  NSPointerFunctions() = default;

 private:
  uint64_t memory() const { return options_ & 0xFF; }
  uint64_t personality() const { return options_ & 0xFF00; }
  bool copiesIn() const { return options_ & NSPointerFunctionsCopyIn; }
  bool ownsMemory() const;
  bool retains() const;
  uint64_t sizeOf(const void* item) const;
  void* copied(const void* source) const;
  [[noreturn]] void raiseFrozen(const char* selector) const;
  template <class F> void set(F& place, F function, const char* selector) {
    if (frozen_) raiseFrozen(selector);
    place = function;
  }

  uint64_t options_ = 0;
  Size size_ = nullptr;
  Hash hash_ = nullptr;
  Equal equal_ = nullptr;
  Describe describe_ = nullptr;
  Acquire acquire_ = nullptr;
  Relinquish relinquish_ = nullptr;
  bool frozen_ = false;
};

}  // namespace quoll::inline v1
