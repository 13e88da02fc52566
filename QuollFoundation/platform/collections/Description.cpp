// SPDX-License-Identifier: MIT
#include <string>

#include "QuollFoundation/platform/collections/DescriptionInternal.h"
#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/NSMutableOrderedSet.h"
#include "QuollFoundation/platform/collections/NSMutableSet.h"
#include "QuollFoundation/platform/collections/NestingInternal.h"
#include "QuollFoundation/platform/collections/ValueArrayInternal.h"
#include "QuollFoundation/platform/collections/ValueDictionaryInternal.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {
namespace detail {

namespace {

/// The collections that are being written on this thread, innermost first.
struct Path {
  const NSObject* collection;
  const Path* outer;
  size_t depth;

  bool contains(const NSObject* wanted) const {
    for (const Path* each = this; each; each = each->outer) {
      if (each->collection == wanted) return true;
    }
    return false;
  }
};
constinit thread_local const Path* innermost = nullptr;
constinit thread_local unsigned comparing = 0;

constexpr size_t deepestText = 64;
constexpr unsigned deepestComparison = 512;

/// On the path while it is written.
class Step {
 public:
  explicit Step(const NSObject* collection) : path_{collection, innermost, innermost ? innermost->depth + 1 : 1} {
    innermost = &path_;
  }
  ~Step() { innermost = path_.outer; }
  Step(const Step&) = delete;
  Step& operator=(const Step&) = delete;

 private:
  const Path path_;
};

class CollectionText {
 public:
  void append(const NSObject* collection) {
    if (innermost && (innermost->contains(collection) || innermost->depth >= deepestText)) {
      text_ += u"(...)";
      return;
    }
    const Step step(collection);
    if (auto* array = as<const NSArray>(collection)) list(u"(", *array, u")");
    else if (auto* set = as<const NSSet>(collection)) list(u"{(", *set, u")}");
    else if (auto* ordered = as<const NSOrderedSet>(collection)) list(u"{(", *ordered, u")}");
    else if (auto* dictionary = as<const NSDictionary>(collection)) entries(*dictionary);
  }
  const std::u16string& text() const { return text_; }

 private:
  /// Whether the description would come back here: not for a subclass, which may say something else.
  static bool isOwn(const NSObject* element) {
    Class* const cls = element->isa();
    for (Class* own : {NSArray::classObject(), NSMutableArray::classObject(), NSDictionary::classObject(),
                       NSMutableDictionary::classObject(), NSSet::classObject(), NSMutableSet::classObject(),
                       NSOrderedSet::classObject(), NSMutableOrderedSet::classObject()}) {
      if (cls == own) return true;
    }
    return false;
  }

  void newLine() {
    text_ += u'\n';
    text_.append(indent_, u' ');
  }

  template <class Collection> void list(std::u16string_view opening, const Collection& collection,
                                        std::u16string_view closing) {
    text_ += opening;
    indent_ += 4;
    bool first = true;
    for (NSObject* each : collection) {
      if (!first) text_ += u',';
      first = false;
      newLine();
      const Ref<NSObject> kept = each;
      element(each);
    }
    indent_ -= 4;
    newLine();
    text_ += closing;
  }

  void entries(const NSDictionary& dictionary) {
    text_ += u'{';
    indent_ += 4;
    for (const auto [key, value] : dictionary) {
      newLine();
      const Ref<NSObject> keptKey = key, keptValue = value;
      element(key);
      text_ += u" = ";
      element(value);
      text_ += u';';
    }
    indent_ -= 4;
    newLine();
    text_ += u'}';
  }

  void element(const NSObject* object) {
    if (as<const NSProxy>(object)) {
      const std::string plain = plainDescription(object);
      text_.append(plain.begin(), plain.end());
    } else if (auto* string = as<const NSString>(object)) quoted(string->utf16());
    else if (isOwn(object)) append(object);
    else if (const Ref<NSString> description = object->description()) text_ += description->utf16();
    else text_ += u"(null)";
  }

  static bool needsNoQuotes(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || (unit >= u'0' && unit <= u'9') ||
           unit == u'_' || unit == u'$' || unit == u'/' || unit == u':' || unit == u'.';
  }

  /// In quotes where its ends would otherwise not be seen.
  void quoted(const std::u16string& string) {
    bool plain = !string.empty();
    for (const char16_t unit : string) plain = plain && needsNoQuotes(unit);
    if (plain) {
      text_ += string;
      return;
    }
    text_ += u'"';
    for (const char16_t unit : string) {
      if (unit == u'"' || unit == u'\\') text_ += u'\\';
      if (unit == u'\n') text_ += u"\\n";
      else text_ += unit;
    }
    text_ += u'"';
  }

  std::u16string text_;
  size_t indent_ = 0;
};

std::string describeValue(Ref<NSString> (*describe)(const void*), const void* value) {
  if (const Ref<NSString> text = describe ? describe(value) : nullptr) return text->utf8();
  char address[24];
  std::snprintf(address, sizeof address, "%p", value);
  return address;
}

}  // namespace

Ref<NSString> describeCollection(const NSObject* collection) {
  CollectionText text;
  text.append(collection);
  return NSString::stringWithCharacters(text.text());
}

Nesting::Nesting(const NSObject* collection, std::string_view selector) {
  if (comparing >= deepestComparison) {
    raise(NSGenericException, methodName(collection, selector) + ": collections are nested deeper than " +
                                  std::to_string(deepestComparison));
  }
  ++comparing;
}
Nesting::~Nesting() { --comparing; }

uint64_t shallowHash(const NSObject* element) {
  if (auto* array = as<const NSArray>(element)) return array->count();
  if (auto* dictionary = as<const NSDictionary>(element)) return dictionary->count();
  if (auto* set = as<const NSSet>(element)) return set->count();
  if (auto* ordered = as<const NSOrderedSet>(element)) return ordered->count();
  return element->hash();
}

Ref<NSString> ValueArray::description() const {
  std::string text = plainDescription(this) + " (";
  for (uint64_t i = 0; i < count_; ++i) text += "\n    " + describeValue(callBacks_.copyDescription, items_[i]);
  return NSString::stringWithUTF8(text + "\n)");
}

Ref<NSString> ValueDictionary::description() const {
  std::string text = plainDescription(this) + " {";
  for (const PairEntry& entry : table_) {
    if (!entry.key) continue;
    text += "\n    " + describeValue(keyCallBacks_.copyDescription, originalKey(entry.key)) + " = " +
            describeValue(valueCallBacks_.copyDescription, entry.value);
  }
  return NSString::stringWithUTF8(text + "\n}");
}

}  // namespace detail

Ref<NSString> CFArray::description() const { return NSObject::description(); }
Ref<NSString> CFDictionary::description() const { return NSObject::description(); }

}  // namespace quoll::inline v1
