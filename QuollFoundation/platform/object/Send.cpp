// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Send.h"

#include "QuollFoundation/platform/object/AutoreleaseScope.h"
#include "QuollFoundation/platform/object/NSException.h"
#include "QuollFoundation/platform/object/NSInvocation.h"

namespace quoll::inline v1::detail {

Value sendErased(NSObject* receiver, Selector selector, const Entry* entry, std::span<Value> arguments) {
  if (entry) {
    Value result;
    entry->method.implementation->apply(receiver, arguments, result);
    return result;
  }
  const Ref<NSMethodSignature> signature = receiver->methodSignatureForSelector(selector);
  if (!signature) refuseSelector(receiver, selector);
  const Ref<NSInvocation> invocation = make<NSInvocation>(signature.get(), receiver, selector, arguments);
  receiver->forwardInvocation(invocation);
  return invocation->value();
}

namespace {

class AutoreleasedText : public NSObject {
 public:
  explicit AutoreleasedText(Value value) : text(std::move(value)) {}
  const Value text;
};

}  // namespace

const char* autoreleasedText(Value result, std::string_view where) {
  const auto* kept = autorelease(make<AutoreleasedText>(std::move(result)));
  return kept->text.as<const char*>(where, 0);
}

namespace {

std::string place(std::string_view where, size_t index) {
  const std::string what = index ? "argument " + std::to_string(index) + " of " : "the result of ";
  return what + std::string(where) + " is ";
}

}  // namespace

void raiseMismatch(std::string_view where, size_t index, std::string_view wanted, std::string_view given) {
  raise(NSInvalidArgumentException,
        place(where, index) + std::string(given) + " where " + std::string(wanted) + " belongs");
}

void raiseWrongObject(std::string_view where, size_t index, std::string_view wanted, const NSObject* given) {
  raiseMismatch(where, index, wanted, given->isa()->name());
}

void raiseOutOfRange(std::string_view where, size_t index, std::string_view wanted, int64_t given) {
  raiseMismatch(where, index, "a number of type " + std::string(wanted), std::to_string(given));
}

void raiseRealOutOfRange(std::string_view where, size_t index, std::string_view wanted, double given) {
  raiseMismatch(where, index, "a number of type " + std::string(wanted), std::to_string(given));
}

void raiseArgumentCount(std::string_view where, size_t wanted, size_t given) {
  raise(NSInvalidArgumentException, std::string(where) + " takes " + std::to_string(wanted) + " arguments, but " +
                                        std::to_string(given) + " were given");
}

}  // namespace quoll::inline v1::detail
