// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "QuollFoundation/platform/object/NSMethodSignature.h"
#include "QuollFoundation/platform/object/Send.h"

namespace quoll::inline v1 {

/// A message as a value: target, selector, arguments and, once invoked, its result.
///
/// It owns its target, object arguments, C strings and blocks, always. Arguments are counted from 0: the target, the
/// selector, then those of the message. An address given to it points to a value of the parameter's own C++ type, where
/// an object is a `T*` or a `Ref<T>` and a block a `BlockRef`; what was not set is zero. Threads: caller-locked.
class QF_EXPORT NSInvocation : public NSObject {
  QF_CLASS(NSInvocation, NSObject)
 public:
  /// Raises for a null signature.
  static Ref<NSInvocation> invocationWithMethodSignature(NSMethodSignature* signature);

  NSMethodSignature* methodSignature() const { return signature_; }
  NSObject* target() const { return target_; }
  void setTarget(NSObject* target) { target_ = target; }
  Selector selector() const { return selector_; }
  void setSelector(Selector selector) { selector_ = selector; }

  /// An index out of bounds raises NSRangeException, a null address or an argument of another type
  /// NSInvalidArgumentException. What is read is borrowed.
  void getArgument_atIndex(void* address, int64_t index) const;
  void setArgument_atIndex(const void* address, int64_t index);
  void getReturnValue(void* address) const;
  void setReturnValue(const void* address);
  void retainArguments() {}  ///< They always are.
  bool argumentsRetained() const { return true; }

  void invoke();                            ///< Sends the message to the target; nothing without one.
  void invokeWithTarget(NSObject* target);  ///< The target kept stays what it was.

  /// The result as an R; zero before the invocation was invoked.
  template <class R> R result() const { return result_.as<R>(selector_.name(), 0); }
  const detail::Value& value() const { return result_; }
  void setValue(detail::Value result) { result_ = std::move(result); }

 protected:
  NSInvocation(NSMethodSignature* signature, NSObject* target, Selector selector, std::span<detail::Value> arguments);

 private:
  void checkAddress(const void* address, int64_t index, std::string_view selector) const;
  struct Running;
  Ref<NSMethodSignature> signature_;
  Ref<NSObject> target_;
  Selector selector_;
  std::vector<detail::Value> arguments_;  // without target and selector
  detail::Value result_;
  int running_ = 0;
  std::vector<detail::Value> replaced_;  // while running: the body may still use what it was called with
};

}  // namespace quoll::inline v1
