// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/Reflection.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::Contains;
using testing::Not;

namespace {

/// "-[Group selector] encoding"
std::vector<std::string> linesOf(const Class* cls) {
  std::vector<std::string> lines;
  for (const MethodDescription& m : methodsOf(cls)) {
    lines.push_back(m.sign + ("[" + m.group + " " + m.selector + "] " + m.encoding));
  }
  return lines;
}

class Reader : public NSObject {
  QF_CLASS(Reader, NSObject)
 public:
  int64_t pages() const { return 3; }
  int64_t turnPage() { return ++page_; }
  void close() const {}
  int64_t pageNamed(NSString*) const { return 1; }
  Ref<NSObject> initialReader() const { return nullptr; }
  Ref<NSObject> copyOfPage() const { return nullptr; }
  Ref<NSObject> mutableCopyOfPage() const { return nullptr; }
  Ref<NSObject> newspaper() const { return nullptr; }
  Ref<NSObject> createdPage() const { return nullptr; }
  int64_t position() { return page_; }
  void setPosition(int64_t p) { page_ = p; }

 private:
  int64_t page_ = 0;
};
Class* Reader::classObject() {
  static Class* const cls = ClassBuilder<Reader>("Reader")
                                .method<&Reader::pages>("pages"_sel)
                                .method<&Reader::turnPage>("turnPage"_sel)
                                .method<&Reader::close>("close"_sel)
                                .method<&Reader::pageNamed>("pageNamed:"_sel)
                                .method<&Reader::initialReader>("initialReader"_sel)
                                .method<&Reader::copyOfPage>("copyOfPage"_sel)
                                .method<&Reader::mutableCopyOfPage>("mutableCopyOfPage"_sel)
                                .method<&Reader::newspaper>("newspaper"_sel)
                                .method<&Reader::createdPage>("createdPage"_sel)
                                .property<&Reader::position, &Reader::setPosition>("position")
                                .build();
  return cls;
}

bool isLong(const Reader*) { return true; }
constinit const AdditionGroup<Reader> reading{"Reading", {method<&isLong>("isLong"_sel)}};

}  // namespace

TEST(Reflection, ListsWhatAClassDeclaresWithSignAndEncoding) {
  EXPECT_THAT(linesOf(Counter::classObject()),
              AllOf(Contains("-[ plus:] q@:q"), Contains("+[ value] q@:"), Contains("-[ value] q@:"),
                    Contains("-[ setValue:] v@:q"), Contains("-[ initWithValue:] @@:q")));
  EXPECT_TRUE(methodsOf(SubCounter::classObject()).empty()) << "what is inherited is listed where it is declared";
}

TEST(Reflection, ListsAdditionGroupsUnderTheirNames) {
  const RegisterGroup registered{reading};
  EXPECT_THAT(linesOf(Reader::classObject()), Contains("-[Reading isLong] c@:"));
}

TEST(Reflection, ListsALibraryClassThatNobodyTouched) {
  EXPECT_THAT(linesOf(classNamed("NSMethodSignature")), Contains("-[ methodReturnLength] Q@:"));
  EXPECT_THAT(linesOf(classNamed("NSObject")), Contains("-[ObjectTexts description] @@:"));
}

TEST(Reflection, KeysAreWhatReadsAndDoesNothingElse) {
  const std::vector<std::string> keys = keysOf(Reader::classObject());
  EXPECT_THAT(keys, AllOf(Contains("pages"), Contains("position"), Contains("hash"), Contains("self")));
  for (const char* none : {"turnPage", "close", "pageNamed:", "initialReader", "copyOfPage", "mutableCopyOfPage",
                           "newspaper", "createdPage", "copy", "performSelector:"}) {
    EXPECT_THAT(keys, Not(Contains(none))) << none;
  }
  EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
}

TEST(Reflection, OfNoClassIsEmpty) {
  EXPECT_TRUE(methodsOf(nullptr).empty());
  EXPECT_TRUE(keysOf(nullptr).empty());
}
