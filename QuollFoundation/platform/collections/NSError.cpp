// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSError.h"

#include <system_error>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

constinit NSString* const NSCocoaErrorDomain = "NSCocoaErrorDomain"_ns;
constinit NSString* const NSOSStatusErrorDomain = "NSOSStatusErrorDomain"_ns;
constinit NSString* const NSPOSIXErrorDomain = "NSPOSIXErrorDomain"_ns;
constinit NSString* const NSFilePathErrorKey = "NSFilePath"_ns;
constinit NSString* const NSLocalizedDescriptionKey = "NSLocalizedDescription"_ns;
constinit NSString* const NSLocalizedFailureReasonErrorKey = "NSLocalizedFailureReason"_ns;
constinit NSString* const NSLocalizedRecoverySuggestionErrorKey = "NSLocalizedRecoverySuggestion"_ns;
constinit NSString* const NSMultipleUnderlyingErrorsKey = "NSMultipleUnderlyingErrors"_ns;
constinit NSString* const NSUnderlyingErrorKey = "NSUnderlyingError"_ns;
constinit NSString* const NSURLErrorKey = "NSURL"_ns;

Class* NSError::classObject() {
  static Class* const cls =
      ClassBuilder<NSError>("NSError")
          .classMethod<&NSError::errorWithDomain_code_userInfo_ofClass>("errorWithDomain:code:userInfo:"_sel)
          .initializer<&NSError::initWithDomain_code_userInfo_ofClass>("initWithDomain:code:userInfo:"_sel)
          .property<&NSError::domain>("domain")
          .property<&NSError::code>("code")
          .property<&NSError::userInfo>("userInfo")
          .property<&NSError::localizedDescription>("localizedDescription")
          .property<&NSError::localizedFailureReason>("localizedFailureReason")
          .property<&NSError::underlyingErrors>("underlyingErrors")
          .build();
  return cls;
}

NSError::NSError() : domain_(""_ns), userInfo_(NSDictionary::dictionary()) {}

Ref<NSError> NSError::errorWithDomain_code_userInfo_ofClass(const NSString* domain, int64_t code,
                                                            const NSDictionary* userInfo, Class* cls) {
  return made<NSError>(cls, "initWithDomain:code:userInfo:"_sel, domain, code, userInfo);
}

Ref<NSError> NSError::initWithDomain_code_userInfo_ofClass(const NSString* domain, int64_t code,
                                                           const NSDictionary* userInfo, Class* cls) {
  Ref<NSError> error = create<NSError>(cls);
  if (!domain) detail::raiseNilArgument(error, "initWithDomain:code:userInfo:");
  error->domain_ = domain->copy();
  error->code_ = code;
  if (userInfo) error->userInfo_ = userInfo->copy();
  return error;
}

Ref<NSString> NSError::localizedDescription() const {
  if (Ref<NSString> text = as<NSString>(userInfo_->objectForKey(NSLocalizedDescriptionKey))) return text;
  const std::string number = domain_->utf8() + " error " + std::to_string(code_);
  if (!domain_->isEqualToString(NSPOSIXErrorDomain)) {
    return NSString::stringWithUTF8("The operation couldn’t be completed. (" + number + ".)");
  }
  const std::string words = std::generic_category().message(static_cast<int>(code_));
  return NSString::stringWithUTF8("The operation couldn’t be completed. " + words);
}

Ref<NSString> NSError::localizedFailureReason() const {
  return as<NSString>(userInfo_->objectForKey(NSLocalizedFailureReasonErrorKey));
}

Ref<NSArray> NSError::underlyingErrors() const {
  Ref<NSMutableArray> errors = NSMutableArray::array();
  if (const Ref<NSError> single = as<NSError>(userInfo_->objectForKey(NSUnderlyingErrorKey))) errors->addObject(single);
  if (const Ref<NSArray> list = as<NSArray>(userInfo_->objectForKey(NSMultipleUnderlyingErrorsKey))) {
    for (NSObject* each : *list) {
      if (as<NSError>(each)) errors->addObject(each);
    }
  }
  return errors->copy();
}

bool NSError::isEqual(const NSObject* other) const {
  auto* error = as<const NSError>(other);
  return error && code_ == error->code_ && domain_->isEqualToString(error->domain_) &&
         userInfo_->isEqualToDictionary(error->userInfo_);
}
uint64_t NSError::hash() const { return domain_->hash() * 31 + static_cast<uint64_t>(code_); }

Ref<NSString> NSError::description() const {
  return NSString::stringWithFormat("Error Domain=%@ Code=%lld \"%@\""_ns, domain_, code_, localizedDescription());
}

Ref<NSObject> NSError::copyWithZone(NSZone*) const { return const_cast<NSError*>(this); }

}  // namespace quoll::inline v1
