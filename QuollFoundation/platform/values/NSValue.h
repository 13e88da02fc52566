// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Geometry.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/Casting.h"
#include "QuollFoundation/platform/object/TypeEncodings.h"

namespace quoll::inline v1 {

class NSValue;
namespace detail {
/// A value of a type that is known to be well-formed, and of its size.
QF_EXPORT Ref<NSValue> makeValue(const void* bytes, size_t size, std::string_view type);
}  // namespace detail

/// A plain C value as an object: its bytes and the encoding of its type.
///
///     Ref<NSValue> boxed = NSValue::valueWithRange(NSMakeRange(2, 5));
///     NSRange range = boxed->rangeValue();                     // raises if it holds something else
///     auto span = NSValue::valueOf(Span{1, 2});                // a struct of your own, see StructEncoding
///     Span same = span->valueAs<Span>();
///
/// Numbers are NSNumber's business: a value that holds the bytes of an int is no number. Equal values have one
/// encoding and the same bytes. Threads: immutable.
class QF_EXPORT NSValue : public NSObject {
  QF_CLASS(NSValue, NSObject)
 public:
  using Plain = NSValue;  ///< Its destructor has nothing to do.

  // Making values. The bytes and the encoding are copied; a malformed encoding raises NSInvalidArgumentException.
  template <class T = NSValue> static Ref<T> valueWithBytes_objCType(const void* bytes, const char* type) {
    return cast<T>(valueWithBytes_objCType_ofClass(bytes, type, T::classObject()));
  }
  template <class T = NSValue> static Ref<T> initWithBytes_objCType(const void* bytes, const char* type) {
    return cast<T>(initWithBytes_objCType_ofClass(bytes, type, T::classObject()));
  }
  template <class T = NSValue> static Ref<T> valueWithRange(NSRange range) {
    return cast<T>(valueWithRange_ofClass(range, T::classObject()));
  }
  template <class T = NSValue> static Ref<T> valueWithRect(CGRect rect) {
    return cast<T>(valueWithRect_ofClass(rect, T::classObject()));
  }
  template <class T = NSValue> static Ref<T> valueWithPoint(CGPoint point) {
    return cast<T>(valueWithPoint_ofClass(point, T::classObject()));
  }
  template <class T = NSValue> static Ref<T> valueWithSize(CGSize size) {
    return cast<T>(valueWithSize_ofClass(size, T::classObject()));
  }
  template <class T = NSValue> static Ref<T> valueWithPointer(const void* pointer) {
    return cast<T>(valueWithPointer_ofClass(pointer, T::classObject()));
  }
  /// The object is not kept alive.
  template <class T = NSValue> static Ref<T> valueWithNonretainedObject(const NSObject* object) {
    return cast<T>(valueWithNonretainedObject_ofClass(object, T::classObject()));
  }
  /// Any registered struct.
  template <detail::RegisteredStruct S> static Ref<NSValue> valueOf(const S& plain) {
    return detail::makeValue(&plain, sizeof plain, StructEncoding<S>::text);
  }

  static Ref<NSValue> valueWithBytes_objCType_ofClass(const void* bytes, const char* type, Class* cls);
  static Ref<NSValue> initWithBytes_objCType_ofClass(const void* bytes, const char* type, Class* cls);
  static Ref<NSValue> valueWithRange_ofClass(NSRange range, Class* cls);
  static Ref<NSValue> valueWithRect_ofClass(CGRect rect, Class* cls);
  static Ref<NSValue> valueWithPoint_ofClass(CGPoint point, Class* cls);
  static Ref<NSValue> valueWithSize_ofClass(CGSize size, Class* cls);
  static Ref<NSValue> valueWithPointer_ofClass(const void* pointer, Class* cls);
  static Ref<NSValue> valueWithNonretainedObject_ofClass(const NSObject* object, Class* cls);

  // What it holds
  const char* objCType() const { return encoding_; }  ///< Lives as long as the value.
  virtual void getValue(void* buffer) const;
  /// Raises NSInvalidArgumentException when the value has another size.
  void getValue_size(void* buffer, uint64_t size) const;

  // Each of these raises NSInvalidArgumentException for a value of another type.
  NSRange rangeValue() const { return valueAs<NSRange>(); }
  CGRect rectValue() const { return valueAs<CGRect>(); }
  CGPoint pointValue() const { return valueAs<CGPoint>(); }
  CGSize sizeValue() const { return valueAs<CGSize>(); }
  void* pointerValue() const;
  NSObject* nonretainedObjectValue() const;
  template <detail::RegisteredStruct S> S valueAs() const {
    S plain;
    copyAs(StructEncoding<S>::text, sizeof plain, &plain);
    return plain;
  }

  bool isEqualToValue(const NSValue* other) const { return isEqual(other); }
  bool isEqual(const NSObject* other) const override;
  uint64_t hash() const override;
  Ref<NSString> description() const override;               ///< "NSRange: {2, 5}", or the bytes.
  Ref<NSObject> copyWithZone(NSZone* zone) const override;  ///< Itself.

 protected:
  constexpr NSValue() = default;
  constexpr explicit NSValue(const char* encoding) : encoding_(encoding) {}

  // A number keeps its own value in the place of the address.
  const char* encoding_ = "v";
  union {
    const void* bytes_ = nullptr;
    int64_t integer_;
    double real_;
  };

 private:
  friend Ref<NSValue> detail::makeValue(const void* bytes, size_t size, std::string_view type);
  static Ref<NSValue> withBytes(const void* bytes, const char* type, Class* cls);
  virtual size_t size() const;  // the encoding stands directly behind the bytes
  void copyAs(std::string_view type, size_t size, void* out) const;
  [[noreturn]] void refuse(std::string_view wanted) const;
};

}  // namespace quoll::inline v1
