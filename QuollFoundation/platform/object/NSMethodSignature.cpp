// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/NSMethodSignature.h"

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSException.h"

namespace quoll::inline v1 {

namespace {

Ref<NSMethodSignature> signatureOfTypes(const char* types) { return NSMethodSignature::signatureWithObjCTypes(types); }
const char* returnType(const NSMethodSignature* s) { return s->methodReturnType(); }

}  // namespace

Class* NSMethodSignature::classObject() {
  static Class* const cls = ClassBuilder<NSMethodSignature>("NSMethodSignature")
                                .classMethod<&signatureOfTypes>("signatureWithObjCTypes:"_sel)
                                .method<&NSMethodSignature::numberOfArguments>("numberOfArguments"_sel)
                                .method<&NSMethodSignature::getArgumentTypeAtIndex>("getArgumentTypeAtIndex:"_sel)
                                .method<&returnType>("methodReturnType"_sel)
                                .method<&NSMethodSignature::methodReturnLength>("methodReturnLength"_sel)
                                .build();
  return cls;
}

NSMethodSignature::NSMethodSignature(std::string_view encoding) {
  for (std::string_view rest = encoding; !rest.empty();) {
    const detail::EncodedType first = detail::firstType(rest);
    static_cast<void>(detail::sizeOfType(first.type));  // what has no size can't travel by value
    types_.emplace_back(first.type);
    encoding_ += first.type;
    rest = first.rest;
  }
  if (types_.size() < 3 || types_[1] != "@" || types_[2] != ":") {
    raise(NSInvalidArgumentException,
          "\"" + std::string(encoding) + "\" is no type of a method: it takes no receiver and selector");
  }
}

Ref<NSMethodSignature> NSMethodSignature::signatureWithObjCTypes(const char* types) {
  return types ? make<NSMethodSignature>(std::string_view(types)) : nullptr;
}

const char* NSMethodSignature::getArgumentTypeAtIndex(uint64_t index) const {
  if (index >= numberOfArguments()) detail::raiseIndex(this, "getArgumentTypeAtIndex:", index, numberOfArguments());
  return types_[index + 1].c_str();
}

uint64_t NSMethodSignature::methodReturnLength() const { return detail::sizeOfType(types_[0]); }

bool NSMethodSignature::hasWritablePointer() const {
  for (size_t i = 3; i < types_.size(); ++i) {
    const std::string& type = types_[i];
    if (type.size() > 1 && type[0] == '^' && type[1] != 'v' && type[1] != '?') return true;
    if (type[0] == '*') return true;
  }
  return false;
}

bool NSMethodSignature::isEqual(const NSObject* other) const {
  const auto* signature = as<NSMethodSignature>(other);
  return signature && signature->encoding_ == encoding_;
}
uint64_t NSMethodSignature::hash() const { return detail::hashOf(encoding_); }

}  // namespace quoll::inline v1
