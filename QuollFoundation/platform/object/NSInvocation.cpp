// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSInvocation.h"

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1 {

namespace {

Ref<NSInvocation> invocationOfSignature(NSMethodSignature* s) { return NSInvocation::invocationWithMethodSignature(s); }

}  // namespace

Class* NSInvocation::classObject() {
  static Class* const cls = ClassBuilder<NSInvocation>("NSInvocation")
                                .classMethod<&invocationOfSignature>("invocationWithMethodSignature:"_sel)
                                .property<&NSInvocation::methodSignature>("methodSignature")
                                .property<&NSInvocation::target, &NSInvocation::setTarget>("target")
                                .property<&NSInvocation::selector, &NSInvocation::setSelector>("selector")
                                .method<&NSInvocation::getArgument_atIndex>("getArgument:atIndex:"_sel)
                                .method<&NSInvocation::setArgument_atIndex>("setArgument:atIndex:"_sel)
                                .method<&NSInvocation::getReturnValue>("getReturnValue:"_sel)
                                .method<&NSInvocation::setReturnValue>("setReturnValue:"_sel)
                                .method<&NSInvocation::retainArguments>("retainArguments"_sel)
                                .method<&NSInvocation::argumentsRetained>("argumentsRetained"_sel)
                                .method<&NSInvocation::invoke>("invoke"_sel)
                                .method<&NSInvocation::invokeWithTarget>("invokeWithTarget:"_sel)
                                .build();
  return cls;
}

NSInvocation::NSInvocation(NSMethodSignature* signature, NSObject* target, Selector selector,
                           std::span<detail::Value> arguments)
    : signature_(signature), target_(target), selector_(selector) {
  const size_t count = signature->numberOfArguments() - 2;
  if (arguments.size() != count) detail::raiseArgumentCount(selector.name(), count, arguments.size());
  arguments_.reserve(count);
  for (detail::Value& argument : arguments) arguments_.emplace_back(std::move(argument)).keep();
}

Ref<NSInvocation> NSInvocation::invocationWithMethodSignature(NSMethodSignature* signature) {
  if (!signature)
    raise(NSInvalidArgumentException,
          "+[NSInvocation invocationWithMethodSignature:]: method signature argument cannot be nil");
  std::vector<detail::Value> none(signature->numberOfArguments() - 2);
  return make<NSInvocation>(signature, nullptr, Selector(), std::span(none));
}

void NSInvocation::checkAddress(const void* address, int64_t index, std::string_view selector) const {
  const uint64_t count = signature_->numberOfArguments();
  if (index < 0 || static_cast<uint64_t>(index) >= count) {
    detail::raiseIndex(this, selector, static_cast<uint64_t>(index), count);
  }
  if (!address) detail::raiseNilArgument(this, selector);
}

void NSInvocation::getArgument_atIndex(void* address, int64_t index) const {
  checkAddress(address, index, "getArgument:atIndex:");
  if (index == 0) *static_cast<NSObject**>(address) = target_.get();
  else if (index == 1) *static_cast<Selector*>(address) = selector_;
  else {
    const char* type = signature_->getArgumentTypeAtIndex(static_cast<uint64_t>(index));
    const auto number = static_cast<size_t>(index - 1);
    arguments_[number - 1].toMemory(type, address, selector_.name(), number);
  }
}

void NSInvocation::setArgument_atIndex(const void* address, int64_t index) {
  checkAddress(address, index, "setArgument:atIndex:");
  if (index == 0) return setTarget(*static_cast<NSObject* const*>(address));
  if (index == 1) return setSelector(*static_cast<const Selector*>(address));
  detail::Value value =
      detail::Value::fromMemory(signature_->getArgumentTypeAtIndex(static_cast<uint64_t>(index)), address);
  value.keep();
  std::swap(arguments_[static_cast<size_t>(index - 2)], value);
  if (running_) replaced_.push_back(std::move(value));
}

void NSInvocation::getReturnValue(void* address) const {
  if (!address) detail::raiseNilArgument(this, "getReturnValue:");
  result_.toMemory(signature_->methodReturnType(), address, selector_.name());
}

void NSInvocation::setReturnValue(const void* address) {
  if (!address) detail::raiseNilArgument(this, "setReturnValue:");
  detail::Value value = detail::Value::fromMemory(signature_->methodReturnType(), address);
  value.keep();
  result_ = std::move(value);
}

/// The invocation and its receiver stay, and so do the arguments, whatever the body does to them.
struct NSInvocation::Running {
  Running(NSInvocation* i, NSObject* r) : invocation(i), receiver(r) { ++i->running_; }
  ~Running() {
    std::vector<detail::Value> done;
    if (--invocation->running_ == 0) done.swap(invocation->replaced_);
  }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;
  const Ref<NSInvocation> invocation;
  const Ref<NSObject> receiver;
};

void NSInvocation::invoke() { invokeWithTarget(target_); }

void NSInvocation::invokeWithTarget(NSObject* target) {
  if (!target) return;
  const Running running(this, target);
  if (!selector_) detail::refuseSelector(target, selector_);
  detail::Value result;
  if (const detail::Entry* entry = detail::findEntry(target, selector_)) {
    entry->method.implementation->apply(target, arguments_, result);
  } else {
    std::vector<detail::Value> arguments = arguments_;
    result = detail::sendErased(target, selector_, nullptr, arguments);
  }
  result_ = std::move(result);
}

}  // namespace quoll::inline v1
