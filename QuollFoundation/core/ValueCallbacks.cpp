// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/ValueCallbacks.h"

#include <cstdint>
#include <cstring>
#include <string>

#include "QuollFoundation/core/Booleans.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {
namespace {

using Boolean = uint8_t;  // never bool: a byte other than 0 and 1 in one is undefined behaviour

template <class Cell> Cell valueIn(const void* cell) {
  Cell value;
  std::memcpy(&value, cell, sizeof value);
  return value;
}

const void* copyToCell(const void* value, size_t size, const char* function) {
  if (!value) raise(NSInvalidArgumentException, std::string(function) + ": the address of the value is null");
  void* cell = CFAllocatorAllocate(kCFAllocatorSystemDefault, static_cast<CFIndex>(size));
  if (!cell) raise(NSMallocException, std::string(function) + ": no memory for the value");
  return std::memcpy(cell, value, size);
}

void freeCell(const void* cell) { CFAllocatorDeallocate(kCFAllocatorSystemDefault, const_cast<void*>(cell)); }

template <class Cell> bool sameValue(const void* a, const void* b) {
  return a == b || (a && b && valueIn<Cell>(a) == valueIn<Cell>(b));
}

bool sameBoolean(const void* a, const void* b) {
  return a == b || (a && b && (valueIn<Boolean>(a) ^ valueIn<Boolean>(b) ^ 1) != 0);
}

template <class Cell> CFHashCode valueAsHash(const void* cell) {
  return cell ? static_cast<CFHashCode>(valueIn<Cell>(cell)) : 0;
}

Ref<NSString> decimal(const std::string& digits) { return NSString::stringWithUTF8(digits); }

Ref<NSString> signedText(const void* cell) { return cell ? decimal(std::to_string(valueIn<int64_t>(cell))) : nullptr; }

}  // namespace

const void* _QFCollectionUniCharRetain(CFAllocatorRef, const void* value) {
  return copyToCell(value, sizeof(char16_t), "_QFCollectionUniCharRetain");
}
void _QFCollectionUniCharRelease(CFAllocatorRef, const void* value) { freeCell(value); }
Ref<NSString> _QFCollectionUniCharCopyDescription(const void* value) {
  return value ? decimal(std::to_string(uint64_t{valueIn<char16_t>(value)})) : nullptr;
}
bool _QFCollectionUniCharEqual(const void* a, const void* b) { return sameValue<char16_t>(a, b); }
CFHashCode _QFCollectionUniCharHash(const void* value) { return valueAsHash<char16_t>(value); }

const void* _QFCollectionNSIntegerRetain(CFAllocatorRef, const void* value) {
  return copyToCell(value, sizeof(NSInteger), "_QFCollectionNSIntegerRetain");
}
void _QFCollectionNSIntegerRelease(CFAllocatorRef, const void* value) { freeCell(value); }
Ref<NSString> _QFCollectionNSIntegerCopyDescription(const void* value) { return signedText(value); }
bool _QFCollectionNSIntegerEqual(const void* a, const void* b) { return sameValue<NSInteger>(a, b); }
CFHashCode _QFCollectionNSIntegerHash(const void* value) { return valueAsHash<NSInteger>(value); }

const void* _QFCollectionNSUIntegerRetain(CFAllocatorRef, const void* value) {
  return copyToCell(value, sizeof(NSUInteger), "_QFCollectionNSUIntegerRetain");
}
void _QFCollectionNSUIntegerRelease(CFAllocatorRef, const void* value) { freeCell(value); }
Ref<NSString> _QFCollectionNSUIntegerCopyDescription(const void* value) { return signedText(value); }
bool _QFCollectionNSUIntegerEqual(const void* a, const void* b) { return sameValue<NSUInteger>(a, b); }
CFHashCode _QFCollectionNSUIntegerHash(const void* value) { return valueAsHash<NSUInteger>(value); }

const void* _QFCollectionCFIndexRetain(CFAllocatorRef, const void* value) {
  return copyToCell(value, sizeof(CFIndex), "_QFCollectionCFIndexRetain");
}
void _QFCollectionCFIndexRelease(CFAllocatorRef, const void* value) { freeCell(value); }
Ref<NSString> _QFCollectionCFIndexCopyDescription(const void* value) { return signedText(value); }
bool _QFCollectionCFIndexEqual(const void* a, const void* b) { return sameValue<CFIndex>(a, b); }
CFHashCode _QFCollectionCFIndexHash(const void* value) { return valueAsHash<CFIndex>(value); }

const void* _QFCollectionBOOLRetain(CFAllocatorRef, const void* value) {
  return copyToCell(value, sizeof(Boolean), "_QFCollectionBOOLRetain");
}
void _QFCollectionBOOLRelease(CFAllocatorRef, const void* value) { freeCell(value); }
Ref<NSString> _QFCollectionBOOLCopyDescription(const void* value) {
  return value ? QFStringFromBOOL(valueIn<Boolean>(value) != 0) : nullptr;
}
bool _QFCollectionBOOLEqual(const void* a, const void* b) { return sameBoolean(a, b); }
CFHashCode _QFCollectionBOOLHash(const void* value) { return valueAsHash<Boolean>(value); }

