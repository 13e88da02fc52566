/* SPDX-License-Identifier: MIT */
#ifndef QUOLL_PLATFORM_BASICS_EXPORT_H
#define QUOLL_PLATFORM_BASICS_EXPORT_H

/* The marks that every other header uses. Compiles as C and as C++. */

/* A name that the shared library shows; all others are hidden. */
#define QF_EXPORT __attribute__((visibility("default")))

/* On a parameter or member whose address the result keeps: clang then warns where it dangles. */
#if defined(__cplusplus) && defined(__clang__)
#define QF_LIFETIME [[clang::lifetimebound]]
#else
#define QF_LIFETIME
#endif

/* Around declarations that C and C++ share: C linkage, and namespace quoll for C++. */
#ifdef __cplusplus
#define QF_C_BEGIN      \
  namespace quoll {     \
  inline namespace v1 { \
  extern "C" {
#define QF_C_END \
  }              \
  }              \
  }
#else
#define QF_C_BEGIN
#define QF_C_END
#endif

#endif
