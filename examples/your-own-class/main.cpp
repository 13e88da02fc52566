// SPDX-License-Identifier: MIT
#include <iostream>

#include "Recipe.h"

using namespace quoll;

int main() {
  Ref<Recipe> soup = Recipe::initWithTitle("Pumpkin soup"_ns);
  soup->setServings(4);
  std::cout << soup << '\n';

  send(soup, "scaleBy:"_sel, 1.5);               // a message by name
  soup->setValue_forKey(box(true), "vegan"_ns);  // a value by key, unboxed
  std::cout << soup << ", vegan: " << soup->valueForKey("vegan"_ns) << '\n';
  std::cout << soup->valueForKeyPath("title.length"_ns) << '\n';  // through the title

  try {
    send(soup, "scaleBy:"_sel, "twice"_ns);
  } catch (const NSException& refused) {
    std::cout << refused.what() << '\n';
  }
}
