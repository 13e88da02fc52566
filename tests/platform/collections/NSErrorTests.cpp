// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSError.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "QuollFoundation/platform/object/Send.h"
#include "tests/platform/collections/CollectionsSupport.h"

using namespace quoll;
using namespace quoll::testsupport;

namespace {

Ref<NSError> error(int64_t code, const NSDictionary* userInfo = nullptr) {
  return NSError::errorWithDomain_code_userInfo("Tests"_ns, code, userInfo);
}

}  // namespace

TEST(NSError, TellsDomainCodeAndInformation) {
  const Ref<NSDictionary> information = NSDictionary::dictionaryWithEntries({{NSFilePathErrorKey, "/x"}});
  const Ref<NSError> one = error(-7, information);
  EXPECT_THAT(one->domain(), equals("Tests"));
  EXPECT_EQ(one->code(), -7);
  EXPECT_THAT(one->userInfo(), equals(information));
  EXPECT_EQ(error(1)->userInfo()->count(), 0u);
  EXPECT_THAT(one, equals(error(-7, information)));
  EXPECT_EQ(one->hash(), error(-7, information)->hash());
  EXPECT_FALSE(one->isEqual(error(-7)));
  EXPECT_EQ(one->copy().get(), one.get());
  EXPECT_THAT([] { NSError::errorWithDomain_code_userInfo(nullptr, 1, nullptr); },
              raises(NSInvalidArgumentException, "-[NSError initWithDomain:code:userInfo:]"));
}

TEST(NSError, DescribesItself) {
  EXPECT_THAT(error(3)->localizedDescription(), equals("The operation couldn’t be completed. (Tests error 3.)"));
  EXPECT_THAT(error(3)->description(),
              equals("Error Domain=Tests Code=3 \"The operation couldn’t be completed. (Tests error 3.)\""));
  const Ref<NSError> told = error(3, NSDictionary::dictionaryWithEntries({{NSLocalizedDescriptionKey, "No room"},
                                                                          {NSLocalizedFailureReasonErrorKey, "full"}}));
  EXPECT_THAT(told->localizedDescription(), equals("No room"));
  EXPECT_THAT(told->localizedFailureReason(), equals("full"));
  EXPECT_FALSE(error(3)->localizedFailureReason());
  const Ref<NSError> absent = NSError::errorWithDomain_code_userInfo(NSPOSIXErrorDomain, ENOENT, nullptr);
  EXPECT_THAT(absent->localizedDescription(), equals("The operation couldn’t be completed. No such file or directory"));
}

TEST(NSError, ListsTheSingleUnderlyingErrorBeforeTheOthers) {
  const Ref<NSError> a = error(1), b = error(2), c = error(3);
  const Ref<NSError> whole =
      error(9, NSDictionary::dictionaryWithEntries(
                   {{NSMultipleUnderlyingErrorsKey, NSArray::arrayWithObjects({b, 5, c})}, {NSUnderlyingErrorKey, a}}));
  EXPECT_THAT(whole->underlyingErrors(), equals(NSArray::arrayWithObjects({a, b, c})));
  EXPECT_EQ(a->underlyingErrors()->count(), 0u);
  EXPECT_EQ(
      error(1, NSDictionary::dictionaryWithEntries({{NSUnderlyingErrorKey, "no error"}}))->underlyingErrors()->count(),
      0u);
  EXPECT_THAT(whole->valueForKeyPath("underlyingErrors.code"_ns), equals(NSArray::arrayWithObjects({1, 2, 3})));
}
