// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/NSData.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <string>
#include <vector>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

namespace {

constinit const char noBytes[1] = {};

void checkLength(std::string_view selector, uint64_t length) {
  if (length <= PTRDIFF_MAX) return;
  raise(NSInvalidArgumentException,
        "-[NSData " + std::string(selector) + "]: length " + std::to_string(length) + " is more than memory can hold");
}

void checkBytes(const NSObject* receiver, std::string_view selector, const void* bytes, uint64_t length) {
  if (!bytes && length != 0) detail::raiseNilArgument(receiver, selector);
}

/// `size` is at least 1: what `malloc` gives for nothing may be null.
void* allocated(uint64_t size) {
  void* memory = std::malloc(size);
  if (!memory) throw std::bad_alloc();
  return memory;
}

void copyBytes(void* to, const void* from, uint64_t length) {
  if (length != 0) std::memcpy(to, from, length);
}

constexpr uint64_t hashedAtEachEnd = 64;  // what tells data apart is rarely in the middle alone

}  // namespace

struct NSData::Regions {
  std::vector<Ref<NSData>> parts;  // each in one piece, none empty
  std::vector<uint64_t> starts;    // where each part stands in the whole
  std::mutex flattening;
};

Class* NSData::classObject() {
  static Class* const cls =
      ClassBuilder<NSData>("NSData")
          .classMethod<&NSData::data_ofClass>("data"_sel)
          .classMethod<&NSData::dataWithBytes_length_ofClass>("dataWithBytes:length:"_sel)
          .classMethod<&NSData::dataWithBytesNoCopy_length_ofClass>("dataWithBytesNoCopy:length:"_sel)
          .classMethod<&NSData::dataWithData_ofClass>("dataWithData:"_sel)
          .initializer<&NSData::initWithBytes_length_ofClass>("initWithBytes:length:"_sel)
          .initializer<&NSData::initWithBytesNoCopy_length_ofClass>("initWithBytesNoCopy:length:"_sel)
          .initializer<&NSData::initWithData_ofClass>("initWithData:"_sel)
          .method<&NSData::length>("length"_sel)
          .method<&NSData::bytes>("bytes"_sel)
          .method<&NSData::getBytes>("getBytes:"_sel)
          .method<&NSData::getBytes_length>("getBytes:length:"_sel)
          .method<&NSData::getBytes_range>("getBytes:range:"_sel)
          .method<&NSData::subdataWithRange>("subdataWithRange:"_sel)
          .method<&NSData::enumerateByteRangesUsingBlock>("enumerateByteRangesUsingBlock:"_sel)
          .method<&NSData::isEqualToData>("isEqualToData:"_sel)
          .build();
  return cls;
}

NSData::NSData() : bytes_(noBytes), length_(0) {}

NSData::NSData(InPlace, uint64_t length) : bytes_(this + 1), length_(length) {
  static_assert(sizeof(detail::Made<NSData>) == sizeof(NSData), "bytes in place start behind the object");
}

NSData::~NSData() {
  std::free(owned_);
  delete regions_;
}

void NSData::adopt(void* owned, uint64_t length) {
  std::free(owned_);
  owned_ = owned;
  bytes_.store(owned, std::memory_order_release);
  length_ = length;
}

// Making

Ref<NSData> NSData::dataOfLength_filledBy(uint64_t length, BlockRef<void(uint8_t* bytes)> fill) {
  checkLength("initWithBytes:length:", length);
  Ref<NSData> data = makeSized<NSData>(length, InPlace{}, length);
  fill(static_cast<uint8_t*>(const_cast<void*>(data->bytes())));
  return data;
}

Ref<NSData> NSData::dataWithSpan(std::span<const std::byte> bytes) {
  return dataOfLength_filledBy(bytes.size(), [&](uint8_t* place) { copyBytes(place, bytes.data(), bytes.size()); });
}

Ref<NSData> NSData::initWithBytes_length_ofClass(const void* bytes, uint64_t length, Class* cls) {
  checkBytes(cls, "initWithBytes:length:", bytes, length);
  checkLength("initWithBytes:length:", length);
  if (cls == NSData::classObject()) return dataWithSpan({static_cast<const std::byte*>(bytes), length});
  Ref<NSData> data = create<NSData>(cls);
  if (auto* changing = as<NSMutableData>(data.get())) changing->appendBytes_length(bytes, length);
  else if (length != 0) {
    void* owned = allocated(length);
    copyBytes(owned, bytes, length);
    data->adopt(owned, length);
  }
  return data;
}

Ref<NSData> NSData::initWithBytesNoCopy_length_ofClass(void* bytes, uint64_t length, Class* cls) {
  checkBytes(cls, "initWithBytesNoCopy:length:", bytes, length);
  checkLength("initWithBytesNoCopy:length:", length);
  Ref<NSData> data = create<NSData>(cls);
  if (auto* changing = as<NSMutableData>(data.get())) {
    changing->appendBytes_length(bytes, length);
    std::free(bytes);
  } else if (bytes) data->adopt(bytes, length);
  return data;
}

