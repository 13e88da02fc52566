// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/NSLocale.h"

#include <unistd.h>

#include "QuollFoundation/platform/object/AtomicRef.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/CollationInternal.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

Class* NSLocale::classObject() {
  static Class* const cls =
      ClassBuilder<NSLocale>("NSLocale")
          .classMethod<&NSLocale::currentLocale>("currentLocale"_sel)
          .classMethod<&NSLocale::localeWithLocaleIdentifier_ofClass>("localeWithLocaleIdentifier:"_sel)
          .initializer<&NSLocale::initWithLocaleIdentifier_ofClass>("initWithLocaleIdentifier:"_sel)
          .method<&NSLocale::localeIdentifier>("localeIdentifier"_sel)
          .build();
  return cls;
}

namespace {

struct CurrentLocale {
  AtomicRef<NSLocale> replacement;
  AtomicRef<NSLocale> last;
  std::atomic<uint64_t> replacements{1};  // how often there was another one
};
/// Never destroyed: threads may still ask when the process ends.
CurrentLocale& known() {
  static CurrentLocale& locales = *new CurrentLocale;
  return locales;
}

/// The value of the first of our variables that is set and not empty, in one walk: this is asked for in each
/// comparison.
std::string_view localeOfEnvironment() {
  constexpr std::string_view names[] = {"LC_ALL=", "LC_MESSAGES=", "LANG="};
  std::string_view values[std::size(names)];
  for (char** each = environ; each && *each; ++each) {
    if (**each != 'L') continue;
    const std::string_view variable = *each;
    for (size_t i = 0; i < std::size(names); ++i) {
      if (values[i].empty() && variable.starts_with(names[i])) values[i] = variable.substr(names[i].size());
    }
  }
  for (const std::string_view value : values) {
    if (!value.empty()) return value;
  }
  return {};
}

/// "de_DE" of "de_DE.UTF-8@euro".
std::string_view identifierOf(std::string_view setting) {
  const std::string_view name = setting.substr(0, setting.find_first_of(".@"));
  return name.empty() || name == "C" || name == "POSIX" ? "en_US_POSIX" : name;
}

}  // namespace

Ref<NSLocale> NSLocale::currentLocale() {
  if (Ref<NSLocale> given = known().replacement.load()) return given;
  const std::string_view name = identifierOf(localeOfEnvironment());
  Ref<NSLocale> current = known().last.load();
  if (current && current->name_ == name) return current;
  current = make<NSLocale>(name);
  known().last.store(current);
  return current;
}

void detail::replaceCurrentLocale(NSLocale* locale) {
  known().replacement.store(locale);
  known().replacements.fetch_add(1, std::memory_order_release);
}

namespace {
/// What a thread was told last: it need not ask again while nothing has changed.
struct Told {
  Ref<NSLocale> locale;
  uint64_t replacements = 0;
  bool isReplaced = false;
};
constinit thread_local Told* told = nullptr;
struct TellingEnds {
  Told own;
  TellingEnds() { told = &own; }
  ~TellingEnds() { told = nullptr; }
};
}  // namespace

const NSLocale* detail::currentLocaleForComparing(Ref<NSLocale>& room) {
  thread_local TellingEnds untilTheThreadEnds;
  Told* const mine = told;
  if (!mine) {  // late in a thread's end
    room = NSLocale::currentLocale();
    return room;
  }
  const uint64_t replacements = known().replacements.load(std::memory_order_acquire);
  if (mine->replacements != replacements ||
      (!mine->isReplaced && mine->locale->name() != identifierOf(localeOfEnvironment()))) {
    mine->isReplaced = static_cast<bool>(known().replacement.load());
    mine->locale = NSLocale::currentLocale();
    mine->replacements = replacements;
  }
  return mine->locale;
}

Ref<NSLocale> CFLocaleCopyCurrent() { return NSLocale::currentLocale(); }

Ref<NSLocale> NSLocale::localeWithLocaleIdentifier_ofClass(const NSString* identifier, Class* cls) {
  return made<NSLocale>(cls, "initWithLocaleIdentifier:"_sel, identifier);
}

Ref<NSLocale> NSLocale::initWithLocaleIdentifier_ofClass(const NSString* identifier, Class* cls) {
  Ref<NSLocale> locale = create<NSLocale>(cls);
  if (!identifier) detail::raiseNilArgument(locale, "initWithLocaleIdentifier:");
  locale->name_ = identifier->utf8();
  return locale;
}

NSLocale::~NSLocale() { detail::Collations::drop(collations_.load(std::memory_order_relaxed)); }

Ref<NSString> NSLocale::localeIdentifier() const { return NSString::stringWithUTF8(name_); }
Ref<NSString> NSLocale::description() const { return localeIdentifier(); }
bool NSLocale::isEqual(const NSObject* other) const {
  auto* locale = as<const NSLocale>(other);
  return locale && locale->name_ == name_;
}
uint64_t NSLocale::hash() const { return std::hash<std::string>()(name_); }
Ref<NSObject> NSLocale::copyWithZone(NSZone*) const { return const_cast<NSLocale*>(this); }

}  // namespace quoll::inline v1
