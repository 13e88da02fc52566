// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSProxy.h"

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/FastEnumeration.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Protocol.h"

namespace quoll::inline v1 {

namespace {

Ref<NSObject> allocProxy(Class* cls) { return alloc(cls); }
Class* ownClass(Class* cls) { return cls; }
Class* superclassOfClass(Class* cls) { return cls->superclass(); }
bool isSubclassOfClass(const Class* other, Class* cls) { return cls->isSubclassOfClass(other); }
bool instancesRespond(Selector selector, Class* cls) { return cls->instancesRespondToSelector(selector); }
Ref<NSMethodSignature> instanceSignature(Selector selector, Class* cls) {
  return cls->instanceMethodSignatureForSelector(selector);
}

/// A const operation asks its target, which may change inside: the message itself changes nothing here.
NSObject* receiver(const NSProxy* proxy) { return const_cast<NSProxy*>(proxy); }

}  // namespace

Class* NSProxy::classObject() {
  static Class* const cls = ClassBuilder<NSProxy>("NSProxy")
                                .classMethod<&allocProxy>("alloc"_sel)
                                .classMethod<&ownClass>("class"_sel)
                                .classMethod<&superclassOfClass>("superclass"_sel)
                                .classMethod<&isSubclassOfClass>("isSubclassOfClass:"_sel)
                                .classMethod<&instancesRespond>("instancesRespondToSelector:"_sel)
                                .classMethod<&instanceSignature>("instanceMethodSignatureForSelector:"_sel)
                                .method<&NSProxy::isProxy>("isProxy"_sel)
                                .method<&NSProxy::methodSignatureForSelector>("methodSignatureForSelector:"_sel)
                                .method<&NSProxy::forwardInvocation>("forwardInvocation:"_sel)
                                .build();
  return cls;
}

Ref<NSMethodSignature> NSProxy::methodSignatureForSelector(Selector selector) const {
  detail::raiseUnrecognized(this, selector);
}
void NSProxy::doesNotRecognizeSelector(Selector selector) const { detail::raiseUnrecognized(this, selector); }

Class* NSProxy::class_() const { return send<Class*>(receiver(this), "class"_sel); }
bool NSProxy::isEqual(const NSObject* other) const { return send<bool>(receiver(this), "isEqual:"_sel, other); }
uint64_t NSProxy::hash() const { return send<uint64_t>(receiver(this), "hash"_sel); }
bool NSProxy::isKindOfClass(const Class* cls) const { return send<bool>(receiver(this), "isKindOfClass:"_sel, cls); }
bool NSProxy::isMemberOfClass(const Class* cls) const {
  return send<bool>(receiver(this), "isMemberOfClass:"_sel, cls);
}
bool NSProxy::conformsToProtocol(const Protocol* protocol) const {
  return send<bool>(receiver(this), "conformsToProtocol:"_sel, protocol);
}
Ref<NSObject> NSProxy::copyWithZone(NSZone* zone) const {
  return send<Ref<NSObject>>(receiver(this), "copyWithZone:"_sel, zone);
}
Ref<NSObject> NSProxy::mutableCopyWithZone(NSZone* zone) const {
  return send<Ref<NSObject>>(receiver(this), "mutableCopyWithZone:"_sel, zone);
}
bool NSProxy::respondsToSelector(Selector selector) const {
  return send<bool>(receiver(this), "respondsToSelector:"_sel, selector);
}
uint64_t NSProxy::countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                            uint64_t count) {
  return send<uint64_t>(this, "countByEnumeratingWithState:objects:count:"_sel, state, objects, count);
}

}  // namespace quoll::inline v1
