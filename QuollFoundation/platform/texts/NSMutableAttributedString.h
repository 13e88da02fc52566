// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/texts/NSAttributedString.h"

namespace quoll::inline v1 {

/// An attributed string that changes, in its text and in its attributes.
///
///     auto text = NSMutableAttributedString::initWithString("Hello"_ns);
///     text->addAttribute_value_range("colour"_ns, red, {0, 1});
///     text->appendAttributedString(more);
///
/// A range past the end raises NSRangeException. Appending takes amortised constant time for each unit and run; a
/// change elsewhere grows with what is behind it. The string itself may be an argument. `copy` gives an immutable one.
/// Threads: caller-locked.
class QF_EXPORT NSMutableAttributedString : public NSAttributedString {
  QF_CLASS(NSMutableAttributedString, NSAttributedString)
 public:
  template <class T = NSMutableAttributedString> static Ref<T> initWithString(const NSString* text) {
    return NSAttributedString::initWithString<T>(text);
  }
  template <class T = NSMutableAttributedString>
  static Ref<T> initWithString_attributes(const NSString* text, const NSDictionary* attributes) {
    return NSAttributedString::initWithString_attributes<T>(text, attributes);
  }
  template <class T = NSMutableAttributedString>
  static Ref<T> initWithAttributedString(const NSAttributedString* other) {
    return NSAttributedString::initWithAttributedString<T>(other);
  }

  // Text
  /// The new text takes the attributes of the first unit that gives way; where none does, those of the unit before it,
  /// or else of the one behind it.
  void replaceCharactersInRange_withString(NSRange range, const NSString* with);
  void replaceCharactersInRange_withAttributedString(NSRange range, const NSAttributedString* with);
  void appendAttributedString(const NSAttributedString* other);
  void insertAttributedString_atIndex(const NSAttributedString* other, uint64_t index);
  void deleteCharactersInRange(NSRange range);
  void setAttributedString(const NSAttributedString* other);

  // Attributes
  void setAttributes_range(const NSDictionary* attributes, NSRange range);  ///< In place of all; null are none.
  void addAttribute_value_range(const NSString* name, const NSObject* value, NSRange range);
  void addAttributes_range(const NSDictionary* attributes, NSRange range);  ///< Null raises.
  void removeAttribute_range(const NSString* name, NSRange range);

  Ref<NSObject> copyWithZone(NSZone* zone) const override;

 protected:
  NSMutableAttributedString();
  ~NSMutableAttributedString() override;

 private:
  void takeText(const NSString* text) override;
  void checkRange(NSRange range, std::string_view selector) const;
  void replace(NSRange range, const NSString* with, const Runs& runs);
  Runs joined(NSRange range, const Runs& runs, size_t first, size_t last, uint64_t delta);
  void install(Runs& middle, size_t first, size_t last, uint64_t delta);
  void replaceWith(NSRange range, const NSAttributedString* with);
  template <class Change> void changeAttributes(NSRange range, const Change& change);

  uint64_t changes_ = 0;  // of the runs
};

}  // namespace quoll::inline v1
