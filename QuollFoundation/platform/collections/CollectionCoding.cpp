// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/NSMutableOrderedSet.h"
#include "QuollFoundation/platform/collections/NSMutableSet.h"
#include "QuollFoundation/platform/collections/WalkInternal.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "QuollFoundation/platform/values/NSNull.h"

/// Key-value coding over collections. Arrays, sets and ordered sets ask each element; a path may go on with an operator
/// over what that gives: `@count`, and, followed by a path, `@sum`, `@avg`, `@min`, `@max`. Dictionaries go by their
/// entries.
namespace quoll::inline v1 {

namespace detail {

extern constinit const AdditionGroup<NSObject> collectionCoding{
    "NSKeyValueCoding",
    {method<&NSObject::dictionaryWithValuesForKeys>("dictionaryWithValuesForKeys:"_sel),
     method<&NSObject::setValuesForKeysWithDictionary>("setValuesForKeysWithDictionary:"_sel)}};

namespace {

const NSString* stringKey(const NSObject* receiver, std::string_view selector, NSObject* key) {
  if (auto* string = as<const NSString>(key)) return string;
  const Ref<NSString> text = as<NSProxy>(key) ? nullptr : key->description();
  raise(NSInvalidArgumentException, methodName(receiver, selector) + ": the key " +
                                        (text ? text->utf8() : plainDescription(key)) + " of class " +
                                        std::string(key->isa()->name()) + " is no string");
}

NSObject* orNull(NSObject* value) { return value ? value : NSNull::null(); }

/// An array, a set or an ordered set, as an array.
Ref<NSArray> elementsOf(const NSArray* array) { return array->copy(); }
Ref<NSArray> elementsOf(const NSSet* set) { return set->allObjects(); }
Ref<NSArray> elementsOf(const NSOrderedSet* set) { return set->array(); }

/// What a function gives for each element, null as NSNull.
template <class Value> Ref<NSArray> mapped(const NSArray* array, Value value) {
  Ref<NSMutableArray> values = NSMutableArray::arrayWithCapacity(array->count());
  for (NSObject* each : *array) values->addObject(orNull(value(each)));
  return values->copy();
}

bool isOperator(const NSString* key) { return key->length() && key->characterAtIndex(0) == u'@'; }

/// Where the first key that is an operator starts, behind a dot; NSNotFound for none.
uint64_t operatorIn(const NSString* path) {
  const NSRange found = path->rangeOfString_options(".@"_ns, NSLiteralSearch);
  return found.location == NSNotFound ? NSNotFound : found.location + 1;
}

/// Exact while the numbers are integers whose sum fits.
class Sum {
 public:
  void add(const NSObject* value) {
    const auto* number = as<const NSNumber>(value);
    if (!number) {
      const auto* text = as<const NSString>(value);
      addReal(text ? text->doubleValue() : 0);
    } else if (number->isReal() || number->exceedsSigned()) addReal(number->doubleValue());
    else addInteger(number->longLongValue());
  }
  Ref<NSNumber> number() const { return isReal_ ? box(real_) : box(integer_); }
  double real() const { return isReal_ ? real_ : static_cast<double>(integer_); }

 private:
  void addReal(double value) {
    real_ = real() + value;
    isReal_ = true;
  }
  void addInteger(int64_t value) {
    int64_t sum = 0;
    if (isReal_ || __builtin_add_overflow(integer_, value, &sum)) addReal(static_cast<double>(value));
    else integer_ = sum;
  }

