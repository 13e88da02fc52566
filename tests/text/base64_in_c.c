/* SPDX-License-Identifier: MIT */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "QuollFoundation/text/Base64.h"

static int failures = 0;

static void expectBytes(const char* claim, const void* text, size_t length, const char* expected) {
  size_t count = 12345;
  char* bytes = NewBase64Decode(text, length, &count);
  if (!bytes || count != strlen(expected) || memcmp(bytes, expected, count) != 0) {
    printf("%s: %zu bytes\n", claim, count);
    ++failures;
  }
  free(bytes);
}

int main(void) {
  void* unmeasured = NewBase64Decode("TWFu", 4, NULL);
  if (!unmeasured || memcmp(unmeasured, "Man", 3) != 0) ++failures;
  free(unmeasured);

  expectBytes("header example", "TWFu\nTQ==", 9, "ManM");
  expectBytes("no text", "", 0, "");
  expectBytes("no text, no address", NULL, 0, "");
  expectBytes("part of a text", "TWFuTWFu", 4, "Man");
  expectBytes("up to the zero byte", "TWFuTWFu", SIZE_MAX, "ManMan");
  expectBytes("a zero byte inside of the length is skipped", "TW\0Fu", 5, "Man");
  expectBytes("a zero byte ends a text without a length", "TWFu\0TWFu", SIZE_MAX, "Man");
  return failures;
}
