// SPDX-License-Identifier: MIT
#include <locale.h>
#include <unicode/ustring.h>

#include <charconv>
#include <climits>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>

#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/FormatsInternal.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/platform/strings/UTF8Internal.h"
#include "QuollFoundation/platform/strings/UnitsInternal.h"

namespace quoll::inline v1 {

namespace {

using detail::ProxyText;
using Kind = FormatArgument::Kind;

/// A text that grows: bytes as long as all of it is ASCII, then UTF-16.
class GrowingText {
 public:
  void append(std::string_view ascii) {
    if (!isWide_) ascii_.append(ascii);
    else detail::widen(ascii, grown(ascii.size()));
  }
  void append(std::u16string_view units) {
    if (!isWide_ && !detail::isASCII(units)) widen();
    if (isWide_) units_.append(units);
    else {
      const size_t old = ascii_.size();
      ascii_.resize(old + units.size());
      detail::narrow(units, ascii_.data() + old);
    }
  }
  void fill(char unit, size_t count) {
    if (isWide_) units_.append(count, static_cast<char16_t>(unit));
    else ascii_.append(count, unit);
  }
  Ref<NSString> string() const { return isWide_ ? detail::Text::copied(units_) : detail::Text::copied(ascii_); }

 private:
  char16_t* grown(size_t more) {
    units_.resize(units_.size() + more);
    return units_.data() + units_.size() - more;
  }
  void widen() {
    isWide_ = true;
    detail::widen(ascii_, grown(ascii_.size()));
  }

  bool isWide_ = false;
  std::string ascii_;
  std::u16string units_;
};

/// A width or a precision.
struct Measure {
  enum class Source : uint8_t { Absent, Written, Argument };
  Source source = Source::Absent;
  int value = 0;     // as written
  int position = 0;  // of the argument; 0: the next one
};

enum class Length : uint8_t { None, Char, Short, Long };  // all lengths of 64 bits are one

struct Placeholder {
  size_t start = 0, end = 0;  // in the format
  int position = 0;           // of its argument, from 1; 0: the next one
  bool left = false, plus = false, space = false, alternate = false, zero = false;
  Measure width, precision;
  bool hasLength = false;
  Length length = Length::None;
  char16_t conversion = 0;

  bool isBare() const {
    return !position && !left && !plus && !space && !alternate && !zero && !hasLength &&
           width.source == Measure::Source::Absent && precision.source == Measure::Source::Absent;
  }
};

/// One formatting under way: what its messages name.
struct Call {
  std::string_view operation;
  const NSString* format;
  std::span<const FormatArgument> arguments;
  ProxyText proxies;

