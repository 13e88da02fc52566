// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/NSInvocation.h"

namespace quoll::inline v1 {

/// A stand-in for another object: what it does not know itself, it forwards. It knows only counting, `isProxy`,
/// `methodSignatureForSelector:` and `forwardInvocation:`, the two that a subclass overrides.
///
/// For the C++ compiler it is an NSObject, for the runtime it is none: its class has no superclass, and every other
/// operation of NSObject sends itself on. A typed function is no message and is not forwarded: use `send` or
/// `on(proxy).call<&Document::setTitle>(title)`. A proxy given to a parameter of a typed class raises.
class QF_EXPORT NSProxy : public NSObject {
 public:
  using Self = NSProxy;
  using Super = void;
  static Class* classObject();
  Class* isa() const override { return classObject(); }

  bool isProxy() const override { return true; }
  Ref<NSMethodSignature> methodSignatureForSelector(Selector selector) const override;  ///< Raises unless overridden.

  Class* class_() const override;
  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override;
  Ref<NSString> description() const override;
  Ref<NSString> debugDescription() const override;
  bool isKindOfClass(const Class* cls) const override;
  bool isMemberOfClass(const Class* cls) const override;
  bool conformsToProtocol(const Protocol* protocol) const override;
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;
  bool respondsToSelector(Selector selector) const override;
  void doesNotRecognizeSelector(Selector selector) const override;
  Ref<NSObject> valueForKey(const NSString* key) const override;
  void setValue_forKey(NSObject* value, const NSString* key) override;
  Ref<NSObject> valueForKeyPath(const NSString* path) const override;
  void setValue_forKeyPath(NSObject* value, const NSString* path) override;
  Ref<NSObject> valueForUndefinedKey(const NSString* key) const override;
  void setValue_forUndefinedKey(NSObject* value, const NSString* key) override;
  void setNilValueForKey(const NSString* key) override;
  Ref<NSDictionary> dictionaryWithValuesForKeys(NSArray* keys) const override;
  void setValuesForKeysWithDictionary(NSDictionary* values) override;
  uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                     uint64_t count) override;
};

}  // namespace quoll::inline v1
