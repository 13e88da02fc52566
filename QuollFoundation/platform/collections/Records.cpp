// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/collections/NSEnumerator.h"
#include "QuollFoundation/platform/collections/NSError.h"
#include "QuollFoundation/platform/collections/NSIndexPath.h"
#include "QuollFoundation/platform/collections/NSIndexSet.h"
#include "QuollFoundation/platform/collections/NSMapTable.h"
#include "QuollFoundation/platform/collections/NSMutableArray.h"
#include "QuollFoundation/platform/collections/NSMutableDictionary.h"
#include "QuollFoundation/platform/collections/NSMutableOrderedSet.h"
#include "QuollFoundation/platform/collections/NSMutableSet.h"
#include "QuollFoundation/platform/collections/NSPointerArray.h"
#include "QuollFoundation/platform/collections/NSPredicate.h"
#include "QuollFoundation/platform/collections/NSSortDescriptor.h"
#include "QuollFoundation/platform/collections/ValueArrayInternal.h"
#include "QuollFoundation/platform/collections/ValueDictionaryInternal.h"
#include "QuollFoundation/platform/object/RecordsInternal.h"

namespace quoll::inline v1::detail {

extern const AdditionGroup<NSObject> collectionCoding;
extern const AdditionGroup<NSArray> arrayPredicates;
extern const AdditionGroup<NSMutableArray> mutableArrayPredicates;
extern const AdditionGroup<NSMutableOrderedSet> mutableOrderedSetPredicates;
extern const AdditionGroup<NSMutableSet> mutableSetPredicates;
extern const AdditionGroup<NSOrderedSet> orderedSetPredicates;
extern const AdditionGroup<NSSet> setPredicates;
extern const AdditionGroup<NSString> stringComponents;

namespace {
constinit const ClassRecord classes[] = {
    {"CFArray", &CFArray::classObject},
    {"CFDictionary", &CFDictionary::classObject},
    {"NSArray", &NSArray::classObject},
    {"NSDictionary", &NSDictionary::classObject},
    {"NSEnumerator", &NSEnumerator::classObject},
    {"NSError", &NSError::classObject},
    {"NSIndexPath", &NSIndexPath::classObject},
    {"NSIndexSet", &NSIndexSet::classObject},
    {"NSMapTable", &NSMapTable::classObject},
    {"NSMutableArray", &NSMutableArray::classObject},
    {"NSMutableDictionary", &NSMutableDictionary::classObject},
    {"NSMutableIndexSet", &NSMutableIndexSet::classObject},
    {"NSMutableOrderedSet", &NSMutableOrderedSet::classObject},
    {"NSMutableSet", &NSMutableSet::classObject},
    {"NSOrderedSet", &NSOrderedSet::classObject},
    {"NSPointerArray", &NSPointerArray::classObject},
    {"NSPointerFunctions", &NSPointerFunctions::classObject},
    {"NSPredicate", &NSPredicate::classObject},
    {"NSSet", &NSSet::classObject},
    {"NSSortDescriptor", &NSSortDescriptor::classObject},
    {"QFValueArray", &ValueArray::classObject},
    {"QFValueDictionary", &ValueDictionary::classObject},
};
constinit const GroupRecord groups[] = {
    collectionCoding,     arrayPredicates,      mutableArrayPredicates, mutableOrderedSetPredicates,
    mutableSetPredicates, orderedSetPredicates, setPredicates,          stringComponents};
}  // namespace

extern constinit const FolderRecord collectionsRecords{classes, groups, {}};

}  // namespace quoll::inline v1::detail
