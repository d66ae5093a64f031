#include <emmintrin.h>

#include "engine/kernel_body.h"
#include "engine/kernels.h"

namespace mervane::engine {
namespace {

/// Two doubles a register, on every x86-64.
struct Sse2 {
  using Vector = __m128d;
  static constexpr std::int32_t count = 2;
  static constexpr std::size_t together = 4;

  static Vector zero() { return _mm_setzero_pd(); }
  static Vector load(const double* from) { return _mm_loadu_pd(from); }
  static Vector spread(const double* from) { return _mm_set1_pd(*from); }
  static void store(double* to, Vector value) { _mm_storeu_pd(to, value); }
  static Vector add(Vector a, Vector b) { return _mm_add_pd(a, b); }
  static Vector subtract(Vector a, Vector b) { return _mm_sub_pd(a, b); }
  static Vector multiply(Vector a, Vector b) { return _mm_mul_pd(a, b); }
  static Vector minimum(Vector a, Vector b) { return _mm_min_pd(a, b); }
  static Vector maximum(Vector a, Vector b) { return _mm_max_pd(a, b); }
  static Vector minimumOfAll(Vector value) { return _mm_min_pd(value, _mm_shuffle_pd(value, value, 1)); }
  static std::uint32_t equal(Vector a, Vector b) {
    return static_cast<std::uint32_t>(_mm_movemask_pd(_mm_cmpeq_pd(a, b)));
  }
  static double first(Vector value) { return _mm_cvtsd_f64(value); }
};

}  // namespace

const Kernel sse2Kernel = kernelOf<Sse2>("SSE2");

}  // namespace mervane::engine
