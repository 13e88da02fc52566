// SPDX-License-Identifier: MIT
#pragma once

/// Semaphores, and an object that many threads may read and one may change.
#include "QuollFoundation/concurrency/locks/QFSemaphore.h"
#include "QuollFoundation/concurrency/locks/QFThreadsafeObject.h"
#include "QuollFoundation/concurrency/locks/quoll_semaphore.h"
