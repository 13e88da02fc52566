// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "QuollFoundation/platform/object/TypeEncodings.h"

namespace quoll::inline v1 {

/// One operation that a protocol names.
struct ProtocolMethod {
  Selector selector;
  const char* encoding = nullptr;
  bool isRequired = true;
};

/// An operation of the given C++ type: `required<void(NSString*)>("setTitle:"_sel)`.
template <class Signature> struct ProtocolMethodOf;
template <class R, class... A> struct ProtocolMethodOf<R(A...)> {
  static constexpr ProtocolMethod make(Selector selector, bool isRequired) {
    if (selector.argumentCount() != sizeof...(A)) throw "the selector has another number of arguments than the type";
    return {selector, detail::methodEncoding<R, A...>.text, isRequired};
  }
};
template <class Signature> constexpr ProtocolMethod required(Selector selector) {
  return ProtocolMethodOf<Signature>::make(selector, true);
}
template <class Signature> constexpr ProtocolMethod optional(Selector selector) {
  return ProtocolMethodOf<Signature>::make(selector, false);
}

/// What a protocol is, as a constant; keep it at namespace scope.
struct ProtocolRecord {
  const char* name;
  std::initializer_list<ProtocolMethod> methods;
};

/// A named set of operations that classes of any base may offer. Immortal. Threads: immutable.
class QF_EXPORT Protocol : public NSObject {
  QF_CLASS(Protocol, NSObject)
 public:
  std::string_view name() const { return record_->name; }
  std::initializer_list<ProtocolMethod> methods() const { return record_->methods; }
  const ProtocolMethod* methodNamed(Selector selector) const;  ///< Null: not part of it.
  Ref<NSString> description() const override;

 protected:
  explicit Protocol(const ProtocolRecord* record) : record_(record) {}

 private:
  const ProtocolRecord* record_;
};

/// Null when there is none. Threads: thread-safe.
QF_EXPORT Protocol* protocolNamed(std::string_view name);
/// Every protocol, sorted by name.
QF_EXPORT std::vector<Protocol*> allProtocols();

/// Makes a client's protocol known for ever. Threads: thread-safe.
class QF_EXPORT RegisterProtocol {
 public:
  explicit RegisterProtocol(const ProtocolRecord& record);
};

}  // namespace quoll::inline v1
