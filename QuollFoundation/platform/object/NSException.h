// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/NSObject.h"

namespace quoll::inline v1 {

/// What a programmer's mistake raises.
///
///     try { ... } catch (const NSException& e) {
///       if (isEqual(e.name(), NSRangeException)) std::cerr << e.what() << '\n';
///     }
///
/// Small and cheap to copy: copies share one counted object. Threads: immutable.
class QF_EXPORT NSException : public std::exception {
 public:
  NSException(const NSString* name, const NSString* reason, NSDictionary* userInfo = nullptr);
  ~NSException() override;
  NSException(const NSException&) = default;
  NSException& operator=(const NSException&) = default;

  Ref<NSString> name() const;
  Ref<NSString> reason() const;
  Ref<NSDictionary> userInfo() const;               ///< May be null.
  const char* what() const noexcept override;       ///< "name: reason", in UTF-8.
  Ref<NSObject> object() const { return record_; }  ///< To put it into a format or a collection.

 private:
  Ref<NSObject> record_;
};

/// Throws an NSException; the reason is UTF-8.
[[noreturn]] QF_EXPORT void raise(const NSString* name, std::string_view reason);

/// The names of exceptions. Each value is the constant's name; NSUndefinedKeyException is "NSUnknownKeyException".
QF_EXPORT extern NSString* const NSGenericException;
QF_EXPORT extern NSString* const NSInternalInconsistencyException;
QF_EXPORT extern NSString* const NSInvalidArgumentException;
QF_EXPORT extern NSString* const NSMallocException;
QF_EXPORT extern NSString* const NSObjectNotAvailableException;
QF_EXPORT extern NSString* const NSRangeException;
QF_EXPORT extern NSString* const NSUndefinedKeyException;

namespace detail {
/// "-[Class selector]" or "+[Class selector]" of the receiver, for messages. Never messages the receiver.
QF_EXPORT std::string methodName(const NSObject* receiver, std::string_view selector);
/// "<Class: 0x...>", for messages. Never messages the object.
QF_EXPORT std::string plainDescription(const NSObject* object);
/// NSRangeException: "-[Class selector]: index 7 beyond bounds [0 .. 2]", or "beyond bounds for empty ...".
[[noreturn]] QF_EXPORT void raiseIndex(const NSObject* receiver, std::string_view selector, uint64_t index,
                                       uint64_t count);
/// NSRangeException: "-[Class selector]: Range {4, 9} out of bounds; length 5".
[[noreturn]] QF_EXPORT void raiseRange(const NSObject* receiver, std::string_view selector, NSRange range,
                                       uint64_t length);
/// NSInvalidArgumentException: "-[Class selector]: nil argument".
[[noreturn]] QF_EXPORT void raiseNilArgument(const NSObject* receiver, std::string_view selector);
/// NSInvalidArgumentException: "-[Class selector]: unrecognized selector sent to instance 0x...".
[[noreturn]] QF_EXPORT void raiseUnrecognized(const NSObject* receiver, Selector selector);
/// Sends `doesNotRecognizeSelector:`, and raises also where an override returns.
[[noreturn]] QF_EXPORT void refuseSelector(const NSObject* receiver, Selector selector);
}  // namespace detail

}  // namespace quoll::inline v1
