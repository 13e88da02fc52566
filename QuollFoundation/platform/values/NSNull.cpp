// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/values/NSNull.h"

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/ImmortalInternal.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

namespace {
constexpr detail::Immortal<NSNull> theOne{};
Ref<NSNull> init_ofClass(Class*) { return NSNull::null(); }
}  // namespace

Class* NSNull::classObject() {
  static Class* const cls = ClassBuilder<NSNull>("NSNull")
                                .classMethod<&NSNull::null>("null"_sel)
                                .initializer<&init_ofClass>("init"_sel)
                                .build();
  return cls;
}

NSNull* NSNull::null() { return theOne.get(); }
Ref<NSString> NSNull::description() const { return "<null>"_ns; }
Ref<NSObject> NSNull::copyWithZone(NSZone*) const { return null(); }

}  // namespace quoll::inline v1
