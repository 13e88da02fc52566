// SPDX-License-Identifier: MIT
#include "Recipe.h"

#include <cmath>

using namespace quoll;

Class* Recipe::classObject() {
  static Class* const cls = ClassBuilder<Recipe>("Recipe")
                                .initializer<&Recipe::initWithTitle_ofClass>("initWithTitle:")
                                .property<&Recipe::title, &Recipe::setTitle>("title")
                                .property<&Recipe::servings, &Recipe::setServings>("servings")
                                .property<&Recipe::isVegan, &Recipe::setVegan>("isVegan", "setVegan:"_sel)
                                .method<&Recipe::scaleBy>("scaleBy:")
                                .build();
  return cls;
}

Ref<Recipe> Recipe::initWithTitle_ofClass(NSString* title, Class* cls) {
  Ref<Recipe> self = create<Recipe>(cls);
  self->setTitle(title);
  return self;
}

void Recipe::setTitle(NSString* title) { title_ = title ? title->copy() : nullptr; }

void Recipe::scaleBy(double factor) { servings_ = std::llround(static_cast<double>(servings_) * factor); }

Ref<NSString> Recipe::description() const { return NSString::stringWithFormat("%@ for %lld"_ns, title_, servings_); }

bool Recipe::isEqual(const NSObject* other) const {
  const auto* recipe = as<Recipe>(other);
  return recipe && quoll::isEqual(title_, recipe->title_) && servings_ == recipe->servings_;
}
uint64_t Recipe::hash() const { return title_ ? title_->hash() : 0; }

Ref<NSObject> Recipe::copyWithZone(NSZone*) const {
  Ref<Recipe> copy = made<Recipe>(isa(), "initWithTitle:"_sel, title_);
  copy->servings_ = servings_;
  copy->isVegan_ = isVegan_;
  return copy;
}
