// SPDX-License-Identifier: MIT
#include "QuollFoundation/core/KeyConstants.h"

#include "QuollFoundation/platform/strings/NSString.h"

namespace quoll::inline v1 {

constinit NSString* const QFEmptyString = ""_ns;

constinit NSString* const QFKVONotificationNotifyOnMainThreadKey = "QFKVONotificationNotifyOnMainThreadKey"_ns;

constinit NSString* const QFArrangedObjectsKey = "arrangedObjects"_ns;
constinit NSString* const QFSelectionIndexKey = "selectionIndex"_ns;
constinit NSString* const QFSelectionIndexesKey = "selectionIndexes"_ns;
constinit NSString* const QFSelectionIndexPathsKey = "selectionIndexPaths"_ns;
constinit NSString* const QFSelectionKey = "selection"_ns;
constinit NSString* const QFContentKey = "content"_ns;
constinit NSString* const QFContentArrayKey = "contentArray"_ns;
constinit NSString* const QFContentSetKey = "contentSet"_ns;
// Misspelled where it was first published; whoever looks the key up by its text needs it so.
constinit NSString* const QFContentArrayForMultipleSelectionKey = "contentArrayForMuliptleSelection"_ns;
constinit NSString* const QFFilterPredicateKey = "filterPredicate"_ns;
constinit NSString* const QFSortDescriptorsKey = "sortDescriptors"_ns;
constinit NSString* const QFEditableKey = "editable"_ns;
constinit NSString* const QFEnabledKey = "enabled"_ns;
constinit NSString* const QFManagedObjectContextKey = "managedObjectContext"_ns;
constinit NSString* const QFUserDefaultsValuesKey = "values"_ns;

constinit NSString* const QFRepresentedObjectKey = "representedObject"_ns;
constinit NSString* const QFViewKey = "view"_ns;
constinit NSString* const QFFrameKey = "frame"_ns;
constinit NSString* const QFBoundsKey = "bounds"_ns;
constinit NSString* const QFAlphaValueKey = "alphaValue"_ns;
constinit NSString* const QFTransformKey = "transform"_ns;
constinit NSString* const QFAnchorPointKey = "anchorPoint"_ns;
constinit NSString* const QFHiddenKey = "hidden"_ns;

constinit NSString* const QFIsFinishedKey = "isFinished"_ns;
constinit NSString* const QFIsExecutingKey = "isExecuting"_ns;
constinit NSString* const _QFBackgroundTaskCancelledKey = "stopped"_ns;
constinit NSString* const _QFBackgroundTaskFinishedKey = "finished"_ns;

constinit NSString* const QFAppleScrollerPagingBehaviorDefaultsKey = "AppleScrollerPagingBehavior"_ns;
constinit NSString* const QFAppleScrollAnimationEnabledDefaultsKey = "AppleScrollAnimationEnabled"_ns;

constinit NSString* const __QFKVOContextStorageKey = "__storage"_ns;

constinit NSString* const QFCLIOptionDefinitionLongOnlyKey = "longOnly"_ns;

}  // namespace quoll::inline v1
