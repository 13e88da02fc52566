// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "QuollFoundation/platform/collections/NSPredicate.h"

namespace quoll::inline v1::detail {

/// One side of a comparison: what a key path of the object gives, the object itself, or a constant, perhaps a list.
struct Term {
  enum class Kind : uint8_t { Constant, KeyPath, Self, List };
  Kind kind = Kind::Constant;
  Ref<NSObject> constant;   ///< Or the key path.
  std::vector<Term> terms;  ///< Of a list.

  Ref<NSObject> valueFor(NSObject* object) const;
  std::string text() const;
};

enum class Comparison : uint8_t { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual, In };
enum class Connective : uint8_t { And, Or, Not };

Ref<NSPredicate> comparisonPredicate(Term left, Comparison comparison, Term right);
Ref<NSPredicate> compoundPredicate(Connective connective, std::vector<Ref<NSPredicate>> parts);

/// One value for a placeholder.
struct PredicateArgument {
  Ref<NSObject> object;
  bool isNumber;
};
Ref<NSPredicate> parsePredicate(const NSString* format, const std::vector<PredicateArgument>& arguments);

}  // namespace quoll::inline v1::detail
