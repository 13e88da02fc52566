// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/collections/NSDictionary.h"

namespace quoll::inline v1 {

/// What went wrong, for a caller who can do something about it: a number within a domain, and further information.
///
///     Ref<NSError> error;
///     if (!file->read(&error)) std::cerr << error->localizedDescription() << '\n';
///
/// Threads: immutable.
class QF_EXPORT NSError : public NSObject {
  QF_CLASS(NSError, NSObject)
 public:
  /// A null domain raises NSInvalidArgumentException; null information is an empty dictionary.
  template <class T = NSError> static Ref<T> errorWithDomain_code_userInfo(const NSString* domain, int64_t code,
                                                                           const NSDictionary* userInfo) {
    return cast<T>(errorWithDomain_code_userInfo_ofClass(domain, code, userInfo, T::classObject()));
  }
  template <class T = NSError> static Ref<T> initWithDomain_code_userInfo(const NSString* domain, int64_t code,
                                                                          const NSDictionary* userInfo) {
    return cast<T>(initWithDomain_code_userInfo_ofClass(domain, code, userInfo, T::classObject()));
  }
  static Ref<NSError> errorWithDomain_code_userInfo_ofClass(const NSString* domain, int64_t code,
                                                            const NSDictionary* userInfo, Class* cls);
  static Ref<NSError> initWithDomain_code_userInfo_ofClass(const NSString* domain, int64_t code,
                                                           const NSDictionary* userInfo, Class* cls);

  Ref<NSString> domain() const { return domain_; }
  int64_t code() const { return code_; }
  Ref<NSDictionary> userInfo() const { return userInfo_; }
  /// That of the information, else one made of the domain and the code; for POSIX errors with the system's words.
  Ref<NSString> localizedDescription() const;
  Ref<NSString> localizedFailureReason() const;  ///< Of the information, or null.
  /// What led to this: the single underlying error, then the listed ones; what is no error is left out.
  Ref<NSArray> underlyingErrors() const;

  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override;
  Ref<NSString> description() const override;               ///< "Error Domain=... Code=... \"...\""
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

 protected:
  NSError();

 private:
  Ref<NSString> domain_;
  int64_t code_ = 0;
  Ref<NSDictionary> userInfo_;
};

/// Domains.
QF_EXPORT extern NSString* const NSCocoaErrorDomain;
QF_EXPORT extern NSString* const NSOSStatusErrorDomain;
QF_EXPORT extern NSString* const NSPOSIXErrorDomain;  ///< The code is an `errno`.

/// Keys of the user information.
QF_EXPORT extern NSString* const NSFilePathErrorKey;
QF_EXPORT extern NSString* const NSLocalizedDescriptionKey;
QF_EXPORT extern NSString* const NSLocalizedFailureReasonErrorKey;
QF_EXPORT extern NSString* const NSLocalizedRecoverySuggestionErrorKey;
QF_EXPORT extern NSString* const NSMultipleUnderlyingErrorsKey;  ///< An array of errors.
QF_EXPORT extern NSString* const NSUnderlyingErrorKey;           ///< One error.
QF_EXPORT extern NSString* const NSURLErrorKey;

}  // namespace quoll::inline v1