Ref<NSData> NSData::initWithData_ofClass(const NSData* other, Class* cls) {
  if (!other) detail::raiseNilArgument(cls, "initWithData:");
  if (cls == NSData::classObject()) return other->copy();
  return initWithBytes_length_ofClass(other->bytes(), other->length(), cls);
}

Ref<NSData> NSData::data_ofClass(Class* cls) {
  return cls == NSData::classObject() ? dataWithSpan({}) : made<NSData>(cls, "init"_sel);
}
Ref<NSData> NSData::dataWithBytes_length_ofClass(const void* bytes, uint64_t length, Class* cls) {
  if (cls == NSData::classObject()) return initWithBytes_length_ofClass(bytes, length, cls);
  return made<NSData>(cls, "initWithBytes:length:"_sel, bytes, length);
}
Ref<NSData> NSData::dataWithBytesNoCopy_length_ofClass(void* bytes, uint64_t length, Class* cls) {
  if (cls == NSData::classObject()) return initWithBytesNoCopy_length_ofClass(bytes, length, cls);
  return made<NSData>(cls, "initWithBytesNoCopy:length:"_sel, bytes, length);
}
Ref<NSData> NSData::dataWithData_ofClass(const NSData* other, Class* cls) {
  if (cls == NSData::classObject()) return initWithData_ofClass(other, cls);
  return made<NSData>(cls, "initWithData:"_sel, other);
}

Ref<NSData> NSData::dataWithRegions(std::span<const Ref<NSData>> regions) {
  auto all = std::make_unique<Regions>();
  uint64_t length = 0;
  const auto add = [&](const Ref<NSData>& part) {
    if (part->length() == 0) return;
    all->starts.push_back(length);
    all->parts.push_back(part);
    length += part->length();
    checkLength("dataWithRegions:", length);
  };
  for (const Ref<NSData>& region : regions) {
    if (!region) detail::raiseNilArgument(NSData::classObject(), "dataWithRegions:");
    const Ref<NSData> unchanging = region->copy();
    if (unchanging->regions_) std::ranges::for_each(unchanging->regions_->parts, add);
    else add(unchanging);
  }
  if (all->parts.size() == 1) return all->parts.front();
  Ref<NSData> data = make<NSData>();
  if (length == 0) return data;
  data->bytes_.store(nullptr, std::memory_order_relaxed);
  data->length_ = length;
  data->regions_ = all.release();
  return data;
}

// Regions

/// Calls `visit(bytes, rangeInTheWhole)` for each piece of the range, until it returns false.
template <class Visit> void NSData::visitRegions(NSRange range, Visit visit) const {
  if (range.length == 0) return;
  if (!regions_) {
    visit(static_cast<const std::byte*>(bytes()) + range.location, range);
    return;
  }
  const std::vector<uint64_t>& starts = regions_->starts;
  auto part = static_cast<size_t>(std::ranges::upper_bound(starts, range.location) - starts.begin()) - 1;
  const uint64_t end = NSMaxRange(range);
  for (uint64_t at = range.location; at < end; ++part) {
    const NSData& region = *regions_->parts[part];
    const uint64_t inside = at - starts[part];
    const NSRange piece{at, std::min(region.length() - inside, end - at)};
    if (!visit(region.span().data() + inside, piece)) return;
    at = NSMaxRange(piece);
  }
}

const void* NSData::flattened() const {
  const std::lock_guard lock(regions_->flattening);
  if (const void* known = bytes_.load(std::memory_order_relaxed)) return known;
  owned_ = allocated(length_);
  copyTo(owned_, {0, length_});
  bytes_.store(owned_, std::memory_order_release);
  return owned_;
}

void NSData::copyTo(void* buffer, NSRange range) const {
  visitRegions(range, [&](const std::byte* bytes, NSRange piece) {
    std::memcpy(static_cast<std::byte*>(buffer) + (piece.location - range.location), bytes, piece.length);
    return true;
  });
}

bool NSData::matches(uint64_t location, std::span<const std::byte> wanted) const {
  bool same = true;
  visitRegions({location, wanted.size()}, [&](const std::byte* bytes, NSRange piece) {
    same = std::memcmp(wanted.data() + (piece.location - location), bytes, piece.length) == 0;
    return same;
  });
  return same;
}

void NSData::enumerateByteRangesUsingBlock(BlockRef<void(const void*, NSRange, bool*)> block) const {
  const Ref<const NSData> pinned = this;  // the block may drop the last other reference
  visitRegions({0, length_}, [&](const std::byte* bytes, NSRange piece) {
    bool stop = false;
    block(bytes, piece, &stop);
    return !stop;
  });
}

