#pragma once

#include <cstdint>

namespace mervane {

/// The activation function number that the component stores and hands to the network engine.
/// Any 32-bit value may be stored; the component gives the numbers no meaning of its own.
enum enuActivationFunction : std::int32_t {
  ACTIVATE_FUNC_DEFAULT = 0,
  ACTIVATE_FUNC_ZEROT = 1,
  ACTIVATE_FUNC_TANH = 2,
  ACTIVATE_FUNC_EXP05 = 3,
  ACTIVATE_FUNC_EXP = 4,
};

/// The public error codes. Several are published for hosts and raised by nothing here.
enum ERRClassifier : std::int32_t {
  eErr_InvalidArgument = -2147203703,
  eErr_InvalidReference = -2147203701,
  eErr_CompareNameSheet = -2147203700,
  eErr_ClearRange = -2147203699,
  eErr_NotDigit = -2147203698,
  eErr_RangeIntersect = -2147203697,
  eErr_RepeatedInputs = -2147203696,
  eErr_ErrLearningRate = -2147203695,
  eErr_ErrInitialWeights = -2147203694,
  eErr_NoDigit = -2147203693,
  eErr_CategoriesCount = -2147203692,
  eErr_Table = -2147203691,
  eErr_InputAndOutputAreNotSame = -2147203690,
};

}  // namespace mervane
