// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

#include "QuollFoundation/platform/object/Casting.h"
#include "QuollFoundation/platform/object/TypeEncodings.h"

namespace quoll::inline v1 {

namespace detail {

/// A counted callable: what a Block holds.
struct BlockTable;
class QF_EXPORT HeapBlock : public NSObject {
  QF_CLASS(HeapBlock, NSObject)
 public:
  virtual void* callable() = 0;
  const BlockTable* table() const { return table_; }

 protected:
  explicit HeapBlock(const BlockTable* table) : table_(table) {}

 private:
  const BlockTable* const table_;
};

/// What a callable can do, whoever holds it.
struct BlockTable {
  uint64_t key;                              ///< Of its signature.
  Ref<HeapBlock> (*copied)(void* callable);  ///< A counted copy on the heap.
};
/// How a callback that takes one object is called for many in a row: a walk then costs an indirect call for all of
/// them, and the compiler sees the loop. `of<call>` is the function for the callback whose own function is `call`.
template <class Signature> struct CallsInARow {
  using Function = void*;  // none
  template <auto call> static constexpr Function of = nullptr;
};
template <> struct CallsInARow<void(NSObject*)> {
  using Function = void (*)(void* callable, NSObject* const* objects, size_t count);
  template <auto call> static constexpr Function of = [](void* callable, NSObject* const* objects, size_t count) {
    for (size_t i = 0; i < count; ++i) call(callable, objects[i]);
  };
};
template <> struct CallsInARow<bool(NSObject*)> {
  /// Bit i is the answer for object i; 64 at most.
  using Function = uint64_t (*)(void* callable, NSObject* const* objects, size_t count);
  template <auto call> static constexpr Function of = [](void* callable, NSObject* const* objects, size_t count) {
    uint64_t answers = 0;
    for (size_t i = 0; i < count; ++i) answers |= uint64_t{call(callable, objects[i])} << i;
    return answers;
  };
};
template <> struct CallsInARow<Ref<NSObject>(NSObject*)> {
  using Function = void (*)(void* callable, NSObject* const* objects, size_t count, Ref<NSObject>* results);
  template <auto call>
  static constexpr Function of = [](void* callable, NSObject* const* objects, size_t count, Ref<NSObject>* results) {
    for (size_t i = 0; i < count; ++i) results[i] = call(callable, objects[i]);
  };
};
template <> struct CallsInARow<Ref<NSObject>(NSObject*, NSObject*)> {
  /// Each result is the first argument of the next call.
  using Function = void (*)(void* callable, NSObject* const* objects, size_t count, Ref<NSObject>& result);
  template <auto call>
  static constexpr Function of = [](void* callable, NSObject* const* objects, size_t count, Ref<NSObject>& result) {
    for (size_t i = 0; i < count; ++i) result = call(callable, result.get(), objects[i]);
  };
};

template <class R, class... A> struct TypedBlockTable : BlockTable {
  R (*call)(void* callable, A... arguments);
  typename CallsInARow<R(A...)>::Function callInARow;
};
template <auto call, class R, class... A>
constexpr TypedBlockTable<R, A...> typedBlockTable(Ref<HeapBlock> (*copied)(void*), R (*)(void*, A...)) {
  return {{FineKey<R(A...)>::value, copied}, call, CallsInARow<R(A...)>::template of<call>};
}

template <class F> class HeapBlockOf : public HeapBlock {
 public:
  HeapBlockOf(const F& f, const BlockTable* table) : HeapBlock(table), callable_(f) {}
  void* callable() override { return const_cast<void*>(static_cast<const void*>(&callable_)); }

 private:
  F callable_;
};

template <class F> struct CallShape;
template <class C, class R, class... A> struct CallShape<R (C::*)(A...) const> {
  using Type = void(A...);
};
template <class C, class R, class... A> struct CallShape<R (C::*)(A...)> {
  using Type = void(A...);
};
template <class C, class R, class... A> struct CallShape<R (C::*)(A...) const noexcept> {
  using Type = void(A...);
};
template <class C, class R, class... A> struct CallShape<R (C::*)(A...) noexcept> {
  using Type = void(A...);
};
template <class R, class... A> struct CallShape<R (*)(A...)> {
  using Type = void(A...);
};
template <class R, class... A> struct CallShape<R (*)(A...) noexcept> {
  using Type = void(A...);
};
template <class F> concept PlainCall = requires { &F::operator(); };

/// What a callback declares, from what it is given: an element as its own class is checked.
template <class Want, class Have> Want element(Have value) {
  if constexpr (std::is_convertible_v<Have, Want>) return value;
  else return cast<std::remove_pointer_t<Want>>(value);
}
template <class R, class F, class... Have, class... Want> R callWithElements(F& f, void (*)(Want...), Have... values) {
  return static_cast<R>(f(element<Want>(values)...));
}

template <class R, class F, class... A> R callBlock(F& f, A... arguments) {
  if constexpr (std::is_invocable_v<F&, A...>) {
    if constexpr (std::is_void_v<R>) static_cast<void>(f(arguments...));
    else return f(arguments...);
  } else if constexpr (PlainCall<F>) {
    using Shape = typename CallShape<decltype(&F::operator())>::Type;
    return callWithElements<R>(f, static_cast<Shape*>(nullptr), arguments...);
  } else {
    return callWithElements<R>(f, static_cast<typename CallShape<F>::Type*>(nullptr), arguments...);
  }
}

[[noreturn]] QF_EXPORT void raiseNotCopyable();
[[noreturn]] QF_EXPORT void raiseNullBlock();

template <class F, class R, class... A> struct BlockTableOf {
  static R call(void* callable, A... arguments) { return callBlock<R>(*static_cast<F*>(callable), arguments...); }
  static Ref<HeapBlock> copied(void* callable) {
    if constexpr (std::is_copy_constructible_v<F>) return make<HeapBlockOf<F>>(*static_cast<F*>(callable), &table);
    else raiseNotCopyable();
  }
  static constexpr TypedBlockTable<R, A...> table = typedBlockTable<&call>(&copied, &call);
};

template <class F, class... Not>
concept CallableFor =
    (!std::is_same_v<std::remove_cvref_t<F>, Not> && ...) && std::is_object_v<std::remove_reference_t<F>> &&
    !std::is_null_pointer_v<std::remove_cvref_t<F>> && !AnyBlockType<std::remove_cvref_t<F>>;

}  // namespace detail

/// Borrows a callable for the length of a call: the type of callback parameters. Never null, not assignable,
/// allocates nothing. Takes lambdas, function objects and functions; a callback may take an object as its own class
/// (`[](NSString* s) {...}`), which is checked at each call, and its result may be ignored.
template <class R, class... A> class BlockRef<R(A...)> {
 public:
  template <class F> requires detail::CallableFor<F>
  BlockRef(F&& f QF_LIFETIME)
      : callable_(const_cast<void*>(static_cast<const void*>(std::addressof(f)))),
        table_(&detail::BlockTableOf<std::remove_reference_t<F>, R, A...>::table) {
    if constexpr (std::is_pointer_v<std::remove_reference_t<F>>) {
      if (!f) detail::raiseNullBlock();
    }
  }
  BlockRef(std::nullptr_t) = delete;  // where null has a meaning, the parameter is an OptionalBlockRef
  BlockRef(R (*f)(A...)) : callable_(reinterpret_cast<void*>(f)), table_(&functionTable) {
    if (!f) detail::raiseNullBlock();
  }
  BlockRef(const Block<R(A...)>& block QF_LIFETIME);
  BlockRef(void* callable, const detail::BlockTable* table)
      : callable_(callable), table_(static_cast<const detail::TypedBlockTable<R, A...>*>(table)) {
    if (!table) detail::raiseNullBlock();
  }
  BlockRef(const BlockRef&) = default;
  BlockRef& operator=(const BlockRef&) = delete;

  R operator()(A... arguments) const { return table_->call(callable_, arguments...); }
  /// For the library's walks, see CallsInARow.
  template <class... More> auto callInARow(NSObject* const* objects, size_t count, More&&... more) const {
    return table_->callInARow(callable_, objects, count, more...);
  }
  void* callable() const { return callable_; }
  const detail::BlockTable* table() const { return table_; }

 private:
  static R callFunction(void* f, A... arguments) { return reinterpret_cast<R (*)(A...)>(f)(arguments...); }
  static Ref<detail::HeapBlock> copiedFunction(void* f);
  /// A block is held while its body runs, which may let the last other reference go.
  static R callHeld(void* owner, A... arguments) {
    const Ref<detail::HeapBlock> held = static_cast<detail::HeapBlock*>(owner);
    auto* const table = static_cast<const detail::TypedBlockTable<R, A...>*>(held->table());
    return table->call(held->callable(), arguments...);
  }
  static Ref<detail::HeapBlock> sharedBlock(void* owner) { return static_cast<detail::HeapBlock*>(owner); }
  static constexpr detail::TypedBlockTable<R, A...> heldTable =
      detail::typedBlockTable<&callHeld>(&sharedBlock, &callHeld);
  static constexpr detail::TypedBlockTable<R, A...> functionTable =
      detail::typedBlockTable<&callFunction>(&copiedFunction, &callFunction);

  void* callable_;
  const detail::TypedBlockTable<R, A...>* table_;
};

/// A BlockRef where null has a meaning.
template <class R, class... A> class OptionalBlockRef<R(A...)> {
 public:
  constexpr OptionalBlockRef() = default;
  constexpr OptionalBlockRef(std::nullptr_t) {}
  OptionalBlockRef(const BlockRef<R(A...)>& block) : callable_(block.callable()), table_(block.table()) {}
  OptionalBlockRef(const Block<R(A...)>& block QF_LIFETIME) : OptionalBlockRef(BlockRef<R(A...)>(block)) {}
  template <class F> requires detail::CallableFor<F>
  OptionalBlockRef(F&& f QF_LIFETIME) : OptionalBlockRef(BlockRef<R(A...)>(std::forward<F>(f))) {}
  OptionalBlockRef(void* callable, const detail::BlockTable* table) : callable_(callable), table_(table) {}
  OptionalBlockRef(const OptionalBlockRef&) = default;
  OptionalBlockRef& operator=(const OptionalBlockRef&) = delete;

  explicit operator bool() const { return table_ != nullptr; }
  /// Raises for null.
  operator BlockRef<R(A...)>() const { return {callable_, table_}; }
  R operator()(A... arguments) const { return BlockRef<R(A...)>(*this)(arguments...); }
  void* callable() const { return callable_; }
  const detail::BlockTable* table() const { return table_; }

 private:
  void* callable_ = nullptr;
  const detail::BlockTable* table_ = nullptr;
};

/// Owns a callable, counted: copies share it, also those made through a BlockRef. What is kept longer than a call is a
/// Block. It survives being replaced or dropped by its own body.
template <class R, class... A> class Block<R(A...)> {
 public:
  explicit Block(BlockRef<R(A...)> borrowed)  ///< Raises when the callable can't be copied.
      : owner_(borrowed.table()->copied(borrowed.callable())) {}
  template <class F> requires detail::CallableFor<F>
  Block(F&& f) : Block(BlockRef<R(A...)>(f)) {}
  Block(std::nullptr_t) = delete;
  Block(const Block&) = default;  // and no move: a Block always holds a callable
  Block& operator=(Block other) noexcept {
    std::swap(owner_, other.owner_);
    return *this;
  }

  R operator()(A... arguments) const { return BlockRef<R(A...)>(*this)(arguments...); }
  detail::HeapBlock* owner() const { return owner_.get(); }

 private:
  Ref<detail::HeapBlock> owner_;
};

template <class R, class... A>
BlockRef<R(A...)>::BlockRef(const Block<R(A...)>& block) : callable_(block.owner()), table_(&heldTable) {}

namespace detail {
/// A function on the heap has no object of its own: the block's callable is the function's address.
class QF_EXPORT FunctionBlock : public HeapBlock {
 public:
  FunctionBlock(void* function, const BlockTable* table) : HeapBlock(table), function_(function) {}
  void* callable() override { return function_; }

 private:
  void* function_;
};
}  // namespace detail

template <class R, class... A> Ref<detail::HeapBlock> BlockRef<R(A...)>::copiedFunction(void* f) {
  return make<detail::FunctionBlock>(f, &functionTable);
}

}  // namespace quoll::inline v1
