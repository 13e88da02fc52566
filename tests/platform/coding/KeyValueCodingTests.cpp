// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/coding/KeyValueCoding.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "QuollFoundation/platform/object/ClassBuilder.h"
#include "QuollFoundation/platform/object/NSProxy.h"
#include "QuollFoundation/platform/object/Reflection.h"
#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/testing.h"
#include "tests/support/AllocationCount.h"

namespace {

struct Span {
  uint32_t first;
  uint32_t last;
};

}  // namespace

template <> struct quoll::StructEncoding<Span> {
  static constexpr const char* text = "{Span=II}";
};

using namespace quoll;

namespace {

/// A class as a user writes it.
class Person : public NSObject {
  QF_CLASS(Person, NSObject)
 public:
  Ref<NSString> name() const { return name_; }
  void setName(NSString* name) { name_ = name; }
  int16_t age() const { return age_; }
  void setAge(int16_t age) { age_ = age; }
  uint64_t serial() const { return serial_; }
  void setSerial(uint64_t serial) { serial_ = serial; }
  double height() const { return height_; }
  void setHeight(double height) { height_ = height; }
  float weight() const { return weight_; }
  void setWeight(float weight) { weight_ = weight; }
  bool isRetired() const { return isRetired_; }
  void setRetired(bool is) { isRetired_ = is; }
  bool isMember() const { return isMember_; }
  void setMember(bool is) { isMember_ = is; }
  NSRange span() const { return span_; }
  void setSpan(NSRange span) { span_ = span; }
  Span pages() const { return pages_; }
  void setPages(Span pages) { pages_ = pages; }
  Ref<Person> boss() const { return boss_; }
  void setBoss(Person* boss) { boss_ = boss; }
  int64_t setLevel(int64_t level) { return level_ = level; }
  int64_t level() const { return level_; }

  int64_t nameLength() const { return name_ ? static_cast<int64_t>(name_->length()) : 0; }
  bool isGrown() const { return age_ >= 18; }
  int64_t pop() { return ++pops; }
  int64_t takeTicket() const { return 7; }
  Ref<NSString> copyOfName() const { return name_; }
  Ref<NSString> initials() const { return "JD"_ns; }
  Ref<NSString> newName() const { return name_; }
  Ref<NSString> createName() const { return name_; }
  void rest() const {}
  int pops = 0;

 private:
  Ref<NSString> name_;
  int16_t age_ = 0;
  uint64_t serial_ = 0;
  double height_ = 0;
  float weight_ = 0;
  bool isRetired_ = false;
  bool isMember_ = false;
  NSRange span_{};
  Span pages_{};
  int64_t level_ = 0;
  Ref<Person> boss_;
};

Class* Person::classObject() {
  static Class* const cls = ClassBuilder<Person>("Person")
                                .property<&Person::name, &Person::setName>("name")
                                .property<&Person::age, &Person::setAge>("age")
                                .property<&Person::serial, &Person::setSerial>("serial")
                                .property<&Person::height, &Person::setHeight>("height")
                                .property<&Person::weight, &Person::setWeight>("weight")
                                .property<&Person::isRetired, &Person::setRetired>("isRetired")
                                .property<&Person::isMember, &Person::setMember>("member", "__setMember:"_sel)
                                .property<&Person::span, &Person::setSpan>("span")
                                .property<&Person::pages, &Person::setPages>("pages")
                                .property<&Person::boss, &Person::setBoss>("boss")
                                .property<&Person::level>("level")
                                .method<&Person::setLevel>("setLevel:")
                                .property<&Person::nameLength>("nameLength")
                                .method<&Person::isGrown>("isGrown")
                                .method<&Person::pop>("pop")
                                .method<&Person::takeTicket>("takeTicket")
                                .notAKey()
                                .method<&Person::copyOfName>("copyOfName")
                                .method<&Person::initials>("initials")
                                .method<&Person::newName>("newName")
                                .method<&Person::createName>("createName")
                                .method<&Person::rest>("rest")
                                .build();
  return cls;
}

/// Keeps what has no property in a map, as a record with free keys does.
class OpenRecord : public NSObject {
  QF_CLASS(OpenRecord, NSObject)
 public:
  Ref<NSObject> valueForUndefinedKey(const NSString* key) const override {
    const auto found = values_.find(key->utf8());
    return found == values_.end() ? nullptr : found->second;
  }
  void setValue_forUndefinedKey(NSObject* value, const NSString* key) override { values_[key->utf8()] = value; }
  void setNilValueForKey(const NSString* key) override { cleared = key->utf8(); }
  Ref<NSString> storage() const { return storage_; }
  void __setStorage(NSString* storage) { storage_ = storage; }
  int64_t count() const { return static_cast<int64_t>(values_.size()); }
  void setCount(int64_t) { ADD_FAILURE() << "no method of this class is a key"; }
  int64_t limit() const { return limit_; }
  void setLimit(int64_t limit) { limit_ = limit; }
  std::string cleared;

