#include "engine/choose_kernel.h"

#include "engine/kernels.h"

namespace mervane::engine {

#ifdef MERVANE_X86_KERNELS

namespace {

bool hasAvx2() {
  static const bool present = __builtin_cpu_supports("avx2") != 0;
  return present;
}

bool hasAvx512() {
  static const bool present = __builtin_cpu_supports("avx512f") != 0;
  return present;
}

}  // namespace

std::vector<const Kernel*> availableKernels() {
  std::vector<const Kernel*> kernels{&portableKernel, &sse2Kernel};
  if (hasAvx2()) kernels.push_back(&avx2Kernel);
  if (hasAvx512()) kernels.push_back(&avx512Kernel);
  return kernels;
}

const Kernel& chooseKernel(std::int32_t units, std::int32_t inputs) {
  // Measured: eight lanes are slower than four until there is enough work in one sample to fill them.
  constexpr std::int32_t manyUnits = 24;
  constexpr std::int32_t manyInputs = 16;
  if (hasAvx512() && units >= manyUnits && inputs >= manyInputs) return avx512Kernel;
  return hasAvx2() ? avx2Kernel : sse2Kernel;
}

#else

std::vector<const Kernel*> availableKernels() {
  return {&portableKernel};
}

const Kernel& chooseKernel(std::int32_t, std::int32_t) {
  return portableKernel;
}

#endif

}  // namespace mervane::engine
