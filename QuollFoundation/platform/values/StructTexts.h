// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/basics/Geometry.h"
#include "QuollFoundation/platform/basics/Ranges.h"
#include "QuollFoundation/platform/object/Ref.h"
#include "QuollFoundation/platform/strings/NSString.h"

/// The plain structs as text. Components are written as numbers are: shortest decimals that read back the same.
namespace quoll::inline v1 {

QF_EXPORT Ref<NSString> NSStringFromRange(NSRange range);  ///< "{1, 2}"
QF_EXPORT Ref<NSString> NSStringFromPoint(CGPoint point);  ///< "{1, 2.5}"
QF_EXPORT Ref<NSString> NSStringFromSize(CGSize size);     ///< "{1, 2.5}"
QF_EXPORT Ref<NSString> NSStringFromRect(CGRect rect);     ///< "{{0, 0}, {1, 2.5}}"

}  // namespace quoll::inline v1
