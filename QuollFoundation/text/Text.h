// SPDX-License-Identifier: MIT
#pragma once

/// Text services over strings of UTF-16 units.
#include "QuollFoundation/text/AttributedStrings.h"
#include "QuollFoundation/text/Base64.h"
#include "QuollFoundation/text/CommonAffixes.h"
#include "QuollFoundation/text/Diagnostics.h"
#include "QuollFoundation/text/Escaping.h"
#include "QuollFoundation/text/HashReferences.h"
#include "QuollFoundation/text/HexText.h"
#include "QuollFoundation/text/LineModel.h"
#include "QuollFoundation/text/NaturalOrder.h"
#include "QuollFoundation/text/Paths.h"
#include "QuollFoundation/text/Substrings.h"
#include "QuollFoundation/text/Tokens.h"
#include "QuollFoundation/text/WhiteSpace.h"
#include "QuollFoundation/text/Words.h"
