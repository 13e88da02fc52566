// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/strings/CharacterSets.h"

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/RegistryInternal.h"

namespace quoll::inline v1 {

namespace {

bool isEither(char16_t unit) { return detail::isWhitespaceUnit(unit) || detail::isNewlineUnit(unit); }

template <bool (*contains)(char16_t)> NSCharacterSet* setOf() {
  static NSCharacterSet* const set = [] {
    Ref<NSCharacterSet> made = make<NSCharacterSet>(contains);
    detail::makeImmortal(made);
    return made.detach();
  }();
  return set;
}

}  // namespace

Class* NSCharacterSet::classObject() {
  static Class* const cls =
      ClassBuilder<NSCharacterSet>("NSCharacterSet")
          .classMethod<&NSCharacterSet::whitespaceCharacterSet>("whitespaceCharacterSet"_sel)
          .classMethod<&NSCharacterSet::newlineCharacterSet>("newlineCharacterSet"_sel)
          .classMethod<&NSCharacterSet::whitespaceAndNewlineCharacterSet>("whitespaceAndNewlineCharacterSet"_sel)
          .method<&NSCharacterSet::characterIsMember>("characterIsMember:"_sel)
          .build();
  return cls;
}

Ref<NSCharacterSet> NSCharacterSet::whitespaceCharacterSet() { return setOf<&detail::isWhitespaceUnit>(); }
Ref<NSCharacterSet> NSCharacterSet::newlineCharacterSet() { return setOf<&detail::isNewlineUnit>(); }
Ref<NSCharacterSet> NSCharacterSet::whitespaceAndNewlineCharacterSet() { return setOf<&isEither>(); }

Ref<NSObject> NSCharacterSet::copyWithZone(NSZone*) const { return const_cast<NSCharacterSet*>(this); }

CFCharacterSetRef CFCharacterSetGetPredefined(CFCharacterSetPredefinedSet set) {
  switch (set) {
    case kCFCharacterSetWhitespace: return setOf<&detail::isWhitespaceUnit>();
    case kCFCharacterSetWhitespaceAndNewline: return setOf<&isEither>();
    case kCFCharacterSetNewline: return setOf<&detail::isNewlineUnit>();
  }
  raise(NSInvalidArgumentException, "CFCharacterSetGetPredefined: there is no set " + std::to_string(set));
}

bool CFCharacterSetIsCharacterMember(CFCharacterSetRef set, char16_t unit) {
  return set && set->characterIsMember(unit);
}

}  // namespace quoll::inline v1
