#include "engine/kernel_body.h"
#include "engine/kernels.h"

// For any processor: plain C++ over four lanes, which compilers turn into whatever vectors they know.

namespace mervane::engine {
namespace {

struct FourDoubles {
  static constexpr std::int32_t count = 4;
  static constexpr std::size_t together = 2;

  struct Vector {
    double lane[4];
  };

  static Vector zero() { return {}; }
  static Vector load(const double* from) { return {{from[0], from[1], from[2], from[3]}}; }
  static Vector spread(const double* from) { return {{*from, *from, *from, *from}}; }
  static void store(double* to, const Vector& value) {
    for (int i = 0; i < count; ++i) to[i] = value.lane[i];
  }
  static Vector add(const Vector& a, const Vector& b) {
    return each(a, b, [](double x, double y) { return x + y; });
  }
  static Vector subtract(const Vector& a, const Vector& b) {
    return each(a, b, [](double x, double y) { return x - y; });
  }
  static Vector multiply(const Vector& a, const Vector& b) {
    return each(a, b, [](double x, double y) { return x * y; });
  }
  static Vector minimum(const Vector& a, const Vector& b) {
    return each(a, b, [](double x, double y) { return x < y ? x : y; });
  }
  static Vector maximum(const Vector& a, const Vector& b) {
    return each(a, b, [](double x, double y) { return x > y ? x : y; });
  }
  static Vector minimumOfAll(const Vector& value) {
    double least = value.lane[0];
    for (int i = 1; i < count; ++i) least = value.lane[i] < least ? value.lane[i] : least;
    return spread(&least);
  }
  static std::uint32_t equal(const Vector& a, const Vector& b) {
    std::uint32_t bits = 0;
    for (int i = 0; i < count; ++i) bits |= static_cast<std::uint32_t>(a.lane[i] == b.lane[i]) << i;
    return bits;
  }
  static double first(const Vector& value) { return value.lane[0]; }

 private:
  template <class Operation>
  static Vector each(const Vector& a, const Vector& b, Operation operation) {
    Vector result;
    for (int i = 0; i < count; ++i) result.lane[i] = operation(a.lane[i], b.lane[i]);
    return result;
  }
};

}  // namespace

const Kernel portableKernel = kernelOf<FourDoubles>("portable");

}  // namespace mervane::engine
