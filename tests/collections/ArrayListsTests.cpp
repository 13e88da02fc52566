// SPDX-License-Identifier: MIT
#include "QuollFoundation/collections/ArrayLists.h"

#include <gtest/gtest.h>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"
#include "tests/platform/collections/CollectionsSupport.h"

namespace {

using namespace quoll;
using namespace quoll::literals;
using testsupport::texts;

Ref<NSArray> list(std::initializer_list<Element> objects) { return NSArray::arrayWithObjects(objects); }
bool isMutable(NSObject* array) { return as<NSMutableArray>(array) != nullptr; }

/// A subclass whose initialiser leaves a mark.
class Basket : public NSMutableArray {
  QF_CLASS(Basket, NSMutableArray)
 public:
  static Ref<Basket> initWithArray_ofClass(const NSArray* other, Class* cls) {
    Ref<Basket> basket = create<Basket>(cls);
    basket->addObject("basket"_ns);
    basket->addObjectsFromArray(other);
    return basket;
  }
};
Class* Basket::classObject() {
  static Class* const cls =
      ClassBuilder<Basket>("Basket").initializer<&Basket::initWithArray_ofClass>("initWithArray:"_sel).build();
  return cls;
}

TEST(ArrayLists, MakesOneArrayOfSeveral) {
  const quoll::Ref<quoll::NSArray> all = quoll::arrayWithObjectsFromArrays({list({1, 2}), list({}), list({3})});
  EXPECT_EQ(texts(*all), "1 2 3");
  EXPECT_FALSE(isMutable(all));
}

TEST(ArrayLists, MakesAMutableArrayOfSeveral) {
  const Ref<NSMutableArray> all = arrayWithObjectsFromArrays<NSMutableArray>({list({1}), list({2})});
  EXPECT_EQ(texts(*all), "1 2");
  EXPECT_EQ(all->isa(), NSMutableArray::classObject());
}

TEST(ArrayLists, StopsAtTheFirstNullArray) {
  EXPECT_EQ(texts(*arrayWithObjectsFromArrays({list({1}), nullptr, list({2})})), "1");
}

TEST(ArrayLists, IsEmptyWhereTheFirstArrayIsNullEvenIfMoreFollow) {
  EXPECT_EQ(initWithObjectsFromArrays({nullptr, list({1})})->count(), 0u);
  EXPECT_EQ(arrayWithObjectsFromArrays({nullptr, list({1})})->count(), 0u);
  EXPECT_EQ(arrayWithObjectsFromArrays({})->count(), 0u);
}

TEST(ArrayLists, InitialisesAMutableArrayFromArrays) {
  const Ref<NSMutableArray> all = initWithObjectsFromArrays({list({1}), list({2, 3})});
  EXPECT_EQ(texts(*all), "1 2 3");
  EXPECT_TRUE(isMutable(all));
}

TEST(ArrayLists, MakesASubclassByItsOwnInitialiser) {
  const Ref<Basket> basket = arrayWithObjectsFromArrays<Basket>({list({1}), list({2})});
  EXPECT_EQ(texts(*basket), "basket 1 2");
  EXPECT_EQ(texts(*initWithObjectsFromArrays<Basket>({list({1})})), "basket 1");
}

TEST(ArrayLists, TravelsByName) {
  const Ref<NSArray> a = list({1}), b = list({2});
  const auto all = send<Ref<NSArray>>(NSArray::classObject(), "arrayWithObjectsFromArrays:"_sel, objects(a, b));
  EXPECT_EQ(texts(*all), "1 2");
  EXPECT_FALSE(isMutable(all));
  const auto changing =
      send<Ref<NSMutableArray>>(NSMutableArray::classObject(), "arrayWithObjectsFromArrays:"_sel, objects(a, b));
  EXPECT_EQ(changing->isa(), NSMutableArray::classObject());
  const auto made =
      send<Ref<NSMutableArray>>(alloc(NSMutableArray::classObject()), "initWithObjectsFromArrays:"_sel, objects(b, a));
  EXPECT_EQ(texts(*made), "2 1");
}

TEST(ArrayLists, RefusesAnObjectThatIsNoArray) {
  const Ref<NSArray> a = list({1});
  EXPECT_THAT(
      [&] { send<Ref<NSArray>>(NSArray::classObject(), "arrayWithObjectsFromArrays:"_sel, objects(a, "text"_ns)); },
      raises(NSInvalidArgumentException, "NSArray"));
}

TEST(ArrayLists, AddsAListOfObjects) {
  const Ref<NSMutableArray> array = NSMutableArray::arrayWithObjects({1});
  addObjects(array, {2, "three"_ns, 4.5});
  EXPECT_EQ(texts(*array), "1 2 three 4.5");
  send(array, "addObjects:"_sel, objects(box(5), box(6)));
  EXPECT_EQ(texts(*array), "1 2 three 4.5 5 6");
}

TEST(ArrayLists, AddsUpToTheFirstNull) {
  const Ref<NSMutableArray> array = NSMutableArray::array();
  addObjects(array, {1, nullptr, 2});
  EXPECT_EQ(texts(*array), "1");
  addObjects(array, {nullptr, 2});
  addObjects(array, {});
  EXPECT_EQ(texts(*array), "1");
}

TEST(ArrayLists, GivesTheReceiverItselfWhereTheFirstObjectIsNull) {
  const Ref<NSArray> array = list({1});
  EXPECT_EQ(arrayByAddingObjects(array, {nullptr, 2}), array);
  EXPECT_EQ(arrayByAddingObjects(array, {}), array);
  const Ref<NSMutableArray> changing = NSMutableArray::arrayWithObjects({1});
  EXPECT_EQ(arrayByAddingObjects(changing, {nullptr, 1}), changing);
}

TEST(ArrayLists, AddsObjectsToANewImmutableArray) {
  const Ref<NSMutableArray> array = NSMutableArray::arrayWithObjects({1});
  const Ref<NSArray> more = arrayByAddingObjects(array, {2, 3, nullptr, 4});
  EXPECT_EQ(texts(*more), "1 2 3");
  EXPECT_FALSE(isMutable(more));
  EXPECT_EQ(array->count(), 1u);
}

TEST(ArrayLists, KeepsThePresentOnesOfACountedList) {
  const Ref<NSArray> present = qf_nilSafeArrayWithMaxCount_objects(3, {"a"_ns, nullptr, "b"_ns});
  EXPECT_EQ(texts(*present), "a b");
  EXPECT_FALSE(isMutable(present));
}

TEST(ArrayLists, ReadsNothingBeyondTheCount) {
  EXPECT_EQ(texts(*qf_nilSafeArrayWithMaxCount_objects(2, {1, 2, 3})), "1 2");
  EXPECT_EQ(qf_nilSafeArrayWithMaxCount_objects(0, {1, 2, 3})->count(), 0u);
}

TEST(ArrayLists, IsEmptyWhereAllOfACountedListAreNull) {
  EXPECT_EQ(qf_nilSafeArrayWithMaxCount_objects(2, {nullptr, nullptr})->count(), 0u);
}

TEST(ArrayLists, RaisesWhereACountedListIsTooShort) {
  EXPECT_THAT([] { qf_nilSafeArrayWithMaxCount_objects(3, {1, 2}); },
              raises(NSInvalidArgumentException, "2 objects for a count of 3"));
}

TEST(ArrayLists, TakesALongCountedList) {
  std::vector<const NSObject*> numbers;
  const Ref<NSNumber> one = box(1);
  for (int i = 0; i < 1000; ++i) numbers.push_back(i % 2 ? one.get() : nullptr);
  const Ref<NSArray> present =
      qf_nilSafeArrayWithMaxCount_objects_ofClass(1000, ObjectList::of(numbers), NSArray::classObject());
  EXPECT_EQ(present->count(), 500u);
}

TEST(ArrayLists, ItsWorkersTakeTheFirstApart) {
  const Ref<NSMutableArray> array = NSMutableArray::array();
  _addObject_variableArguments(array, box(1), objects(box(2), nullptr, box(3)));
  EXPECT_EQ(texts(*array), "1 2");
  _addObject_variableArguments(array, nullptr, objects(box(4)));
  EXPECT_EQ(texts(*array), "1 2");
  const Ref<NSArray> first = list({1}), second = list({2});
  Class* const cls = NSMutableArray::classObject();
  EXPECT_EQ(texts(*_arrayWithObjectsFromArray_variableArguments_ofClass(first, objects(second), cls)), "1 2");
  EXPECT_EQ(texts(*_initWithObjectsFromArray_variableArguments_ofClass(first, objects(second), cls)), "1 2");
  EXPECT_EQ(_initWithObjectsFromArray_variableArguments_ofClass(nullptr, objects(second), cls)->count(), 0u);
  EXPECT_EQ(texts(*_initWithObjectsFromArray_variableArguments_ofClass(first, nullptr, cls)), "1");
}

TEST(ArrayLists, ANullReceiverAnswersNull) {
  EXPECT_EQ(arrayByAddingObjects(nullptr, {1}), nullptr);
  addObjects(nullptr, {1});
}

}  // namespace
