// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/SortDescriptors.h"

#include <gtest/gtest.h>

#include <string>

#include "QuollFoundation/platform/collections/NSArray.h"
#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace {

using namespace quoll;

TEST(SortDescriptors, AreWhatTheInitialisersMake) {
  const Ref<NSSortDescriptor> plain = sortDescriptorWithKey_ascending("length"_ns, false);
  EXPECT_EQ(plain->isa(), NSSortDescriptor::classObject());
  EXPECT_EQ(plain->key()->utf8(), "length");
  EXPECT_FALSE(plain->ascending());
  EXPECT_EQ(plain->selector(), "compare:"_sel);
  const Ref<NSSortDescriptor> special =
      sortDescriptorWithKey_ascending_selector("self"_ns, true, "caseInsensitiveCompare:"_sel);
  EXPECT_EQ(special->key()->utf8(), "self");
  EXPECT_TRUE(special->ascending());
  EXPECT_EQ(special->selector(), "caseInsensitiveCompare:"_sel);
  EXPECT_TRUE(isEqual(plain, NSSortDescriptor::initWithKey_ascending("length"_ns, false)));
}

TEST(SortDescriptors, AreWhatTheInitialisersMakeByName) {
  Class* const cls = NSSortDescriptor::classObject();
  const auto plain = send<Ref<NSSortDescriptor>>(cls, "sortDescriptorWithKey:ascending:"_sel, "length"_ns, true);
  EXPECT_TRUE(isEqual(plain, sortDescriptorWithKey_ascending("length"_ns, true)));
  const auto special = send<Ref<NSSortDescriptor>>(cls, "sortDescriptorWithKey:ascending:selector:"_sel, "self"_ns,
                                                   false, "caseInsensitiveCompare:"_sel);
  EXPECT_TRUE(
      isEqual(special, sortDescriptorWithKey_ascending_selector("self"_ns, false, "caseInsensitiveCompare:"_sel)));
}

std::string sorted(const NSSortDescriptor* descriptor) {
  const Ref<NSArray> words = NSArray::arrayWithObjects({"bb"_ns, "A"_ns, "ccc"_ns, "a"_ns});
  return words->sortedArrayUsingDescriptors(NSArray::arrayWithObject(descriptor))
      ->componentsJoinedByString(" "_ns)
      ->utf8();
}

TEST(SortDescriptors, SortByKeyDirectionAndSelector) {
  EXPECT_EQ(sorted(sortDescriptorWithKey_ascending("length"_ns, true)), "A a bb ccc");
  EXPECT_EQ(sorted(sortDescriptorWithKey_ascending("length"_ns, false)), "ccc bb A a");
  EXPECT_EQ(sorted(sortDescriptorWithKey_ascending("self"_ns, true)), "A a bb ccc");
  EXPECT_EQ(sorted(sortDescriptorWithKey_ascending_selector("self"_ns, false, "caseInsensitiveCompare:"_sel)),
            "ccc bb A a");
}

/// Counts what its own initialisers made.
class CountedDescriptor : public NSSortDescriptor {
  QF_CLASS(CountedDescriptor, NSSortDescriptor)
 public:
  static Ref<NSSortDescriptor> initWithKey_ascending_ofClass(const NSString* key, bool ascending, Class* cls) {
    ++plain;
    return NSSortDescriptor::initWithKey_ascending_ofClass(key, ascending, cls);
  }
  static Ref<NSSortDescriptor> initWithKey_ascending_selector_ofClass(const NSString* key, bool ascending,
                                                                      Selector selector, Class* cls) {
    ++withSelector;
    return NSSortDescriptor::initWithKey_ascending_selector_ofClass(key, ascending, selector, cls);
  }
  static inline int plain = 0;
  static inline int withSelector = 0;

 protected:
  CountedDescriptor() = default;
};
Class* CountedDescriptor::classObject() {
  static Class* const cls =
      ClassBuilder<CountedDescriptor>("CountedDescriptor")
          .initializer<&CountedDescriptor::initWithKey_ascending_ofClass>("initWithKey:ascending:"_sel)
          .initializer<&CountedDescriptor::initWithKey_ascending_selector_ofClass>(
              "initWithKey:ascending:selector:"_sel)
          .build();
  return cls;
}

TEST(SortDescriptors, ASubclassIsMadeByItsOwnInitialisers) {
  const Ref<CountedDescriptor> plain = sortDescriptorWithKey_ascending<CountedDescriptor>("length"_ns, true);
  EXPECT_EQ(CountedDescriptor::plain, 1);
  EXPECT_EQ(plain->key()->utf8(), "length");
  CountedDescriptor::withSelector = 0;  // the plain initialiser may lean on the other
  const Ref<CountedDescriptor> special =
      sortDescriptorWithKey_ascending_selector<CountedDescriptor>("self"_ns, true, "compare:"_sel);
  EXPECT_EQ(CountedDescriptor::withSelector, 1);
  EXPECT_EQ(special->selector(), "compare:"_sel);
  const auto byName = send<Ref<NSSortDescriptor>>(CountedDescriptor::classObject(),
                                                  "sortDescriptorWithKey:ascending:"_sel, "length"_ns, true);
  EXPECT_NE(as<CountedDescriptor>(byName), nullptr);
  EXPECT_EQ(CountedDescriptor::plain, 2);
}

}  // namespace
