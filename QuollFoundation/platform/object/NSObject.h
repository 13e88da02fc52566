// SPDX-License-Identifier: MIT
#pragma once

#include <new>
#include <type_traits>

#include "QuollFoundation/platform/object/AtomicRef.h"
#include "QuollFoundation/platform/object/Ref.h"
#include "QuollFoundation/platform/object/Selector.h"
#include "QuollFoundation/platform/object/Weak.h"

/// Gives a class its `classObject()` (to be defined, see ClassBuilder) and its `isa()`.
///
/// An initialiser called through a subclass's name without its template argument makes the base class, since C++
/// gives an inherited static function no receiver: write `Base::initWithName<Sub>(name)`, or redeclare the function
/// in one line where the subclass wants a spelling of its own.
#define QF_CLASS(Name, Base)                                     \
 public:                                                         \
  using Self = Name;                                             \
  using Super = Base;                                            \
  static ::quoll::Class* classObject();                          \
  ::quoll::Class* isa() const override { return classObject(); } \
                                                                 \
 private:

namespace quoll::inline v1 {

class Class;
class NSArray;
class NSDictionary;
class NSInvocation;
class NSMethodSignature;
class NSString;
class Protocol;
struct NSFastEnumerationState;
struct NSZone {};  ///< There is one zone, the system's; pass null.

namespace detail {
struct Dispatch;
}

/// The root of all classes.
///
///     Ref<Counter> counter = make<Counter>(5);
///
/// Objects are made by `make<T>` only, held by `Ref<T>` and never copied by C++ copy. Each class says what it is in
/// one function, see ClassBuilder. A class with its own `isEqual` has its own `hash`: equal objects hash the same.
///
/// Threads: counting is thread-safe; everything else as the class says.
class QF_EXPORT NSObject {
 public:
  using Self = NSObject;
  NSObject(const NSObject&) = delete;
  NSObject& operator=(const NSObject&) = delete;
  static void* operator new(size_t) = delete;

  static Class* classObject();
  virtual Class* isa() const;  ///< What the object is, also where a proxy would say something else.

  // Identity and description
  virtual Class* class_() const;  ///< What the object says it is.
  Class* superclass() const;      ///< Null for a root.
  virtual bool isEqual(const NSObject* other) const;
  virtual uint64_t hash() const;
  virtual Ref<NSString> description() const;
  virtual Ref<NSString> debugDescription() const;  ///< The description, unless overridden.
  virtual bool isKindOfClass(const Class* cls) const;
  virtual bool isMemberOfClass(const Class* cls) const;
  virtual bool conformsToProtocol(const Protocol* protocol) const;
  virtual bool isProxy() const;

  // Copies. `copyWithZone` raises the unrecognized selector unless a class overrides it.
  Ref<NSObject> copy() const { return copyWithZone(nullptr); }
  Ref<NSObject> mutableCopy() const { return mutableCopyWithZone(nullptr); }
  virtual Ref<NSObject> copyWithZone(NSZone* zone) const;
  virtual Ref<NSObject> mutableCopyWithZone(NSZone* zone) const;

  // Messages
  virtual bool respondsToSelector(Selector selector) const;
  virtual Ref<NSMethodSignature> methodSignatureForSelector(Selector selector) const;  ///< Null: unknown.
  virtual void forwardInvocation(NSInvocation* invocation);                            ///< Raises unless overridden.
  virtual void doesNotRecognizeSelector(Selector selector) const;                      ///< Raises.
  /// The result where it is an object, else null.
  Ref<NSObject> performSelector(Selector selector);
  Ref<NSObject> performSelector_withObject(Selector selector, NSObject* argument);
  Ref<NSObject> performSelector_withObject_withObject(Selector selector, NSObject* first, NSObject* second);