// Parts

void NSData::check(std::string_view selector, NSRange range) const {
  if (!rangeFits(range, length_)) detail::raiseRange(this, selector, range, length_);
}

void NSData::getBytes(void* buffer) const { getBytes_length(buffer, length_); }
void NSData::getBytes_length(void* buffer, uint64_t length) const {
  const uint64_t count = std::min(length, length_);
  checkBytes(this, "getBytes:length:", buffer, count);
  copyTo(buffer, {0, count});
}
void NSData::getBytes_range(void* buffer, NSRange range) const {
  check("getBytes:range:", range);
  checkBytes(this, "getBytes:range:", buffer, range.length);
  copyTo(buffer, range);
}

Ref<NSData> NSData::subdataWithRange(NSRange range) const {
  check("subdataWithRange:", range);
  return dataOfLength_filledBy(range.length, [&](uint8_t* place) { copyTo(place, range); });
}

// Values

bool NSData::isEqualToData(const NSData* other) const {
  if (this == other) return true;
  if (!other || length_ != other->length_) return false;
  bool same = true;
  visitRegions({0, length_}, [&](const std::byte* bytes, NSRange piece) {
    same = other->matches(piece.location, {bytes, piece.length});
    return same;
  });
  return same;
}

bool NSData::isEqual(const NSObject* other) const {
  const auto* data = as<NSData>(other);
  return data && isEqualToData(data);
}

uint64_t NSData::hash() const {
  char sample[2 * hashedAtEachEnd];
  const uint64_t first = std::min(length_, hashedAtEachEnd);
  const uint64_t last = std::min(length_ - first, hashedAtEachEnd);
  copyTo(sample, {0, first});
  copyTo(sample + first, {length_ - last, last});
  return detail::hashOf({sample, first + last}, detail::mix(detail::hashStart, length_));
}

namespace {

constexpr uint64_t shownWhole = 24;
constexpr uint64_t shownFirst = 16, shownLast = 8, groupSize = 4;

void appendHex(std::string& text, const NSData* data, NSRange range, uint64_t bytesInGroup) {
  constexpr char digits[] = "0123456789abcdef";
  uint8_t bytes[shownWhole];
  data->getBytes_range(bytes, range);
  for (uint64_t i = 0; i < range.length; ++i) {
    if (i != 0 && i % bytesInGroup == 0) text += ' ';
    text += digits[bytes[i] >> 4];
    text += digits[bytes[i] & 0xF];
  }
}

}  // namespace

Ref<NSString> NSData::description() const {
  std::string text = "{length = " + std::to_string(length_) + ", bytes = 0x";
  if (length_ <= shownWhole) appendHex(text, this, {0, length_}, shownWhole);
  else {
    appendHex(text, this, {0, shownFirst}, groupSize);
    text += " ... ";
    appendHex(text, this, {length_ - shownLast, shownLast}, groupSize);
  }
  return NSString::stringWithUTF8(text + "}");
}

Ref<NSObject> NSData::copyWithZone(NSZone*) const {
  if (isKindOfClass(NSMutableData::classObject())) return dataWithSpan(span());
  return const_cast<NSData*>(this);
}
Ref<NSObject> NSData::mutableCopyWithZone(NSZone*) const {
  Ref<NSMutableData> data = make<NSMutableData>();
  data->setData(this);
  return data;
}
Ref<NSData> NSData::copy() const { return cast<NSData>(copyWithZone(nullptr)); }
Ref<NSMutableData> NSData::mutableCopy() const { return cast<NSMutableData>(mutableCopyWithZone(nullptr)); }

// Mutable data

Class* NSMutableData::classObject() {
  static Class* const cls =
      ClassBuilder<NSMutableData>("NSMutableData")
          .classMethod<&NSMutableData::dataWithLength_ofClass>("dataWithLength:"_sel)
          .classMethod<&NSMutableData::dataWithCapacity_ofClass>("dataWithCapacity:"_sel)
          .initializer<&NSMutableData::initWithLength_ofClass>("initWithLength:"_sel)
          .initializer<&NSMutableData::initWithCapacity_ofClass>("initWithCapacity:"_sel)
          .method<&NSMutableData::mutableBytes>("mutableBytes"_sel)
          .method<&NSMutableData::setLength>("setLength:"_sel)
          .method<&NSMutableData::increaseLengthBy>("increaseLengthBy:"_sel)
          .method<&NSMutableData::appendBytes_length>("appendBytes:length:"_sel)
          .method<&NSMutableData::appendData>("appendData:"_sel)
          .method<&NSMutableData::replaceBytesInRange_withBytes>("replaceBytesInRange:withBytes:"_sel)
          .method<&NSMutableData::replaceBytesInRange_withBytes_length>("replaceBytesInRange:withBytes:length:"_sel)
          .method<&NSMutableData::resetBytesInRange>("resetBytesInRange:"_sel)
          .method<&NSMutableData::setData>("setData:"_sel)
          .build();
  return cls;
}