  int64_t integer_ = 0;
  double real_ = 0;
  bool isReal_ = false;
};

/// The value that compares as `wanted` with all others; the first of several. Nulls don't count.
Ref<NSObject> extreme(const NSArray* values, NSComparisonResult wanted) {
  Ref<NSObject> best;
  for (NSObject* each : *values) {
    if (each == NSNull::null()) continue;
    if (!best || send<NSComparisonResult>(each, "compare:"_sel, best) == wanted) best = each;
  }
  return best;
}

/// "@sum" of "@sum.path".
std::string operatorName(const NSString* path) {
  const std::string text = path->utf8();
  return text.substr(0, text.find('.'));
}

[[noreturn]] void raiseOperator(const NSObject* receiver, const NSString* path, const char* why) {
  raise(NSInvalidArgumentException,
        methodName(receiver, "valueForKeyPath:") + ": the collection operator in \"" + path->utf8() + "\" " + why);
}

Ref<NSObject> operated(const NSObject* receiver, const NSArray* elements, const NSString* path) {
  const std::string name = operatorName(path);
  if (name == "@count") return box(elements->count());
  if (name != "@sum" && name != "@avg" && name != "@min" && name != "@max") {
    raiseOperator(receiver, path, "is not one of @count, @sum, @avg, @min and @max");
  }
  if (path->length() <= name.size() + 1) raiseOperator(receiver, path, "needs a key path behind it");
  const Ref<NSObject> values = elements->valueForKeyPath(path->substringFromIndex(name.size() + 1));
  const auto* list = cast<NSArray>(values.get());
  if (name == "@min") return extreme(list, NSOrderedAscending);
  if (name == "@max") return extreme(list, NSOrderedDescending);
  Sum sum;
  for (const NSObject* each : *list) sum.add(each);
  if (name == "@sum") return sum.number();
  return box(list->count() ? sum.real() / static_cast<double>(list->count()) : 0.0);
}

/// The values of a key or a path of keys, for each element, in a collection that `collect` makes of an array.
template <class Collection, class Collect>
Ref<NSObject> valueForEach(const Collection* collection, const NSString* key, Collect collect) {
  if (!key) raiseNilArgument(collection, "valueForKey:");
  const Ref<NSArray> elements = elementsOf(collection);
  if (isOperator(key)) return operated(collection, elements, key);
  return collect(mapped(elements, [&](NSObject* each) { return each->valueForKey(key); }));
}

template <class Collection, class Collect>
Ref<NSObject> pathForEach(const Collection* collection, const NSString* path, Collect collect) {
  if (!path) raiseNilArgument(collection, "valueForKeyPath:");
  const Ref<NSArray> elements = elementsOf(collection);
  if (isOperator(path)) return operated(collection, elements, path);
  const uint64_t at = operatorIn(path);
  const Ref<NSString> keys = at == NSNotFound ? path->copy() : path->substringToIndex(at - 1);
  const Ref<NSObject> values = collect(mapped(elements, [&](NSObject* each) { return each->valueForKeyPath(keys); }));
  return at == NSNotFound ? values : values->valueForKeyPath(path->substringFromIndex(at));
}

template <class Collection> void setForEach(const Collection* collection, NSObject* value, const NSString* key) {
  const Ref<NSArray> elements = elementsOf(collection);
  for (NSObject* each : *elements) each->setValue_forKey(value, key);
}

Ref<NSObject> asArray(const Ref<NSArray>& values) { return values; }
Ref<NSObject> asSet(const Ref<NSArray>& values) { return NSSet::setWithArray(values); }
Ref<NSObject> asOrderedSet(const Ref<NSArray>& values) { return NSOrderedSet::orderedSetWithArray(values); }

}  // namespace
}  // namespace detail

Ref<NSDictionary> NSObject::dictionaryWithValuesForKeys(NSArray* keys) const {
  Ref<NSMutableDictionary> values = NSMutableDictionary::dictionary();
  if (!keys) return values->copy();
  const Ref<NSArray> given = keys->copy();
  for (NSObject* each : *given) {
    const NSString* key = detail::stringKey(this, "dictionaryWithValuesForKeys:", each);
    values->setObject_forKey(detail::orNull(valueForKey(key)), key);
  }
  return values->copy();
}

void NSObject::setValuesForKeysWithDictionary(NSDictionary* values) {
  if (!values) return;
  const Ref<NSDictionary> given = values->copy();
  for (const auto [each, value] : *given) {
    const NSString* key = detail::stringKey(this, "setValuesForKeysWithDictionary:", each);
    setValue_forKey(value == NSNull::null() ? nullptr : value, key);
  }
}

Ref<NSDictionary> NSProxy::dictionaryWithValuesForKeys(NSArray* keys) const {
  return send<Ref<NSDictionary>>(const_cast<NSProxy*>(this), "dictionaryWithValuesForKeys:"_sel, keys);
}
void NSProxy::setValuesForKeysWithDictionary(NSDictionary* values) {
  send(this, "setValuesForKeysWithDictionary:"_sel, values);
}

Ref<NSObject> NSArray::valueForKey(const NSString* key) const {
  return detail::valueForEach(this, key, &detail::asArray);
}
Ref<NSObject> NSArray::valueForKeyPath(const NSString* path) const {
  return detail::pathForEach(this, path, &detail::asArray);
}
void NSArray::setValue_forKey(NSObject* value, const NSString* key) { detail::setForEach(this, value, key); }

Ref<NSObject> NSSet::valueForKey(const NSString* key) const { return detail::valueForEach(this, key, &detail::asSet); }
Ref<NSObject> NSSet::valueForKeyPath(const NSString* path) const {
  return detail::pathForEach(this, path, &detail::asSet);
}
void NSSet::setValue_forKey(NSObject* value, const NSString* key) { detail::setForEach(this, value, key); }

Ref<NSObject> NSOrderedSet::valueForKey(const NSString* key) const {
  return detail::valueForEach(this, key, &detail::asOrderedSet);
}
Ref<NSObject> NSOrderedSet::valueForKeyPath(const NSString* path) const {
  return detail::pathForEach(this, path, &detail::asOrderedSet);
}
void NSOrderedSet::setValue_forKey(NSObject* value, const NSString* key) { detail::setForEach(this, value, key); }

Ref<NSObject> NSDictionary::valueForKey(const NSString* key) const {
  if (!key) detail::raiseNilArgument(this, "valueForKey:");
  if (Ref<NSObject> value = objectForKey(key)) return value;
  return key->isEqualToString("@count"_ns) ? box(count()) : nullptr;
}

void NSMutableDictionary::setValue_forKey(NSObject* value, const NSString* key) {
  if (!key) detail::raiseNilArgument(this, "setValue:forKey:");
  setObject_forKeyedSubscript(value, key);
}

}  // namespace quoll::inline v1
