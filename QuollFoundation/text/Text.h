// SPDX-License-Identifier: MIT
#pragma once

/// Text services over strings of UTF-16 units.
#include "QuollFoundation/text/Base64.h"
#include "QuollFoundation/text/HexText.h"
#include "QuollFoundation/text/LineModel.h"
