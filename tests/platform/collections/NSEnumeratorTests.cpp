// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSEnumerator.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "tests/platform/collections/CollectionsSupport.h"

TEST(NSEnumerator, GivesOneElementAfterAnother) {
  auto list = quoll::NSArray::arrayWithObjects({"a", "b"});
  std::string all;
  for (auto names = list->objectEnumerator(); quoll::Ref<quoll::NSObject> each = names->nextObject();) {
    all += each->description()->utf8();
  }
  EXPECT_EQ(all, "ab");
}

using namespace quoll;
using namespace quoll::testsupport;

namespace {

class Dice : public NSEnumerator {
  QF_CLASS(Dice, NSEnumerator)
 public:
  Ref<NSObject> nextObject() override { return face_ < 6 ? box(++face_) : Ref<NSNumber>(); }

 private:
  int face_ = 0;
};
Class* Dice::classObject() {
  static Class* const cls = ClassBuilder<Dice>("Dice").build();
  return cls;
}

}  // namespace

TEST(NSEnumerator, KeepsItsCollectionAlive) {
  const LeakGuard guard;
  Ref<NSArray> array = NSArray::arrayWithObjects({make<Item>(1), make<Item>(2)});
  const Ref<NSEnumerator> enumerator = array->objectEnumerator();
  array = nullptr;
  EXPECT_EQ(enumerator->allObjects()->count(), 2u);
  EXPECT_FALSE(enumerator->nextObject());
  EXPECT_FALSE(enumerator->nextObject());
}

TEST(NSEnumerator, GivesAllThatAreLeft) {
  const Ref<NSEnumerator> enumerator = NSArray::arrayWithObjects({1, 2, 3})->objectEnumerator();
  enumerator->nextObject();
  EXPECT_EQ(texts(*enumerator->allObjects()), "2 3");
}

TEST(NSEnumerator, RaisesOnceItsCollectionHasChanged) {
  const Ref<NSMutableArray> array = NSMutableArray::arrayWithObjects({1, 2, 3});
  const Ref<NSEnumerator> elements = array->objectEnumerator();
  elements->nextObject();
  array->removeAllObjects();
  EXPECT_THAT([&] { elements->nextObject(); }, raises(NSGenericException, "was mutated"));
  const Ref<NSMutableDictionary> dictionary = NSMutableDictionary::dictionaryWithEntries({{"a"_ns, 1}});
  const Ref<NSEnumerator> keys = dictionary->keyEnumerator();
  dictionary->setObject_forKey(box(2), "b"_ns);
  EXPECT_THAT([&] { keys->nextObject(); }, raises(NSGenericException, "was mutated"));
}

TEST(NSEnumerator, OfOnesOwnIsWalkedLikeACollection) {
  EXPECT_EQ(walked(make<Dice>()).size(), 6u);
  EXPECT_EQ(texts(*make<Dice>()->allObjects()), "1 2 3 4 5 6");
}
