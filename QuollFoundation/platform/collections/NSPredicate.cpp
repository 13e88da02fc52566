// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSPredicate.h"

#include <cmath>
#include <string>

#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/collections/PredicateParserInternal.h"
#include "QuollFoundation/platform/collections/WalkInternal.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"
#include "QuollFoundation/platform/values/Boxing.h"

namespace quoll::inline v1 {

Class* NSPredicate::classObject() {
  static Class* const cls =
      ClassBuilder<NSPredicate>("NSPredicate")
          .classMethod<&NSPredicate::predicateWithFormat_argumentArray>("predicateWithFormat:argumentArray:"_sel)
          .classMethod<&NSPredicate::predicateWithBlock>("predicateWithBlock:"_sel)
          .classMethod<&NSPredicate::predicateWithValue>("predicateWithValue:"_sel)
          .method<&NSPredicate::evaluateWithObject>("evaluateWithObject:"_sel)
          .method<&NSPredicate::predicateFormat>("predicateFormat"_sel)
          .build();
  return cls;
}

namespace detail {

Ref<NSObject> Term::valueFor(NSObject* object) const {
  switch (kind) {
    case Kind::Constant: return constant;
    case Kind::Self: return object;
    case Kind::KeyPath: return object ? object->valueForKeyPath(static_cast<NSString*>(constant.get())) : nullptr;
    case Kind::List: break;
  }
  Ref<NSMutableArray> values = NSMutableArray::array();
  for (const Term& each : terms) {
    if (const Ref<NSObject> value = each.valueFor(object)) values->addObject(value);
  }
  return values;
}

std::string Term::text() const {
  if (kind == Kind::Self) return "SELF";
  if (kind == Kind::List) {
    std::string list;
    for (const Term& each : terms) list += (list.empty() ? "" : ", ") + each.text();
    return "{" + list + "}";
  }
  if (!constant) return "nil";
  const Ref<NSString> words = constant->description();
  const std::string plain = words ? words->utf8() : "(null)";
  if (kind == Kind::KeyPath || !as<NSString>(constant)) return plain;
  std::string quoted = "\"";
  for (const char c : plain) quoted += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
  return quoted + "\"";
}

namespace {

constexpr const char* signs[] = {"==", "!=", "<", "<=", ">", ">=", "IN"};

bool isIn(NSObject* value, NSObject* collection) {
  if (auto* array = as<NSArray>(collection)) return array->containsObject(value);
  if (auto* set = as<NSSet>(collection)) return set->containsObject(value);
  if (auto* set = as<NSOrderedSet>(collection)) return set->containsObject(value);
  if (auto* dictionary = as<NSDictionary>(collection)) return dictionary->allValues()->containsObject(value);
  auto *text = as<NSString>(collection), *part = as<NSString>(value);
  if (text && part) return text->containsString(part);
  if (!collection) return false;
  raise(NSInvalidArgumentException,
        "-[NSPredicate evaluateWithObject:]: IN cannot look for something in " + plainDescription(collection));
}

/// What is no number is neither less nor greater than anything; `compare:` has no answer for that.
bool isNaN(const NSObject* value) {
  const auto* number = as<const NSNumber>(value);
  return number && std::isnan(number->doubleValue());
}

class ComparisonPredicate : public NSPredicate {
 public:
  ComparisonPredicate(Term left, Comparison comparison, Term right)
      : left_(std::move(left)), comparison_(comparison), right_(std::move(right)) {}

  bool evaluateWithObject(NSObject* object) const override {
    const Ref<NSObject> a = left_.valueFor(object), b = right_.valueFor(object);
    switch (comparison_) {
      case Comparison::Equal: return quoll::isEqual(a, b);
      case Comparison::NotEqual: return !quoll::isEqual(a, b);
      case Comparison::In: return isIn(a, b);
      default: return a && b && !isNaN(a) && !isNaN(b) && holds(send<NSComparisonResult>(a, "compare:"_sel, b));
    }
  }
  Ref<NSString> predicateFormat() const override {
    return box(left_.text() + " " + signs[static_cast<size_t>(comparison_)] + " " + right_.text());
  }

 private:
  bool holds(NSComparisonResult result) const {
    switch (comparison_) {
      case Comparison::Less: return result == NSOrderedAscending;
      case Comparison::LessOrEqual: return result != NSOrderedDescending;
      case Comparison::Greater: return result == NSOrderedDescending;
      default: return result != NSOrderedAscending;
    }
  }

