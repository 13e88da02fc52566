// SPDX-License-Identifier: MIT
#pragma once

#include "QuollFoundation/platform/strings/NSString.h"

/// Bytes as hexadecimal text for people to read: in messages, logs and dumps. Additions to NSData.
///
///     Ref<NSString> text = QF_niceHexString(NSData::dataWithBytes_length("\x00\xAB\x10", 3));  // 00 AB 10
namespace quoll::inline v1 {

/// Each byte as two upper-case digits, with one blank between bytes. Empty for no bytes, null for null. Data in several
/// regions reads as one sequence and is not put together for it.
QF_EXPORT Ref<NSString> QF_niceHexString(const NSData* data);

}  // namespace quoll::inline v1