  [[noreturn]] void refuse(const Placeholder& at, const std::string& problem) const {
    const std::string spelled = format->substringWithRange({at.start, at.end - at.start})->utf8();
    raise(NSInvalidArgumentException, std::string(operation) + ": " + spelled + " at index " +
                                          std::to_string(at.start) + " of \"" + format->utf8() + "\" " + problem);
  }
};

/// Reads the placeholders of a format.
template <class Unit> class PlaceholderReader {
 public:
  PlaceholderReader(const Call& call, std::basic_string_view<Unit> format) : call_(call), format_(format) {}

  /// The placeholder that starts at a percent sign.
  Placeholder read(size_t start) {
    at_ = start + 1;
    result_ = {};
    result_.start = start;
    result_.position = readPosition();
    readFlags();
    result_.width = readMeasure();
    if (take('.')) {
      result_.precision = readMeasure();
      if (result_.precision.source == Measure::Source::Absent) result_.precision.source = Measure::Source::Written;
    }
    readLength();
    result_.conversion = unit();
    if (isAtEnd()) refuse("is unfinished");
    ++at_;
    if (U16_IS_LEAD(result_.conversion) && !isAtEnd()) ++at_;  // the message shows a whole character
    result_.end = at_;
    return result_;
  }

 private:
  bool isAtEnd() const { return at_ == format_.size(); }
  char16_t unit() const { return isAtEnd() ? u'\0' : static_cast<char16_t>(format_[at_]); }
  bool isDigit() const { return unit() >= '0' && unit() <= '9'; }
  bool take(char wanted) {
    if (isAtEnd() || unit() != static_cast<char16_t>(wanted)) return false;
    ++at_;
    return true;
  }
  [[noreturn]] void refuse(const std::string& problem) {
    result_.end = at_;
    call_.refuse(result_, problem);
  }

  int readNumber() {
    int64_t number = 0;
    for (; isDigit(); ++at_) {
      number = number * 10 + (unit() - '0');
      if (number > INT_MAX) refuse("has a number that is too large");
    }
    return static_cast<int>(number);
  }

  /// `12$`, else 0 and nothing read.
  int readPosition() {
    const size_t start = at_;
    if (!isDigit()) return 0;
    const int position = readNumber();
    if (!take('$')) {
      at_ = start;
      return 0;
    }
    if (position == 0) refuse("counts arguments from 0; the first is 1");
    return position;
  }

  void readFlags() {
    for (;; ++at_) {
      switch (unit()) {
        case '-': result_.left = true; break;
        case '+': result_.plus = true; break;
        case ' ': result_.space = true; break;
        case '#': result_.alternate = true; break;
        case '0': result_.zero = true; break;
        case '\'': break;  // groups of digits are a matter of locale; here there are none
        default: return;
      }
    }
  }

  Measure readMeasure() {
    if (take('*')) return {Measure::Source::Argument, 0, readPosition()};
    if (isDigit()) return {Measure::Source::Written, readNumber(), 0};
    return {};
  }

  void readLength() {
    result_.hasLength = true;
    if (take('h')) result_.length = take('h') ? Length::Char : Length::Short;
    else if (take('l')) {
      take('l');
      result_.length = Length::Long;
    } else if (take('z') || take('q') || take('j') || take('t')) result_.length = Length::Long;
    else result_.hasLength = false;
  }

  const Call& call_;
  std::basic_string_view<Unit> format_;
  size_t at_ = 0;
  Placeholder result_;
};

/// The C library's number formatting, in the C locale whatever the program chose.
class PlainLocale {
 public:
  PlainLocale() : old_(uselocale(plain())) {}
  ~PlainLocale() { uselocale(old_); }
  PlainLocale(const PlainLocale&) = delete;
  PlainLocale& operator=(const PlainLocale&) = delete;

 private:
  static locale_t plain() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
  }
  locale_t old_;
};

std::string_view nameOf(Kind kind) {
  switch (kind) {
    case Kind::Integer: return "an integer";
    case Kind::Real: return "a floating-point number";
    case Kind::Object: return "an object";
    case Kind::CString: return "a C string";
    case Kind::Pointer: return "an address";
    case Kind::Nothing: break;
  }
  return "nothing";
}

/// The first `limit` units, without half of a surrogate pair.
std::string_view firstUnits(std::string_view text, size_t limit) { return text.substr(0, limit); }
std::u16string_view firstUnits(std::u16string_view text, size_t limit) {
  if (limit >= text.size()) return text;
  const bool splitsPair = limit > 0 && U16_IS_LEAD(text[limit - 1]) && U16_IS_TRAIL(text[limit]);
  return text.substr(0, splitsPair ? limit - 1 : limit);
}

/// UTF-8 with U+FFFD for each ill-formed piece.
std::u16string decodedLossily(std::string_view bytes) {
  if (bytes.size() > INT_MAX) bytes = bytes.substr(0, INT_MAX);
  std::u16string units(bytes.size(), 0);
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(units.data(), static_cast<int32_t>(units.size()), &length, bytes.data(),
                       static_cast<int32_t>(bytes.size()), 0xFFFD, nullptr, &status);
  units.resize(static_cast<size_t>(length));
  return units;
}

/// How many of `bytes` a precision leaves when it cuts a character: those before it.
size_t lengthBeforeCutCharacter(std::string_view bytes) {
  size_t lead = bytes.size();
  for (int back = 0; back < 3 && lead > 0; ++back) {
    const auto byte = static_cast<unsigned char>(bytes[--lead]);
    if (byte < 0x80) break;
    if (byte >= 0xC2) {
      const size_t whole = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
      return bytes.size() - lead < whole ? lead : bytes.size();
    }
  }
  return bytes.size();
}

/// Writes one text from one list of arguments.
class Writer {
 public:
  explicit Writer(const Call& call) : call_(call) {}