 private:
  std::map<std::string, Ref<NSObject>> values_;
  Ref<NSString> storage_;
  int64_t limit_ = 3;
};

Class* OpenRecord::classObject() {
  static Class* const cls =
      ClassBuilder<OpenRecord>("OpenRecord")
          .property<&OpenRecord::storage, &OpenRecord::__setStorage>("__storage", "__setStorage:"_sel)
          .property<&OpenRecord::limit, &OpenRecord::setLimit>("limit")
          .method<&OpenRecord::count>("count")
          .method<&OpenRecord::setCount>("setCount:")
          .notCodable()
          .build();
  return cls;
}

/// Sends everything on to a person.
class PersonProxy : public NSProxy {
 public:
  using Self = PersonProxy;
  using Super = NSProxy;
  static Class* classObject() {
    static Class* const cls = ClassBuilder<PersonProxy>("PersonProxy").build();
    return cls;
  }
  Class* isa() const override { return classObject(); }
  Ref<NSMethodSignature> methodSignatureForSelector(Selector selector) const override {
    return target->methodSignatureForSelector(selector);
  }
  void forwardInvocation(NSInvocation* invocation) override { invocation->invokeWithTarget(target); }
  Ref<Person> target = make<Person>();
};

class KeyValueCoding : public testing::Test {
 protected:
  const LeakGuard guard;
  const Ref<Person> person = make<Person>();

