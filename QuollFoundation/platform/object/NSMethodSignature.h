// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "QuollFoundation/platform/object/Method.h"

namespace quoll::inline v1 {

/// What is known of a method without having it: the types of its result and arguments.
///
/// Arguments are counted from 0: the receiver, the selector, then those of the message. Threads: immutable.
class QF_EXPORT NSMethodSignature : public NSObject {
  QF_CLASS(NSMethodSignature, NSObject)
 public:
  /// From a text such as "v@:@q". Null for null; raises for a malformed one.
  static Ref<NSMethodSignature> signatureWithObjCTypes(const char* types);

  std::string_view encoding() const { return encoding_; }
  uint64_t numberOfArguments() const { return types_.size() - 1; }
  const char* getArgumentTypeAtIndex(uint64_t index) const;  ///< Raises NSRangeException.
  const char* methodReturnType() const { return types_[0].c_str(); }
  uint64_t methodReturnLength() const;  ///< In bytes; 0 for no result.

  bool hasWritablePointer() const;  ///< Among the arguments; a context pointer (`void*`) doesn't count.
  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override;

 protected:
  explicit NSMethodSignature(std::string_view encoding);

 private:
  std::string encoding_;
  std::vector<std::string> types_;  // the result first
};

}  // namespace quoll::inline v1
