// SPDX-License-Identifier: MIT
#pragma once

#include <QuollFoundation/QuollFoundation.h>

/// What to cook, and for how many.
///
/// Threads: caller-locked.
class Recipe : public quoll::NSObject {
  QF_CLASS(Recipe, NSObject)
 public:
  /// A Recipe, or the subclass that is named: `Recipe::initWithTitle<Cake>("Linzer"_ns)`.
  template <class T = Recipe> static quoll::Ref<T> initWithTitle(quoll::NSString* title) {
    return quoll::cast<T>(initWithTitle_ofClass(title, T::classObject()));
  }
  static quoll::Ref<Recipe> initWithTitle_ofClass(quoll::NSString* title, quoll::Class* cls);

  quoll::Ref<quoll::NSString> title() const { return title_; }
  void setTitle(quoll::NSString* title);  ///< Keeps a copy.
  int64_t servings() const { return servings_; }
  void setServings(int64_t servings) { servings_ = servings; }
  bool isVegan() const { return isVegan_; }
  void setVegan(bool isVegan) { isVegan_ = isVegan; }

  void scaleBy(double factor);

  quoll::Ref<quoll::NSString> description() const override;
  bool isEqual(const quoll::NSObject* other) const override;
  uint64_t hash() const override;
  quoll::Ref<quoll::NSObject> copyWithZone(quoll::NSZone* zone) const override;

 protected:
  Recipe() = default;

 private:
  quoll::Ref<quoll::NSString> title_;
  int64_t servings_ = 1;
  bool isVegan_ = false;
};
