// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "QuollFoundation/platform/basics/Export.h"

QF_C_BEGIN

/// Growth of a plain array from `malloc` whose capacity, in elements, the caller keeps in a variable.
///
///     uint64_t capacity = 0;
///     NSRange* ranges = nullptr;
///     for (uint64_t count = 0; nextRange(&range); ++count) {
///       ranges = static_cast<NSRange*>(QFReallocateIfNeeded(ranges, count, &capacity, sizeof(NSRange)));
///       ranges[count] = range;
///     }
///     free(ranges);
///
/// Growth is linear, by 64 elements a time: right for short lists that a C caller frees, wrong for a long one; there,
/// use `std::vector`. Threads: caller-locked.

/// Makes room for one element more than `requiredCount`, usually the number of elements that are there.
///
/// While the capacity is larger than `requiredCount`, `buffer` comes back untouched. Otherwise the capacity becomes the
/// larger of the two plus 64, and the buffer is reallocated to it; a null buffer is allocated. Null when that fails,
/// also because the bytes can't be counted in 63 bits: the old buffer is then still the caller's, and the capacity,
/// which already holds the new value (the largest there is, where the sum overflows), no longer tells its size.
QF_EXPORT void* QFReallocateIfNeeded(void* buffer, uint64_t requiredCount, uint64_t* capacity, uint64_t elementSize);

/// The same with `additionalCount` in place of 64.
QF_EXPORT void* QFReallocateIfNeededWithAdditionalLength(void* buffer, uint64_t requiredCount, uint64_t* capacity,
                                                         uint64_t elementSize, uint64_t additionalCount);

QF_C_END