const void* _QFCollectionNSRangeRetain(CFAllocatorRef, const void* value) {
  return copyToCell(value, sizeof(NSRange), "_QFCollectionNSRangeRetain");
}
void _QFCollectionNSRangeRelease(CFAllocatorRef, const void* value) { freeCell(value); }
Ref<NSString> _QFCollectionNSRangeCopyDescription(const void* value) {
  if (!value) return nullptr;
  const auto range = valueIn<NSRange>(value);
  const std::string location = std::to_string(static_cast<int64_t>(range.location));
  return decimal("(" + location + ", " + std::to_string(static_cast<int64_t>(range.length)) + ")");
}
bool _QFCollectionNSRangeIsEqual(const void* a, const void* b) { return sameValue<NSRange>(a, b); }

namespace {

/// The same callbacks for what isn't looked up by hash.
template <class Set> constexpr Set withoutHash(const CFDictionaryKeyCallBacks& keys) {
  return {keys.version, keys.retain, keys.release, keys.copyDescription, keys.equal};
}

}  // namespace

constexpr CFDictionaryKeyCallBacks kQFUniCharDictionaryKeyCallbacks = {0,
                                                                       &_QFCollectionUniCharRetain,
                                                                       &_QFCollectionUniCharRelease,
                                                                       &_QFCollectionUniCharCopyDescription,
                                                                       &_QFCollectionUniCharEqual,
                                                                       &_QFCollectionUniCharHash};
constexpr CFDictionaryValueCallBacks kQFUniCharDictionaryValueCallbacks =
    withoutHash<CFDictionaryValueCallBacks>(kQFUniCharDictionaryKeyCallbacks);

constexpr CFDictionaryKeyCallBacks kQFNSIntegerDictionaryKeyCallbacks = {0,
                                                                         &_QFCollectionNSIntegerRetain,
                                                                         &_QFCollectionNSIntegerRelease,
                                                                         &_QFCollectionNSIntegerCopyDescription,
                                                                         &_QFCollectionNSIntegerEqual,
                                                                         &_QFCollectionNSIntegerHash};
constexpr CFArrayCallBacks kQFNSIntegerArrayCallbacks =
    withoutHash<CFArrayCallBacks>(kQFNSIntegerDictionaryKeyCallbacks);
constexpr CFDictionaryValueCallBacks kQFNSIntegerDictionaryValueCallbacks =
    withoutHash<CFDictionaryValueCallBacks>(kQFNSIntegerDictionaryKeyCallbacks);

constexpr CFDictionaryKeyCallBacks kQFNSUIntegerDictionaryKeyCallBacks = {0,
                                                                          &_QFCollectionNSUIntegerRetain,
                                                                          &_QFCollectionNSUIntegerRelease,
                                                                          &_QFCollectionNSUIntegerCopyDescription,
                                                                          &_QFCollectionNSUIntegerEqual,
                                                                          &_QFCollectionNSUIntegerHash};
constexpr CFArrayCallBacks kQFNSUIntegerArrayCallBacks =
    withoutHash<CFArrayCallBacks>(kQFNSUIntegerDictionaryKeyCallBacks);
constexpr CFDictionaryValueCallBacks kQFNSUIntegerDictionaryValueCallBacks =
    withoutHash<CFDictionaryValueCallBacks>(kQFNSUIntegerDictionaryKeyCallBacks);

constexpr CFDictionaryKeyCallBacks kQFCFIndexDictionaryKeyCallbacks = {0,
                                                                       &_QFCollectionCFIndexRetain,
                                                                       &_QFCollectionCFIndexRelease,
                                                                       &_QFCollectionCFIndexCopyDescription,
                                                                       &_QFCollectionCFIndexEqual,
                                                                       &_QFCollectionCFIndexHash};
constexpr CFArrayCallBacks kQFCFIndexArrayCallbacks = withoutHash<CFArrayCallBacks>(kQFCFIndexDictionaryKeyCallbacks);
constexpr CFDictionaryValueCallBacks kQFCFIndexDictionaryValueCallbacks =
    withoutHash<CFDictionaryValueCallBacks>(kQFCFIndexDictionaryKeyCallbacks);

constexpr CFDictionaryKeyCallBacks kQFBOOLDictionaryKeyCallBacks = {0,
                                                                    &_QFCollectionBOOLRetain,
                                                                    &_QFCollectionBOOLRelease,
                                                                    &_QFCollectionBOOLCopyDescription,
                                                                    &_QFCollectionBOOLEqual,
                                                                    &_QFCollectionBOOLHash};
constexpr CFArrayCallBacks kQFBOOLArrayCallBacks = withoutHash<CFArrayCallBacks>(kQFBOOLDictionaryKeyCallBacks);
constexpr CFDictionaryValueCallBacks kQFBOOLDictionaryValueCallBacks =
    withoutHash<CFDictionaryValueCallBacks>(kQFBOOLDictionaryKeyCallBacks);

constexpr CFArrayCallBacks kQFNSRangeArrayCallbacks = {0, &_QFCollectionNSRangeRetain, &_QFCollectionNSRangeRelease,
                                                       &_QFCollectionNSRangeCopyDescription,
                                                       &_QFCollectionNSRangeIsEqual};

}  // namespace quoll::inline v1