  const Term left_;
  const Comparison comparison_;
  const Term right_;
};

class CompoundPredicate : public NSPredicate {
 public:
  CompoundPredicate(Connective connective, std::vector<Ref<NSPredicate>> parts)
      : connective_(connective), parts_(std::move(parts)) {}

  bool evaluateWithObject(NSObject* object) const override {
    if (connective_ == Connective::Not) return !parts_[0]->evaluateWithObject(object);
    const bool decisive = connective_ == Connective::Or;
    for (const Ref<NSPredicate>& each : parts_) {
      if (each->evaluateWithObject(object) == decisive) return decisive;
    }
    return !decisive;
  }
  Ref<NSString> predicateFormat() const override {
    if (connective_ == Connective::Not) return box("NOT " + inBrackets(parts_[0]));
    std::string text;
    for (const Ref<NSPredicate>& each : parts_) {
      if (!text.empty()) text += connective_ == Connective::And ? " AND " : " OR ";
      text += inBrackets(each);
    }
    return box(text);
  }

 private:
  static std::string inBrackets(const NSPredicate* part) {
    const Ref<NSString> format = part->predicateFormat();
    const std::string text = format ? format->utf8() : "(null)";
    return dynamic_cast<const CompoundPredicate*>(part) ? "(" + text + ")" : text;
  }

  const Connective connective_;
  const std::vector<Ref<NSPredicate>> parts_;
};

class ValuePredicate : public NSPredicate {
 public:
  explicit ValuePredicate(bool value) : value_(value) {}
  bool evaluateWithObject(NSObject*) const override { return value_; }
  Ref<NSString> predicateFormat() const override { return value_ ? "TRUEPREDICATE"_ns : "FALSEPREDICATE"_ns; }

 private:
  const bool value_;
};

class BlockPredicate : public NSPredicate {
 public:
  explicit BlockPredicate(BlockRef<bool(NSObject*)> test) : test_(test) {}
  bool evaluateWithObject(NSObject* object) const override { return test_(object); }
  Ref<NSString> predicateFormat() const override { return "BLOCKPREDICATE"_ns; }

