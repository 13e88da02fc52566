// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/StandardSortInternal.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>

#include "QuollFoundation/platform/collections/StableSortInternal.h"
#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/strings/CollationInternal.h"
#include "QuollFoundation/platform/strings/UTF8Internal.h"

namespace quoll::inline v1::detail {

namespace {

const NSString* textOf(const NSObject* object) { return static_cast<const NSString*>(object); }

/// False where the text has something that is not for ASCIIOrder; then nothing is appended.
bool appendASCIIKey(const ASCIIOrder& order, const NSString* text, std::string& keys) {
  if (!order.isUsable()) return false;
  const size_t before = keys.size();
  const bool hasKey = text->visit([&]<class Unit>(std::basic_string_view<Unit> units) {
    if constexpr (sizeof(Unit) == 1) return order.appendKey(units, keys);
    else return isASCII(units) && order.appendKey(std::string(units.begin(), units.end()), keys);
  });
  if (!hasKey) keys.resize(before);
  return hasKey;
}

/// A text with its key, the first bytes of which mostly tell.
struct KeyedText {
  uint64_t head;  // a number that has their order; no byte of a key is 0, so zeros stand for its end
  std::string_view rest;
  NSObject* text;
};
void fetch(const KeyedText& keyed) { __builtin_prefetch(keyed.rest.data()); }

KeyedText keyed(NSObject* text, std::string_view key) {
  uint64_t head = 0;
  const size_t length = std::min(key.size(), sizeof head);
  std::memcpy(&head, key.data(), length);
  if constexpr (std::endian::native == std::endian::little) head = __builtin_bswap64(head);
  return {head, key.substr(length), text};
}

/// Texts of one kind of key.
class Group {
 public:
  void add(NSObject* text) {
    texts_.push_back(text);
    ends_.push_back(bytes.size());
  }
  std::vector<NSObject*> sorted(const Collations& order) {
    std::vector<KeyedText> all;
    all.reserve(texts_.size());
    for (size_t i = 0, start = 0; i < texts_.size(); start = ends_[i++]) {
      all.push_back(keyed(texts_[i], std::string_view(bytes).substr(start, ends_[i] - start)));
    }
    stableSort(all.data(), all.size(), [&](const KeyedText& a, const KeyedText& b) {
      if (a.head != b.head) return a.head > b.head;
      if (const int difference = a.rest.compare(b.rest)) return difference > 0;
      return order.compare(textOf(a.text), textOf(b.text), standardOptions) == NSOrderedDescending;
    });
    std::transform(all.begin(), all.end(), texts_.begin(), [](const KeyedText& each) { return each.text; });
    return std::move(texts_);
  }

  std::string bytes;  // the keys, one behind the other; before a text is added, its key

 private:
  std::vector<NSObject*> texts_;
  std::vector<size_t> ends_;
};

/// From `start` on, where the texts begin that come behind another one. Looks near `start` first.
size_t firstBehind(const std::vector<NSObject*>& texts, size_t start, const NSObject* other, const Collations& order) {
  const auto isBefore = [&](const NSObject* text) {
    return order.compare(textOf(text), textOf(other), standardOptions) == NSOrderedAscending;
  };
  size_t step = 1;
  for (; start + step <= texts.size() && isBefore(texts[start + step - 1]); step *= 2) start += step;
  const auto from = texts.begin() + static_cast<ptrdiff_t>(start);
  const auto to = texts.begin() + static_cast<ptrdiff_t>(std::min(start + step - 1, texts.size()));
  return static_cast<size_t>(std::partition_point(from, to, isBefore) - texts.begin());
}

/// Two sorted lists into one. No text of the one is the same as one of the other.
void merge(const std::vector<NSObject*>& many, const std::vector<NSObject*>& few, const Collations& order,
           std::span<NSObject*> to) {
  auto out = to.begin();
  size_t done = 0;
  for (NSObject* const each : few) {
    const size_t next = firstBehind(many, done, each, order);
    out = std::copy(many.begin() + static_cast<ptrdiff_t>(done), many.begin() + static_cast<ptrdiff_t>(next), out);
    *out++ = each;
    done = next;
  }
  std::copy(many.begin() + static_cast<ptrdiff_t>(done), many.end(), out);
}

}  // namespace

bool compareInStandardOrder(std::span<NSObject* const> objects, Selector comparison) {
  constexpr uint64_t wanted = functionKey<&NSString::localizedStandardCompare>();
  const Class* known = nullptr;  // whose texts do, as nearly all are of one class
  return std::all_of(objects.begin(), objects.end(), [&](NSObject* each) {
    const Class* const cls = each->isa();
    if (cls == known) return true;
    const Entry* const entry = isKind<NSString>(each) ? findEntry(each, comparison) : nullptr;
    known = cls;
    return entry && entry->method.implementation->function == wanted;
  });
}

void sortInStandardOrder(std::span<NSObject*> texts) {
  Ref<NSLocale> room;
  const Ref<const NSLocale> locale = currentLocaleForComparing(room);
  const Collations& order = Collations::of(locale);
  // Keys of ASCII cost a tenth of the others, and nearly all names are ASCII.
  Group ascii, others;
  for (NSObject* const each : texts) {
    if (appendASCIIKey(order.asciiOrder(), textOf(each), ascii.bytes)) {
      ascii.add(each);
    } else {
      order.appendKey(textOf(each), others.bytes);
      others.add(each);
    }
  }
  std::vector<NSObject*> many = ascii.sorted(order), few = others.sorted(order);
  if (many.size() < few.size()) many.swap(few);
  merge(many, few, order, texts);
}

}  // namespace quoll::inline v1::detail
