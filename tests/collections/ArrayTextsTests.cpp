// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/ArrayTexts.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

TEST(ArrayTexts, StandsOnOneLine) {
  EXPECT_THAT(quoll::shortDescription(quoll::NSArray::arrayWithObjects({1, 2})), equals("[1, 2]"));
}

TEST(ArrayTexts, IsTwoBracketsWhenEmpty) { EXPECT_THAT(shortDescription(NSArray::array()), equals("[]")); }

TEST(ArrayTexts, TakesTextsAsTheyStand) {
  EXPECT_THAT(shortDescription(NSArray::arrayWithObjects({"50 %@"_ns})), equals("[50 %@]"));
}

TEST(ArrayTexts, LeavesOutWhatTheMappingDrops) {
  const Ref<NSArray> numbers = NSArray::arrayWithObjects({1, 2, 3});
  EXPECT_THAT(shortDescriptionWithMapping(numbers,
                                          [](NSNumber* n) -> Ref<NSObject> {
                                            if (n->integerValue() == 2) return nullptr;
                                            return box(10 * n->integerValue());
                                          }),
              equals("[10, 30]"));
}

TEST(ArrayTexts, AnswersByName) {
  EXPECT_THAT(send<Ref<NSString>>(NSArray::arrayWithObjects({1, 2}), "shortDescription"_sel), equals("[1, 2]"));
}

TEST(ArrayTexts, ANullReceiverAnswersNull) { EXPECT_EQ(shortDescription(nullptr), nullptr); }

}  // namespace
