// SPDX-License-Identifier: MIT
#pragma once

/// Semaphores.
#include "QuollFoundation/concurrency/locks/QFSemaphore.h"
#include "QuollFoundation/concurrency/locks/quoll_semaphore.h"
