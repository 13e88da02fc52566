// SPDX-License-Identifier: MIT
#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

#include "QuollFoundation/platform/collections/PredicateParserInternal.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/Boxing.h"

namespace quoll::inline v1::detail {

namespace {

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool startsName(char c) {
  return (upper(c) >= 'A' && upper(c) <= 'Z') || c == '_' || c == '@' || static_cast<unsigned char>(c) >= 0x80;
}
bool continuesName(char c) { return startsName(c) || isDigit(c) || c == '.'; }
bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Reads a format by descent: or, and, not, a comparison, its terms.
class Parser {
 public:
  Parser(const NSString* format, const std::vector<PredicateArgument>& arguments)
      : text_(format->utf8()),
        isWellFormed_(format->canBeConvertedToEncoding(NSUTF8StringEncoding)),
        arguments_(arguments) {}

  Ref<NSPredicate> parse() {
    if (!isWellFormed_) refuse("has a surrogate without its partner");
    Ref<NSPredicate> predicate = alternatives();
    skipBlanks();
    if (at_ != text_.size()) refuse("stands behind the condition");
    if (next_ != arguments_.size()) refuse("leaves arguments over");
    return predicate;
  }

 private:
  [[noreturn]] void refuse(const char* why) const {
    raise(NSInvalidArgumentException, "+[NSPredicate predicateWithFormat:]: \"" +
                                          text_.substr(std::min(at_, text_.size())) + "\" " + why +
                                          ", in the format \"" + text_ + "\"");
  }

  void skipBlanks() {
    while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
  }

  bool takeSign(std::string_view sign) {
    skipBlanks();
    if (!std::string_view(text_).substr(at_).starts_with(sign)) return false;
    at_ += sign.size();
    return true;
  }

  /// The name here, in upper case; nothing is taken.
  std::string peekWord() {
    skipBlanks();
    size_t end = at_;
    while (end < text_.size() && continuesName(text_[end])) ++end;
    std::string word = text_.substr(at_, end - at_);
    std::transform(word.begin(), word.end(), word.begin(), &upper);
    return word;
  }
  bool takeWord(std::string_view word) {
    if (peekWord() != word) return false;
    at_ += word.size();
    return true;
  }

  Ref<NSPredicate> alternatives() {
    std::vector<Ref<NSPredicate>> parts{conjunction()};
    while (takeWord("OR") || takeSign("||")) parts.push_back(conjunction());
    return parts.size() == 1 ? parts[0] : compoundPredicate(Connective::Or, std::move(parts));
  }

  Ref<NSPredicate> conjunction() {
    std::vector<Ref<NSPredicate>> parts{negation()};
    while (takeWord("AND") || takeSign("&&")) parts.push_back(negation());
    return parts.size() == 1 ? parts[0] : compoundPredicate(Connective::And, std::move(parts));
  }

  Ref<NSPredicate> negation() {
    if (++depth_ > deepest) refuse("is nested too deeply");
    Ref<NSPredicate> result;
    if (takeWord("NOT") || takeSign("!")) result = compoundPredicate(Connective::Not, {negation()});
    else if (takeWord("TRUEPREDICATE")) result = NSPredicate::predicateWithValue(true);
    else if (takeWord("FALSEPREDICATE")) result = NSPredicate::predicateWithValue(false);
    else if (takeSign("(")) {
      result = alternatives();
      if (!takeSign(")")) refuse("should be \")\"");
    } else result = comparison();
    --depth_;
    return result;
  }

  Ref<NSPredicate> comparison() {
    Term left = term();
    const Comparison sign = comparisonSign();
    return comparisonPredicate(std::move(left), sign, term());
  }

  Comparison comparisonSign() {
    constexpr std::pair<std::string_view, Comparison> signs[] = {
        {"==", Comparison::Equal},       {"=<", Comparison::LessOrEqual},    {"=>", Comparison::GreaterOrEqual},
        {"=", Comparison::Equal},        {"!=", Comparison::NotEqual},       {"<>", Comparison::NotEqual},
        {"<=", Comparison::LessOrEqual}, {">=", Comparison::GreaterOrEqual}, {"<", Comparison::Less},
        {">", Comparison::Greater}};
    for (const auto& [sign, comparison] : signs) {
      if (takeSign(sign)) return comparison;
    }
    if (takeWord("IN")) return Comparison::In;
    refuse("is no comparison of these: == != < <= > >= IN");
  }

  Term term() {
    skipBlanks();
    const char c = at_ < text_.size() ? text_[at_] : '\0';
    if (c == '%') return placeholder();
    if (c == '\'' || c == '"') return quoted(c);
    if (c == '{') return list();
    if (isDigit(c) || c == '-' || c == '.') return number();
    if (startsName(c)) return name();
    refuse("is no key path and no value");
  }

