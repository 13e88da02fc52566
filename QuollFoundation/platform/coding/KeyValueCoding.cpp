// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/coding/KeyValueCoding.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

namespace detail {

extern constinit const AdditionGroup<NSObject> keyValueCoding{
    "NSKeyValueCoding",
    {method<&NSObject::valueForKey>("valueForKey:"_sel), method<&NSObject::setValue_forKey>("setValue:forKey:"_sel),
     method<&NSObject::valueForKeyPath>("valueForKeyPath:"_sel),
     method<&NSObject::setValue_forKeyPath>("setValue:forKeyPath:"_sel),
     method<&NSObject::valueForUndefinedKey>("valueForUndefinedKey:"_sel),
     method<&NSObject::setValue_forUndefinedKey>("setValue:forUndefinedKey:"_sel),
     method<&NSObject::setNilValueForKey>("setNilValueForKey:"_sel)}};

namespace {

/// The text of a key, in place where it is ASCII.
class KeyText {
 public:
  explicit KeyText(const NSString* key) {
    if (const char* ascii = key->asciiCharacters()) view_ = {ascii, key->length()};
    else view_ = converted_ = key->utf8();
  }
  std::string_view view() const { return view_; }

 private:
  std::string converted_;
  std::string_view view_;
};

/// A name put together from parts, without allocation where it is of any common length.
class Name {
 public:
  Name(std::string_view prefix, std::string_view key, std::string_view suffix) {
    const size_t length = prefix.size() + key.size() + suffix.size();
    char* to = here_;
    if (length > sizeof here_) {
      long_.resize(length);
      to = long_.data();
    }
    std::memcpy(to, prefix.data(), prefix.size());
    char* first = to + prefix.size();
    std::memcpy(first, key.data(), key.size());
    std::memcpy(first + key.size(), suffix.data(), suffix.size());
    if (!prefix.empty()) *first = upper(*first);
    else *first = lower(*first);
    view_ = {to, length};
  }
  std::string_view view() const { return view_; }

 private:
  static char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c; }
  static char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; }
  char here_[120];
  std::string long_;
  std::string_view view_;
};

bool hasIs(std::string_view key) { return key.size() > 2 && key.starts_with("is") && key[2] >= 'A' && key[2] <= 'Z'; }

const Entry* findNamed(const Table& table, std::string_view name) { return table.find(hashOf(name), name); }

bool isReadable(const Entry* entry) { return entry && mayReadAsKey(entry->method); }
bool isProperty(const Entry* entry) { return entry && entry->method.isProperty; }

/// `isKey` for `key`, and `key` for `isKey`.
const Entry* findTwin(const Table& table, std::string_view key) {
  return findNamed(table, hasIs(key) ? Name("", key.substr(2), "").view() : Name("is", key, "").view());
}

/// What is read for a key that names no property.
[[gnu::noinline]] const Entry* findOtherGetter(const NSObject* object, const Table& table, const Entry* exact,
                                               std::string_view key) {
  if (key.empty()) return nullptr;
  const Entry* twin = findTwin(table, key);
  if (isProperty(twin) && isReadable(twin)) return twin;
  if (!object->isa()->isCodable()) return nullptr;
  if (isReadable(exact)) return exact;
  return !hasIs(key) && isReadable(twin) ? twin : nullptr;
}

const Entry* findGetter(const NSObject* object, const Table& table, std::string_view key) {
  const Entry* exact = findNamed(table, key);
  if (isProperty(exact)) [[likely]]
    return exact;
  return findOtherGetter(object, table, exact, key);
}

/// Calls a method through its direct entry point, in the canonical types that its key stands for.
template <class R, class... A> R call(const Entry& entry, NSObject* object, A... arguments) {
  return reinterpret_cast<R (*)(NSObject*, A...)>(entry.direct)(object, arguments...);
}

/// Calls a method that takes nothing, and boxes what it gives.
Ref<NSObject> read(const Entry& entry, NSObject* object) {
  const Implementation& implementation = *entry.method.implementation;
  switch (static_cast<ResultKind>(entry.key & 0xFF)) {
    case ResultKind::Object: return Ref<NSObject>::adopt(call<NSObject*>(entry, object));
    case ResultKind::Integer: return makeNumber(call<int64_t>(entry, object), numberEncoding(*implementation.encoding));
    case ResultKind::Double: return makeNumber(call<double>(entry, object), "d");
    case ResultKind::Float: return makeNumber(static_cast<double>(call<float>(entry, object)), "f");
    default: break;
  }
  Value result;
  implementation.apply(object, {}, result);
  return result.boxed();
}

