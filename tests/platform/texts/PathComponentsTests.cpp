// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/texts/PathComponents.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <rapidcheck/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "QuollFoundation/platform/object/Send.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/values/Boxing.h"
#include "QuollFoundation/testing.h"

namespace {

using namespace quoll;
using namespace quoll::literals;

Ref<NSString> text(std::string_view bytes) { return NSString::stringWithUTF8(bytes); }
/// The same text, stored as UTF-16.
Ref<NSString> wide(std::string_view bytes) {
  const std::string padded = std::string(bytes) + "é";
  return text(padded)->substringToIndex(text(bytes)->length());
}

/// The components, each between bars.
std::string components(const NSString* path) {
  std::string all = "|";
  for (NSString* each : elements<NSString>(pathComponents(path))) all += each->utf8() + "|";
  return all;
}

/// Sets a variable of the environment for as long as it lives.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* old = std::getenv(name)) old_ = old;
    if (value) setenv(name, value, 1);
    else unsetenv(name);
  }
  ~Variable() {
    if (old_) setenv(name_, old_->c_str(), 1);
    else unsetenv(name_);
  }

 private:
  const char* name_;
  std::optional<std::string> old_;
};

TEST(PathComponents, TakeAPathApartAndPutItTogether) {
  const quoll::Ref<quoll::NSString> log = stringByAppendingPathComponent("/var/log/"_ns, "app.log"_ns);
  EXPECT_THAT(log, quoll::equals("/var/log/app.log"));
  EXPECT_THAT(pathExtension(log), quoll::equals("log"));
}

struct ComponentRow {
  const char* claim;
  const char* path;
  const char* components;
  const char* joined;  // pathWithComponents of them
};
constexpr ComponentRow componentRows[] = {
    {"the empty path has none", "", "|", ""},
    {"the root is its own", "/", "|/|", "/"},
    {"a run of separators is the root too", "///", "|/|", "/"},
    {"a relative path", "a/b", "|a|b|", "a/b"},
    {"a leading separator comes first", "/usr/lib", "|/|usr|lib|", "/usr/lib"},
    {"a separator at the end comes last", "a/", "|a|/|", "a/"},
    {"at both ends", "/usr//lib//", "|/|usr|lib|/|", "/usr/lib/"},
    {"dots and tildes are names", "~/./..", "|~|.|..|", "~/./.."},
    {"names of more than ASCII", "/Grüße/日本", "|/|Grüße|日本|", "/Grüße/日本"},
};

TEST(PathComponents, AreTheNamesBetweenTheSeparators) {
  for (const ComponentRow& row : componentRows) {
    SCOPED_TRACE(row.claim);
    EXPECT_EQ(components(text(row.path)), row.components);
    EXPECT_EQ(components(wide(row.path)), row.components);
    EXPECT_THAT(pathWithComponents(pathComponents(text(row.path))), equals(row.joined));
    EXPECT_THAT(pathWithComponents(pathComponents(wide(row.path))), equals(row.joined));
  }
}

TEST(PathComponents, JoinWithOneSeparatorBetweenThem) {
  EXPECT_THAT(pathWithComponents(NSArray::array()), equals(""));
  EXPECT_THAT(pathWithComponents(NSArray::arrayWithObjects({"a", "", "b"})), equals("a/b"));
  EXPECT_THAT(pathWithComponents(NSArray::arrayWithObjects({"/a/", "//b/c/"})), equals("/a/b/c"));
  EXPECT_THAT(pathWithComponents(NSArray::arrayWithObjects({"", "/a"})), equals("/a"));
  EXPECT_THAT(pathWithComponents(NSArray::arrayWithObjects({"a", ""})), equals("a/"));
  EXPECT_THAT(pathWithComponents(NSArray::arrayWithObjects({"/", ""})), equals("/"));
  EXPECT_THAT(pathWithComponents(NSArray::arrayWithObjects({"", ""})), equals(""));
  EXPECT_THAT([] { (void)pathWithComponents(NSArray::arrayWithObjects({"a", 5})); },
              raises(NSInvalidArgumentException, "+[NSString pathWithComponents:]"));
  EXPECT_THAT([] { (void)pathWithComponents(nullptr); },
              raises(NSInvalidArgumentException, "+[NSString pathWithComponents:]"));
}