  Ref<NSString> text(const NSString* format) {
    format->visit([&](auto units) { writeAll(units); });
    return out_.string();
  }

 private:
  /// A placeholder with its width and precision settled.
  struct Item {
    const Placeholder& placeholder;
    bool left;
    int width;
    int precision;  // -1: none
    char conversion() const { return static_cast<char>(placeholder.conversion); }
    size_t limit() const { return precision < 0 ? SIZE_MAX : static_cast<size_t>(precision); }
  };

  template <class Unit> void writeAll(std::basic_string_view<Unit> format) {
    PlaceholderReader<Unit> reader(call_, format);
    for (size_t at = 0;;) {
      const size_t percent = format.find(Unit('%'), at);
      if (percent != at) out_.append(format.substr(at, percent - at));
      if (percent == format.npos) return;
      const Placeholder placeholder = reader.read(percent);
      write(placeholder);
      at = placeholder.end;
    }
  }

  void write(const Placeholder& placeholder) {
    if (placeholder.conversion == u'%') {
      if (!placeholder.isBare()) call_.refuse(placeholder, "is unknown");
      return out_.fill('%', 1);
    }
    const Item item = settled(placeholder);
    switch (placeholder.conversion) {
      case 'd':
      case 'i':
      case 'u':
      case 'x':
      case 'X':
      case 'o': return writeInteger(item);
      case 'f':
      case 'F':
      case 'e':
      case 'E':
      case 'g':
      case 'G':
      case 'a':
      case 'A': return writeReal(item);
      case '@': return writeObject(item);
      case 's': return writeCString(item);
      case 'p': return writeAddress(item);
      case 'c': return writeUnit(item, 0xFF);
      case 'C': return writeUnit(item, 0xFFFF);
      default: call_.refuse(placeholder, "is unknown");
    }
  }

  // Arguments

  const FormatArgument& argument(const Placeholder& placeholder, int position) {
    bool& mine = position ? usesPositions_ : usesOrder_;
    mine = true;
    if (usesPositions_ && usesOrder_) call_.refuse(placeholder, "mixes numbered arguments with others");
    last_ = position ? static_cast<size_t>(position) : ++taken_;
    if (last_ > call_.arguments.size()) {
      call_.refuse(placeholder,
                   "needs argument " + std::to_string(last_) + "; there are " + std::to_string(call_.arguments.size()));
    }
    return call_.arguments[last_ - 1];
  }

  [[noreturn]] void refuseKind(const Placeholder& placeholder, const FormatArgument& given, Kind wanted) {
    call_.refuse(placeholder, "takes " + std::string(nameOf(wanted)) + "; argument " + std::to_string(last_) + " is " +
                                  std::string(nameOf(given.kind)));
  }
  const FormatArgument& argument(const Item& item, Kind kind) {
    const FormatArgument& given = argument(item.placeholder, item.placeholder.position);
    if (given.kind != kind) refuseKind(item.placeholder, given, kind);
    return given;
  }

  /// Sign-extended, and of no more bytes than the placeholder has: nothing is cut off unseen.
  uint64_t integer(const Placeholder& placeholder, int position, unsigned size) {
    const FormatArgument& given = argument(placeholder, position);
    if (given.kind != Kind::Integer) refuseKind(placeholder, given, Kind::Integer);
    if (given.size > size) {
      call_.refuse(placeholder, "takes an integer of " + std::to_string(8 * size) + " bits; argument " +
                                    std::to_string(last_) + " has " + std::to_string(8 * given.size));
    }
    return given.integer;
  }