bool isSetter(const Entry* entry) {
  return entry && entry->method.kind == MethodKind::Instance && entry->method.implementation->argumentCount == 1;
}

[[gnu::noinline]] const Entry* findOtherSetter(const NSObject* object, const Table& table, const Entry* exact,
                                               std::string_view key) {
  if (key.empty()) return nullptr;
  if (const Entry* twin = findTwin(table, key); twin && twin->setter) return twin->setter;
  if (!object->isa()->isCodable()) return nullptr;
  const Entry* setter = findNamed(table, Name("set", key, ":").view());
  if (isSetter(setter)) return setter;
  if (!hasIs(key) || !isReadable(exact)) return nullptr;
  setter = findNamed(table, Name("set", key.substr(2), ":").view());
  return isSetter(setter) ? setter : nullptr;
}

const Entry* findSetter(const NSObject* object, const Table& table, std::string_view key) {
  const Entry* exact = findNamed(table, key);
  if (exact && exact->setter) [[likely]]
    return exact->setter;
  return findOtherSetter(object, table, exact, key);
}

/// The type of what a setter takes: behind its result, the receiver and the selector.
std::string_view parameterType(const Entry& setter) {
  const std::string_view encoding = setter.method.implementation->encoding;
  return encoding[0] == 'v' ? encoding.substr(3) : firstType(encoding).rest.substr(2);
}

[[noreturn]] void raiseUnfit(const NSObject* object, std::string_view key, const NSException& why) {
  raise(why.name(), methodName(object, "setValue:forKey:") + ": key " + std::string(key) + ": " + why.reason()->utf8());
}

/// Runs a conversion, which calls nobody's code, and says what it was for when it raises.
template <class Convert> auto convert(const NSObject* object, std::string_view key, Convert conversion) {
  try {
    return conversion();
  } catch (const NSException& why) {
    raiseUnfit(object, key, why);
  }
}

bool takesNull(std::string_view type) {
  const char lead = type[type.size() > 1 && type[0] == 'r'];
  return lead == '@' || lead == '#' || lead == '*' || lead == '^';
}

/// Calls a setter by way of any types. False where null is given for a number or struct.
[[gnu::noinline]] bool writeErased(const Entry& setter, NSObject* object, NSObject* value, std::string_view key) {
  const std::string_view type = parameterType(setter);
  if (!value && !takesNull(type)) return false;
  const Value argument =
      value ? convert(object, key, [&] { return Value::unboxed(value, type); }) : Value::ofObject(nullptr);
  Value ignored;
  setter.method.implementation->apply(object, {&argument, 1}, ignored);
  return true;
}

/// The common setters directly, the others by way of any types.
bool write(const Entry& setter, NSObject* object, NSObject* value, std::string_view key) {
  if (setter.key == signatureKey<void, NSObject*>()) {
    call<void>(setter, object, value);
    return true;
  }
  const auto* number = as<NSNumber>(value);
  if (number && setter.key == signatureKey<void, int64_t>()) {
    const char type = setter.method.implementation->encoding[3];  // behind "v@:"
    call<void>(setter, object, convert(object, key, [&] { return unboxForParameter(number, type); }));
    return true;
  }
  if (number && setter.key == signatureKey<void, double>()) {
    call<void>(setter, object, number->doubleValue());
    return true;
  }
  return writeErased(setter, object, value, key);
}

std::string undefined(const NSObject* object, std::string_view method, const NSString* key) {
  char address[24];
  std::snprintf(address, sizeof address, "%p", static_cast<const void*>(object));
  return "[<" + std::string(object->isa()->name()) + " " + address + "> " + std::string(method) + "]: this class is " +
         "not key value coding-compliant for the key " + (key ? key->utf8() : "(null)") + ".";
}

uint64_t firstDot(const NSString* path) {
  return path->visit([](auto text) { return static_cast<uint64_t>(text.find('.')); });
}

