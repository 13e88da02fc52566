// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Value.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "QuollFoundation/platform/object/Class.h"

namespace quoll::inline v1::detail {

Value::Value(const Value& other) {
  if (other.kind_ == Kind::CString) {
    Value copy = ofCString(other.text_);
    take(copy);
  } else if (other.kind_ == Kind::Plain && other.isOutside()) {
    Value copy = ofPlain(other.outside_, other.size_, other.key_, other.encoding_);
    take(copy);
  } else {
    copyWords(other);
    if (kind_ == Kind::Object && object_) Counts::retain(object_);
    if (kind_ == Kind::Block && block_.owner) Counts::retain(block_.owner);
  }
}
Value::Value(Value&& other) noexcept { take(other); }
Value& Value::operator=(Value other) noexcept {
  release();
  take(other);
  return *this;
}

void Value::copyWords(const Value& other) noexcept {
  kind_ = other.kind_;
  size_ = other.size_;
  encoding_ = other.encoding_;
  key_ = other.key_;
  std::memcpy(plain_, other.plain_, sizeof plain_);
}

void Value::take(Value& other) noexcept {
  copyWords(other);
  other.kind_ = Kind::Nothing;
}

void Value::release() noexcept {
  switch (kind_) {
    case Kind::Object:
      if (object_) Counts::release(object_);
      break;
    case Kind::Block:
      if (block_.owner) Counts::release(block_.owner);
      break;
    case Kind::CString: std::free(text_); break;
    case Kind::Plain:
      if (isOutside()) std::free(outside_);
      break;
    default: break;
  }
  kind_ = Kind::Nothing;
}

Value Value::ofInteger(int64_t value, const char* encoding) {
  Value v;
  v.kind_ = Kind::Integer;
  v.encoding_ = encoding;
  v.integer_ = value;
  return v;
}
Value Value::ofReal(double value, const char* encoding) {
  Value v;
  v.kind_ = Kind::Real;
  v.encoding_ = encoding;
  v.real_ = value;
  return v;
}
Value Value::ofObject(NSObject* object) {
  Value v;
  v.kind_ = Kind::Object;
  v.encoding_ = "@";
  v.object_ = object;
  if (object) Counts::retain(object);
  return v;
}
Value Value::ofBlock(void* callable, const BlockTable* table) {
  Value v;
  v.kind_ = Kind::Block;
  v.encoding_ = "@?";
  v.block_ = {callable, table, nullptr};
  return v;
}
Value Value::ofCString(const char* text) {
  if (!text) return ofObject(nullptr);
  Value v;
  v.text_ = strdup(text);
  if (!v.text_) throw std::bad_alloc();
  v.kind_ = Kind::CString;
  v.encoding_ = "r*";
  return v;
}
Value Value::ofPlain(const void* bytes, size_t size, uint64_t key, const char* encoding) {
  Value v;
  v.size_ = static_cast<uint32_t>(size);
  v.encoding_ = encoding;
  v.key_ = key;
  void* place = v.plain_;
  if (v.isOutside()) {
    const std::string_view text = key ? std::string_view() : firstType(encoding).type;
    place = std::calloc(1, size + text.size() + 1);
    if (!place) throw std::bad_alloc();
    if (!key) v.encoding_ = static_cast<char*>(std::memcpy(static_cast<char*>(place) + size, text.data(), text.size()));
    v.outside_ = place;
  }
  std::memcpy(place, bytes, size);
  v.kind_ = Kind::Plain;
  return v;
}

void Value::keep() {
  if (kind_ != Kind::Block || !block_.table || block_.owner) return;
  HeapBlock* owner = block_.table->copied(block_.callable).detach();
  block_ = {owner->callable(), block_.table, owner};
}

std::string_view Value::kindName() const {
  constexpr std::string_view names[] = {"nothing",
                                        "an integer",
                                        "a real number",
                                        "an object",
                                        "a block of another signature",
                                        "a C string",
                                        "a value of another type"};
  return names[static_cast<size_t>(kind_)];
}

void Value::refuse(std::string_view where, size_t index, std::string_view wanted) const {
  if (kind_ == Kind::Object && object_) raiseWrongObject(where, index, wanted, object_);
  raiseMismatch(where, index, wanted, kindName());
}

namespace {

template <class T> T read(const void* address) {
  T value;
  std::memcpy(&value, address, sizeof value);
  return value;
}
template <class T> void write(void* address, T value) { std::memcpy(address, &value, sizeof value); }

std::string_view withoutQualifiers(std::string_view type) {
  while (type.size() > 1 && std::string_view("rnNoORV").find(type[0]) != type.npos) type.remove_prefix(1);
  return type;
}

constexpr std::string_view integerCodes = "cCsSiIlLqQB";
bool isIntegerCode(char code) { return integerCodes.find(code) != integerCodes.npos; }

/// A text that outlives every value.
const char* lastingTextOf(char code) {
  static constexpr char texts[][2] = {"c", "C", "s", "S", "i", "I", "l", "L", "q", "Q", "B"};
  return texts[integerCodes.find(code)];
}

int64_t readInteger(char code, const void* address) {
  switch (code) {
    case 'c': return read<int8_t>(address);
    case 'C': return read<uint8_t>(address);
    case 'B': return read<uint8_t>(address) != 0;
    case 's': return read<int16_t>(address);
    case 'S': return read<uint16_t>(address);
    case 'i': return read<int32_t>(address);
    case 'I': return read<uint32_t>(address);
    default: return read<int64_t>(address);
  }
}

}  // namespace

Value Value::fromMemory(std::string_view encoding, const void* address) {
  const std::string_view type = firstType(encoding).type;
  const std::string_view bare = withoutQualifiers(type);
  switch (const char code = bare[0]) {
    case 'v': return {};
    case '@':
      if (bare == "@?") {
        const auto [callable, table] = read<BlockWords>(address);
        return ofBlock(callable, table);
      }
      return ofObject(read<NSObject*>(address));
    case '#': return ofObject(read<NSObject*>(address));
    case '*': return ofCString(read<const char*>(address));
    case 'f': return ofReal(static_cast<double>(read<float>(address)), "f");
    case 'd': return ofReal(read<double>(address), "d");
    default:
      if (isIntegerCode(code)) return ofInteger(readInteger(code, address), lastingTextOf(code));
      return ofPlain(address, sizeOfType(type), 0, std::string(type).c_str());
  }
}

void Value::numberToMemory(char code, void* address, std::string_view where, size_t index) const {
  switch (code) {
    case 'c': return write(address, number<int8_t>(where, index));
    case 'C': return write(address, number<uint8_t>(where, index));
    case 'B': return write(address, number<bool>(where, index));
    case 's': return write(address, number<int16_t>(where, index));
    case 'S': return write(address, number<uint16_t>(where, index));
    case 'i': return write(address, number<int32_t>(where, index));
    case 'I': return write(address, number<uint32_t>(where, index));
    case 'f': return write(address, number<float>(where, index));
    case 'd': return write(address, number<double>(where, index));
    case 'L':
    case 'Q': return write(address, number<uint64_t>(where, index));
    default: return write(address, number<int64_t>(where, index));
  }
}

void Value::toMemory(std::string_view encoding, void* address, std::string_view where, size_t index) const {
  const std::string_view type = firstType(encoding).type;
  const std::string_view bare = withoutQualifiers(type);
  const size_t size = sizeOfType(type);
  const bool isPointer = std::string_view("@#*^").find(bare[0]) != std::string_view::npos;
  if (kind_ == Kind::Nothing || (isPointer && kind_ == Kind::Object && !object_)) {
    std::memset(address, 0, size);
  } else if (isIntegerCode(bare[0]) || bare == "f" || bare == "d") {
    numberToMemory(bare[0], address, where, index);
  } else if (bare == "@?") {
    if (kind_ != Kind::Block) refuse(where, index, type);
    write(address, BlockWords{block_.callable, block_.table});
  } else if (bare[0] == '@' || bare[0] == '#') {
    if (kind_ != Kind::Object || (bare[0] == '#' && !isKind<Class>(object_))) refuse(where, index, type);
    write(address, object_);
  } else if (bare[0] == '*') {
    if (kind_ != Kind::CString) refuse(where, index, type);
    write(address, text_);
  } else {
    const bool same = kind_ == Kind::Plain && size_ == size && withoutQualifiers(firstType(encoding_).type) == bare;
    if (!same) refuse(where, index, type);
    std::memcpy(address, bytes(), size);
  }
}

}  // namespace quoll::inline v1::detail
