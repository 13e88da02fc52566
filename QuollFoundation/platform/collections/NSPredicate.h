// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NSMutableOrderedSet.h"
#include "QuollFoundation/platform/collections/NSMutableSet.h"
#include "QuollFoundation/platform/strings/FormatArgument.h"

namespace quoll::inline v1 {

/// A condition on objects, written as a text.
///
///     auto open = NSPredicate::predicateWithFormat("%K == NO AND size > 100"_ns, "closed"_ns);
///     Ref<NSArray> files = filteredArrayUsingPredicate(all, open);
///
/// What a format knows: key paths of the object (`%K` for one in a variable, `SELF` for the object), numbers, texts in
/// single or double quotes, `YES NO TRUE FALSE NULL NIL`, lists in braces, and `%@ %d %i %u %f` with their flags for
/// values; the comparisons `== = != <> < <= =< > >= => IN`; `AND && OR || NOT !`, brackets, `TRUEPREDICATE` and
/// `FALSEPREDICATE`. Words are told in any case. Anything else raises NSInvalidArgumentException with the offending
/// text.
///
/// `==` is `isEqual:`, null equals null only; the others send `compare:` and are false with null. `IN` asks an array, a
/// set, an ordered set, the values of a dictionary, or a text for a part of it.
///
/// Threads: immutable.
class QF_EXPORT NSPredicate : public NSObject {
  QF_CLASS(NSPredicate, NSObject)
 public:
  template <class... A> static Ref<NSPredicate> predicateWithFormat(const NSString* format, const A&... arguments) {
    const FormatArgument list[sizeof...(A) + 1] = {FormatArgument(arguments)..., FormatArgument()};
    return predicateWithFormat_arguments(format, {list, sizeof...(A)});
  }
  static Ref<NSPredicate> predicateWithFormat_arguments(const NSString* format,
                                                        std::span<const FormatArgument> arguments);
  /// The values for the placeholders from an array: keys for `%K`, objects for all others.
  static Ref<NSPredicate> predicateWithFormat_argumentArray(const NSString* format, const NSArray* arguments);
  static Ref<NSPredicate> predicateWithBlock(BlockRef<bool(NSObject* object)> test);
  static Ref<NSPredicate> predicateWithValue(bool value);

  virtual bool evaluateWithObject(NSObject* object) const;  ///< Raises unless overridden.
  virtual Ref<NSString> predicateFormat() const;            ///< The condition, written out with its values.

  Ref<NSString> description() const override;               ///< The format.
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

 protected:
  NSPredicate() = default;
};

/// What passes, of the collections. A null predicate raises NSInvalidArgumentException.
QF_EXPORT Ref<NSArray> filteredArrayUsingPredicate(const NSArray* receiver, const NSPredicate* predicate);
QF_EXPORT Ref<NSSet> filteredSetUsingPredicate(const NSSet* receiver, const NSPredicate* predicate);
QF_EXPORT Ref<NSOrderedSet> filteredOrderedSetUsingPredicate(const NSOrderedSet* receiver,
                                                             const NSPredicate* predicate);
/// In place; a predicate that raises or changes the collection leaves it as it was.
QF_EXPORT void filterUsingPredicate(NSMutableArray* receiver, const NSPredicate* predicate);
QF_EXPORT void filterUsingPredicate(NSMutableSet* receiver, const NSPredicate* predicate);
QF_EXPORT void filterUsingPredicate(NSMutableOrderedSet* receiver, const NSPredicate* predicate);

}  // namespace quoll::inline v1
