#include <immintrin.h>

#include "engine/kernel_body.h"
#include "engine/kernels.h"

namespace mervane::engine {
namespace {

/// Four doubles a register.
struct Avx2 {
  using Vector = __m256d;
  static constexpr std::int32_t count = 4;
  static constexpr std::size_t together = 4;

  static Vector zero() { return _mm256_setzero_pd(); }
  static Vector load(const double* from) { return _mm256_loadu_pd(from); }
  static Vector spread(const double* from) { return _mm256_broadcast_sd(from); }
  static void store(double* to, Vector value) { _mm256_storeu_pd(to, value); }
  static Vector add(Vector a, Vector b) { return _mm256_add_pd(a, b); }
  static Vector subtract(Vector a, Vector b) { return _mm256_sub_pd(a, b); }
  static Vector multiply(Vector a, Vector b) { return _mm256_mul_pd(a, b); }
  static Vector minimum(Vector a, Vector b) { return _mm256_min_pd(a, b); }
  static Vector maximum(Vector a, Vector b) { return _mm256_max_pd(a, b); }
  static Vector minimumOfAll(Vector value) {
    const Vector pairs = _mm256_min_pd(value, _mm256_permute_pd(value, 0b0101));
    return _mm256_min_pd(pairs, _mm256_permute2f128_pd(pairs, pairs, 1));
  }
  static std::uint32_t equal(Vector a, Vector b) {
    return static_cast<std::uint32_t>(_mm256_movemask_pd(_mm256_cmp_pd(a, b, _CMP_EQ_OQ)));
  }
  static double first(Vector value) { return _mm256_cvtsd_f64(value); }
};

}  // namespace

const Kernel avx2Kernel = kernelOf<Avx2>("AVX2");

}  // namespace mervane::engine
