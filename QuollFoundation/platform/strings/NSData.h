// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <initializer_list>
#include <span>

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/Block.h"

namespace quoll::inline v1 {

class NSMutableData;

/// A sequence of bytes. Lengths and indices count bytes, from 0; a range past the end raises NSRangeException.
///
///     Ref<NSData> data = NSData::dataWithSpan(std::as_bytes(std::span(samples)));
///     for (std::byte b : data->span()) { ... }
///
/// The bytes stand behind the object, or in several regions that other data own (`dataWithRegions`): what can be done
/// region by region is done so, and `bytes` puts them together when first asked. A pointer or span into the data lives
/// as long as the data does, unchanged. Threads: immutable (NSMutableData: caller-locked).
class QF_EXPORT NSData : public NSObject {
  QF_CLASS(NSData, NSObject)
 public:
  template <class T = NSData> static Ref<T> data() { return cast<T>(data_ofClass(T::classObject())); }
  /// Copies. Null bytes with a length raise NSInvalidArgumentException.
  template <class T = NSData> static Ref<T> dataWithBytes_length(const void* bytes, uint64_t length) {
    return cast<T>(dataWithBytes_length_ofClass(bytes, length, T::classObject()));
  }
  /// Takes over bytes from `malloc` and frees them. They stay the caller's when it raises.
  template <class T = NSData> static Ref<T> dataWithBytesNoCopy_length(void* bytes, uint64_t length) {
    return cast<T>(dataWithBytesNoCopy_length_ofClass(bytes, length, T::classObject()));
  }
  template <class T = NSData> static Ref<T> dataWithData(const NSData* other) {
    return cast<T>(dataWithData_ofClass(other, T::classObject()));
  }
  template <class T = NSData> static Ref<T> initWithBytes_length(const void* bytes, uint64_t length) {
    return cast<T>(initWithBytes_length_ofClass(bytes, length, T::classObject()));
  }
  template <class T = NSData> static Ref<T> initWithBytesNoCopy_length(void* bytes, uint64_t length) {
    return cast<T>(initWithBytesNoCopy_length_ofClass(bytes, length, T::classObject()));
  }
  template <class T = NSData> static Ref<T> initWithData(const NSData* other) {
    return cast<T>(initWithData_ofClass(other, T::classObject()));
  }
  static Ref<NSData> dataWithSpan(std::span<const std::byte> bytes);  ///< Copies.
  /// Data of `length` bytes that `fill` writes, all of them.
  static Ref<NSData> dataOfLength_filledBy(uint64_t length, BlockRef<void(uint8_t* bytes)> fill);
  /// One region after the other, not copied; mutable ones are copied first. A null one raises.
  static Ref<NSData> dataWithRegions(std::span<const Ref<NSData>> regions);
  static Ref<NSData> dataWithRegions(std::initializer_list<Ref<NSData>> regions) {
    return dataWithRegions(std::span<const Ref<NSData>>(regions.begin(), regions.size()));
  }

  static Ref<NSData> data_ofClass(Class* cls);
  static Ref<NSData> dataWithBytes_length_ofClass(const void* bytes, uint64_t length, Class* cls);
  static Ref<NSData> dataWithBytesNoCopy_length_ofClass(void* bytes, uint64_t length, Class* cls);
  static Ref<NSData> dataWithData_ofClass(const NSData* other, Class* cls);
  static Ref<NSData> initWithBytes_length_ofClass(const void* bytes, uint64_t length, Class* cls);
  static Ref<NSData> initWithBytesNoCopy_length_ofClass(void* bytes, uint64_t length, Class* cls);
  static Ref<NSData> initWithData_ofClass(const NSData* other, Class* cls);

  // Bytes
  uint64_t length() const { return length_; }
  /// All bytes in one piece; never null, also when there are none.
  const void* bytes() const QF_LIFETIME {
    const void* known = bytes_.load(std::memory_order_acquire);
    return known ? known : flattened();
  }
  std::span<const std::byte> span() const QF_LIFETIME {
    return {static_cast<const std::byte*>(bytes()), static_cast<size_t>(length_)};
  }
  explicit operator std::span<const std::byte>() const QF_LIFETIME { return span(); }
  void getBytes(void* buffer) const;                          ///< All of them.
  void getBytes_length(void* buffer, uint64_t length) const;  ///< The first ones, at most `length`.
  void getBytes_range(void* buffer, NSRange range) const;
  Ref<NSData> subdataWithRange(NSRange range) const;
  /// Calls `block` for each region that has bytes, in order, with the region's place in the whole, until it sets
  /// `*stop`.
  void enumerateByteRangesUsingBlock(BlockRef<void(const void* bytes, NSRange range, bool* stop)> block) const;

