// SPDX-License-Identifier: MIT
#pragma once

/// Everything that the library offers. Include a directory's own header where less will do.
#include "QuollFoundation/collections/Collections.h"
#include "QuollFoundation/concurrency/Concurrency.h"
#include "QuollFoundation/core/Core.h"
#include "QuollFoundation/platform/Platform.h"
#include "QuollFoundation/text/Text.h"
