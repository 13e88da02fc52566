// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/Boxing.h"

#include <cmath>
#include <string>

#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Value.h"

namespace quoll::inline v1::detail {

namespace {

std::string classOf(const NSObject* object) { return object ? std::string(object->isa()->name()) : "null"; }

[[noreturn]] void refuseUnboxing(const NSObject* object, std::string_view wanted) {
  raise(NSInvalidArgumentException, classOf(object) + " can't be unboxed as " + std::string(wanted));
}
[[noreturn]] void refuseNumber(const NSNumber* number, std::string_view wanted) {
  raise(NSInvalidArgumentException, classOf(number) + " " + number->stringValue()->utf8() +
                                        " doesn't fit into a number of type " + std::string(wanted));
}

const NSNumber* numberIn(const NSObject* object, std::string_view wanted) {
  const auto* number = as<NSNumber>(object);
  if (!number) refuseUnboxing(object, wanted);
  return number;
}

}  // namespace

Ref<NSString> boxUTF8(std::string_view text) {
  Ref<NSString> string = NSString::stringWithUTF8(text);
  if (!string) raise(NSInvalidArgumentException, "the text to box is no well-formed UTF-8");
  return string;
}

int64_t unboxSigned(const NSObject* object, int64_t least, int64_t most, std::string_view wanted) {
  const NSNumber* number = numberIn(object, wanted);
  const double real = number->isReal() ? number->doubleValue() : 0;
  const int64_t value = number->longLongValue();
  const bool inSixtyFour = !number->exceedsSigned() && real >= -0x1p63 && real < 0x1p63;
  if (!inSixtyFour || value < least || value > most) refuseNumber(number, wanted);
  return value;
}

uint64_t unboxUnsigned(const NSObject* object, uint64_t most, std::string_view wanted) {
  const NSNumber* number = numberIn(object, wanted);
  const double real = number->isReal() ? number->doubleValue() : 0;
  const uint64_t value = number->unsignedLongLongValue();
  const bool isNegative = !number->isReal() && number->longLongValue() < 0 && !number->exceedsSigned();
  if (isNegative || !(real > -1 && real < 0x1p64) || value > most) refuseNumber(number, wanted);
  return value;
}

double unboxReal(const NSObject* object, double most, std::string_view wanted) {
  const NSNumber* number = numberIn(object, wanted);
  const double real = number->doubleValue();
  if (std::isfinite(real) && std::fabs(real) > most) refuseNumber(number, wanted);
  return real;
}

bool unboxBool(const NSObject* object) { return numberIn(object, "bool")->boolValue(); }

void unboxStruct(const NSObject* object, std::string_view type, size_t size, void* out) {
  const auto* value = as<NSValue>(object);
  if (!value) refuseUnboxing(object, type);
  if (type != value->objCType()) {
    raise(NSInvalidArgumentException,
          classOf(object) + " of type " + value->objCType() + " can't be unboxed as " + std::string(type));
  }
  value->getValue_size(out, size);
}

const NSString* unboxString(const NSObject* object) {
  const auto* string = as<NSString>(object);
  if (!string) refuseUnboxing(object, "a string");
  return string;
}

int64_t unboxForParameter(const NSNumber* number, char type) {
  const bool isSmall = !number->isReal() && static_cast<uint64_t>(number->longLongValue()) <= INT32_MAX;
  if (isSmall && (type == 'i' || type == 'q' || type == 'Q')) return number->longLongValue();
  const std::string_view wanted(&type, 1);
  switch (type) {
    case 'C': return static_cast<int64_t>(unboxUnsigned(number, UINT8_MAX, wanted));
    case 's': return unboxSigned(number, INT16_MIN, INT16_MAX, wanted);
    case 'S': return static_cast<int64_t>(unboxUnsigned(number, UINT16_MAX, wanted));
    case 'i': return unboxSigned(number, INT32_MIN, INT32_MAX, wanted);
    case 'I': return static_cast<int64_t>(unboxUnsigned(number, UINT32_MAX, wanted));
    case 'Q':
    case 'L': return static_cast<int64_t>(unboxUnsigned(number, UINT64_MAX, wanted));
    default: return unboxSigned(number, INT64_MIN, INT64_MAX, wanted);
  }
}

Ref<NSObject> Value::boxed() const {
  switch (kind_) {
    case Kind::Nothing: return nullptr;
    case Kind::Integer: return makeNumber(integer_, numberEncoding(*encoding_));
    case Kind::Real: return makeNumber(real_, numberEncoding(*encoding_));
    case Kind::Object: return object_;
    case Kind::CString: return boxUTF8(text_);
    case Kind::Plain: return makeValue(bytes(), size_, firstType(encoding_).type);
    case Kind::Block: break;
  }
  if (!block_.table) return nullptr;
  Value kept = *this;
  kept.keep();
  return kept.block_.owner;
}

Value Value::unboxed(NSObject* object, std::string_view encoding) {
  const std::string_view type = firstType(encoding).type;
  const char lead = type[type.size() > 1 && type[0] == 'r'];
  if (type == "@?" && object) refuseUnboxing(object, "a block");  // an object doesn't tell its block's signature
  if (lead == '@' || lead == '#') return ofObject(object);
  if (lead == '*') return object ? ofCString(unboxString(object)->UTF8String()) : Value::ofObject(nullptr);
  if (lead == 'f' || lead == 'd') {
    const double most = lead == 'f' ? static_cast<double>(std::numeric_limits<float>::max()) : HUGE_VAL;
    return ofReal(unboxReal(object, most, type), type.data());
  }
  if (numberEncoding(lead)) return ofInteger(unboxForParameter(numberIn(object, type), lead), type.data());
  const size_t size = sizeOfType(type);
  unsigned char here[64];
  std::string elsewhere;
  if (size > sizeof here) elsewhere.resize(size);
  void* bytes = size > sizeof here ? static_cast<void*>(elsewhere.data()) : here;
  unboxStruct(object, type, size, bytes);
  return ofPlain(bytes, size, 0, type.data());
}

}  // namespace quoll::inline v1::detail