  /// The value of a width or precision, else `absent`.
  int64_t value(const Placeholder& placeholder, const Measure& measure, int absent) {
    if (measure.source == Measure::Source::Absent) return absent;
    if (measure.source == Measure::Source::Written) return measure.value;
    return static_cast<int32_t>(integer(placeholder, measure.position, sizeof(int)));
  }

  Item settled(const Placeholder& placeholder) {
    if (placeholder.hasLength) checkLength(placeholder);
    const int64_t width = value(placeholder, placeholder.width, 0);
    if (width < -INT_MAX) call_.refuse(placeholder, "has a width that is too large");
    const int64_t precision = value(placeholder, placeholder.precision, -1);
    return {placeholder, placeholder.left || width < 0, static_cast<int>(width < 0 ? -width : width),
            static_cast<int>(precision < 0 ? -1 : precision)};
  }

  /// Every length goes with an integer; a floating-point number takes `l`, which changes nothing.
  void checkLength(const Placeholder& placeholder) {
    constexpr std::u16string_view integers = u"diuxXo", reals = u"fFeEgGaA";
    if (integers.find(placeholder.conversion) != integers.npos) return;
    if (placeholder.length == Length::Long && reals.find(placeholder.conversion) != reals.npos) return;
    call_.refuse(placeholder, "is unknown");
  }

  // Numbers

  void writeInteger(const Item& item) {
    const Length length = item.placeholder.length;
    const uint64_t given = integer(item.placeholder, item.placeholder.position, length == Length::Long ? 8 : 4);
    if (item.conversion() == 'd' || item.conversion() == 'i') {
      return writeNumber<int64_t>(item, length == Length::Char    ? static_cast<int8_t>(given)
                                        : length == Length::Short ? static_cast<int16_t>(given)
                                        : length == Length::None  ? static_cast<int32_t>(given)
                                                                  : static_cast<int64_t>(given));
    }
    writeNumber<uint64_t>(item, length == Length::Char    ? static_cast<uint8_t>(given)
                                : length == Length::Short ? static_cast<uint16_t>(given)
                                : length == Length::None  ? static_cast<uint32_t>(given)
                                                          : given);
  }

  template <class Number> void writeNumber(const Item& item, Number number) {
    const bool isDecimal = item.conversion() == 'd' || item.conversion() == 'i' || item.conversion() == 'u';
    if (isDecimal && isPlain(item)) {
      char digits[24];
      return out_.append(std::string_view(digits, std::to_chars(digits, std::end(digits), number).ptr));
    }
    print(item, "ll", static_cast<std::conditional_t<std::is_signed_v<Number>, long long, unsigned long long>>(number));
  }

  static bool isPlain(const Item& item) {
    const Placeholder& p = item.placeholder;
    return item.width == 0 && item.precision < 0 && !p.plus && !p.space;
  }

  void writeReal(const Item& item) {
    const double number = argument(item, Kind::Real).real;
    const PlainLocale plain;
    print(item, "", number);
  }

  /// Lets the C library write a number.
  template <class Number> void print(const Item& item, std::string_view length, Number number) {
    char format[16] = "%";
    char* end = format + 1;
    const Placeholder& p = item.placeholder;
    if (item.left) *end++ = '-';
    if (p.plus) *end++ = '+';
    if (p.space) *end++ = ' ';
    if (p.alternate) *end++ = '#';
    if (p.zero) *end++ = '0';
    for (const char c : std::string_view("*.*")) *end++ = c;
    for (const char c : length) *end++ = c;
    *end++ = item.conversion();
    char text[128];
    const int size = std::snprintf(text, sizeof text, format, item.width, item.precision, number);
    if (size < 0) call_.refuse(p, "makes a number that is too long");
    const auto count = static_cast<size_t>(size);
    if (count < sizeof text) return out_.append(std::string_view(text, count));
    std::string longer(count + 1, 0);
    std::snprintf(longer.data(), longer.size(), format, item.width, item.precision, number);
    out_.append(std::string_view(longer.data(), count));
  }