Ref<NSMutableData> NSMutableData::initWithLength_ofClass(uint64_t length, Class* cls) {
  Ref<NSMutableData> data = create<NSMutableData>(cls);
  data->setLength(length);
  return data;
}
Ref<NSMutableData> NSMutableData::initWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  Ref<NSMutableData> data = create<NSMutableData>(cls);
  data->reserve(capacity);
  return data;
}
Ref<NSMutableData> NSMutableData::dataWithLength_ofClass(uint64_t length, Class* cls) {
  if (cls == NSMutableData::classObject()) return initWithLength_ofClass(length, cls);
  return made<NSMutableData>(cls, "initWithLength:"_sel, length);
}
Ref<NSMutableData> NSMutableData::dataWithCapacity_ofClass(uint64_t capacity, Class* cls) {
  if (cls == NSMutableData::classObject()) return initWithCapacity_ofClass(capacity, cls);
  return made<NSMutableData>(cls, "initWithCapacity:"_sel, capacity);
}

void NSMutableData::reserve(uint64_t capacity) {
  if (capacity <= capacity_) return;
  checkLength("setLength:", capacity);
  void* grown = std::realloc(owned_, capacity);
  if (!grown) throw std::bad_alloc();
  owned_ = grown;
  bytes_.store(grown, std::memory_order_relaxed);
  capacity_ = capacity;
}

std::byte* NSMutableData::resized(uint64_t length) {
  if (length > capacity_) reserve(std::max(length, capacity_ + capacity_ / 2));
  length_ = length;
  return static_cast<std::byte*>(owned_);
}

void NSMutableData::setLength(uint64_t length) {
  const uint64_t old = length_;
  std::byte* bytes = resized(length);
  if (length > old) std::memset(bytes + old, 0, length - old);
}

void NSMutableData::increaseLengthBy(uint64_t more) {
  checkLength("increaseLengthBy:", more);
  setLength(length_ + more);  // the lengths are too small to wrap
}

/// Puts bytes into the place of a range that fits. They may be this object's own.
void NSMutableData::splice(NSRange range, const void* bytes, uint64_t length) {
  checkLength("replaceBytesInRange:withBytes:length:", length);
  const auto* source = static_cast<const std::byte*>(bytes);
  std::vector<std::byte> kept;
  if (owned_ && !std::less<>()(bytes, owned_) && std::less<>()(bytes, static_cast<std::byte*>(owned_) + length_)) {
    kept.assign(source, source + length);
    source = kept.data();
  }
  const uint64_t end = NSMaxRange(range), tail = length_ - end;
  if (length < range.length) {
    auto* place = static_cast<std::byte*>(owned_) + range.location;
    std::memmove(place + length, place + range.length, tail);
    length_ = range.location + length + tail;
  } else if (length > range.length) {
    std::byte* all = resized(length_ - range.length + length);
    std::memmove(all + range.location + length, all + end, tail);
  }
  if (length != 0) std::memcpy(static_cast<std::byte*>(owned_) + range.location, source, length);
}

void NSMutableData::appendBytes_length(const void* bytes, uint64_t length) {
  checkBytes(this, "appendBytes:length:", bytes, length);
  splice({length_, 0}, bytes, length);
}

void NSMutableData::appendData(const NSData* other) {
  if (!other) detail::raiseNilArgument(this, "appendData:");
  if (other == this) return appendBytes_length(other->bytes(), other->length());
  const uint64_t old = length_, more = other->length_;
  other->copyTo(resized(old + more) + old, {0, more});
}

void NSMutableData::replaceBytesInRange_withBytes(NSRange range, const void* bytes) {
  check("replaceBytesInRange:withBytes:", range);
  checkBytes(this, "replaceBytesInRange:withBytes:", bytes, range.length);
  splice(range, bytes, range.length);
}
void NSMutableData::replaceBytesInRange_withBytes_length(NSRange range, const void* bytes, uint64_t length) {
  check("replaceBytesInRange:withBytes:length:", range);
  checkBytes(this, "replaceBytesInRange:withBytes:length:", bytes, length);
  splice(range, bytes, length);
}
void NSMutableData::resetBytesInRange(NSRange range) {
  check("resetBytesInRange:", range);
  if (range.length != 0) std::memset(static_cast<std::byte*>(owned_) + range.location, 0, range.length);
}
void NSMutableData::setData(const NSData* other) {
  if (!other) detail::raiseNilArgument(this, "setData:");
  if (other == this) return;
  const uint64_t length = other->length_;
  other->copyTo(resized(length), {0, length});
}

}  // namespace quoll::inline v1