 private:
  const Block<bool(NSObject*)> test_;
};

PredicateArgument predicateArgument(const FormatArgument& argument) {
  switch (argument.kind) {
    case FormatArgument::Kind::Integer:
      if (argument.isSigned) return {box(static_cast<int64_t>(argument.integer)), true};
      return {box(argument.integer), true};
    case FormatArgument::Kind::Real: return {box(argument.real), true};
    case FormatArgument::Kind::Object: return {const_cast<NSObject*>(argument.object()), false};
    case FormatArgument::Kind::CString: return {box(argument.text()), false};
    default: raise(NSInvalidArgumentException, "+[NSPredicate predicateWithFormat:]: an argument is no value");
  }
}

void checkPredicate(const NSObject* receiver, const NSPredicate* predicate, std::string_view selector) {
  if (!predicate) raiseNilArgument(receiver, selector);
}

/// The indexes of what does not pass.
template <class Collection> Ref<NSIndexSet> failing(const Collection* collection, const NSPredicate* predicate) {
  return indexesPassing(collection, {},
                        [&](NSObject* element, uint64_t, bool*) { return !predicate->evaluateWithObject(element); });
}

}  // namespace

Ref<NSPredicate> comparisonPredicate(Term left, Comparison comparison, Term right) {
  return make<ComparisonPredicate>(std::move(left), comparison, std::move(right));
}
Ref<NSPredicate> compoundPredicate(Connective connective, std::vector<Ref<NSPredicate>> parts) {
  return make<CompoundPredicate>(connective, std::move(parts));
}

}  // namespace detail

Ref<NSPredicate> NSPredicate::predicateWithFormat_arguments(const NSString* format,
                                                            std::span<const FormatArgument> arguments) {
  if (!format) detail::raiseNilArgument(classObject(), "predicateWithFormat:");
  std::vector<detail::PredicateArgument> values;
  for (const FormatArgument& each : arguments) values.push_back(detail::predicateArgument(each));
  return detail::parsePredicate(format, values);
}

Ref<NSPredicate> NSPredicate::predicateWithFormat_argumentArray(const NSString* format, const NSArray* arguments) {
  if (!format) detail::raiseNilArgument(classObject(), "predicateWithFormat:argumentArray:");
  std::vector<detail::PredicateArgument> values;
  for (uint64_t i = 0; arguments && i < arguments->count(); ++i) {
    const Ref<NSObject> value = arguments->objectAtIndex(i);
    values.push_back({value, as<NSNumber>(value) != nullptr});
  }
  return detail::parsePredicate(format, values);
}

Ref<NSPredicate> NSPredicate::predicateWithBlock(BlockRef<bool(NSObject*)> test) {
  return make<detail::BlockPredicate>(test);
}
Ref<NSPredicate> NSPredicate::predicateWithValue(bool value) { return make<detail::ValuePredicate>(value); }

bool NSPredicate::evaluateWithObject(NSObject*) const { detail::refuseSelector(this, "evaluateWithObject:"_sel); }
Ref<NSString> NSPredicate::predicateFormat() const { return NSObject::description(); }
Ref<NSString> NSPredicate::description() const { return predicateFormat(); }
Ref<NSObject> NSPredicate::copyWithZone(NSZone*) const { return const_cast<NSPredicate*>(this); }

Ref<NSArray> filteredArrayUsingPredicate(const NSArray* receiver, const NSPredicate* predicate) {
  if (!receiver) return nullptr;
  detail::checkPredicate(receiver, predicate, "filteredArrayUsingPredicate:");
  return receiver->objectsAtIndexes(receiver->indexesOfObjectsPassingTest(
      [&](NSObject* element, uint64_t, bool*) { return predicate->evaluateWithObject(element); }));
}

Ref<NSSet> filteredSetUsingPredicate(const NSSet* receiver, const NSPredicate* predicate) {
  if (!receiver) return nullptr;
  detail::checkPredicate(receiver, predicate, "filteredSetUsingPredicate:");
  return receiver->objectsPassingTest([&](NSObject* element, bool*) { return predicate->evaluateWithObject(element); });
}

Ref<NSOrderedSet> filteredOrderedSetUsingPredicate(const NSOrderedSet* receiver, const NSPredicate* predicate) {
  if (!receiver) return nullptr;
  detail::checkPredicate(receiver, predicate, "filteredOrderedSetUsingPredicate:");
  return NSOrderedSet::orderedSetWithArray(filteredArrayUsingPredicate(receiver->array(), predicate));
}

void filterUsingPredicate(NSMutableArray* receiver, const NSPredicate* predicate) {
  if (!receiver) return;
  detail::checkPredicate(receiver, predicate, "filterUsingPredicate:");
  receiver->removeObjectsAtIndexes(detail::failing(receiver, predicate));
}
void filterUsingPredicate(NSMutableSet* receiver, const NSPredicate* predicate) {
  if (!receiver) return;
  detail::checkPredicate(receiver, predicate, "filterUsingPredicate:");
  receiver->setSet(filteredSetUsingPredicate(receiver, predicate));
}
void filterUsingPredicate(NSMutableOrderedSet* receiver, const NSPredicate* predicate) {
  if (!receiver) return;
  detail::checkPredicate(receiver, predicate, "filterUsingPredicate:");
  receiver->removeObjectsAtIndexes(detail::failing(receiver, predicate));
}

namespace detail {

extern constinit const AdditionGroup<NSArray> arrayPredicates{
    "NSPredicateSupport", {method<&filteredArrayUsingPredicate>("filteredArrayUsingPredicate:"_sel)}};
extern constinit const AdditionGroup<NSSet> setPredicates{
    "NSPredicateSupport", {method<&filteredSetUsingPredicate>("filteredSetUsingPredicate:"_sel)}};
extern constinit const AdditionGroup<NSOrderedSet> orderedSetPredicates{
    "NSPredicateSupport", {method<&filteredOrderedSetUsingPredicate>("filteredOrderedSetUsingPredicate:"_sel)}};
extern constinit const AdditionGroup<NSMutableArray> mutableArrayPredicates{
    "NSPredicateSupport",
    {method<overload<void(NSMutableArray*, const NSPredicate*)>(&filterUsingPredicate)>("filterUsingPredicate:"_sel)}};
extern constinit const AdditionGroup<NSMutableSet> mutableSetPredicates{
    "NSPredicateSupport",
    {method<overload<void(NSMutableSet*, const NSPredicate*)>(&filterUsingPredicate)>("filterUsingPredicate:"_sel)}};
extern constinit const AdditionGroup<NSMutableOrderedSet> mutableOrderedSetPredicates{
    "NSPredicateSupport",
    {method<overload<void(NSMutableOrderedSet*, const NSPredicate*)>(&filterUsingPredicate)>(
        "filterUsingPredicate:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