  // Texts

  template <class Text> void writePadded(const Item& item, Text text) {
    const auto width = static_cast<size_t>(item.width);
    const size_t padding = width > text.size() ? width - text.size() : 0;
    if (!item.left) out_.fill(' ', padding);
    out_.append(text);
    if (item.left) out_.fill(' ', padding);
  }

  void writeObject(const Item& item) {
    const FormatArgument& given = argument(item, Kind::Object);
    const NSObject* object = given.object();
    const auto write = [&](auto text) { writePadded(item, firstUnits(text, item.limit())); };
    if (!object) return write(std::string_view("(null)"));
    if (call_.proxies == ProxyText::Plain && object->isProxy()) {
      const std::string plain = detail::plainDescription(object);
      return writeUTF8(item, plain);
    }
    const Ref<NSString> description = object->description();
    if (!description) return write(std::string_view("(null)"));
    description->visit(write);
  }

  void writeCString(const Item& item) {
    const FormatArgument& given = argument(item.placeholder, item.placeholder.position);
    const bool isNull = given.kind == Kind::Object && !given.pointer;
    if (given.kind != Kind::CString && !isNull) refuseKind(item.placeholder, given, Kind::CString);
    if (!given.pointer) return writePadded(item, firstUnits(std::string_view("(null)"), item.limit()));
    // A precision counts bytes, and with one the text may lack its zero.
    const size_t size = item.precision < 0 ? std::strlen(given.text()) : strnlen(given.text(), item.limit());
    const std::string_view bytes(given.text(), size);
    writeUTF8(item, size == item.limit() ? bytes.substr(0, lengthBeforeCutCharacter(bytes)) : bytes);
  }

  void writeUTF8(const Item& item, std::string_view bytes) {
    if (detail::isASCII(bytes)) return writePadded(item, bytes);
    writePadded(item, std::u16string_view(decodedLossily(bytes)));
  }

  void writeAddress(const Item& item) {
    const FormatArgument& given = argument(item.placeholder, item.placeholder.position);
    if (given.kind == Kind::Integer || given.kind == Kind::Real) refuseKind(item.placeholder, given, Kind::Pointer);
    char text[20] = "0x";
    const auto address = reinterpret_cast<uintptr_t>(given.pointer);
    const char* end = std::to_chars(text + 2, std::end(text), address, 16).ptr;
    writePadded(item, std::string_view(text, end));
  }

  void writeUnit(const Item& item, uint64_t mask) {
    const uint64_t given = integer(item.placeholder, item.placeholder.position, sizeof(int));
    const auto unit = static_cast<char16_t>(given & mask);
    writePadded(item, std::u16string_view(&unit, 1));
  }

  const Call& call_;
  GrowingText out_;
  size_t taken_ = 0;  // arguments, in order
  size_t last_ = 0;   // the argument looked at last, from 1
  bool usesPositions_ = false, usesOrder_ = false;
};

bool hasPlaceholder(const NSString* format) {
  return format->visit([](auto units) { return detail::findUnit(units, u'%') != detail::noIndex; });
}

}  // namespace

Ref<NSString> detail::formatted(std::string_view operation, const NSString* format,
                                std::span<const FormatArgument> arguments, ProxyText proxies) {
  if (!format) raise(NSInvalidArgumentException, std::string(operation) + ": nil argument");
  const Ref<NSString> unchanging = Text::immutable(format);  // a description may change a mutable format
  if (!hasPlaceholder(unchanging)) return unchanging;
  const Call call{operation, unchanging, arguments, proxies};
  return Writer(call).text(unchanging);
}

Ref<NSString> NSString::stringWithFormat_arguments(const NSString* format, std::span<const FormatArgument> arguments) {
  return detail::formatted("+[NSString stringWithFormat:]", format, arguments, detail::ProxyText::OfTarget);
}

}  // namespace quoll::inline v1