TEST(PathComponents, AnAbsolutePathStartsWithASeparatorOrATilde) {
  for (const char* path : {"/", "/a", "~", "~user/a"}) EXPECT_TRUE(isAbsolutePath(text(path))) << path;
  for (const char* path : {"", "a", "./a", "a/~", " /"}) EXPECT_FALSE(isAbsolutePath(text(path))) << path;
}

struct AppendRow {
  const char* claim;
  const char* path;
  const char* component;
  const char* result;
};
constexpr AppendRow appendRows[] = {
    {"one separator between", "/tmp", "a.txt", "/tmp/a.txt"},
    {"where the path has one", "/tmp/", "a.txt", "/tmp/a.txt"},
    {"where both have one", "/tmp/", "/a.txt", "/tmp/a.txt"},
    {"runs are reduced", "//tmp///b", "a//c", "/tmp/b/a/c"},
    {"to the root", "/", "a", "/a"},
    {"to nothing", "", "a", "a"},
    {"an absolute one to nothing", "", "/a", "/a"},
    {"nothing", "/tmp/", "", "/tmp"},
    {"a separator", "a", "/", "a"},
    {"the root to itself", "/", "/", "/"},
    {"nothing to nothing", "", "", ""},
    {"no separator stays at the end", "a", "b/", "a/b"},
    {"beyond ASCII", "Grüße", "日本", "Grüße/日本"},
};

TEST(PathComponents, AppendingPutsOneSeparatorBetween) {
  for (const AppendRow& row : appendRows) {
    SCOPED_TRACE(row.claim);
    EXPECT_THAT(stringByAppendingPathComponent(text(row.path), text(row.component)), equals(row.result));
    EXPECT_THAT(stringByAppendingPathComponent(wide(row.path), text(row.component)), equals(row.result));
  }
  EXPECT_THAT([] { (void)stringByAppendingPathComponent("a"_ns, nullptr); },
              raises(NSInvalidArgumentException, "stringByAppendingPathComponent:"));
}

struct LastRow {
  const char* claim;
  const char* path;
  const char* last;
  const char* rest;  // without the last
};
constexpr LastRow lastRows[] = {
    {"a file", "/tmp/a.txt", "a.txt", "/tmp"},
    {"a separator at the end is no name", "/tmp/lock/", "lock", "/tmp"},
    {"below the root", "/tmp", "tmp", "/"},
    {"the root", "/", "/", "/"},
    {"a run of separators is the root", "//", "/", "/"},
    {"a single name", "a", "a", ""},
    {"a single name and separators", "a///", "a", ""},
    {"nothing", "", "", ""},
    {"runs are reduced", "a//b//c", "c", "a/b"},
};

TEST(PathComponents, TheLastNameAndWhatIsBeforeIt) {
  for (const LastRow& row : lastRows) {
    SCOPED_TRACE(row.claim);
    EXPECT_THAT(lastPathComponent(text(row.path)), equals(row.last));
    EXPECT_THAT(stringByDeletingLastPathComponent(text(row.path)), equals(row.rest));
    EXPECT_THAT(lastPathComponent(wide(row.path)), equals(row.last));
    EXPECT_THAT(stringByDeletingLastPathComponent(wide(row.path)), equals(row.rest));
  }
}

struct ExtensionRow {
  const char* claim;
  const char* path;
  const char* extension;
  const char* without;
};
constexpr ExtensionRow extensionRows[] = {
    {"behind the dot", "/tmp/a.tiff", "tiff", "/tmp/a"},
    {"behind the last dot", "a.tar.gz", "gz", "a.tar"},
    {"a name that starts with a dot has none", ".hidden", "", ".hidden"},
    {"a hidden name may have one", "/x/.hidden.txt", "txt", "/x/.hidden"},
    {"of two dots one goes", "a..tiff", "tiff", "a."},
    {"an empty one", "a.", "", "a"},
    {"no dot", "/tmp/a", "", "/tmp/a"},
    {"a dot in another name", "a.b/c", "", "a.b/c"},
    {"a separator at the end", "a.bundle/", "bundle", "a"},
    {"the root", "/", "", "/"},
    {"nothing", "", "", ""},
    {"beyond ASCII", "Grüße.日本", "日本", "Grüße"},
};

TEST(PathComponents, TheExtensionFollowsTheLastDotOfTheLastName) {
  for (const ExtensionRow& row : extensionRows) {
    SCOPED_TRACE(row.claim);
    EXPECT_THAT(pathExtension(text(row.path)), equals(row.extension));
    EXPECT_THAT(stringByDeletingPathExtension(text(row.path)), equals(row.without));
    EXPECT_THAT(pathExtension(wide(row.path)), equals(row.extension));
    EXPECT_THAT(stringByDeletingPathExtension(wide(row.path)), equals(row.without));
  }
}

