// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Value.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace quoll::inline v1::detail {

Value::Value(const Value& other)
    : kind_(other.kind_), size_(other.size_), encoding_(other.encoding_), key_(other.key_) {
  std::memcpy(plain_, other.plain_, sizeof plain_);
  switch (kind_) {
    case Kind::Object:
      if (object_) Counts::retain(object_);
      break;
    case Kind::Block:
      if (block_.owner) Counts::retain(block_.owner);
      break;
    case Kind::CString: *this = ofCString(other.text_); break;
    case Kind::Plain:
      if (size_ > sizeof plain_) *this = ofPlain(other.outside_, size_, key_, encoding_);
      break;
    default: break;
  }
}
Value::Value(Value&& other) noexcept { take(other); }
Value& Value::operator=(Value other) noexcept {
  release();
  take(other);
  return *this;
}

void Value::take(Value& other) noexcept {
  kind_ = other.kind_;
  size_ = other.size_;
  encoding_ = other.encoding_;
  key_ = other.key_;
  std::memcpy(plain_, other.plain_, sizeof plain_);
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
      if (size_ > sizeof plain_) std::free(outside_);
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
  void* place = v.plain_;
  if (size > sizeof v.plain_) {
    place = v.outside_ = std::malloc(size);
    if (!place) throw std::bad_alloc();
  }
  std::memcpy(place, bytes, size);
  v.kind_ = Kind::Plain;
  v.size_ = static_cast<uint32_t>(size);
  v.encoding_ = encoding;
  v.key_ = key;
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
  const bool isOther = kind_ == Kind::Object && object_;
  raiseMismatch(where, index, wanted, isOther ? std::string_view() : kindName());
}

namespace {

template <class T> T read(const void* address) {
  T value;
  std::memcpy(&value, address, sizeof value);
  return value;
}

char leadOf(std::string_view type) {
  while (type.size() > 1 && std::string_view("rnNoORV").find(type[0]) != type.npos) type.remove_prefix(1);
  return type.empty() ? 'v' : type[0];
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
  const char code = leadOf(type);
  if (code == 'v') return {};
  if (type == "@?") {
    struct TwoWords {
      void* callable;
      const BlockTable* table;
    };
    const auto block = read<TwoWords>(address);
    return ofBlock(block.callable, block.table);
  }
  if (code == '@' || code == '#') return ofObject(read<NSObject*>(address));
  if (code == '*') return ofCString(read<const char*>(address));
  if (code == 'f') return ofReal(static_cast<double>(read<float>(address)), encoding.data());
  if (code == 'd') return ofReal(read<double>(address), encoding.data());
  if (std::string_view("cCsSiIlLqQB").find(code) != std::string_view::npos) {
    return ofInteger(readInteger(code, address), encoding.data());
  }
  return ofPlain(address, sizeOfType(type), 0, encoding.data());
}

void Value::toMemory(std::string_view encoding, void* address) const {
  const std::string_view type = firstType(encoding).type;
  const size_t size = sizeOfType(type);
  std::memset(address, 0, size);
  switch (kind_) {
    case Kind::Nothing: return;
    case Kind::Integer:
    case Kind::Real: {
      const char code = leadOf(type);
      const double real = kind_ == Kind::Real ? real_ : static_cast<double>(integer_);
      const float single = static_cast<float>(real);
      const int64_t integer = kind_ == Kind::Real ? static_cast<int64_t>(real_) : integer_;
      if (code == 'd') std::memcpy(address, &real, sizeof real);
      else if (code == 'f') std::memcpy(address, &single, sizeof single);
      else if (size <= sizeof integer) std::memcpy(address, &integer, size);  // little end first
      return;
    }
    case Kind::Object: std::memcpy(address, &object_, sizeof object_); return;
    case Kind::CString: std::memcpy(address, &text_, sizeof text_); return;
    case Kind::Block: std::memcpy(address, &block_, 2 * sizeof(void*)); return;
    case Kind::Plain: std::memcpy(address, bytes(), size < size_ ? size : size_); return;
  }
}

}  // namespace quoll::inline v1::detail