  bool isEqualToData(const NSData* other) const;
  bool isEqual(const NSObject* other) const override;  ///< By bytes, however they are stored.
  uint64_t hash() const override;
  Ref<NSString> description()
      const override;  ///< `{length = 3, bytes = 0x010203}`; the middle of long data is left out.
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;
  Ref<NSData> copy() const;
  Ref<NSMutableData> mutableCopy() const;

 protected:
  NSData();
  ~NSData() override;

  struct InPlace {};
  NSData(InPlace, uint64_t length);  // the bytes stand behind the object, see makeSized

 private:
  friend class NSMutableData;
  struct Regions;

  const void* flattened() const;
  void copyTo(void* buffer, NSRange range) const;                     // the range fits
  bool matches(uint64_t location, std::span<const std::byte>) const;  // the bytes there; they fit
  template <class Visit> void visitRegions(NSRange range, Visit visit) const;
  void check(std::string_view selector, NSRange range) const;
  void adopt(void* owned, uint64_t length);

  mutable std::atomic<const void*> bytes_;  // null: still in regions
  uint64_t length_;
  mutable void* owned_ = nullptr;  // of malloc
  Regions* regions_ = nullptr;
};

/// Data that grows, shrinks and changes. Threads: caller-locked.
class QF_EXPORT NSMutableData : public NSData {
  QF_CLASS(NSMutableData, NSData)
 public:
  template <class T = NSMutableData> static Ref<T> data() { return cast<T>(data_ofClass(T::classObject())); }
  /// Zeros.
  template <class T = NSMutableData> static Ref<T> dataWithLength(uint64_t length) {
    return cast<T>(dataWithLength_ofClass(length, T::classObject()));
  }
  /// Empty, with room for so many bytes.
  template <class T = NSMutableData> static Ref<T> dataWithCapacity(uint64_t capacity) {
    return cast<T>(dataWithCapacity_ofClass(capacity, T::classObject()));
  }
  template <class T = NSMutableData> static Ref<T> initWithLength(uint64_t length) {
    return cast<T>(initWithLength_ofClass(length, T::classObject()));
  }
  template <class T = NSMutableData> static Ref<T> initWithCapacity(uint64_t capacity) {
    return cast<T>(initWithCapacity_ofClass(capacity, T::classObject()));
  }
  static Ref<NSMutableData> dataWithLength_ofClass(uint64_t length, Class* cls);
  static Ref<NSMutableData> dataWithCapacity_ofClass(uint64_t capacity, Class* cls);
  static Ref<NSMutableData> initWithLength_ofClass(uint64_t length, Class* cls);
  static Ref<NSMutableData> initWithCapacity_ofClass(uint64_t capacity, Class* cls);

  void* mutableBytes() QF_LIFETIME { return const_cast<void*>(bytes()); }
  std::span<std::byte> mutableSpan() QF_LIFETIME {
    return {static_cast<std::byte*>(mutableBytes()), static_cast<size_t>(length())};
  }
  void setLength(uint64_t length);  ///< New bytes are zero.
  void increaseLengthBy(uint64_t more);
  void appendBytes_length(const void* bytes, uint64_t length);
  void appendData(const NSData* other);  ///< Null raises NSInvalidArgumentException.
  void appendSpan(std::span<const std::byte> bytes) { appendBytes_length(bytes.data(), bytes.size()); }
  void replaceBytesInRange_withBytes(NSRange range, const void* bytes);  ///< As many as the range has.
  void replaceBytesInRange_withBytes_length(NSRange range, const void* bytes, uint64_t length);
  void resetBytesInRange(NSRange range);  ///< To zero.
  void setData(const NSData* other);      ///< Null raises NSInvalidArgumentException.

 protected:
  NSMutableData() = default;

 private:
  void reserve(uint64_t capacity);
  std::byte* resized(uint64_t length);  // grows where needed; the bytes, of which new ones are unset
  void splice(NSRange range, const void* bytes, uint64_t length);

  uint64_t capacity_ = 0;
};

}  // namespace quoll::inline v1
