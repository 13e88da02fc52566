// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/CFAllocator.h"
#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

namespace detail {
struct ArrayAccess;
}

/// How an array keeps its values; a null function means plain pointers: nothing to keep, compared as addresses.
struct CFArrayCallBacks {
  CFIndex version;                                                     ///< 0
  const void* (*retain)(CFAllocatorRef allocator, const void* value);  ///< Gives what the array stores.
  void (*release)(CFAllocatorRef allocator, const void* value);
  Ref<NSString> (*copyDescription)(const void* value);
  bool (*equal)(const void* a, const void* b);
};
/// The values are objects: such an array is an NSArray.
QF_EXPORT extern const CFArrayCallBacks kCFTypeArrayCallBacks;

/// An array of values that a set of callbacks keeps: plain structs and numbers in cells of their own, or objects. What
/// is made with `kCFTypeArrayCallBacks` is an NSArray or NSMutableArray, and each of these is a CFArray.
///
///     Ref<CFArray> ranges = CFArrayCreateMutable(nullptr, 0, &kQFNSRangeArrayCallbacks);
///     CFArrayAppendValue(ranges, &range);                            // copied into a cell
///     auto* first = static_cast<const NSRange*>(CFArrayGetValueAtIndex(ranges, 0));
///
/// Threads: immutable, or caller-locked where it may be changed.
class QF_EXPORT CFArray : public NSObject {
  QF_CLASS(CFArray, NSObject)
 public:
  uint64_t count() const { return count_; }
  Ref<NSString> description() const override;

 protected:
  CFArray() = default;
  /// Over items behind the object.
  CFArray(void** items, uint64_t count) : items_(items), count_(count) {}

  void makeRoom(uint64_t& capacity, uint64_t count);
  void insertItem(uint64_t index, void* item, uint64_t& capacity);
  void* takeItem(uint64_t index);

  void** items_ = nullptr;  // behind the object, or from malloc
  uint64_t count_ = 0;
  uint64_t mutations_ = 0;

 private:
  friend struct detail::ArrayAccess;
};

using CFArrayRef = const CFArray*;
using CFMutableArrayRef = CFArray*;

/// New, with the values given, or empty and changeable; null callbacks keep plain addresses. The capacity is a hint.
QF_EXPORT Ref<CFArray> CFArrayCreate(CFAllocatorRef allocator, const void** values, CFIndex count,
                                     const CFArrayCallBacks* callBacks);
QF_EXPORT Ref<CFArray> CFArrayCreateMutable(CFAllocatorRef allocator, CFIndex capacity,
                                            const CFArrayCallBacks* callBacks);
/// With the callbacks of the other one. A null array raises NSInvalidArgumentException.
QF_EXPORT Ref<CFArray> CFArrayCreateCopy(CFAllocatorRef allocator, CFArrayRef array);
QF_EXPORT Ref<CFArray> CFArrayCreateMutableCopy(CFAllocatorRef allocator, CFIndex capacity, CFArrayRef array);

/// Reading. Null answers 0, false or null; an index or range past the end raises NSRangeException.
QF_EXPORT CFIndex CFArrayGetCount(CFArrayRef array);
QF_EXPORT const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
QF_EXPORT void CFArrayGetValues(CFArrayRef array, CFRange range, const void** values);
QF_EXPORT bool CFArrayContainsValue(CFArrayRef array, CFRange range, const void* value);
QF_EXPORT CFIndex CFArrayGetCountOfValue(CFArrayRef array, CFRange range, const void* value);
QF_EXPORT CFIndex CFArrayGetFirstIndexOfValue(CFArrayRef array, CFRange range, const void* value);  ///< Or kCFNotFound.
QF_EXPORT CFIndex CFArrayGetLastIndexOfValue(CFArrayRef array, CFRange range, const void* value);   ///< Or kCFNotFound.
QF_EXPORT void CFArrayApplyFunction(CFArrayRef array, CFRange range, void (*apply)(const void* value, void* context),
                                    void* context);

/// Changing. An immutable array raises NSInvalidArgumentException.
QF_EXPORT void CFArrayAppendValue(CFMutableArrayRef array, const void* value);
QF_EXPORT void CFArrayInsertValueAtIndex(CFMutableArrayRef array, CFIndex index, const void* value);
QF_EXPORT void CFArraySetValueAtIndex(CFMutableArrayRef array, CFIndex index, const void* value);
QF_EXPORT void CFArrayRemoveValueAtIndex(CFMutableArrayRef array, CFIndex index);
QF_EXPORT void CFArrayRemoveAllValues(CFMutableArrayRef array);
QF_EXPORT void CFArrayExchangeValuesAtIndices(CFMutableArrayRef array, CFIndex a, CFIndex b);
QF_EXPORT void CFArrayAppendArray(CFMutableArrayRef array, CFArrayRef other, CFRange range);

}  // namespace quoll::inline v1