TEST(PathComponents, AnExtensionIsAppendedToTheLastName) {
  EXPECT_THAT(stringByAppendingPathExtension("/tmp/a.old"_ns, "tiff"_ns), equals("/tmp/a.old.tiff"));
  EXPECT_THAT(stringByAppendingPathExtension("/tmp/a."_ns, "tiff"_ns), equals("/tmp/a..tiff"));
  EXPECT_THAT(stringByAppendingPathExtension("/tmp/"_ns, "tiff"_ns), equals("/tmp.tiff"));
  EXPECT_THAT(stringByAppendingPathExtension("a"_ns, ""_ns), equals("a"));
  EXPECT_THAT(stringByAppendingPathExtension("a"_ns, text("日本")), equals("a.日本"));
  EXPECT_THAT(stringByAppendingPathExtension(""_ns, "tiff"_ns), equals(nullptr));
  EXPECT_THAT(stringByAppendingPathExtension("/"_ns, "tiff"_ns), equals(nullptr));
  EXPECT_THAT(stringByAppendingPathExtension("a"_ns, "b/c"_ns), equals(nullptr));
  EXPECT_THAT([] { (void)stringByAppendingPathExtension("a"_ns, nullptr); },
              raises(NSInvalidArgumentException, "stringByAppendingPathExtension:"));
}

TEST(PathComponents, ATildeIsTheHomeOfTheUser) {
  const Variable home("HOME", "/users/Grüße//");
  EXPECT_THAT(stringByExpandingTildeInPath("~"_ns), equals("/users/Grüße"));
  EXPECT_THAT(stringByExpandingTildeInPath("~/a//b"_ns), equals("/users/Grüße/a/b"));
  EXPECT_THAT(stringByExpandingTildeInPath("a/~"_ns), equals("a/~"));
  EXPECT_THAT(stringByExpandingTildeInPath("/~"_ns), equals("/~"));
  EXPECT_THAT(stringByExpandingTildeInPath(""_ns), equals(""));
}

TEST(PathComponents, ATildeWithoutAHomeInTheEnvironmentAsksTheSystem) {
  const passwd* user = getpwuid(geteuid());
  ASSERT_NE(user, nullptr);
  const std::string home = user->pw_dir;
  for (const char* value : {static_cast<const char*>(nullptr), ""}) {
    const Variable unset("HOME", value);
    EXPECT_THAT(stringByExpandingTildeInPath("~/a"_ns), equals(home + "/a"));
  }
}

TEST(PathComponents, ATildeAndANameIsTheHomeOfThatUser) {
  const Variable other("HOME", "/elsewhere");
  EXPECT_THAT(stringByExpandingTildeInPath("~root"_ns), equals(getpwnam("root")->pw_dir));
  EXPECT_THAT(stringByExpandingTildeInPath("~root/a/"_ns), equals(std::string(getpwnam("root")->pw_dir) + "/a"));
  EXPECT_THAT(stringByExpandingTildeInPath("~no such user/a/"_ns), equals("~no such user/a/"));
  const Ref<NSString> withZero = NSString::stringWithCharacters(std::u16string_view(u"~root\0x", 7));
  EXPECT_THAT(stringByExpandingTildeInPath(withZero), equals(withZero));
}

struct StandardRow {
  const char* claim;
  const char* path;
  const char* result;
};
constexpr StandardRow standardRows[] = {
    {"runs are reduced", "/a//b", "/a/b"},
    {"single dots go", "/a/./b/.", "/a/b"},
    {"at the start too", "./a", "a"},
    {"the separator at the end goes", "a/b/", "a/b"},
    {"double dots take the name before", "/a/b/../c", "/a/c"},
    {"several", "/a/b/c/../../d", "/a/d"},
    {"not above the root", "/../../a", "/a"},
    {"to the root", "/a/..", "/"},
    {"they stay in a relative path", "a/../b/", "a/../b"},
    {"three dots are a name", "/a/.../b", "/a/.../b"},
    {"the root", "/", "/"},
    {"nothing", "", ""},
    {"nothing but dots", "./.", ""},
    {"a home", "~/a/../b", "/users/me/b"},
    {"out of a home", "~/../you", "/users/you"},
    {"an unknown home stands for a place", "~no such user/a/../../b", "~no such user/b"},
};

