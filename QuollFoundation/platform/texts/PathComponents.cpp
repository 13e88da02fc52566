// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/PathComponents.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <vector>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/strings/TextInternal.h"
#include "QuollFoundation/platform/strings/UnitsInternal.h"

namespace quoll::inline v1 {

namespace {

using detail::Text;

/// A text that is read as a path: where its names stand.
struct Path {
  explicit Path(const NSString* t) : text(t) {
    text->visit([&](auto units) { split(units); });
  }

  template <class Units> void split(Units units) {
    constexpr typename Units::value_type separator = '/';
    isRooted = units.starts_with(separator);
    endsWithSeparator = units.ends_with(separator);
    for (size_t start = 0; start < units.size();) {
      const size_t end = std::min(units.find(separator, start), units.size());
      if (end > start) names.push_back({start, end - start});
      start = end + 1;
    }
  }
  Ref<NSString> name(size_t i) const { return text->substringWithRange(names[i]); }
  /// Whether a name is so many dots and nothing else.
  bool isDots(NSRange name, uint64_t count) const {
    if (name.length != count) return false;
    for (uint64_t i = 0; i < count; ++i) {
      if (text->characterAtIndex(name.location + i) != u'.') return false;
    }
    return true;
  }

  const NSString* text;
  std::vector<NSRange> names;
  bool isRooted = false;
  bool endsWithSeparator = false;
};

/// Puts names behind one another, with a separator before each but the first of a relative path.
class Joiner {
 public:
  explicit Joiner(bool isRooted) {
    if (isRooted) parts_.emplace_back("/"_ns);
  }
  void add(const NSString* text, NSRange name) {
    if (hasName_) parts_.emplace_back("/"_ns);
    parts_.emplace_back(text, name);
    hasName_ = true;
  }
  void add(const Path& path) {
    for (const NSRange name : path.names) add(path.text, name);
  }
  /// As it is, right behind what is there.
  void addPlain(const NSString* text) { parts_.emplace_back(text); }
  bool hasName() const { return hasName_; }
  Ref<NSString> joined() const { return Text::joined(parts_); }

