// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/ClassBuilder.h"

#include <gmock/gmock.h>

#include "QuollFoundation/platform/object/Reflection.h"
#include "tests/support/Raised.h"
#include "tests/support/SampleObjects.h"

using namespace quoll;
using namespace quoll::testsupport;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// A list of what it was asked to do, with a subclass that has a say in how it is made.
class Document : public NSObject {
  QF_CLASS(Document, NSObject)
 public:
  template <class T = Document> static Ref<T> initWithTitle(NSString* title) {
    return cast<T>(initWithTitle_ofClass(title, T::classObject()));
  }
  static Ref<Document> initWithTitle_ofClass(NSString* title, Class* cls) {
    Ref<Document> self = create<Document>(cls);
    self->title_ = title;
    return self;
  }
  template <class T = Document> static Ref<T> documentWithTitle(NSString* title) {
    return cast<T>(documentWithTitle_ofClass(title, T::classObject()));
  }
  static Ref<Document> documentWithTitle_ofClass(NSString* title, Class* cls) {
    return made<Document>(cls, "initWithTitle:"_sel, title);
  }
  Ref<NSString> title() const { return title_; }
  void setTitle(NSString* title) { title_ = title; }
  bool isOpen() const { return open_; }
  void setOpen(bool open) { open_ = open; }
  int64_t pages() const { return pages_; }
  void assignPages(int64_t pages) { pages_ = pages; }
  Ref<NSString> print() const { return "printed"_ns; }
  void unlisted() {}
  Ref<NSString> named(const NSString* name) { return const_cast<NSString*>(name); }

 protected:
  Document() = default;
  Ref<NSString> title_;
  bool open_ = false;
  int64_t pages_ = 1;
};

class Letter : public Document {
  QF_CLASS(Letter, Document)
 public:
  static Ref<Letter> initWithTitle(NSString* title) { return Document::initWithTitle<Letter>(title); }
  static Ref<Letter> letterInit(NSString* title, Class* cls) {
    Ref<Letter> self = cast<Letter>(initWithTitle_ofClass(title, cls));
    self->sealed = true;
    return self;
  }
  bool sealed = false;
};

class Note : public Document {
  QF_CLASS(Note, Document)
};

Class* Document::classObject() {
  static Class* const cls = ClassBuilder<Document>("Document")
                                .initializer<&Document::initWithTitle_ofClass>("initWithTitle:")
                                .classMethod<&Document::documentWithTitle_ofClass>("documentWithTitle:")
                                .property<&Document::title, &Document::setTitle>("title")
                                .property<&Document::isOpen, &Document::setOpen>("isOpen")
                                .property<&Document::pages, &Document::assignPages>("pages", "assignPages:"_sel)
                                .method<&Document::print>("print")
                                .notAKey()
                                .method<&Document::named>("named:"_sel)
                                .conformsTo("Printable")
                                .build();
  return cls;
}
Class* Letter::classObject() {
  static Class* const cls =
      ClassBuilder<Letter>("Letter").initializer<&Letter::letterInit>("initWithTitle:"_sel).build();
  return cls;
}
Class* Note::classObject() {
  static Class* const cls = ClassBuilder<Note>("Note").notCodable().build();
  return cls;
}

}  // namespace

TEST(ClassBuilder, AnInitializerHasThreeSpellingsAndAName) {
  EXPECT_EQ(text(Document::initWithTitle("typed"_ns)->title()), "typed");
  const Ref<Note> note = Document::initWithTitle<Note>("of a subclass"_ns);
  EXPECT_TRUE(note->isa() == Note::classObject() && *note->title() == *"of a subclass"_ns);
  EXPECT_TRUE(Note::initWithTitle("through its name"_ns)->isa() == Document::classObject())
      << "C++ gives an inherited static function no receiver";
  const auto byName = send<Ref<Document>>(alloc(Note::classObject()), "initWithTitle:"_sel, "by name"_ns);
  EXPECT_TRUE(byName->isa() == Note::classObject() && *byName->title() == *"by name"_ns);
  const Ref<Document> ofClass = Document::initWithTitle_ofClass("at run time"_ns, Note::classObject());
  EXPECT_TRUE(ofClass->isa() == Note::classObject());
}

