// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1::detail {

/// What the copies of an exception share; the class "NSException". Its description is the reason.
class QF_EXPORT ExceptionRecord : public NSObject {
  QF_CLASS(ExceptionRecord, NSObject)
 public:
  Ref<NSString> name() const { return name_; }
  Ref<NSString> reason() const { return reason_; }
  Ref<NSObject> userInfo() const { return userInfo_; }
  const char* what() const { return what_.c_str(); }
  Ref<NSString> description() const override;

 protected:
  ExceptionRecord(const NSString* name, const NSString* reason, NSObject* userInfo);

 private:
  const Ref<NSString> name_;
  const Ref<NSString> reason_;
  const Ref<NSObject> userInfo_;
  std::string what_;
};

}  // namespace quoll::inline v1::detail
