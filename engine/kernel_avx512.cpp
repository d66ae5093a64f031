#include <immintrin.h>

#include "engine/kernel_body.h"
#include "engine/kernels.h"

namespace mervane::engine {
namespace {

/// Eight doubles a register.
struct Avx512 {
  using Vector = __m512d;
  static constexpr std::int32_t count = 8;
  static constexpr std::size_t together = 4;

  static Vector zero() { return _mm512_setzero_pd(); }
  static Vector load(const double* from) { return _mm512_loadu_pd(from); }
  static Vector spread(const double* from) { return _mm512_set1_pd(*from); }
  static void store(double* to, Vector value) { _mm512_storeu_pd(to, value); }
  static Vector add(Vector a, Vector b) { return _mm512_add_pd(a, b); }
  static Vector subtract(Vector a, Vector b) { return _mm512_sub_pd(a, b); }
  static Vector multiply(Vector a, Vector b) { return _mm512_mul_pd(a, b); }
  static Vector minimum(Vector a, Vector b) { return _mm512_min_pd(a, b); }
  static Vector maximum(Vector a, Vector b) { return _mm512_max_pd(a, b); }
  static Vector minimumOfAll(Vector value) { return _mm512_set1_pd(_mm512_reduce_min_pd(value)); }
  static std::uint32_t equal(Vector a, Vector b) { return _mm512_cmp_pd_mask(a, b, _CMP_EQ_OQ); }
  static double first(Vector value) { return _mm512_cvtsd_f64(value); }
};

}  // namespace

const Kernel avx512Kernel = kernelOf<Avx512>("AVX-512");

}  // namespace mervane::engine
