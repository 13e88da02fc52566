// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSObject.h"

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/FastEnumeration.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSInvocation.h"
#include "QuollFoundation/platform/object/Protocol.h"
#include "QuollFoundation/platform/object/RegistryInternal.h"

namespace quoll::inline v1 {

namespace detail {

/// What `alloc` gives: it answers initialisers only, those of the class that it remembers.
class Placeholder : public NSObject {
  QF_CLASS(Placeholder, NSObject)
 public:
  explicit Placeholder(Class* c) : cls(c) {}
  Class* const cls;
  /// In the name of the class that is to be made.
  void doesNotRecognizeSelector(Selector selector) const override {
    raise(NSInvalidArgumentException, "-[" + std::string(cls->name()) + " " + std::string(selector.name()) +
                                          "]: unrecognized selector sent to what alloc gives, " +
                                          plainDescription(this));
  }

 private:
  Dispatch dispatch() const override { return {cls->instanceTable(), false, true}; }
};

Class* Placeholder::classObject() {
  static Class* const cls = ClassBuilder<Placeholder>("QFPlaceholder").build();
  return cls;
}

Class* classToInitialize(NSObject* receiver) {
  if (auto* placeholder = as<Placeholder>(receiver)) return placeholder->cls;
  raise(NSInvalidArgumentException, "an initializer was sent to a finished object, " + plainDescription(receiver) +
                                        "; send it to what alloc gives");
}

namespace {

Ref<NSObject> newObject(Class* cls) { return made<NSObject>(cls, "init"_sel); }
Ref<NSObject> init_ofClass(Class* cls) { return cls->create(); }
NSObject* self(const NSObject* receiver) { return const_cast<NSObject*>(receiver); }
Class* classOfClass(Class* cls) { return cls; }
Class* superclassOfClass(Class* cls) { return cls->superclass(); }
bool isSubclassOfClass(const Class* other, Class* cls) { return other && cls->isSubclassOfClass(other); }
bool instancesRespond(Selector selector, Class* cls) { return cls->instancesRespondToSelector(selector); }
Ref<NSMethodSignature> instanceSignature(Selector selector, Class* cls) {
  return cls->instanceMethodSignatureForSelector(selector);
}
/// One signature a method, made when first asked for.
Ref<NSMethodSignature> signatureOf(const Entry* entry) {
  if (!entry) return nullptr;
  if (NSMethodSignature* known = entry->signature.load(std::memory_order_acquire)) return known;
  Ref<NSMethodSignature> fresh = make<NSMethodSignature>(std::string_view(entry->method.implementation->encoding));
  const std::lock_guard lock(registry().mutex);
  if (NSMethodSignature* other = entry->signature.load(std::memory_order_relaxed)) return other;
  makeImmortal(fresh.get());
  entry->signature.store(fresh.get(), std::memory_order_release);
  return fresh.detach();
}

}  // namespace
}  // namespace detail

Ref<NSObject> alloc(Class* cls) { return cls ? make<detail::Placeholder>(cls) : Ref<NSObject>(); }

Class* NSObject::classObject() {
  static Class* const cls =
      ClassBuilder<NSObject>("NSObject")
          .classMethod<&alloc>("alloc"_sel)
          .classMethod<&detail::newObject>("new"_sel)
          .classMethod<&detail::classOfClass>("class"_sel)
          .classMethod<&detail::superclassOfClass>("superclass"_sel)
          .classMethod<&detail::isSubclassOfClass>("isSubclassOfClass:"_sel)
          .classMethod<&detail::instancesRespond>("instancesRespondToSelector:"_sel)
          .classMethod<&detail::instanceSignature>("instanceMethodSignatureForSelector:"_sel)
          .initializer<&detail::init_ofClass>("init"_sel)
          .method<&detail::self>("self"_sel)
          .method<&NSObject::class_>("class"_sel)
          .method<&NSObject::superclass>("superclass"_sel)
          .method<&NSObject::isEqual>("isEqual:"_sel)
          .method<&NSObject::hash>("hash"_sel)
          .method<&NSObject::isKindOfClass>("isKindOfClass:"_sel)
          .method<&NSObject::isMemberOfClass>("isMemberOfClass:"_sel)
          .method<&NSObject::conformsToProtocol>("conformsToProtocol:"_sel)
          .method<&NSObject::isProxy>("isProxy"_sel)
          .method<&NSObject::copy>("copy"_sel)
          .method<&NSObject::mutableCopy>("mutableCopy"_sel)
          .method<&NSObject::copyWithZone>("copyWithZone:"_sel)
          .method<&NSObject::mutableCopyWithZone>("mutableCopyWithZone:"_sel)
          .method<&NSObject::respondsToSelector>("respondsToSelector:"_sel)
          .method<&NSObject::methodSignatureForSelector>("methodSignatureForSelector:"_sel)
          .method<&NSObject::forwardInvocation>("forwardInvocation:"_sel)
          .method<&NSObject::doesNotRecognizeSelector>("doesNotRecognizeSelector:"_sel)
          .method<&NSObject::performSelector>("performSelector:"_sel)
          .method<&NSObject::performSelector_withObject>("performSelector:withObject:"_sel)
          .method<&NSObject::performSelector_withObject_withObject>("performSelector:withObject:withObject:"_sel)
          .method<&NSObject::countByEnumeratingWithState_objects_count>(
              "countByEnumeratingWithState:objects:count:"_sel)
          .build();
  return cls;
}

Class* NSObject::isa() const { return classObject(); }
Class* NSObject::class_() const { return isa(); }
Class* NSObject::superclass() const { return class_()->superclass(); }
bool NSObject::isEqual(const NSObject* other) const { return this == other; }
uint64_t NSObject::hash() const { return reinterpret_cast<uintptr_t>(this) >> 4; }
bool NSObject::isKindOfClass(const Class* cls) const { return cls && isa()->isSubclassOfClass(cls); }
bool NSObject::isMemberOfClass(const Class* cls) const { return isa() == cls; }
bool NSObject::isProxy() const { return false; }

bool NSObject::conformsToProtocol(const Protocol* protocol) const {
  return protocol && isa()->adoptsProtocolNamed(protocol->name());
}

Ref<NSObject> NSObject::copyWithZone(NSZone*) const { detail::refuseSelector(this, "copyWithZone:"_sel); }
Ref<NSObject> NSObject::mutableCopyWithZone(NSZone*) const { detail::refuseSelector(this, "mutableCopyWithZone:"_sel); }

uint64_t NSObject::countByEnumeratingWithState_objects_count(NSFastEnumerationState*, NSObject**, uint64_t) {
  detail::refuseSelector(this, "countByEnumeratingWithState:objects:count:"_sel);
}

detail::Dispatch NSObject::dispatch() const { return {isa()->instanceTable(), true}; }

bool NSObject::respondsToSelector(Selector selector) const {
  return detail::Dispatch::of(this).find(selector) != nullptr;
}

Ref<NSMethodSignature> NSObject::methodSignatureForSelector(Selector selector) const {
  return detail::signatureOf(detail::Dispatch::of(this).find(selector));
}
Ref<NSMethodSignature> Class::instanceMethodSignatureForSelector(Selector selector) const {
  return detail::signatureOf(instanceTable()->find(selector));
}

void NSObject::forwardInvocation(NSInvocation* invocation) {
  detail::refuseSelector(this, invocation ? invocation->selector() : "forwardInvocation:"_sel);
}
void NSObject::doesNotRecognizeSelector(Selector selector) const { detail::raiseUnrecognized(this, selector); }
void detail::refuseSelector(const NSObject* receiver, Selector selector) {
  receiver->doesNotRecognizeSelector(selector);
  raiseUnrecognized(receiver, selector);
}

namespace {

template <class... A> Ref<NSObject> perform(NSObject* receiver, Selector selector, A*... arguments) {
  std::array<detail::Value, sizeof...(A)> values{detail::Value::ofObject(arguments)...};
  if (!selector) detail::refuseSelector(receiver, selector);
  return detail::sendErased(receiver, selector, detail::findEntry(receiver, selector), values).object();
}

}  // namespace

Ref<NSObject> NSObject::performSelector(Selector selector) { return perform(this, selector); }
Ref<NSObject> NSObject::performSelector_withObject(Selector selector, NSObject* argument) {
  return perform(this, selector, argument);
}
Ref<NSObject> NSObject::performSelector_withObject_withObject(Selector selector, NSObject* first, NSObject* second) {
  return perform(this, selector, first, second);
}

void NSObject::reserved1() {}
void NSObject::reserved2() {}
void NSObject::reserved3() {}
void NSObject::reserved4() {}
void NSObject::reserved5() {}
void NSObject::reserved6() {}
void NSObject::reserved7() {}
void NSObject::reserved8() {}

}  // namespace quoll::inline v1