constexpr uint64_t noDot = static_cast<uint64_t>(std::string_view::npos);

}  // namespace
}  // namespace detail

using detail::Dispatch;
using detail::Entry;

bool answersKey(const NSObject* object, const NSString* key) {
  return object && key && detail::findGetter(object, *Dispatch::of(object).table, detail::KeyText(key).view());
}

Ref<NSObject> NSObject::valueForKey(const NSString* key) const {
  if (!key) detail::raiseNilArgument(this, "valueForKey:");
  const Entry* getter = detail::findGetter(this, *Dispatch::of(this).table, detail::KeyText(key).view());
  if (!getter) return valueForUndefinedKey(key);
  return detail::read(*getter, const_cast<NSObject*>(this));  // a property, or a method of a const receiver
}

void NSObject::setValue_forKey(NSObject* value, const NSString* key) {
  if (!key) detail::raiseNilArgument(this, "setValue:forKey:");
  const detail::KeyText text(key);
  const Entry* setter = detail::findSetter(this, *Dispatch::of(this).table, text.view());
  if (!setter) return setValue_forUndefinedKey(value, key);
  if (!detail::write(*setter, this, value, text.view())) setNilValueForKey(key);
}

Ref<NSObject> NSObject::valueForKeyPath(const NSString* path) const {
  if (!path) detail::raiseNilArgument(this, "valueForKeyPath:");
  const uint64_t dot = detail::firstDot(path);
  if (dot == detail::noDot) return valueForKey(path);
  const Ref<NSObject> next = valueForKey(path->substringToIndex(dot));
  return next ? next->valueForKeyPath(path->substringFromIndex(dot + 1)) : nullptr;
}

void NSObject::setValue_forKeyPath(NSObject* value, const NSString* path) {
  if (!path) detail::raiseNilArgument(this, "setValue:forKeyPath:");
  const uint64_t dot = detail::firstDot(path);
  if (dot == detail::noDot) return setValue_forKey(value, path);
  const Ref<NSObject> next = valueForKey(path->substringToIndex(dot));
  if (next) next->setValue_forKeyPath(value, path->substringFromIndex(dot + 1));
}

Ref<NSObject> NSObject::valueForUndefinedKey(const NSString* key) const {
  raise(NSUndefinedKeyException, detail::undefined(this, "valueForUndefinedKey:", key));
}
void NSObject::setValue_forUndefinedKey(NSObject*, const NSString* key) {
  raise(NSUndefinedKeyException, detail::undefined(this, "setValue:forUndefinedKey:", key));
}
void NSObject::setNilValueForKey(const NSString* key) {
  raise(NSInvalidArgumentException, detail::methodName(this, "setNilValueForKey:") +
                                        ": null can't be the value for the key " + (key ? key->utf8() : "(null)") +
                                        ", which is a number or struct");
}

namespace {
/// What only reads asks its target, which may change inside.
NSObject* receiver(const NSProxy* proxy) { return const_cast<NSProxy*>(proxy); }
}  // namespace

Ref<NSObject> NSProxy::valueForKey(const NSString* key) const {
  return send<Ref<NSObject>>(receiver(this), "valueForKey:"_sel, key);
}
void NSProxy::setValue_forKey(NSObject* value, const NSString* key) { send(this, "setValue:forKey:"_sel, value, key); }
Ref<NSObject> NSProxy::valueForKeyPath(const NSString* path) const {
  return send<Ref<NSObject>>(receiver(this), "valueForKeyPath:"_sel, path);
}
void NSProxy::setValue_forKeyPath(NSObject* value, const NSString* path) {
  send(this, "setValue:forKeyPath:"_sel, value, path);
}
Ref<NSObject> NSProxy::valueForUndefinedKey(const NSString* key) const {
  return send<Ref<NSObject>>(receiver(this), "valueForUndefinedKey:"_sel, key);
}
void NSProxy::setValue_forUndefinedKey(NSObject* value, const NSString* key) {
  send(this, "setValue:forUndefinedKey:"_sel, value, key);
}
void NSProxy::setNilValueForKey(const NSString* key) { send(this, "setNilValueForKey:"_sel, key); }

}  // namespace quoll::inline v1
