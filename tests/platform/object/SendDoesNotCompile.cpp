// SPDX-License-Identifier: MIT
// What a message refuses; scripts/check-refusals tries each case.
#include <string>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;

struct Unlisted {};
struct Untidy {
  std::string text;
};
template <> struct quoll::StructEncoding<Untidy> {
  static constexpr const char* text = "{Untidy=*}";
};

[[maybe_unused]] static void attempt([[maybe_unused]] const Ref<Kinds>& kinds) {
#if CASE == 0
  send<Ref<NSString>>(kinds, "echo:"_sel, "x"_ns);
  on(kinds).call<&Kinds::small>(int8_t{5});
#elif CASE == 1  // refused: receive an object as Ref<T>: a T* would dangle
  send<NSString*>(kinds, "echo:"_sel, "x"_ns);
#elif CASE == 2  // refused: receive an object as Ref<T>: a T* would dangle
  send<const NSObject*>(kinds, "echo:"_sel, "x"_ns);
#elif CASE == 3  // refused: a struct needs a StructEncoding
  send(kinds, "small:"_sel, Unlisted{});
#elif CASE == 4  // refused: a struct needs a StructEncoding
  send<Unlisted>(kinds, "small:"_sel, 1);
#elif CASE == 5  // refused: a struct needs a StructEncoding
  send(kinds, "lengthOf:"_sel, std::string("text"));
#elif CASE == 6  // refused: structs travel by their bytes
  send(kinds, "small:"_sel, Untidy());
#elif CASE == 7  // refused: another number of arguments than the member function takes
  on(kinds).call<&Kinds::small>();
#elif CASE == 8  // refused: static_cast | could not bind
  on(kinds).call<&Kinds::echo>(5);
#endif
}
