// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"
#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/NSLocale.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/strings/ObjectTextsInternal.h"

namespace quoll::inline v1::detail {

extern const AdditionGroup<NSObject> objectTexts;
extern const AdditionGroup<NSString> lineBoundsAdditions;

namespace {
constinit const ClassRecord classes[] = {
    {"NSCharacterSet", &NSCharacterSet::classObject},
    {"NSData", &NSData::classObject},
    {"NSException", &ExceptionRecord::classObject},
    {"NSMutableData", &NSMutableData::classObject},
    {"NSLocale", &NSLocale::classObject},
    {"NSMutableString", &NSMutableString::classObject},
    {"NSString", &NSString::classObject},
};
constinit const GroupRecord groups[] = {objectTexts, lineBoundsAdditions};
}  // namespace

extern constinit const FolderRecord stringsRecords{classes, groups, {}};

}  // namespace quoll::inline v1::detail
