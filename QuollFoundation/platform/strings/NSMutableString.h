// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

/// A string that changes.
///
///     Ref<NSMutableString> line = NSMutableString::string();
///     line->appendFormat("%d of %@"_ns, 3, total);
///
/// It grows geometrically, and stays ASCII until a wider unit comes. `copy` gives an immutable string. A null string
/// raises NSInvalidArgumentException, a range past the end NSRangeException. The string itself may be an argument.
/// Threads: caller-locked.
class QF_EXPORT NSMutableString : public NSString {
  QF_CLASS(NSMutableString, NSString)
 public:
  template <class T = NSMutableString> static Ref<T> string() { return NSString::string<T>(); }
  template <class T = NSMutableString> static Ref<T> stringWithString(const NSString* other) {
    return NSString::stringWithString<T>(other);
  }
  template <class... A> static Ref<NSMutableString> stringWithFormat(const NSString* format, const A&... arguments) {
    return stringWithString(NSString::stringWithFormat(format, arguments...));
  }
  /// Room for so many ASCII units, so that it need not grow before.
  template <class T = NSMutableString> static Ref<T> stringWithCapacity(uint64_t capacity) {
    return cast<T>(stringWithCapacity_ofClass(capacity, T::classObject()));
  }
  template <class T = NSMutableString> static Ref<T> initWithCapacity(uint64_t capacity) {
    return cast<T>(initWithCapacity_ofClass(capacity, T::classObject()));
  }
  static Ref<NSMutableString> stringWithCapacity_ofClass(uint64_t capacity, Class* cls);
  static Ref<NSMutableString> initWithCapacity_ofClass(uint64_t capacity, Class* cls);

  void setString(const NSString* text);
  void appendString(const NSString* text);
  template <class... A> void appendFormat(const NSString* format, const A&... arguments) {
    appendString(NSString::stringWithFormat(format, arguments...));
  }
  void insertString_atIndex(const NSString* text, uint64_t index);
  void deleteCharactersInRange(NSRange range);
  void replaceCharactersInRange_withString(NSRange range, const NSString* with);
  /// Gives the number of replacements.
  uint64_t replaceOccurrencesOfString_withString_options_range(const NSString* target, const NSString* with,
                                                               NSStringCompareOptions options, NSRange range);

  Ref<NSObject> copyWithZone(NSZone* zone) const override;

 protected:
  NSMutableString() = default;
  ~NSMutableString() override;

 private:
  void takeText(const NSString* text) override;
  const NSString* owner() const override { return nullptr; }
  void replace(NSRange range, const NSString* with);
  template <class Unit> void splice(NSRange range, const NSString* with);
  void makeRoom(size_t units, bool ascii);
  void widenTo(size_t capacity);

  void* buffer_ = nullptr;  // of malloc
  size_t capacity_ = 0;     // in units as they are stored now
};

}  // namespace quoll::inline v1