  // Key-value coding: read and write by name, see coding/KeyValueCoding.h.
  virtual Ref<NSObject> valueForKey(const NSString* key) const;
  virtual void setValue_forKey(NSObject* value, const NSString* key);
  virtual Ref<NSObject> valueForKeyPath(const NSString* path) const;
  virtual void setValue_forKeyPath(NSObject* value, const NSString* path);
  virtual Ref<NSObject> valueForUndefinedKey(const NSString* key) const;        ///< Raises unless overridden.
  virtual void setValue_forUndefinedKey(NSObject* value, const NSString* key);  ///< Raises unless overridden.
  virtual void setNilValueForKey(const NSString* key);  ///< Null for a number or struct: raises unless overridden.
  virtual Ref<NSDictionary> dictionaryWithValuesForKeys(NSArray* keys) const;  ///< Absent values as NSNull.
  virtual void setValuesForKeysWithDictionary(NSDictionary* values);

  /// Puts up to `count` elements where `state` says; 0 at the end. Raises unless a collection overrides it.
  virtual uint64_t countByEnumeratingWithState_objects_count(NSFastEnumerationState* state, NSObject** objects,
                                                             uint64_t count);

  friend bool operator==(const NSObject& a, const NSObject& b) { return a.isEqual(&b); }

 protected:
  constexpr NSObject() = default;
  constexpr virtual ~NSObject() = default;
  static void operator delete(void*) {}  // never called: virtual destructors have to name one

 private:
  friend struct detail::Counts;
  friend struct detail::Dispatch;
  virtual void madeByMake() const = 0;  // so that no class can be made on the stack, as a member, or by new
  virtual detail::Dispatch dispatch() const;
  virtual void reserved1();  // room for later operations without a new ABI
  virtual void reserved2();
  virtual void reserved3();
  virtual void reserved4();
  virtual void reserved5();
  virtual void reserved6();
  virtual void reserved7();
  virtual void reserved8();
};

namespace detail {

/// The finished form of T: what `make` builds, and the way to a protected constructor.
template <class T> struct Made : T {
  Made() = default;
  template <class... A> requires(sizeof...(A) > 0)
  constexpr explicit Made(A&&... arguments) : T(std::forward<A>(arguments)...) {}

 private:
  void madeByMake() const override {}
};

/// A class says of itself `using Plain = Name;` when its destructor has nothing to do: no member has one. Its objects
/// then go without being asked. A subclass is not plain unless it says so too.
template <class T> inline constexpr bool isPlain = requires { requires std::is_same_v<typename T::Plain, T>; };

[[noreturn]] QF_EXPORT void rejectMisplaced();  // another base with virtual functions stands before NSObject

}  // namespace detail

/// A new object with `extraBytes` behind it, for classes that keep their contents in place. Its one strong reference
/// is the one returned.
template <class T, class... A> Ref<T> makeSized(size_t extraBytes, A&&... arguments) {
  using Object = detail::Made<T>;
  static_assert(alignof(Object) <= sizeof(detail::Header), "over-aligned members are not supported");
  constexpr size_t alignment = alignof(Object);
  constexpr uint64_t marks = detail::isPlain<T> ? detail::Header::plain : 0;
  void* place = detail::allocateObject((sizeof(Object) + extraBytes + alignment - 1) / alignment * alignment, marks);
  detail::Header* header = static_cast<detail::Header*>(place) - 1;
  try {
    T* object;
    if constexpr (sizeof...(A) == 0) object = ::new (place) Object;  // no (): that would zero the fields first
    else object = ::new (place) Object(std::forward<A>(arguments)...);
    if (static_cast<void*>(static_cast<NSObject*>(object)) != place) detail::rejectMisplaced();  // folded away
    if (detail::recordsLiveObjects.load(std::memory_order_relaxed)) [[unlikely]]
      detail::recordLiveObject(object);
    return Ref<T>::adopt(object);
  } catch (...) {
    detail::abandonObject(header);
    throw;
  }
}

/// A new object; its one strong reference is the one returned.
template <class T, class... A> Ref<T> make(A&&... arguments) { return makeSized<T>(0, std::forward<A>(arguments)...); }

}  // namespace quoll::inline v1
