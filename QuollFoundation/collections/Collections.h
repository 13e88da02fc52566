// SPDX-License-Identifier: MIT
#pragma once

/// Functional programming over collections, and arrays made, mapped, searched, printed and used as stacks.
#include "QuollFoundation/collections/ArrayIdentity.h"
#include "QuollFoundation/collections/ArrayLists.h"
#include "QuollFoundation/collections/ArrayMapping.h"
#include "QuollFoundation/collections/ArrayStacks.h"
#include "QuollFoundation/collections/ArrayTexts.h"
#include "QuollFoundation/collections/Callbacks.h"
#include "QuollFoundation/collections/Toolkit.h"