  Term placeholder() {
    size_t end = at_ + 1;
    while (end < text_.size() && std::string_view("+-# 0123456789.hlqzjt").find(text_[end]) != std::string_view::npos) {
      ++end;
    }
    const char kind = end < text_.size() ? text_[end] : '\0';
    if (kind == '\0' || std::string_view("@Kdiufegx").find(kind) == std::string_view::npos) {
      refuse("is no placeholder of these: %@ %K %d %i %u %f");
    }
    if (next_ == arguments_.size()) refuse("has no argument");
    const PredicateArgument& argument = arguments_[next_];
    if (kind == 'K' && !as<NSString>(argument.object)) refuse("needs a key path as its argument");
    if (kind != 'K' && kind != '@' && !argument.isNumber) refuse("needs a number as its argument");
    at_ = end + 1;
    ++next_;
    if (kind == 'K') return keyPath(argument.object);
    return {Term::Kind::Constant, argument.object, {}};
  }

  static Term keyPath(const Ref<NSObject>& path) { return {Term::Kind::KeyPath, path, {}}; }

  Term quoted(char quote) {
    std::string value;
    size_t end = at_ + 1;
    for (; end < text_.size() && text_[end] != quote; ++end) {
      if (text_[end] == '\\' && end + 1 < text_.size()) ++end;
      value += text_[end];
    }
    if (end >= text_.size()) refuse("has no closing quote");
    at_ = end + 1;
    return {Term::Kind::Constant, box(value), {}};
  }

  Term list() {
    if (++depth_ > deepest) refuse("is nested too deeply");
    Term result{Term::Kind::List, nullptr, {}};
    takeSign("{");
    if (!takeSign("}")) {
      do result.terms.push_back(term());
      while (takeSign(","));
      if (!takeSign("}")) refuse("should be \"}\"");
    }
    --depth_;
    return result;
  }

  Term number() {
    const char* const begin = text_.data() + at_;
    const char* const end = text_.data() + text_.size();
    int64_t integer = 0;
    const auto whole = std::from_chars(begin, end, integer);
    double real = 0;
    const auto any = std::from_chars(begin, end, real);
    if (any.ec != std::errc() || (any.ptr != end && continuesName(*any.ptr))) refuse("is no number");
    at_ = static_cast<size_t>(any.ptr - text_.data());
    if (whole.ec == std::errc() && whole.ptr == any.ptr) return {Term::Kind::Constant, box(integer), {}};
    uint64_t large = 0;
    const auto unsignedWhole = std::from_chars(begin, end, large);
    if (unsignedWhole.ec == std::errc() && unsignedWhole.ptr == any.ptr) return {Term::Kind::Constant, box(large), {}};
    return {Term::Kind::Constant, box(real), {}};
  }

  Term name() {
    const std::string word = peekWord();
    constexpr std::string_view reserved[] = {
        "AND",      "OR",      "NOT", "IN",  "LIKE", "MATCHES", "CONTAINS",      "BEGINSWITH",
        "ENDSWITH", "BETWEEN", "ANY", "ALL", "NONE", "SOME",    "TRUEPREDICATE", "FALSEPREDICATE"};
    if (std::find(std::begin(reserved), std::end(reserved), word) != std::end(reserved)) {
      refuse("is not understood here");
    }
    const std::string spelled = text_.substr(at_, word.size());
    if (spelled.ends_with('.') || spelled.find("..") != std::string::npos) refuse("is no key path");
    at_ += word.size();
    skipBlanks();
    if (at_ < text_.size() && (text_[at_] == '(' || text_[at_] == '[')) refuse("is not understood here");
    if (word == "SELF") return {Term::Kind::Self, nullptr, {}};
    if (word == "YES" || word == "TRUE") return {Term::Kind::Constant, box(true), {}};
    if (word == "NO" || word == "FALSE") return {Term::Kind::Constant, box(false), {}};
    if (word == "NULL" || word == "NIL") return {};
    return keyPath(box(word.starts_with("SELF.") ? spelled.substr(5) : spelled));
  }

  static constexpr int deepest = 200;
  const std::string text_;
  const bool isWellFormed_;
  const std::vector<PredicateArgument>& arguments_;
  size_t at_ = 0;
  size_t next_ = 0;  // argument
  int depth_ = 0;
};

}  // namespace

Ref<NSPredicate> parsePredicate(const NSString* format, const std::vector<PredicateArgument>& arguments) {
  return Parser(format, arguments).parse();
}

}  // namespace quoll::inline v1::detail