TEST(ClassBuilder, ASubclassMayRedeclareASpellingOfItsOwn) {
  const Ref<Letter> letter = Letter::initWithTitle("own"_ns);
  EXPECT_TRUE(letter->isa() == Letter::classObject());
}

TEST(ClassBuilder, AnOverrideOfAnInitializerRunsWhereAnObjectIsMadeByIt) {
  EXPECT_TRUE(Document::documentWithTitle<Letter>("x"_ns)->sealed);
  const auto sent = send<Ref<Letter>>(Letter::classObject(), "documentWithTitle:"_sel, "x"_ns);
  EXPECT_TRUE(sent->sealed && *sent->title() == *"x"_ns);
  EXPECT_TRUE(made<Letter>(Letter::classObject(), "initWithTitle:"_sel, "x"_ns)->sealed);
  EXPECT_TRUE(Document::documentWithTitle("x"_ns)->isa() == Document::classObject());
}

TEST(ClassBuilder, AnInitializerSentToAFinishedObjectRaises) {
  const Ref<Document> finished = Document::initWithTitle("x"_ns);
  EXPECT_THAT(raised([&] { send<Ref<NSObject>>(finished, "initWithTitle:"_sel, "y"_ns); }),
              AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("finished object"), HasSubstr("Document")));
  EXPECT_THAT(raised([&] { send<Ref<NSObject>>(finished, "init"_sel); }), HasSubstr("finished object"));
}

TEST(ClassBuilder, APropertyHasAGetterAndASetter) {
  const Ref<Document> document = Document::initWithTitle("x"_ns);
  send(document, "setTitle:"_sel, "y"_ns);
  EXPECT_EQ(text(send<Ref<NSString>>(document, "title"_sel)), "y");
  send(document, "setOpen:"_sel, true);
  EXPECT_TRUE(send<bool>(document, "isOpen"_sel));
  send(document, "assignPages:"_sel, 7);
  EXPECT_EQ(send<int>(document, "pages"_sel), 7);
  EXPECT_FALSE(document->respondsToSelector("setPages:"_sel));
}

TEST(ClassBuilder, KeysLeaveOutWhatHasAnEffectAndWhatIsNotCodable) {
  EXPECT_THAT(keysOf(Document::classObject()),
              AllOf(Contains("title"), Contains("pages"), Contains("isOpen"), Not(Contains("print"))));
  EXPECT_FALSE(Note::classObject()->isCodable());
  EXPECT_TRUE(Document::classObject()->isCodable());
}

TEST(ClassBuilder, DeclaresAProtocolAlsoForSubclasses) {
  EXPECT_TRUE(Document::classObject()->adoptsProtocolNamed("Printable"));
  EXPECT_TRUE(Note::classObject()->adoptsProtocolNamed("Printable"));
  EXPECT_FALSE(NSObject::classObject()->adoptsProtocolNamed("Printable"));
}

TEST(ClassBuilder, RefusesARunTimeNameWithTheWrongNumberOfColons) {
  EXPECT_THAT(raised([] { ClassBuilder<Document>("Wrong").method<&Document::named>(std::string_view("named")); }),
              AllOf(StartsWith("NSInvalidArgumentException"), HasSubstr("named"), HasSubstr("1 argument")));
  EXPECT_THAT(
      raised([] {
        ClassBuilder<Document>("Wrong").initializer<&Document::initWithTitle_ofClass>(std::string_view("init:x:"));
      }),
      HasSubstr("init:x:"));
  EXPECT_EQ(classNamed("Wrong"), nullptr);
}

TEST(ClassBuilder, GivesTheRegisteredSelectorOfAMember) {
  EXPECT_TRUE(selectorOf<&Document::named>() == "named:"_sel);
  EXPECT_TRUE(selectorOf<&Document::assignPages>() == "assignPages:"_sel);
  EXPECT_TRUE(selectorOf<&Document::class_>() == "class"_sel) << "an inherited one";
  EXPECT_THAT(raised([] { selectorOf<&Document::unlisted>(); }),
              AllOf(HasSubstr("Document::unlisted"), HasSubstr("not registered"), HasSubstr("Document")));
}
