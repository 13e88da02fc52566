// SPDX-License-Identifier: MIT
#include "QuollFoundation/text/NaturalOrder.h"

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSLocale.h"

namespace quoll::inline v1 {

NSComparisonResult finderCompare(const NSString* receiver, const NSString* other) {
  return receiver ? receiver->localizedStandardCompare(other) : NSOrderedSame;
}

NSComparisonResult _10_5_finderCompare(const NSString* receiver, const NSString* other) {
  if (!receiver) return NSOrderedSame;
  constexpr NSStringCompareOptions options =
      NSCaseInsensitiveSearch | NSNumericSearch | NSWidthInsensitiveSearch | NSForcedOrderingSearch;
  return receiver->compare_options_range_locale(other, options, {0, receiver->length()}, NSLocale::currentLocale());
}

NSComparisonResult numericalCompare(const NSString* receiver, const NSString* other) {
  return receiver ? receiver->compare_options(other, NSNumericSearch) : NSOrderedSame;
}

namespace detail {

extern constinit const AdditionGroup<NSString> naturalOrderAdditions{
    "QFAdditions",
    // To a receiver, which is never null here, it is this one; by it the sorting of arrays knows the order.
    {method<&NSString::localizedStandardCompare>("finderCompare:"_sel),
     method<&_10_5_finderCompare>("_10_5_finderCompare:"_sel), method<&numericalCompare>("numericalCompare:"_sel)}};

}  // namespace detail
}  // namespace quoll::inline v1
