// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "QuollFoundation/platform/collections/NSDictionary.h"
#include "QuollFoundation/platform/object/AtomicRef.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

class NSMutableAttributedString;

/// How runs of attributes are walked. Bits.
enum NSAttributedStringEnumerationOptions : uint64_t {
  NSAttributedStringEnumerationReverse = 1 << 1,  ///< From the last run to the first.
  /// Allowed, and without effect: runs are always as long as they can be.
  NSAttributedStringEnumerationLongestEffectiveRangeNotRequired = 1 << 20,
};

/// A text of which each part has attributes: values under names, a dictionary over each run.
///
///     auto title = NSAttributedString::initWithString_attributes("Quoll"_ns, bold);
///     NSRange run;
///     Ref<NSDictionary> here = title->attributesAtIndex_effectiveRange(2, &run);     // bold, {0, 5}
///
/// Runs tile the text; neighbours whose dictionaries are equal are one run. A part without attributes has an empty
/// dictionary. Indices count UTF-16 units from 0; one past the end raises NSRangeException. A null text, name or value
/// raises NSInvalidArgumentException; null attributes are none. Looking up a run takes logarithmic time.
///
/// Threads: immutable (NSMutableAttributedString: caller-locked).
class QF_EXPORT NSAttributedString : public NSObject {
  QF_CLASS(NSAttributedString, NSObject)
 public:
  using RunAction = BlockRef<void(NSDictionary* attributes, NSRange range, bool* stop)>;

  template <class T = NSAttributedString> static Ref<T> initWithString(const NSString* text) {
    return cast<T>(initWithString_ofClass(text, T::classObject()));
  }
  template <class T = NSAttributedString> static Ref<T> initWithString_attributes(const NSString* text,
                                                                                  const NSDictionary* attributes) {
    return cast<T>(initWithString_attributes_ofClass(text, attributes, T::classObject()));
  }
  template <class T = NSAttributedString> static Ref<T> initWithAttributedString(const NSAttributedString* other) {
    return cast<T>(initWithAttributedString_ofClass(other, T::classObject()));
  }
  static Ref<NSAttributedString> initWithString_ofClass(const NSString* text, Class* cls);
  static Ref<NSAttributedString> initWithString_attributes_ofClass(const NSString* text, const NSDictionary* attributes,
                                                                   Class* cls);
  static Ref<NSAttributedString> initWithAttributedString_ofClass(const NSAttributedString* other, Class* cls);

  /// The text as it is now: later changes don't show in it.
  Ref<NSString> string() const;
  uint64_t length() const { return text_->length(); }

  /// The attributes of the unit at `index`, and the run that it stands in, where `effectiveRange` is not null.
  Ref<NSDictionary> attributesAtIndex_effectiveRange(uint64_t index, NSRange* effectiveRange) const;
  /// One of them, or null; the range is that of all attributes.
  Ref<NSObject> attribute_atIndex_effectiveRange(const NSString* name, uint64_t index, NSRange* effectiveRange) const;
  Ref<NSAttributedString> attributedSubstringFromRange(NSRange range) const;

  /// Calls back for each run, cut to the range. The callback may change attributes; one that changes the length raises
  /// NSGenericException before the next run.
  void enumerateAttributesInRange_options_usingBlock(NSRange range, NSAttributedStringEnumerationOptions options,
                                                     RunAction action) const;

  bool isEqualToAttributedString(const NSAttributedString* other) const;
  bool isEqual(const NSObject* other) const override;  ///< Text and attributes; mutable or not makes no difference.
  uint64_t hash() const override;
  Ref<NSString> description() const override;  ///< Each run's text, followed by its attributes.
  Ref<NSObject> copyWithZone(NSZone* zone) const override;
  Ref<NSObject> mutableCopyWithZone(NSZone* zone) const override;
  Ref<NSAttributedString> copy() const;
  Ref<NSMutableAttributedString> mutableCopy() const;

  ~NSAttributedString() override;

 protected:
  NSAttributedString();  ///< Empty.

 private:
  friend class NSMutableAttributedString;
  /// Attributes from the end of the run before to `end`.
  struct Run {
    uint64_t end;
    Ref<NSDictionary> attributes;  // never null, immutable
  };
  using Runs = std::vector<Run>;

  virtual void takeText(const NSString* text);  // of an initialiser
  size_t runAt(uint64_t index) const;           // below the length
  NSRange rangeOfRun(size_t run) const;
  NSDictionary* checkedRunAt(uint64_t index, NSRange* range, std::string_view selector) const;
  Runs runsIn(NSRange range) const;
  static void add(Runs& runs, uint64_t end, const Ref<NSDictionary>& attributes);

  Ref<NSString> text_;               // immutable, or the NSMutableString of a mutable one
  Runs runs_;                        // ends grow, neighbours differ
  mutable AtomicRef<NSString> now_;  // of a mutable text, the last answer of `string`
};

}  // namespace quoll::inline v1
