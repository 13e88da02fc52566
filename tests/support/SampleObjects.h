// SPDX-License-Identifier: MIT
// Classes as a client writes them, for the tests of the object model.
#pragma once

#include <atomic>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/object/Protocol.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::testsupport {

struct Span {
  uint64_t location;
  uint64_t length;
};

/// Larger than what a message carries in place.
struct Matrix {
  double cells[6];
};

enum class Colour : uint8_t { Red, Green = 200 };

/// A number, with initialisers, a property, and a method that a subclass overrides.
class Counter : public NSObject {
  QF_CLASS(Counter, NSObject)
 public:
  template <class T = Counter> static Ref<T> initWithValue(int64_t value) {
    return cast<T>(initWithValue_ofClass(value, T::classObject()));
  }
  static Ref<Counter> initWithValue_ofClass(int64_t value, Class* cls);
  template <class T = Counter> static Ref<T> counterWithValue(int64_t value) {
    return cast<T>(counterWithValue_ofClass(value, T::classObject()));
  }
  static Ref<Counter> counterWithValue_ofClass(int64_t value, Class* cls);  ///< By `initWithValue:`.
  static int64_t class_value() { return -1; }

  int64_t value() const { return value_; }
  void setValue(int64_t value) { value_ = value; }
  virtual int64_t plus(int64_t n) { return value_ + n; }
  int64_t pop() { return value_--; }

 protected:
  Counter() = default;
  int64_t value_ = 0;
};

class SubCounter : public Counter {
  QF_CLASS(SubCounter, Counter)
 public:
  int64_t plus(int64_t n) override { return value_ - n; }
};

/// Takes and gives one of each kind.
class Kinds : public NSObject {
  QF_CLASS(Kinds, NSObject)
 public:
  void nothing() { ++calls; }
  int8_t small(int8_t v) { return v; }
  uint64_t natural(uint64_t v) { return v; }
  bool flag(bool v) const { return v; }
  char16_t unit(char16_t v) { return v; }
  Colour colour(Colour v) { return v; }
  float single(float v) const noexcept { return v; }
  double half(double v) { return v / 2; }
  Span span(Span s) { return {s.location + 1, s.length}; }
  NSRange range(const NSRange& r) { return {r.location + 1, r.length}; }
  Matrix matrix(Matrix m);
  Ref<NSString> echo(NSString* text) { return text; }
  Ref<NSString> take(Ref<NSString> text) { return text; }
  NSString* borrowed() const { return "borrowed"_ns; }
  Ref<NSObject> anything(const NSObject* object) { return const_cast<NSObject*>(object); }
  NSObject* hiddenCounter();
  Class* classOf(Class* cls) { return cls; }
  Protocol* protocol(Protocol* p) { return p; }
  Selector selector(Selector s) { return s; }
  const char* word(const char* text) { return text; }
  uint64_t lengthOf(const char* text) { return text ? std::strlen(text) : 99; }
  void* context(void* c) { return c; }
  uint64_t sum(const uint64_t* numbers, uint64_t count);
  void out(Ref<NSString>* result) { *result = "out"_ns; }
  int64_t call(int64_t (*f)(int64_t), int64_t n) { return f(n); }
  int64_t each(int64_t n, BlockRef<bool(int64_t)> block);
  bool hasBlock(OptionalBlockRef<void()> block) { return static_cast<bool>(block); }
  Ref<NSString> describe(BlockRef<Ref<NSString>(NSObject*)> block, NSObject* object) { return block(object); }

  int64_t calls = 0;
};

/// Hands everything on to its target.
class Forwarder : public NSProxy {
  QF_CLASS(Forwarder, NSProxy)
 public:
  explicit Forwarder(NSObject* target) : target_(target) {}
  Ref<NSMethodSignature> methodSignatureForSelector(Selector s) const override {
    return target_->methodSignatureForSelector(s);
  }
  void forwardInvocation(NSInvocation* invocation) override { invocation->invokeWithTarget(target_); }

 protected:
  Ref<NSObject> target_;
};

/// Keeps the last message instead of delivering it. The test takes it away: the message keeps its target, this object.
class Capturer : public Forwarder {
  QF_CLASS(Capturer, Forwarder)
 public:
  using Forwarder::Forwarder;
  void forwardInvocation(NSInvocation* invocation) override { captured_ = invocation; }
  Ref<NSInvocation> captured() { return std::exchange(captured_, nullptr); }

 private:
  Ref<NSInvocation> captured_;
};

/// Counts how many of it live; links to another.
class Node : public NSObject {
 public:
  static inline std::atomic<int> alive{0};
  Node() { ++alive; }
  ~Node() override { --alive; }
  Ref<Node> next;
};

/// Runs a function when it dies.
class Farewell : public NSObject {
 public:
  explicit Farewell(Block<void()> said) : said_(said) {}
  ~Farewell() override { said_(); }

 private:
  Block<void()> said_;
};

}  // namespace quoll::testsupport

template <> struct quoll::StructEncoding<quoll::testsupport::Span> {
  static constexpr const char* text = "{Span=QQ}";
};
template <> struct quoll::StructEncoding<quoll::testsupport::Matrix> {
  static constexpr const char* text = "{Matrix=[6d]}";
};
