// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Export.h"

/// Names that the library and its clients share: key paths, user-defaults keys and keys of dictionaries.
///
///     controller->valueForKeyPath(QFSelectionIndexesKey);
///
/// Each is an immortal string, the same object for every module of the process. Where a name and its text differ, the
/// text is what counts, spelling included. Threads: immutable.
namespace quoll::inline v1 {

class NSString;

/// "".
QF_EXPORT extern NSString* const QFEmptyString;

/// In the user information of an observation: true has changes made on other threads reported on the main thread.
QF_EXPORT extern NSString* const QFKVONotificationNotifyOnMainThreadKey;

/// Keys of controllers that hold content and a selection of it.
QF_EXPORT extern NSString* const QFArrangedObjectsKey;
QF_EXPORT extern NSString* const QFSelectionIndexKey;
QF_EXPORT extern NSString* const QFSelectionIndexesKey;
QF_EXPORT extern NSString* const QFSelectionIndexPathsKey;
QF_EXPORT extern NSString* const QFSelectionKey;
QF_EXPORT extern NSString* const QFContentKey;
QF_EXPORT extern NSString* const QFContentArrayKey;
QF_EXPORT extern NSString* const QFContentSetKey;
QF_EXPORT extern NSString* const QFContentArrayForMultipleSelectionKey;  ///< "contentArrayForMuliptleSelection".
QF_EXPORT extern NSString* const QFFilterPredicateKey;
QF_EXPORT extern NSString* const QFSortDescriptorsKey;
QF_EXPORT extern NSString* const QFEditableKey;
QF_EXPORT extern NSString* const QFEnabledKey;
QF_EXPORT extern NSString* const QFManagedObjectContextKey;
QF_EXPORT extern NSString* const QFUserDefaultsValuesKey;  ///< "values".

/// Keys of views, layers and what presents an object.
QF_EXPORT extern NSString* const QFRepresentedObjectKey;
QF_EXPORT extern NSString* const QFViewKey;
QF_EXPORT extern NSString* const QFFrameKey;
QF_EXPORT extern NSString* const QFBoundsKey;
QF_EXPORT extern NSString* const QFAlphaValueKey;
QF_EXPORT extern NSString* const QFTransformKey;
QF_EXPORT extern NSString* const QFAnchorPointKey;
QF_EXPORT extern NSString* const QFHiddenKey;

/// Keys of operations and of the tasks that they run.
QF_EXPORT extern NSString* const QFIsFinishedKey;
QF_EXPORT extern NSString* const QFIsExecutingKey;
QF_EXPORT extern NSString* const _QFBackgroundTaskCancelledKey;  ///< "stopped".
QF_EXPORT extern NSString* const _QFBackgroundTaskFinishedKey;

/// User preferences for scrolling.
QF_EXPORT extern NSString* const QFAppleScrollerPagingBehaviorDefaultsKey;
QF_EXPORT extern NSString* const QFAppleScrollAnimationEnabledDefaultsKey;

/// Where an observation context keeps its values: "__storage".
QF_EXPORT extern NSString* const __QFKVOContextStorageKey;

/// Key of a command-line option's definition.
QF_EXPORT extern NSString* const QFCLIOptionDefinitionLongOnlyKey;

}  // namespace quoll::inline v1
