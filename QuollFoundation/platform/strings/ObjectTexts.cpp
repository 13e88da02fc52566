// SPDX-License-Identifier: MIT

// What objects say about themselves, and the texts of exceptions: members of lower classes that need strings.

#include <array>
#include <charconv>
#include <ostream>

#include "QuollFoundation/platform/object/AdditionGroup.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/object/Protocol.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/ObjectTextsInternal.h"
#include "QuollFoundation/platform/strings/TextInternal.h"

namespace quoll::inline v1 {

using detail::Text;

// Descriptions

Ref<NSString> NSObject::description() const { return Text::fromUTF8Lossy(detail::plainDescription(this)); }
Ref<NSString> NSObject::debugDescription() const { return description(); }
Ref<NSString> Class::description() const { return Text::fromUTF8Lossy(name_); }
Ref<NSString> Protocol::description() const { return Text::fromUTF8Lossy(name()); }

Ref<NSString> NSProxy::description() const {
  return send<Ref<NSString>>(const_cast<NSProxy*>(this), "description"_sel);
}
Ref<NSString> NSProxy::debugDescription() const {
  return send<Ref<NSString>>(const_cast<NSProxy*>(this), "debugDescription"_sel);
}

std::ostream& operator<<(std::ostream& out, const NSObject* object) {
  if (!object) return out << "(null)";
  if (object->isProxy()) return out << detail::plainDescription(object);
  const Ref<NSString> text = object->description();
  return out << (text ? text->utf8() : "(null)");
}

namespace detail {

extern constinit const AdditionGroup<NSObject> objectTexts{
    "ObjectTexts",
    {method<&NSObject::description>("description"_sel), method<&NSObject::debugDescription>("debugDescription"_sel)}};

// Exceptions

Class* ExceptionRecord::classObject() {
  static Class* const cls = ClassBuilder<ExceptionRecord>("NSException")
                                .method<&ExceptionRecord::name>("name"_sel)
                                .method<&ExceptionRecord::reason>("reason"_sel)
                                .method<&ExceptionRecord::userInfo>("userInfo"_sel)
                                .build();
  return cls;
}

ExceptionRecord::ExceptionRecord(const NSString* name, const NSString* reason, NSObject* userInfo)
    : name_(name ? Text::immutable(name) : nullptr),
      reason_(reason ? Text::immutable(reason) : nullptr),
      userInfo_(userInfo),
      what_(name ? name->utf8() : "(null)") {
  if (reason) what_ += ": " + reason->utf8();
}

Ref<NSString> ExceptionRecord::description() const { return reason_ ? reason_ : name_; }

namespace {

const ExceptionRecord* recordOf(const Ref<NSObject>& object) {
  return static_cast<const ExceptionRecord*>(object.get());
}

/// A dictionary is an object, though nothing more of it is known here: NSObject is its first base.
NSObject* asObject(NSDictionary* dictionary) { return reinterpret_cast<NSObject*>(dictionary); }
NSDictionary* asDictionary(NSObject* object) { return reinterpret_cast<NSDictionary*>(object); }

}  // namespace
}  // namespace detail

NSException::NSException(const NSString* name, const NSString* reason, NSDictionary* userInfo)
    : record_(make<detail::ExceptionRecord>(name, reason, detail::asObject(userInfo))) {}
NSException::~NSException() = default;

Ref<NSString> NSException::name() const { return detail::recordOf(record_)->name(); }
Ref<NSString> NSException::reason() const { return detail::recordOf(record_)->reason(); }
Ref<NSDictionary> NSException::userInfo() const { return detail::asDictionary(detail::recordOf(record_)->userInfo()); }
const char* NSException::what() const noexcept { return detail::recordOf(record_)->what(); }

void raise(const NSString* name, std::string_view reason) { throw NSException(name, Text::fromUTF8Lossy(reason)); }

constinit NSString* const NSGenericException = "NSGenericException"_ns;
constinit NSString* const NSInternalInconsistencyException = "NSInternalInconsistencyException"_ns;
constinit NSString* const NSInvalidArgumentException = "NSInvalidArgumentException"_ns;
constinit NSString* const NSMallocException = "NSMallocException"_ns;
constinit NSString* const NSObjectNotAvailableException = "NSObjectNotAvailableException"_ns;
constinit NSString* const NSRangeException = "NSRangeException"_ns;
constinit NSString* const NSUndefinedKeyException = "NSUnknownKeyException"_ns;

namespace detail {

namespace {

std::string addressText(const void* address) {
  std::array<char, 2 * sizeof(void*)> digits;
  const auto written =
      std::to_chars(digits.data(), digits.data() + digits.size(), reinterpret_cast<uintptr_t>(address), 16);
  return "0x" + std::string(digits.data(), written.ptr);
}

/// The object as a class, where it is one; asks the object nothing that a proxy would answer.
const Class* asClass(const NSObject* object) { return object ? as<Class>(object) : nullptr; }

std::string classNameOf(const NSObject* object) {
  if (!object) return "(null)";
  const Class* cls = asClass(object);
  return std::string((cls ? cls : object->isa())->name());
}

}  // namespace

std::string methodName(const NSObject* receiver, std::string_view selector) {
  return (asClass(receiver) ? "+[" : "-[") + classNameOf(receiver) + " " + std::string(selector) + "]";
}

std::string plainDescription(const NSObject* object) {
  if (!object) return "(null)";
  return "<" + std::string(object->isa()->name()) + ": " + addressText(object) + ">";
}

void raiseIndex(const NSObject* receiver, std::string_view selector, uint64_t index, uint64_t count) {
  const std::string bounds =
      count == 0 ? "for empty " + classNameOf(receiver) : "[0 .. " + std::to_string(count - 1) + "]";
  raise(NSRangeException,
        methodName(receiver, selector) + ": index " + std::to_string(index) + " beyond bounds " + bounds);
}

void raiseRange(const NSObject* receiver, std::string_view selector, NSRange range, uint64_t length) {
  raise(NSRangeException, methodName(receiver, selector) + ": Range {" + std::to_string(range.location) + ", " +
                              std::to_string(range.length) + "} out of bounds; length " + std::to_string(length));
}

void raiseNilArgument(const NSObject* receiver, std::string_view selector) {
  raise(NSInvalidArgumentException, methodName(receiver, selector) + ": nil argument");
}

void raiseUnrecognized(const NSObject* receiver, Selector selector) {
  const std::string_view name = selector ? selector.name() : "(null)";
  const char* kind = asClass(receiver) ? "class " : "instance ";
  raise(NSInvalidArgumentException,
        methodName(receiver, name) + ": unrecognized selector sent to " + kind + addressText(receiver));
}

void raiseNullReceiver(std::string_view className) {
  raise(NSInvalidArgumentException, "a null reference to " + std::string(className) + " was followed");
}

}  // namespace detail
}  // namespace quoll::inline v1
