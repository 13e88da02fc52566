// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"
#include "QuollFoundation/platform/texts/CFStringTokenizer.h"
#include "QuollFoundation/platform/texts/NSMutableAttributedString.h"
#include "QuollFoundation/platform/texts/NSRegularExpression.h"

namespace quoll::inline v1::detail {

extern const AdditionGroup<NSString> pathUtilities;

namespace {
constinit const ClassRecord classes[] = {
    {"CFStringTokenizer", &CFStringTokenizer::classObject},
    {"NSAttributedString", &NSAttributedString::classObject},
    {"NSMutableAttributedString", &NSMutableAttributedString::classObject},
    {"NSRegularExpression", &NSRegularExpression::classObject},
    {"NSTextCheckingResult", &NSTextCheckingResult::classObject},
};
constinit const GroupRecord groups[] = {pathUtilities};
}  // namespace

extern constinit const FolderRecord textsRecords{classes, groups, {}};

}  // namespace quoll::inline v1::detail
