// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/KeyConstants.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "QuollFoundation/platform/object/Class.h"
#include "QuollFoundation/platform/strings/NSString.h"

namespace {

using namespace quoll::literals;
using quoll::NSString;

static_assert(std::is_same_v<decltype(quoll::QFContentKey), NSString* const>);

struct Row {
  const char* name;
  NSString* key;
  const char* text;
};

const Row rows[] = {
    {"QFEmptyString", quoll::QFEmptyString, ""},
    {"QFKVONotificationNotifyOnMainThreadKey", quoll::QFKVONotificationNotifyOnMainThreadKey,
     "QFKVONotificationNotifyOnMainThreadKey"},
    {"QFArrangedObjectsKey", quoll::QFArrangedObjectsKey, "arrangedObjects"},
    {"QFSelectionIndexKey", quoll::QFSelectionIndexKey, "selectionIndex"},
    {"QFSelectionIndexesKey", quoll::QFSelectionIndexesKey, "selectionIndexes"},
    {"QFSelectionIndexPathsKey", quoll::QFSelectionIndexPathsKey, "selectionIndexPaths"},
    {"QFSelectionKey", quoll::QFSelectionKey, "selection"},
    {"QFRepresentedObjectKey", quoll::QFRepresentedObjectKey, "representedObject"},
    {"QFViewKey", quoll::QFViewKey, "view"},
    {"QFFrameKey", quoll::QFFrameKey, "frame"},
    {"QFBoundsKey", quoll::QFBoundsKey, "bounds"},
    {"QFAlphaValueKey", quoll::QFAlphaValueKey, "alphaValue"},
    {"QFTransformKey", quoll::QFTransformKey, "transform"},
    {"QFAnchorPointKey", quoll::QFAnchorPointKey, "anchorPoint"},
    {"QFHiddenKey", quoll::QFHiddenKey, "hidden"},
    {"QFContentKey", quoll::QFContentKey, "content"},
    {"QFContentArrayKey", quoll::QFContentArrayKey, "contentArray"},
    {"QFContentSetKey", quoll::QFContentSetKey, "contentSet"},
    {"QFContentArrayForMultipleSelectionKey, misspelled", quoll::QFContentArrayForMultipleSelectionKey,
     "contentArrayForMuliptleSelection"},
    {"QFFilterPredicateKey", quoll::QFFilterPredicateKey, "filterPredicate"},
    {"QFSortDescriptorsKey", quoll::QFSortDescriptorsKey, "sortDescriptors"},
    {"QFEditableKey", quoll::QFEditableKey, "editable"},
    {"QFEnabledKey", quoll::QFEnabledKey, "enabled"},
    {"QFManagedObjectContextKey", quoll::QFManagedObjectContextKey, "managedObjectContext"},
    {"QFIsFinishedKey", quoll::QFIsFinishedKey, "isFinished"},
    {"QFIsExecutingKey", quoll::QFIsExecutingKey, "isExecuting"},
    {"QFUserDefaultsValuesKey", quoll::QFUserDefaultsValuesKey, "values"},
    {"_QFBackgroundTaskCancelledKey, of another name", quoll::_QFBackgroundTaskCancelledKey, "stopped"},
    {"_QFBackgroundTaskFinishedKey", quoll::_QFBackgroundTaskFinishedKey, "finished"},
    {"QFAppleScrollerPagingBehaviorDefaultsKey", quoll::QFAppleScrollerPagingBehaviorDefaultsKey,
     "AppleScrollerPagingBehavior"},
    {"QFAppleScrollAnimationEnabledDefaultsKey", quoll::QFAppleScrollAnimationEnabledDefaultsKey,
     "AppleScrollAnimationEnabled"},
    {"__QFKVOContextStorageKey", quoll::__QFKVOContextStorageKey, "__storage"},
    {"QFCLIOptionDefinitionLongOnlyKey", quoll::QFCLIOptionDefinitionLongOnlyKey, "longOnly"},
};

TEST(KeyConstants, HaveTheirExactTexts) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ASSERT_NE(row.key, nullptr);
    EXPECT_EQ(row.key->utf8(), row.text);
  }
}

TEST(KeyConstants, EqualAndHashLikeAnyStringOfTheirText) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const quoll::Ref<NSString> other = NSString::stringWithUTF8(row.text);
    EXPECT_TRUE(quoll::isEqual(row.key, other));
    EXPECT_EQ(row.key->hash(), other->hash());
  }
}

TEST(KeyConstants, AreTheirOwnCopies) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(row.key->copy(), row.key);
  }
}

// A client's static objects may use the keys, whatever the order of initialisation.
const bool usableBeforeMain = quoll::QFContentKey->length() == 7;

TEST(KeyConstants, AreThereBeforeMainRuns) { EXPECT_TRUE(usableBeforeMain); }

}  // namespace
