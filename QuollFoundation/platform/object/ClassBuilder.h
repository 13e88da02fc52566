// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/object/Class.h"

namespace quoll::inline v1 {

/// Says what class T is, once, inside `T::classObject()`:
///
///     Class* Counter::classObject() {
///       static Class* const cls = ClassBuilder<Counter>("Counter")
///           .property<&Counter::value, &Counter::setValue>("value")
///           .initializer<&Counter::initWithValue_ofClass>("initWithValue:")
///           .method<&Counter::add>("add:")
///           .build();
///       return cls;
///     }
///
/// A selector with another number of colons than its function has parameters raises when the class is built; written
/// with `_sel` it does not compile. A name that another class has raises NSInternalInconsistencyException.
template <class T> class ClassBuilder {
 public:
  explicit ClassBuilder(std::string_view name) {
    static_assert(std::is_same_v<typename T::Self, T>, "the class lacks its own QF_CLASS line");
    plan_.name = name;
    plan_.source = &T::classObject;
    if constexpr (requires { typename T::Super; }) {
      if constexpr (!std::is_void_v<typename T::Super>) plan_.superclass = T::Super::classObject();
    }
    if constexpr (std::is_default_constructible_v<detail::Made<T>>) {
      plan_.creator = [] { return Ref<NSObject>(make<T>()); };
    }
  }

  template <auto f> ClassBuilder& method(detail::SelectorOnReceiver<f> s) { return add(quoll::method<f>(s.selector)); }
  template <auto f> ClassBuilder& method(std::string_view name) {
    return add(quoll::method<f>(registerSelector(name)));
  }
  template <auto f> ClassBuilder& classMethod(detail::SelectorOnClass<f> s) {
    return add(quoll::classMethod<f>(s.selector));
  }
  template <auto f> ClassBuilder& classMethod(std::string_view name) {
    return add(quoll::classMethod<f>(registerSelector(name)));
  }
  template <auto f> ClassBuilder& initializer(detail::SelectorOnClass<f> s) {
    return add(quoll::initializer<f>(s.selector));
  }
  template <auto f> ClassBuilder& initializer(std::string_view name) {
    return add(quoll::initializer<f>(registerSelector(name)));
  }

  /// Readable and writable: `title` and `setTitle:`, `isOpen` and `setOpen:`, or a setter of another name.
  template <auto get, auto set> ClassBuilder& property(std::string_view name) {
    const bool hasIs = name.size() > 2 && name.starts_with("is") && name[2] >= 'A' && name[2] <= 'Z';
    std::string setter = "set" + std::string(hasIs ? name.substr(2) : name) + ":";
    if (setter[3] >= 'a' && setter[3] <= 'z') setter[3] = static_cast<char>(setter[3] - 0x20);
    add(quoll::method<set>(registerSelector(setter)));
    return writableProperty<get>(name);
  }
  template <auto get, auto set> ClassBuilder& property(std::string_view name, detail::SelectorOnReceiver<set> setter) {
    add(quoll::method<set>(setter.selector));
    return writableProperty<get>(name);
  }
  /// Readable only.
  template <auto get> ClassBuilder& property(std::string_view name) {
    Method getter = quoll::method<get>(registerSelector(name));
    getter.isProperty = true;
    return add(getter);
  }

  ClassBuilder& conformsTo(std::string_view protocol) {
    plan_.protocols.emplace_back(protocol);
    return *this;
  }
  /// The last method added has an effect: key-value coding never reads it.
  ClassBuilder& notAKey() {
    plan_.methods.back().isKey = false;
    return *this;
  }
  /// Key-value coding uses no method of this class and its subclasses: all keys but those of properties reach the
  /// undefined-key hooks.
  ClassBuilder& notCodable() {
    plan_.isCodable = false;
    return *this;
  }

  Class* build() { return Class::build(std::move(plan_)); }

 private:
  /// The last method added is the setter.
  template <auto get> ClassBuilder& writableProperty(std::string_view name) {
    const Selector setter = plan_.methods.back().selector;
    property<get>(name);
    plan_.methods.back().setter = setter;
    return *this;
  }
  ClassBuilder& add(Method m) {
    plan_.methods.push_back(m);
    return *this;
  }
  Class::Plan plan_;
};

}  // namespace quoll::inline v1