 private:
  std::vector<Text::Part> parts_;
  bool hasName_ = false;
};

Ref<NSString> tidied(const Path& path) {
  Joiner joiner(path.isRooted);
  joiner.add(path);
  return joiner.joined();
}

/// Where the last dot of a name is that doesn't start it, else the end of the name.
uint64_t endWithoutExtension(const NSString* text, NSRange name) {
  const uint64_t end = NSMaxRange(name);
  return text->visit([&](auto units) -> uint64_t {
    const size_t dot = detail::findLastUnit(units.substr(name.location, name.length), u'.');
    return dot == detail::noIndex || dot == 0 ? end : name.location + dot;
  });
}

/// What one of the system's re-entrant look-ups says of a user's home.
template <class LookUp> Ref<NSString> homeBy(LookUp lookUp) {
  std::vector<char> buffer(1024);
  passwd entry{};
  passwd* found = nullptr;
  while (lookUp(&entry, buffer.data(), buffer.size(), &found) == ERANGE) buffer.resize(2 * buffer.size());
  return found && found->pw_dir ? NSString::stringWithUTF8(found->pw_dir) : nullptr;
}

Ref<NSString> homeOfThisUser() {
  const char* home = std::getenv("HOME");
  if (home && *home) return NSString::stringWithUTF8(home);
  return homeBy([](auto... rest) { return getpwuid_r(geteuid(), rest...); });
}

Ref<NSString> homeOf(const std::string& user) {
  if (user.empty()) return homeOfThisUser();
  if (user.find('\0') != user.npos) return nullptr;
  return homeBy([&](auto... rest) { return getpwnam_r(user.c_str(), rest...); });
}

bool startsWithTilde(const NSString* path) { return path->length() > 0 && path->characterAtIndex(0) == u'~'; }

}  // namespace

Ref<NSArray> pathComponents(const NSString* receiver) {
  if (!receiver) return nullptr;
  const Ref<NSString> text = receiver->copy();
  const Path path(text);
  Ref<NSMutableArray> components = NSMutableArray::array();
  if (path.isRooted) components->addObject("/"_ns);
  for (size_t i = 0; i < path.names.size(); ++i) components->addObject(path.name(i));
  if (path.endsWithSeparator && !path.names.empty()) components->addObject("/"_ns);
  return components->copy();
}

Ref<NSString> pathWithComponents(const NSArray* components) {
  constexpr std::string_view selector = "pathWithComponents:";
  if (!components) detail::raiseNilArgument(NSString::classObject(), selector);
  std::vector<Ref<NSString>> texts;
  for (NSObject* each : *components) {
    auto* text = as<NSString>(each);
    if (!text) {
      raise(NSInvalidArgumentException, detail::methodName(NSString::classObject(), selector) + ": " +
                                            detail::plainDescription(each) + " is no text");
    }
    texts.push_back(text->copy());
  }
  const auto first = std::find_if(texts.begin(), texts.end(), [](auto& text) { return text->length() > 0; });
  if (first == texts.end()) return Text::empty();
  Joiner joiner(Path(*first).isRooted);
  for (const Ref<NSString>& text : texts) joiner.add(Path(text));
  if (joiner.hasName() && Path(texts.back()).names.empty()) joiner.addPlain("/"_ns);
  return joiner.joined();
}

bool isAbsolutePath(const NSString* receiver) {
  if (!receiver || receiver->length() == 0) return false;
  return receiver->characterAtIndex(0) == u'/' || startsWithTilde(receiver);
}

Ref<NSString> stringByAppendingPathComponent(const NSString* receiver, const NSString* component) {
  if (!receiver) return nullptr;
  if (!component) detail::raiseNilArgument(receiver, "stringByAppendingPathComponent:");
  const Path path(receiver), more(component);
  Joiner joiner(path.isRooted || (receiver->length() == 0 && more.isRooted));
  joiner.add(path);
  joiner.add(more);
  return joiner.joined();
}

Ref<NSString> stringByDeletingLastPathComponent(const NSString* receiver) {
  if (!receiver) return nullptr;
  Path path(receiver);
  if (!path.names.empty()) path.names.pop_back();
  return tidied(path);
}

Ref<NSString> lastPathComponent(const NSString* receiver) {
  if (!receiver) return nullptr;
  const Path path(receiver);
  return path.names.empty() ? tidied(path) : path.name(path.names.size() - 1);
}

Ref<NSString> pathExtension(const NSString* receiver) {
  if (!receiver) return nullptr;
  const Path path(receiver);
  if (path.names.empty()) return Text::empty();
  const uint64_t end = NSMaxRange(path.names.back()), dot = endWithoutExtension(receiver, path.names.back());
  return dot == end ? Text::empty() : receiver->substringWithRange({dot + 1, end - dot - 1});
}

Ref<NSString> stringByAppendingPathExtension(const NSString* receiver, const NSString* extension) {
  if (!receiver) return nullptr;
  if (!extension) detail::raiseNilArgument(receiver, "stringByAppendingPathExtension:");
  const Path path(receiver);
  if (path.names.empty() || extension->containsString("/"_ns)) return nullptr;
  Joiner joiner(path.isRooted);
  joiner.add(path);
  if (extension->length() > 0) {
    joiner.addPlain("."_ns);
    joiner.addPlain(extension);
  }
  return joiner.joined();
}

Ref<NSString> stringByDeletingPathExtension(const NSString* receiver) {
  if (!receiver) return nullptr;
  Path path(receiver);
  if (!path.names.empty()) {
    NSRange& last = path.names.back();
    last.length = endWithoutExtension(receiver, last) - last.location;
  }
  return tidied(path);
}

Ref<NSString> stringByExpandingTildeInPath(const NSString* receiver) {
  if (!receiver) return nullptr;
  if (!startsWithTilde(receiver)) return receiver->copy();
  const Path path(receiver);
  const Ref<NSString> user = receiver->substringWithRange({1, path.names.front().length - 1});
  const Ref<NSString> home = homeOf(user->utf8());
  if (!home) return receiver->copy();
  return stringByAppendingPathComponent(home, receiver->substringFromIndex(path.names.front().length));
}

Ref<NSString> stringByStandardizingPath(const NSString* receiver) {
  if (!receiver) return nullptr;
  const Ref<NSString> text = stringByExpandingTildeInPath(receiver);
  Path path(text);
  const bool isAbsolute = isAbsolutePath(text);
  const size_t fixed = startsWithTilde(text) ? 1 : 0;  // a home that nobody knows stands for a place all the same
  std::vector<NSRange> kept;
  for (const NSRange name : path.names) {
    if (path.isDots(name, 1)) continue;
    if (!isAbsolute || !path.isDots(name, 2)) kept.push_back(name);
    else if (kept.size() > fixed) kept.pop_back();
  }
  path.names = std::move(kept);
  return tidied(path);
}

namespace detail {

extern constinit const AdditionGroup<NSString> pathUtilities{
    "NSPathUtilities",
    {method<&pathComponents>("pathComponents"_sel), classMethod<&pathWithComponents>("pathWithComponents:"_sel),
     method<&isAbsolutePath>("isAbsolutePath"_sel),
     method<&stringByAppendingPathComponent>("stringByAppendingPathComponent:"_sel),
     method<&stringByDeletingLastPathComponent>("stringByDeletingLastPathComponent"_sel),
     method<&lastPathComponent>("lastPathComponent"_sel), method<&pathExtension>("pathExtension"_sel),
     method<&stringByAppendingPathExtension>("stringByAppendingPathExtension:"_sel),
     method<&stringByDeletingPathExtension>("stringByDeletingPathExtension"_sel),
     method<&stringByExpandingTildeInPath>("stringByExpandingTildeInPath"_sel),
     method<&stringByStandardizingPath>("stringByStandardizingPath"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
