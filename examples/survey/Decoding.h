// SPDX-License-Identifier: MIT
#pragma once

#include <QuollFoundation/QuollFoundation.h>

#include <string>

/// From the bytes of a text file to a string: UTF-16 by its byte-order mark, else UTF-8 where it is valid, else
/// Latin-1. Null for what is no text: UTF-16 of odd length or with unpaired surrogates, and any other file with a zero
/// byte.
quoll::Ref<quoll::NSString> decodeText(const std::string& bytes);
