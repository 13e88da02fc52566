// SPDX-License-Identifier: MIT
#pragma once

#include <sys/single_threaded.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "QuollFoundation/platform/basics/Export.h"

/// How objects live and die: the counts that `Ref` and `Weak` move. Nobody else calls these.
namespace quoll::inline v1 {

class NSObject;

namespace detail {

struct SideRecord;  // the recursive lock, associated values, observances: made when first needed

/// Stands directly before every object, so that counting never touches the (perhaps dead) object itself.
///
/// Both counts share one word, so that a single load tells an immortal object from a counted one and one that
/// nobody else refers to, strongly or weakly, from one that must be counted down atomically. All strong
/// references together hold one weak count.
struct Header {
  static constexpr uint64_t dying = uint64_t{1} << 30;     ///< Set at zero: a destructor's `Ref(this)` moves nothing.
  static constexpr uint64_t immortal = uint64_t{1} << 31;  ///< Literals and classes: never counted.
  static constexpr uint64_t oneWeak = uint64_t{1} << 32;
  static constexpr uint64_t recorded = uint64_t{1} << 63;  ///< Is in the count of live objects by class.
  static constexpr uint64_t inCell = uint64_t{1} << 62;    ///< Has its memory from allocateCell.
  static constexpr uint64_t plain = uint64_t{1} << 61;     ///< Its destructor has nothing to do.
  static constexpr uint64_t lasting = inCell | plain;      ///< The marks that stand from the object's first moment on.
  static constexpr uint64_t unshared = oneWeak | 1;
  static constexpr uint64_t strongPart = oneWeak - 1;
  static constexpr uint64_t weakPart = ~strongPart & ~recorded & ~lasting;

  constexpr explicit Header(uint64_t strong) : counts(oneWeak | strong) {}
  std::atomic<uint64_t> counts;
  std::atomic<SideRecord*> side{nullptr};
};
static_assert(sizeof(Header) == 16);

inline Header& headerOf(const void* object) { return *(static_cast<Header*>(const_cast<void*>(object)) - 1); }

/// What tells one C++ class from another at run time: the first word of the object (Itanium ABI).
inline const void* vtableOf(const void* object) {
  const void* vtable;
  std::memcpy(&vtable, object, sizeof vtable);
  return vtable;
}

/// Room for a header, which is made with one strong reference and these marks, and `size` bytes behind it; gives their
/// address, which is aligned to 16 if `size` is a multiple of 16, else to 8. Small objects stand close together in
/// memory that each thread has of its own. The variable QUOLL_OBJECT_CACHE=0 of the environment turns that off, for
/// tools that watch the heap.
QF_EXPORT void* allocateObject(size_t size, uint64_t marks = 0);
QF_EXPORT void freeObject(Header* header) noexcept;
/// After a constructor that threw: a Weak that it gave away is null from here on.
QF_EXPORT void abandonObject(Header* header) noexcept;

/// True while somebody wants objects counted by class.
QF_EXPORT extern std::atomic<bool> recordsLiveObjects;
QF_EXPORT void recordLiveObject(const NSObject* object);

struct Counts {
  static void retain(const void* object) {
    std::atomic<uint64_t>& counts = headerOf(object).counts;
    const uint64_t now = counts.load(std::memory_order_relaxed);
    if (now & Header::immortal) return;
    if (__libc_single_threaded) counts.store(now + 1, std::memory_order_relaxed);
    else counts.fetch_add(1, std::memory_order_relaxed);
  }

  static void release(const void* object) {
    std::atomic<uint64_t>& counts = headerOf(object).counts;
    const uint64_t now = counts.load(std::memory_order_acquire);
    if (now & Header::immortal) return;
    if ((now & ~Header::lasting) == Header::unshared) {  // no other reference, strong or weak: nobody can race
      counts.store(now - 1 + Header::dying, std::memory_order_relaxed);
      destroy(object);
    } else if (__libc_single_threaded && (now & Header::strongPart) != 1) {
      counts.store(now - 1, std::memory_order_relaxed);
    } else if ((counts.fetch_sub(1, std::memory_order_acq_rel) & Header::strongPart) == 1) {
      counts.fetch_add(Header::dying, std::memory_order_relaxed);
      destroy(object);
    }
  }

  /// False for an object whose destructor has begun.
  static bool retainIfAlive(const void* object) {
    std::atomic<uint64_t>& counts = headerOf(object).counts;
    uint64_t now = counts.load(std::memory_order_relaxed);
    if (now & Header::immortal) return true;
    while ((now & Header::strongPart) && !(now & Header::dying)) {
      if (__libc_single_threaded) {
        counts.store(now + 1, std::memory_order_relaxed);
        return true;
      }
      if (counts.compare_exchange_weak(now, now + 1, std::memory_order_acquire, std::memory_order_relaxed)) return true;
    }
    return false;
  }

  static void retainWeak(const void* object) {
    std::atomic<uint64_t>& counts = headerOf(object).counts;
    if (!(counts.load(std::memory_order_relaxed) & Header::immortal)) {
      counts.fetch_add(Header::oneWeak, std::memory_order_relaxed);
    }
  }

  static void releaseWeak(const void* object) {
    Header& header = headerOf(object);
    const uint64_t now = header.counts.load(std::memory_order_acquire);
    if (now & Header::immortal) return;
    if ((now & Header::weakPart) != Header::oneWeak &&
        (header.counts.fetch_sub(Header::oneWeak, std::memory_order_acq_rel) & Header::weakPart) != Header::oneWeak) {
      return;
    }
    freeObject(&header);
  }

 private:
  QF_EXPORT static void destroy(const void* object);  ///< Nested deeper than 64: queued for the outermost.
  static void destroyNow(NSObject* object);
  static void destroyPending();
};

}  // namespace detail
}  // namespace quoll::inline v1