  auto setting(NSObject* value, NSString* key) {
    return [this, value = Ref<NSObject>(value), key] { person->setValue_forKey(value, key); };
  }
};

TEST_F(KeyValueCoding, ReadsAndWritesProperties) {
  person->setValue_forKey("Ada"_ns, "name"_ns);
  person->setValue_forKey(box(36), "age"_ns);
  person->setValue_forKey(box(1.7), "height"_ns);
  person->setValue_forKey(box(60.5), "weight"_ns);
  EXPECT_THAT(person->valueForKey("name"_ns), equals("Ada"));
  EXPECT_THAT(person->valueForKey("age"_ns), equals(box(36)));
  EXPECT_THAT(person->valueForKey("height"_ns), equals(box(1.7)));
  EXPECT_THAT(person->valueForKey("weight"_ns), equals(box(60.5)));
  EXPECT_EQ(person->age(), 36);
}

TEST_F(KeyValueCoding, BoxesNumbersWithTheirType) {
  EXPECT_STREQ(cast<NSNumber>(person->valueForKey("age"_ns))->objCType(), "s");
  EXPECT_STREQ(cast<NSNumber>(person->valueForKey("serial"_ns))->objCType(), "Q");
  EXPECT_STREQ(cast<NSNumber>(person->valueForKey("weight"_ns))->objCType(), "f");
  EXPECT_STREQ(cast<NSNumber>(person->valueForKey("height"_ns))->objCType(), "d");
  EXPECT_STREQ(cast<NSNumber>(person->valueForKey("isRetired"_ns))->objCType(), "c");
}

TEST_F(KeyValueCoding, LargestUnsignedNumberPassesBothWays) {
  person->setValue_forKey(box(UINT64_MAX), "serial"_ns);
  EXPECT_EQ(person->serial(), UINT64_MAX);
  EXPECT_THAT(person->valueForKey("serial"_ns), equals(box(UINT64_MAX)));
}

TEST_F(KeyValueCoding, StructsAreBoxedBothWays) {
  person->setValue_forKey(box(NSMakeRange(2, 5)), "span"_ns);
  person->setValue_forKey(box(Span{1, 2}), "pages"_ns);
  EXPECT_EQ(person->span(), NSMakeRange(2, 5));
  EXPECT_EQ(person->pages().last, 2U);
  EXPECT_THAT(person->valueForKey("span"_ns), equals(box(NSMakeRange(2, 5))));
  EXPECT_THAT(person->valueForKey("pages"_ns), equals(box(Span{1, 2})));
}

TEST_F(KeyValueCoding, BooleanPropertyAnswersUnderBothNames) {
  person->setValue_forKey(box(true), "retired"_ns);
  EXPECT_TRUE(person->isRetired());
  EXPECT_THAT(person->valueForKey("retired"_ns), equals(box(true)));
  EXPECT_THAT(person->valueForKey("isRetired"_ns), equals(box(true)));
  person->setValue_forKey(box(false), "isRetired"_ns);
  EXPECT_FALSE(person->isRetired());
  person->setValue_forKey(box(true), "isMember"_ns);
  EXPECT_THAT(person->valueForKey("isMember"_ns), equals(box(true)));
  EXPECT_THAT(person->valueForKey("member"_ns), equals(box(true)));
}

TEST_F(KeyValueCoding, AnyNumberButZeroIsTrue) {
  person->setValue_forKey(box(256), "retired"_ns);
  EXPECT_TRUE(person->isRetired());
  person->setValue_forKey(box(0.0), "retired"_ns);
  EXPECT_FALSE(person->isRetired());
}

TEST_F(KeyValueCoding, SetterMayHaveANameOfItsOwnOrAResult) {
  person->setValue_forKey(box(true), "member"_ns);
  EXPECT_TRUE(person->isMember());
  person->setValue_forKey(box(4), "level"_ns);
  EXPECT_EQ(person->level(), 4);
}

TEST_F(KeyValueCoding, ReadsMethodsThatOnlyRead) {
  person->setName("Ada"_ns);
  EXPECT_THAT(person->valueForKey("nameLength"_ns), equals(box(3)));
  EXPECT_THAT(person->valueForKey("isGrown"_ns), equals(box(false)));
  EXPECT_THAT(person->valueForKey("grown"_ns), equals(box(false)));
  EXPECT_EQ(person->valueForKey("self"_ns), person);
  EXPECT_THAT("text"_ns->valueForKey("length"_ns), equals(box(4)));
  EXPECT_THAT("text"_ns->valueForKey("uppercaseString"_ns), equals("TEXT"));
}

TEST_F(KeyValueCoding, WhatHasAnEffectOrMakesAnObjectIsNoKey) {
  for (NSString* key : {"pop"_ns, "takeTicket"_ns, "copyOfName"_ns, "initials"_ns, "newName"_ns, "createName"_ns,
                        "rest"_ns, "copy"_ns, "mutableCopy"_ns, "setName:"_ns, "isEqual:"_ns, ""_ns, ":"_ns}) {
    SCOPED_TRACE(key->utf8());
    EXPECT_THAT([&] { person->valueForKey(key); }, raises(NSUndefinedKeyException, ""));
    EXPECT_FALSE(answersKey(person, key));
  }
  EXPECT_EQ(person->pops, 0);
  EXPECT_TRUE(answersKey(person, "grown"_ns));
}

TEST_F(KeyValueCoding, UndefinedKeyRaisesNamingObjectAndKey) {
  EXPECT_THAT([&] { person->valueForKey("foo"_ns); },
              raises(NSUndefinedKeyException,
                     "> valueForUndefinedKey:]: this class is not key value coding-compliant "
                     "for the key foo."));
  EXPECT_THAT([&] { person->valueForKey("foo"_ns); }, raises(NSUndefinedKeyException, "[<Person 0x"));
  EXPECT_THAT(setting(box(1), "foo"_ns), raises(NSUndefinedKeyException,
                                                "> setValue:forUndefinedKey:]: this class is not key value "
                                                "coding-compliant for the key foo."));
  EXPECT_THAT(setting(box(1), "nameLength"_ns), raises(NSUndefinedKeyException, "nameLength"));
  EXPECT_THAT(setting(box(1), ""_ns), raises(NSUndefinedKeyException, ""));
  EXPECT_THAT(setting(box(1), u"größe"_ns), raises(NSUndefinedKeyException, "größe"));
}

TEST_F(KeyValueCoding, NullKeyRaises) {
  EXPECT_THAT([&] { person->valueForKey(nullptr); }, raises(NSInvalidArgumentException, "valueForKey:"));
  EXPECT_THAT([&] { person->valueForKeyPath(nullptr); }, raises(NSInvalidArgumentException, "valueForKeyPath:"));
  EXPECT_THAT(setting(nullptr, nullptr), raises(NSInvalidArgumentException, "setValue:forKey:"));
  EXPECT_THAT([&] { person->setValue_forKeyPath(nullptr, nullptr); },
              raises(NSInvalidArgumentException, "setValue:forKeyPath:"));
}

TEST_F(KeyValueCoding, ValueThatDoesNotFitRaisesNamingTheKeyAndChangesNothing) {
  person->setAge(36);
  EXPECT_THAT(setting(box(40000), "age"_ns), raises(NSInvalidArgumentException, "key age: NSNumber 40000 doesn't fit"));
  EXPECT_THAT(setting(box(1e30), "age"_ns), raises(NSInvalidArgumentException, "key age: NSNumber 1e+30"));
  EXPECT_THAT(setting(box(-1), "serial"_ns), raises(NSInvalidArgumentException, "key serial: NSNumber -1"));
  EXPECT_THAT(setting(box(UINT64_MAX), "level"_ns), raises(NSInvalidArgumentException, "key level"));
  EXPECT_THAT(setting(box(1e300), "weight"_ns), raises(NSInvalidArgumentException, "key weight: NSNumber 1e+300"));
  EXPECT_THAT(setting("36"_ns, "age"_ns), raises(NSInvalidArgumentException, "key age"));
  EXPECT_THAT(setting("tall"_ns, "height"_ns), raises(NSInvalidArgumentException, "key height"));
  EXPECT_THAT(setting(box(5), "span"_ns), raises(NSInvalidArgumentException, "key span"));
  EXPECT_THAT(setting(box(CGPoint{1, 2}), "span"_ns), raises(NSInvalidArgumentException, "{CGPoint=dd}"));
  EXPECT_THAT(setting(box(5), "name"_ns), raises(NSInvalidArgumentException, "NSString"));
  EXPECT_EQ(person->age(), 36);
  EXPECT_EQ(person->name(), nullptr);
}

TEST_F(KeyValueCoding, FractionIsDropped) {
  person->setValue_forKey(box(36.9), "age"_ns);
  EXPECT_EQ(person->age(), 36);
}

TEST_F(KeyValueCoding, NullIsForObjectsOnly) {
  person->setName("Ada"_ns);
  person->setValue_forKey(nullptr, "name"_ns);
  EXPECT_EQ(person->name(), nullptr);
  EXPECT_EQ(person->valueForKey("name"_ns), nullptr);
  for (NSString* key : {"age"_ns, "height"_ns, "weight"_ns, "retired"_ns, "span"_ns, "level"_ns}) {
    EXPECT_THAT(setting(nullptr, key), raises(NSInvalidArgumentException, "-[Person setNilValueForKey:]"));
    EXPECT_THAT(setting(nullptr, key), raises(NSInvalidArgumentException, "key " + key->utf8()));
  }
}

TEST_F(KeyValueCoding, KeyPathIsFollowedKeyByKey) {
  const Ref<Person> boss = make<Person>();
  boss->setName("Grace"_ns);
  person->setBoss(boss);
  EXPECT_THAT(person->valueForKeyPath("boss.name"_ns), equals("Grace"));
  EXPECT_THAT(person->valueForKeyPath("boss.name.length"_ns), equals(box(5)));
  EXPECT_THAT(person->valueForKeyPath("age"_ns), equals(box(0)));
  person->setValue_forKeyPath(box(50), "boss.age"_ns);
  EXPECT_EQ(boss->age(), 50);
  person->setValue_forKeyPath(box(51), "age"_ns);
  EXPECT_EQ(person->age(), 51);
}

TEST_F(KeyValueCoding, NullOnTheWayGivesNullAndSetsNothing) {
  EXPECT_EQ(person->valueForKeyPath("boss.boss.name"_ns), nullptr);
  person->setValue_forKeyPath(box(50), "boss.age"_ns);
  EXPECT_EQ(person->age(), 0);
}

TEST_F(KeyValueCoding, EmptyKeysInAPathAreUndefined) {
  person->setBoss(make<Person>());
  for (NSString* path : {""_ns, "."_ns, "boss."_ns, ".boss"_ns, "boss..name"_ns}) {
    SCOPED_TRACE(path->utf8());
    EXPECT_THAT([&] { person->valueForKeyPath(path); }, raises(NSUndefinedKeyException, "for the key ."));
    EXPECT_THAT([&] { person->setValue_forKeyPath(box(1), path); }, raises(NSUndefinedKeyException, "for the key ."));
  }
  person->setBoss(nullptr);
}

TEST_F(KeyValueCoding, KeyMayBeStoredInEitherWidth) {
  const std::u16string wide = u"xage";
  const Ref<NSString> key = NSString::stringWithCharacters(wide)->substringFromIndex(1);
  person->setValue_forKey(box(3), key);
  EXPECT_THAT(person->valueForKey(key), equals(box(3)));
  EXPECT_THAT(person->valueForKeyPath(NSString::stringWithCharacters(u"self.age")), equals(box(3)));
}

TEST_F(KeyValueCoding, VeryLongKeysAreUndefinedToo) {
  const Ref<NSString> key = NSString::stringWithUTF8(std::string(1000, 'k'));
  EXPECT_THAT([&] { person->valueForKey(key); }, raises(NSUndefinedKeyException, "kkk"));
  EXPECT_THAT([&] { person->setValue_forKey(nullptr, key); }, raises(NSUndefinedKeyException, "kkk"));
}

TEST_F(KeyValueCoding, FindingAKeyAllocatesNothing) {
  person->setName("Ada"_ns);
  const Ref<NSNumber> age = box(5000);
  person->valueForKey("name"_ns);
  const AllocationCount allocations;
  person->valueForKey("name"_ns);
  person->valueForKey("grown"_ns);
  person->setValue_forKey(age, "age"_ns);
  person->setValue_forKey(age, "level"_ns);
  EXPECT_EQ(allocations.made(), 0U);
}

TEST_F(KeyValueCoding, ClassThatIsNotCodableOffersItsPropertiesOnly) {
  const Ref<OpenRecord> record = make<OpenRecord>();
  record->setValue_forKey("all"_ns, "__storage"_ns);
  EXPECT_THAT(record->storage(), equals("all"));
  EXPECT_THAT(record->valueForKey("__storage"_ns), equals("all"));
  record->setValue_forKey(box(5), "count"_ns);
  EXPECT_THAT(record->valueForKey("count"_ns), equals(box(5)));
  EXPECT_EQ(record->valueForKey("self"_ns), nullptr);
  EXPECT_EQ(record->valueForKey("description"_ns), nullptr);
  EXPECT_EQ(keysOf(OpenRecord::classObject()), (std::vector<std::string>{"__storage", "limit"}));
}

TEST_F(KeyValueCoding, HooksOfAClassAreCalled) {
  const Ref<OpenRecord> record = make<OpenRecord>();
  EXPECT_EQ(record->valueForKey("anything"_ns), nullptr);
  record->setValue_forKey("x"_ns, "anything"_ns);
  EXPECT_THAT(record->valueForKeyPath("anything.length"_ns), equals(box(1)));
  record->setValue_forKey(nullptr, "limit"_ns);
  EXPECT_EQ(record->cleared, "limit");
  EXPECT_EQ(record->limit(), 3);
}

TEST_F(KeyValueCoding, IsAnsweredByNameAndThroughAProxy) {
  send(person, "setValue:forKey:"_sel, "Ada"_ns, "name"_ns);
  EXPECT_THAT(send<Ref<NSString>>(person, "valueForKey:"_sel, "name"_ns), equals("Ada"));
  EXPECT_THAT(send<Ref<NSNumber>>(person, "valueForKeyPath:"_sel, "name.length"_ns), equals(box(3)));
  const Ref<PersonProxy> proxy = make<PersonProxy>();
  proxy->setValue_forKey("Grace"_ns, "name"_ns);
  EXPECT_THAT(proxy->target->name(), equals("Grace"));
  EXPECT_THAT(proxy->valueForKey("name"_ns), equals("Grace"));
  EXPECT_THAT(proxy->valueForKeyPath("name.length"_ns), equals(box(5)));
  proxy->setValue_forKeyPath(box(7), "self.age"_ns);
  EXPECT_EQ(proxy->target->age(), 7);
  EXPECT_THAT([&] { proxy->valueForKey("foo"_ns); }, raises(NSUndefinedKeyException, "[<Person 0x"));
  EXPECT_THAT([&] { proxy->setNilValueForKey("age"_ns); }, raises(NSInvalidArgumentException, "Person"));
}

TEST_F(KeyValueCoding, ClassIsAnObjectWithKeysToo) {
  EXPECT_THAT(Person::classObject()->valueForKey("description"_ns), equals("Person"));
  EXPECT_THAT([] { Person::classObject()->valueForKey("age"_ns); }, raises(NSUndefinedKeyException, "age"));
}

}  // namespace
