// SPDX-License-Identifier: MIT
#pragma once

#include "SurveyedFile.h"

/// Prints a line a file, sorted by a column, and a total. Numbers are sorted largest first, texts as a file
/// browser does.
void printFiles(const quoll::NSArray* files, const quoll::NSString* column);
/// Prints the sum of the files of each extension.
void printExtensions(const quoll::NSArray* files);
/// Prints the ten lengths that most lines have.
void printLineLengths(const quoll::NSArray* files);
/// Prints for each file and for all together how many words it has, how many different ones, and the ten most frequent.
void printWords(const quoll::NSArray* files);
