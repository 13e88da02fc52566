// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "QuollFoundation/platform/basics/Export.h"

QF_C_BEGIN

/// How many elements two sequences have in common at their starts, or at their ends. The sequences may be anything:
/// only the comparator looks into them.
///
///     bool sameInt(const void* a, uint64_t i, const void* b, uint64_t j, void*) {
///       return static_cast<const int*>(a)[i] == static_cast<const int*>(b)[j];
///     }
///     uint64_t same = QFArrayLengthOfCommonPrefix(old, 0, oldCount, now, 0, nowCount, &sameInt, nullptr);
///
/// The comparator is called for one pair after the other until it answers false, at most as often as the shorter part
/// is long; with an empty part, never. Only then may it be null: else that raises NSInvalidArgumentException. Indices
/// are unsigned, with wrap. Threads: as the comparator.

/// Whether the element of `a` at `indexInA` equals that of `b` at `indexInB`.
typedef bool (*QFElementComparator)(const void* a, uint64_t indexInA, const void* b, uint64_t indexInB, void* context);

/// Of the parts that begin at `startInA` and `startInB`.
QF_EXPORT uint64_t QFArrayLengthOfCommonPrefix(const void* a, uint64_t startInA, uint64_t lengthInA, const void* b,
                                               uint64_t startInB, uint64_t lengthInB, QFElementComparator comparator,
                                               void* context);

/// Of the same parts, from their last elements backwards.
QF_EXPORT uint64_t QFArrayLengthOfCommonSuffix(const void* a, uint64_t startInA, uint64_t lengthInA, const void* b,
                                               uint64_t startInB, uint64_t lengthInB, QFElementComparator comparator,
                                               void* context);

QF_C_END
