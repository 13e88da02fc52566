// SPDX-License-Identifier: MIT
// Portable SIMD scans; compiled once per instruction set by foreach_target.h.
#if PEERS_HWY
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bench/peers/text_hwy.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace bench::simd {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

template <class D, class V>
HWY_INLINE auto terminators(D d, V v) {
  auto lfcr = hn::Or(hn::Eq(v, hn::Set(d, 0x0A)), hn::Eq(v, hn::Set(d, 0x0D)));
  auto nel = hn::Eq(v, hn::Set(d, 0x85));
  auto lsps = hn::Eq(hn::Or(v, hn::Set(d, 1)), hn::Set(d, 0x2029));
  return hn::Or(hn::Or(lfcr, nel), lsps);
}

std::size_t Lines(const char16_t* s, std::size_t n, std::uint64_t* acc) {
  const hn::ScalableTag<std::uint16_t> d;
  const std::size_t L = hn::Lanes(d);
  const auto* p = reinterpret_cast<const std::uint16_t*>(s);
  std::size_t i = 0, start = 0, lines = 0;
  std::uint64_t a = 0;
  auto end_at = [&](std::size_t at) {
    if (p[at] == 0x0A && at > 0 && p[at - 1] == 0x0D) {
      start = at + 1;
      return;
    }  // LF of CR LF
    a += at - start;
    start = at + 1;
    ++lines;
  };
  for (; i + L <= n; i += L) {
    auto m = terminators(d, hn::LoadU(d, p + i));
    if (hn::AllFalse(d, m)) continue;
    std::uint8_t raw[8] = {};
    hn::StoreMaskBits(d, m, raw);
    std::uint64_t bits;
    __builtin_memcpy(&bits, raw, 8);
    for (; bits; bits &= bits - 1) end_at(i + std::size_t(__builtin_ctzll(bits)));
  }
  for (; i < n; ++i)
    if (p[i] == 0x0A || p[i] == 0x0D || p[i] == 0x85 || (p[i] | 1) == 0x2029) end_at(i);
  a += n - start;
  *acc = a;
  return lines + 1;
}

std::size_t CommonPrefix(const char16_t* x, const char16_t* y, std::size_t n) {
  const hn::ScalableTag<std::uint16_t> d;
  const std::size_t L = hn::Lanes(d);
  const auto* a = reinterpret_cast<const std::uint16_t*>(x);
  const auto* b = reinterpret_cast<const std::uint16_t*>(y);
  std::size_t i = 0;
  for (; i + L <= n; i += L) {
    auto ne = hn::Ne(hn::LoadU(d, a + i), hn::LoadU(d, b + i));
    auto at = hn::FindFirstTrue(d, ne);
    if (at >= 0) return i + std::size_t(at);
  }
  while (i < n && a[i] == b[i]) ++i;
  return i;
}

const char* Target() { return hwy::TargetName(HWY_TARGET); }
}  // namespace HWY_NAMESPACE
}  // namespace bench::simd
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
#include "bench/peers/text_hwy.h"
namespace bench::simd {
HWY_EXPORT(Lines);
HWY_EXPORT(CommonPrefix);
HWY_EXPORT(Target);
}  // namespace bench::simd
std::size_t bench::hwy_lines(const char16_t* p, std::size_t n, std::uint64_t* acc) {
  using namespace bench::simd;
  return HWY_DYNAMIC_DISPATCH(Lines)(p, n, acc);
}
std::size_t bench::hwy_common_prefix(const char16_t* a, const char16_t* b, std::size_t n) {
  using namespace bench::simd;
  return HWY_DYNAMIC_DISPATCH(CommonPrefix)(a, b, n);
}
const char* bench::hwy_target() {
  using namespace bench::simd;
  return HWY_DYNAMIC_DISPATCH(Target)();
}
#endif
#endif
