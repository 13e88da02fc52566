// SPDX-License-Identifier: MIT
#include "QuollFoundation/platform/object/RecordsInternal.h"
#include "QuollFoundation/platform/strings/CharacterSets.h"
#include "QuollFoundation/platform/strings/NSData.h"
#include "QuollFoundation/platform/strings/NSMutableString.h"
#include "QuollFoundation/platform/texts/NSMutableAttributedString.h"

namespace quoll::inline v1::detail {

extern const AdditionGroup<NSAttributedString> attributedStringAdditions;
extern const AdditionGroup<NSString> base64Additions;
extern const AdditionGroup<NSString> commonAffixAdditions;
extern const AdditionGroup<NSString> diagnosticAdditions;
extern const AdditionGroup<NSString> escapingAdditions;
extern const AdditionGroup<NSString> hashReferenceAdditions;
extern const AdditionGroup<NSData> hexTextAdditions;
extern const AdditionGroup<NSString> lineModelAdditions;
extern const AdditionGroup<NSMutableAttributedString> mutableAttributedStringAdditions;
extern const AdditionGroup<NSMutableString> mutableWhiteSpaceAdditions;
extern const AdditionGroup<NSString> naturalOrderAdditions;
extern const AdditionGroup<NSString> pathAdditions;
extern const AdditionGroup<NSString> substringAdditions;
extern const AdditionGroup<NSCharacterSet> tabCharacterSetAdditions;
extern const AdditionGroup<NSString> tokenizerAdditions;
extern const AdditionGroup<NSString> whiteSpaceAdditions;
extern const AdditionGroup<NSString> wordAdditions;

namespace {
constinit const GroupRecord groups[] = {attributedStringAdditions,
                                        hashReferenceAdditions,
                                        mutableAttributedStringAdditions,
                                        pathAdditions,
                                        base64Additions,
                                        commonAffixAdditions,
                                        diagnosticAdditions,
                                        escapingAdditions,
                                        hexTextAdditions,
                                        lineModelAdditions,
                                        mutableWhiteSpaceAdditions,
                                        naturalOrderAdditions,
                                        substringAdditions,
                                        tabCharacterSetAdditions,
                                        tokenizerAdditions,
                                        whiteSpaceAdditions,
                                        wordAdditions};
}  // namespace

extern constinit const FolderRecord textRecords{{}, groups, {}};

}  // namespace quoll::inline v1::detail