TEST(PathComponents, StandardisingTidiesAPath) {
  const Variable home("HOME", "/users/me");
  for (const StandardRow& row : standardRows) {
    SCOPED_TRACE(row.claim);
    EXPECT_THAT(stringByStandardizingPath(text(row.path)), equals(row.result));
    EXPECT_THAT(stringByStandardizingPath(wide(row.path)), equals(row.result));
  }
}

TEST(PathComponents, AnswerByNameUnderTheirGroup) {
  EXPECT_THAT(send<Ref<NSString>>("/a/b"_ns, "lastPathComponent"_sel), equals("b"));
  EXPECT_TRUE(send<bool>("/a/b"_ns, "isAbsolutePath"_sel));
  EXPECT_THAT(send<Ref<NSString>>(NSString::classObject(), "pathWithComponents:"_sel, pathComponents("a//b"_ns)),
              equals("a/b"));
  EXPECT_THAT("/a/b.c"_ns->valueForKeyPath("lastPathComponent.pathExtension"_ns), equals("c"));
}

TEST(PathComponents, ANullPathHasNothing) {
  const NSString* none = nullptr;
  EXPECT_FALSE(pathComponents(none));
  EXPECT_FALSE(isAbsolutePath(none));
  EXPECT_FALSE(stringByAppendingPathComponent(none, "a"_ns));
  EXPECT_FALSE(stringByDeletingLastPathComponent(none));
  EXPECT_FALSE(lastPathComponent(none));
  EXPECT_FALSE(pathExtension(none));
  EXPECT_FALSE(stringByAppendingPathExtension(none, "a"_ns));
  EXPECT_FALSE(stringByDeletingPathExtension(none));
  EXPECT_FALSE(stringByExpandingTildeInPath(none));
  EXPECT_FALSE(stringByStandardizingPath(none));
}

TEST(PathComponents, OfAMutableTextDontChangeWithIt) {
  const Ref<NSMutableString> path = NSMutableString::stringWithString("/a/b"_ns);
  const Ref<NSArray> before = pathComponents(path);
  const Ref<NSString> tidy = stringByStandardizingPath(path), last = lastPathComponent(path);
  path->setString("x"_ns);
  EXPECT_EQ(before->count(), 3u);
  EXPECT_THAT(tidy, equals("/a/b"));
  EXPECT_THAT(last, equals("b"));
}

/// Paths of few different signs, so that what is special comes often.
rc::Gen<std::string> paths() { return rc::gen::container<std::string>(rc::gen::elementOf(std::string("//..ab~"))); }
std::string reduced(std::string path) {
  for (size_t place = 0; (place = path.find("//")) != path.npos;) path.erase(place, 1);
  return path;
}

RC_GTEST_PROP(PathComponents, JoinedAgainGiveThePathWithoutRuns, ()) {
  const std::string path = *paths();
  RC_ASSERT(pathWithComponents(pathComponents(text(path)))->utf8() == reduced(path));
}

RC_GTEST_PROP(PathComponents, TheLastNameBehindTheRestIsThePath, ()) {
  const Ref<NSString> path = text(*paths());
  const Ref<NSString> again =
      stringByAppendingPathComponent(stringByDeletingLastPathComponent(path), lastPathComponent(path));
  RC_ASSERT(isEqual(again, stringByAppendingPathComponent(path, ""_ns)));
}

RC_GTEST_PROP(PathComponents, AnAppendedExtensionIsFoundAndDeletedAgain, ()) {
  const Ref<NSString> path = text(*paths());
  const Ref<NSString> longer = stringByAppendingPathExtension(path, "xy"_ns);
  if (!longer) return;
  RC_ASSERT(pathExtension(longer)->utf8() == "xy");
  RC_ASSERT(isEqual(stringByDeletingPathExtension(longer), stringByAppendingPathComponent(path, ""_ns)));
}

RC_GTEST_PROP(PathComponents, AStandardAbsolutePathIsTidyAndStaysAsItIs, ()) {
  const Ref<NSString> path = stringByStandardizingPath(text("/" + *paths()));
  RC_ASSERT(isEqual(path, stringByStandardizingPath(path)));
  const std::string bytes = path->utf8() + "/";
  RC_ASSERT(bytes == "//" || bytes.find("//") == bytes.npos);
  RC_ASSERT(bytes.find("/./") == bytes.npos);
  RC_ASSERT(bytes.find("/../") == bytes.npos);
}

}  // namespace
