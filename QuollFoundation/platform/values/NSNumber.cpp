// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/NSNumber.h"

#include <cmath>
#include <cstring>
#include <string>
#include <utility>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/ImmortalInternal.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/DecimalsInternal.h"

namespace quoll::inline v1 {

Class* NSNumber::classObject() {
  static Class* const cls =
      ClassBuilder<NSNumber>("NSNumber")
          .classMethod<&NSNumber::numberWithChar_ofClass>("numberWithChar:"_sel)
          .classMethod<&NSNumber::numberWithUnsignedChar_ofClass>("numberWithUnsignedChar:"_sel)
          .classMethod<&NSNumber::numberWithShort_ofClass>("numberWithShort:"_sel)
          .classMethod<&NSNumber::numberWithUnsignedShort_ofClass>("numberWithUnsignedShort:"_sel)
          .classMethod<&NSNumber::numberWithInt_ofClass>("numberWithInt:"_sel)
          .classMethod<&NSNumber::numberWithUnsignedInt_ofClass>("numberWithUnsignedInt:"_sel)
          .classMethod<&NSNumber::numberWithLong_ofClass>("numberWithLong:"_sel)
          .classMethod<&NSNumber::numberWithUnsignedLong_ofClass>("numberWithUnsignedLong:"_sel)
          .classMethod<&NSNumber::numberWithLongLong_ofClass>("numberWithLongLong:"_sel)
          .classMethod<&NSNumber::numberWithUnsignedLongLong_ofClass>("numberWithUnsignedLongLong:"_sel)
          .classMethod<&NSNumber::numberWithFloat_ofClass>("numberWithFloat:"_sel)
          .classMethod<&NSNumber::numberWithDouble_ofClass>("numberWithDouble:"_sel)
          .classMethod<&NSNumber::numberWithBool_ofClass>("numberWithBool:"_sel)
          .classMethod<&NSNumber::numberWithInteger_ofClass>("numberWithInteger:"_sel)
          .classMethod<&NSNumber::numberWithUnsignedInteger_ofClass>("numberWithUnsignedInteger:"_sel)
          .initializer<&NSNumber::initWithChar_ofClass>("initWithChar:"_sel)
          .initializer<&NSNumber::initWithUnsignedChar_ofClass>("initWithUnsignedChar:"_sel)
          .initializer<&NSNumber::initWithShort_ofClass>("initWithShort:"_sel)
          .initializer<&NSNumber::initWithUnsignedShort_ofClass>("initWithUnsignedShort:"_sel)
          .initializer<&NSNumber::initWithInt_ofClass>("initWithInt:"_sel)
          .initializer<&NSNumber::initWithUnsignedInt_ofClass>("initWithUnsignedInt:"_sel)
          .initializer<&NSNumber::initWithLong_ofClass>("initWithLong:"_sel)
          .initializer<&NSNumber::initWithUnsignedLong_ofClass>("initWithUnsignedLong:"_sel)
          .initializer<&NSNumber::initWithLongLong_ofClass>("initWithLongLong:"_sel)
          .initializer<&NSNumber::initWithUnsignedLongLong_ofClass>("initWithUnsignedLongLong:"_sel)
          .initializer<&NSNumber::initWithFloat_ofClass>("initWithFloat:"_sel)
          .initializer<&NSNumber::initWithDouble_ofClass>("initWithDouble:"_sel)
          .initializer<&NSNumber::initWithBool_ofClass>("initWithBool:"_sel)
          .initializer<&NSNumber::initWithInteger_ofClass>("initWithInteger:"_sel)
          .initializer<&NSNumber::initWithUnsignedInteger_ofClass>("initWithUnsignedInteger:"_sel)
          .initializer<&NSNumber::initWithBytes_objCType_ofClass>("initWithBytes:objCType:"_sel)
          .method<&NSNumber::charValue>("charValue"_sel)
          .method<&NSNumber::unsignedCharValue>("unsignedCharValue"_sel)
          .method<&NSNumber::shortValue>("shortValue"_sel)
          .method<&NSNumber::unsignedShortValue>("unsignedShortValue"_sel)
          .method<&NSNumber::intValue>("intValue"_sel)
          .method<&NSNumber::unsignedIntValue>("unsignedIntValue"_sel)
          .method<&NSNumber::longValue>("longValue"_sel)
          .method<&NSNumber::unsignedLongValue>("unsignedLongValue"_sel)
          .method<&NSNumber::longLongValue>("longLongValue"_sel)
          .method<&NSNumber::unsignedLongLongValue>("unsignedLongLongValue"_sel)
          .method<&NSNumber::floatValue>("floatValue"_sel)
          .method<&NSNumber::doubleValue>("doubleValue"_sel)
          .method<&NSNumber::boolValue>("boolValue"_sel)
          .method<&NSNumber::integerValue>("integerValue"_sel)
          .method<&NSNumber::unsignedIntegerValue>("unsignedIntegerValue"_sel)
          .method<&NSNumber::stringValue>("stringValue"_sel)
          .method<&NSNumber::compare>("compare:"_sel)
          .method<&NSNumber::isEqualToNumber>("isEqualToNumber:"_sel)
          .build();
  return cls;
}

namespace detail {

const char* numberEncoding(char letter) {
  struct Texts {
    char of[256][2]{};
  };
  static constexpr Texts texts = [] {
    Texts all;
    for (const char known : std::string_view("cCsSiIlLqQfdB")) all.of[static_cast<unsigned char>(known)][0] = known;
    return all;
  }();
  const char* text = texts.of[static_cast<unsigned char>(letter)];
  return *text ? text : nullptr;
}

namespace {

// The numbers that programs make most, ready made.
constexpr int64_t readyCount = 16;
template <char letter> constexpr char readyEncoding[] = {letter, '\0'};
template <char letter, class Values> struct ReadyNumbers;
template <char letter, int64_t... values> struct ReadyNumbers<letter, std::integer_sequence<int64_t, values...>> {
  Immortal<NSNumber> numbers[sizeof...(values)] = {Immortal<NSNumber>(values, readyEncoding<letter>)...};
};
template <char letter> constexpr ReadyNumbers<letter, std::make_integer_sequence<int64_t, readyCount>> readyNumbers{};

template <char letter> NSNumber* ready(int64_t value) { return readyNumbers<letter>.numbers[value].get(); }

NSNumber* readyNumber(int64_t value, char letter) {
  switch (letter) {
    case 'c': return ready<'c'>(value);
    case 'i': return ready<'i'>(value);
    case 'q': return ready<'q'>(value);
    case 'Q': return ready<'Q'>(value);
    default: return nullptr;
  }
}

}  // namespace

Ref<NSNumber> makeNumber(int64_t value, const char* encoding) {
  if (static_cast<uint64_t>(value) < readyCount) {
    if (NSNumber* number = readyNumber(value, *encoding)) return number;
  }
  return make<NSNumber>(value, encoding);
}
Ref<NSNumber> makeNumber(double value, const char* encoding) { return make<NSNumber>(value, encoding); }

}  // namespace detail

namespace {

template <class T> using Stored = std::conditional_t<std::is_floating_point_v<T>, double, int64_t>;

}  // namespace

template <class T> Ref<NSNumber> NSNumber::holding(T value, const char* encoding, Class* cls) {
  const auto stored = static_cast<Stored<T>>(value);
  if (cls == NSNumber::classObject()) return detail::makeNumber(stored, encoding);
  Ref<NSNumber> number = create<NSNumber>(cls);
  number->encoding_ = encoding;
  if constexpr (std::is_floating_point_v<T>) number->real_ = stored;
  else number->integer_ = stored;
  return number;
}

template <class T> Ref<NSNumber> NSNumber::by(Selector initializer, T value, Class* cls) {
  if (cls == NSNumber::classObject()) return holding(value, detail::encodingOf<T>.text, cls);
  return made<NSNumber>(cls, initializer, value);
}

Ref<NSNumber> NSNumber::numberWithChar_ofClass(int8_t value, Class* cls) { return by("initWithChar:"_sel, value, cls); }
Ref<NSNumber> NSNumber::initWithChar_ofClass(int8_t value, Class* cls) {
  return holding(value, detail::encodingOf<int8_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithUnsignedChar_ofClass(uint8_t value, Class* cls) {
  return by("initWithUnsignedChar:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithUnsignedChar_ofClass(uint8_t value, Class* cls) {
  return holding(value, detail::encodingOf<uint8_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithShort_ofClass(int16_t value, Class* cls) {
  return by("initWithShort:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithShort_ofClass(int16_t value, Class* cls) {
  return holding(value, detail::encodingOf<int16_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithUnsignedShort_ofClass(uint16_t value, Class* cls) {
  return by("initWithUnsignedShort:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithUnsignedShort_ofClass(uint16_t value, Class* cls) {
  return holding(value, detail::encodingOf<uint16_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithInt_ofClass(int32_t value, Class* cls) { return by("initWithInt:"_sel, value, cls); }
Ref<NSNumber> NSNumber::initWithInt_ofClass(int32_t value, Class* cls) {
  return holding(value, detail::encodingOf<int32_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithUnsignedInt_ofClass(uint32_t value, Class* cls) {
  return by("initWithUnsignedInt:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithUnsignedInt_ofClass(uint32_t value, Class* cls) {
  return holding(value, detail::encodingOf<uint32_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithLong_ofClass(int64_t value, Class* cls) {
  return by("initWithLong:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithLong_ofClass(int64_t value, Class* cls) {
  return holding(value, detail::encodingOf<int64_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithUnsignedLong_ofClass(uint64_t value, Class* cls) {
  return by("initWithUnsignedLong:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithUnsignedLong_ofClass(uint64_t value, Class* cls) {
  return holding(value, detail::encodingOf<uint64_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithLongLong_ofClass(int64_t value, Class* cls) {
  return by("initWithLongLong:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithLongLong_ofClass(int64_t value, Class* cls) {
  return holding(value, detail::encodingOf<int64_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithUnsignedLongLong_ofClass(uint64_t value, Class* cls) {
  return by("initWithUnsignedLongLong:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithUnsignedLongLong_ofClass(uint64_t value, Class* cls) {
  return holding(value, detail::encodingOf<uint64_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithFloat_ofClass(float value, Class* cls) {
  return by("initWithFloat:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithFloat_ofClass(float value, Class* cls) {
  return holding(value, detail::encodingOf<float>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithDouble_ofClass(double value, Class* cls) {
  return by("initWithDouble:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithDouble_ofClass(double value, Class* cls) {
  return holding(value, detail::encodingOf<double>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithBool_ofClass(bool value, Class* cls) { return by("initWithBool:"_sel, value, cls); }
Ref<NSNumber> NSNumber::initWithBool_ofClass(bool value, Class* cls) {
  return holding(value, detail::encodingOf<bool>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithInteger_ofClass(int64_t value, Class* cls) {
  return by("initWithInteger:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithInteger_ofClass(int64_t value, Class* cls) {
  return holding(value, detail::encodingOf<int64_t>.text, cls);
}
Ref<NSNumber> NSNumber::numberWithUnsignedInteger_ofClass(uint64_t value, Class* cls) {
  return by("initWithUnsignedInteger:"_sel, value, cls);
}
Ref<NSNumber> NSNumber::initWithUnsignedInteger_ofClass(uint64_t value, Class* cls) {
  return holding(value, detail::encodingOf<uint64_t>.text, cls);
}

Ref<NSNumber> NSNumber::initWithBytes_objCType_ofClass(const void* bytes, const char* type, Class* cls) {
  const char* encoding = type && *type && !type[1] ? detail::numberEncoding(*type) : nullptr;
  if (!encoding) {
    raise(NSInvalidArgumentException, detail::methodName(cls, "initWithBytes:objCType:") + ": \"" +
                                          std::string(type ? type : "(null)") + "\" is not the type of a number");
  }
  if (!bytes) detail::raiseNilArgument(cls, "initWithBytes:objCType:");
  const detail::Value value = detail::Value::fromMemory(encoding, bytes);
  if (value.kind() == detail::Value::Kind::Real) return holding(value.real(), encoding, cls);
  return holding(value.integer(), encoding, cls);
}

double NSNumber::doubleValue() const {
  if (isReal()) return real_;
  return exceedsSigned() ? static_cast<double>(static_cast<uint64_t>(integer_)) : static_cast<double>(integer_);
}
float NSNumber::floatValue() const {
  if (isReal()) return static_cast<float>(real_);
  return exceedsSigned() ? static_cast<float>(static_cast<uint64_t>(integer_)) : static_cast<float>(integer_);
}

void NSNumber::getValue(void* buffer) const {
  if (!buffer) detail::raiseNilArgument(this, "getValue:");
  const auto value = isReal() ? detail::Value::ofReal(real_, encoding_) : detail::Value::ofInteger(integer_, encoding_);
  value.toMemory(encoding_, buffer);
}

namespace {

/// An integer with a double, exactly: what the double's whole part leaves open, its fraction decides.
template <class T> std::partial_ordering orderIntegerAndReal(T integer, double real) {
  if (std::isnan(real)) return std::partial_ordering::unordered;
  if (real >= detail::firstAbove<T>) return std::partial_ordering::less;
  if (real < static_cast<double>(std::numeric_limits<T>::min())) return std::partial_ordering::greater;
  const double whole = std::trunc(real);
  const auto order = integer <=> static_cast<T>(whole);
  return order != 0 ? std::partial_ordering(order) : std::partial_ordering(0.0 <=> (real - whole));
}

std::partial_ordering reversed(std::partial_ordering order) { return 0 <=> order; }

}  // namespace

std::partial_ordering NSNumber::order(const NSNumber* other) const {
  if (isReal()) return other->isReal() ? real_ <=> other->real_ : reversed(other->order(this));
  if (other->isReal()) {
    return exceedsSigned() ? orderIntegerAndReal(static_cast<uint64_t>(integer_), other->real_)
                           : orderIntegerAndReal(integer_, other->real_);
  }
  if (exceedsSigned() != other->exceedsSigned()) {
    return exceedsSigned() ? std::partial_ordering::greater : std::partial_ordering::less;
  }
  return integer_ <=> other->integer_;  // both above the signed ones: their order is the same
}

NSComparisonResult NSNumber::compare(const NSNumber* other) const {
  if (!other) return NSOrderedDescending;
  const std::partial_ordering order = this->order(other);
  return order < 0 ? NSOrderedAscending : order > 0 ? NSOrderedDescending : NSOrderedSame;
}
bool NSNumber::isEqualToNumber(const NSNumber* other) const { return other && order(other) == 0; }
bool NSNumber::isEqual(const NSObject* other) const { return isEqualToNumber(as<NSNumber>(other)); }

uint64_t NSNumber::hash() const {
  uint64_t bits = static_cast<uint64_t>(integer_);
  if (isReal()) {
    if (real_ == std::trunc(real_) && real_ >= -0x1p63 && real_ < 0x1p64) {  // as the integer that it equals
      bits = real_ < 0x1p63 ? static_cast<uint64_t>(static_cast<int64_t>(real_)) : static_cast<uint64_t>(real_);
    } else std::memcpy(&bits, &real_, sizeof bits);
  }
  bits *= 0x9e3779b97f4a7c15;
  return bits ^ bits >> 32;
}

Ref<NSString> NSNumber::stringValue() const {
  if (*encoding_ == 'f') return NSString::stringWithUTF8(detail::Decimals(static_cast<float>(real_)).text());
  if (*encoding_ == 'd') return NSString::stringWithUTF8(detail::Decimals(real_).text());
  if (exceedsSigned()) return NSString::stringWithUTF8(std::to_string(static_cast<uint64_t>(integer_)));
  return NSString::stringWithUTF8(std::to_string(integer_));
}
Ref<NSString> NSNumber::description() const { return stringValue(); }

}  // namespace quoll::inline v1
