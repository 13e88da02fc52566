// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSPointerFunctions.h"

#include <cstdio>
#include <cstring>

#include "QuollFoundation/platform/collections/OwnershipInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Class* NSPointerFunctions::classObject() {
  static Class* const cls =
      ClassBuilder<NSPointerFunctions>("NSPointerFunctions")
          .classMethod<&NSPointerFunctions::pointerFunctionsWithOptions_ofClass>("pointerFunctionsWithOptions:"_sel)
          .initializer<&NSPointerFunctions::initWithOptions_ofClass>("initWithOptions:"_sel)
          .method<&NSPointerFunctions::sizeFunction>("sizeFunction"_sel)
          .method<&NSPointerFunctions::setSizeFunction>("setSizeFunction:"_sel)
          .method<&NSPointerFunctions::hashFunction>("hashFunction"_sel)
          .method<&NSPointerFunctions::setHashFunction>("setHashFunction:"_sel)
          .method<&NSPointerFunctions::isEqualFunction>("isEqualFunction"_sel)
          .method<&NSPointerFunctions::setIsEqualFunction>("setIsEqualFunction:"_sel)
          .method<&NSPointerFunctions::descriptionFunction>("descriptionFunction"_sel)
          .method<&NSPointerFunctions::setDescriptionFunction>("setDescriptionFunction:"_sel)
          .method<&NSPointerFunctions::acquireFunction>("acquireFunction"_sel)
          .method<&NSPointerFunctions::setAcquireFunction>("setAcquireFunction:"_sel)
          .method<&NSPointerFunctions::relinquishFunction>("relinquishFunction"_sel)
          .method<&NSPointerFunctions::setRelinquishFunction>("setRelinquishFunction:"_sel)
          .build();
  return cls;
}

Ref<NSPointerFunctions> NSPointerFunctions::pointerFunctionsWithOptions_ofClass(uint64_t options, Class* cls) {
  return made<NSPointerFunctions>(cls, "initWithOptions:"_sel, options);
}

Ref<NSPointerFunctions> NSPointerFunctions::initWithOptions_ofClass(uint64_t options, Class* cls) {
  Ref<NSPointerFunctions> functions = create<NSPointerFunctions>(cls);
  functions->options_ = options;
  const uint64_t memory = functions->memory(), personality = functions->personality();
  const bool knownMemory = memory == NSPointerFunctionsStrongMemory || memory == NSPointerFunctionsOpaqueMemory ||
                           memory == NSPointerFunctionsMallocMemory;
  const bool unknownBits = options & ~uint64_t{NSPointerFunctionsCopyIn | 0xFFFF};
  if (!knownMemory || personality > NSPointerFunctionsIntegerPersonality || unknownBits) {
    raise(NSInvalidArgumentException, detail::methodName(functions, "initWithOptions:") + ": no pointers are kept by " +
                                          "the options " + std::to_string(options));
  }
  return functions;
}

void NSPointerFunctions::raiseFrozen(const char* selector) const {
  raise(NSInvalidArgumentException, detail::methodName(this, selector) + ": a collection uses these functions");
}

bool NSPointerFunctions::areObjects() const {
  return (personality() == NSPointerFunctionsObjectPersonality ||
          personality() == NSPointerFunctionsObjectPointerPersonality) &&
         memory() != NSPointerFunctionsMallocMemory;
}
bool NSPointerFunctions::retains() const {
  return areObjects() && (memory() == NSPointerFunctionsStrongMemory || copiesIn());
}
bool NSPointerFunctions::ownsMemory() const {
  return !areObjects() && personality() != NSPointerFunctionsIntegerPersonality &&
         (copiesIn() || memory() == NSPointerFunctionsMallocMemory);
}

uint64_t NSPointerFunctions::sizeOf(const void* item) const {
  const uint64_t size = size_ ? size_(item) : 0;
  if (!size) {
    raise(NSInvalidArgumentException,
          detail::plainDescription(this) + ": structs need a size function that gives a size above 0");
  }
  return size;
}

void* NSPointerFunctions::copied(const void* source) const {
  if (areObjects()) return detail::object(source)->copy().detach();
  if (personality() == NSPointerFunctionsIntegerPersonality) return const_cast<void*>(source);
  const uint64_t size = personality() == NSPointerFunctionsCStringPersonality
                            ? std::strlen(static_cast<const char*>(source)) + 1
                            : sizeOf(source);
  return std::memcpy(detail::resized<char>(nullptr, size), source, size);
}

void* NSPointerFunctions::acquire(const void* source) const {
  if (!source) return nullptr;
  if (acquire_) return acquire_(source, size_, copiesIn());
  if (copiesIn()) return copied(source);
  return retains() ? detail::retained(detail::object(source)) : const_cast<void*>(source);
}

void NSPointerFunctions::relinquish(void* item) const {
  if (!item) return;
  if (relinquish_) relinquish_(item, size_);
  else if (retains()) detail::drop(item);
  else if (ownsMemory()) std::free(item);
}

bool NSPointerFunctions::same(const void* a, const void* b) const {
  if (a == b) return true;
  if (!a || !b) return false;
  if (equal_) return equal_(a, b, size_);
  switch (personality()) {
    case NSPointerFunctionsObjectPersonality: return areObjects() && detail::object(a)->isEqual(detail::object(b));
    case NSPointerFunctionsCStringPersonality:
      return std::strcmp(static_cast<const char*>(a), static_cast<const char*>(b)) == 0;
    case NSPointerFunctionsStructPersonality: {
      const uint64_t size = sizeOf(a);
      return size == sizeOf(b) && std::memcmp(a, b, size) == 0;
    }
    default: return false;
  }
}

uint64_t NSPointerFunctions::hashOf(const void* item) const {
  if (!item) return 0;
  if (hash_) return hash_(item, size_);
  switch (personality()) {
    case NSPointerFunctionsObjectPersonality: return areObjects() ? detail::object(item)->hash() : 0;
    case NSPointerFunctionsCStringPersonality: return detail::hashOf(static_cast<const char*>(item));
    case NSPointerFunctionsStructPersonality: return detail::hashOf({static_cast<const char*>(item), sizeOf(item)});
    default: return reinterpret_cast<uintptr_t>(item);
  }
}

Ref<NSString> NSPointerFunctions::describe(const void* item) const {
  if (describe_) return describe_(item);
  if (areObjects() && item) return detail::object(item)->description();
  if (personality() == NSPointerFunctionsCStringPersonality && item) {
    if (Ref<NSString> text = NSString::stringWithUTF8(static_cast<const char*>(item))) return text;
  }
  if (personality() == NSPointerFunctionsIntegerPersonality) {
    return NSString::stringWithUTF8(std::to_string(reinterpret_cast<intptr_t>(item)));
  }
  char address[24];
  std::snprintf(address, sizeof address, "%p", item);
  return NSString::stringWithUTF8(address);
}

Ref<NSObject> NSPointerFunctions::copyWithZone(NSZone*) const {
  Ref<NSPointerFunctions> copy = create<NSPointerFunctions>(isa());
  copy->options_ = options_;
  copy->size_ = size_;
  copy->hash_ = hash_;
  copy->equal_ = equal_;
  copy->describe_ = describe_;
  copy->acquire_ = acquire_;
  copy->relinquish_ = relinquish_;
  return copy;
}

Ref<NSPointerFunctions> NSPointerFunctions::frozen() const {
  if (frozen_) return const_cast<NSPointerFunctions*>(this);
  Ref<NSPointerFunctions> copied = cast<NSPointerFunctions>(copy());
  copied->frozen_ = true;
  return copied;
}

}  // namespace quoll::inline v1
