#include "support/validation.h"

#include "mervane/convert.h"
#include "support/globals.h"
#include "support/procedures.h"

namespace mervane {

namespace {

/// The answer of a test; a failed conversion in it is the answer false.
template <class Test>
bool passes(Test&& test) {
  bool answer = false;
  attempt([&] { answer = test(); });
  return answer;
}

}  // namespace

bool CValidation::ValidateDouble(const std::string& strValue) const {
  return passes([&] {
    (void)toDouble(strValue, globals::locale());
    return true;
  });
}

bool CValidation::ValidateDoubleRange(const std::string& strValue, double minValue, double maxValue) const {
  return passes([&] {
    const double number = toDouble(strValue, globals::locale());
    return number > minValue && number < maxValue;
  });
}

bool CValidation::ValidateLong(const std::string& strValue) const {
  return passes([&] {
    (void)toInt32(strValue, globals::locale());
    return true;
  });
}

bool CValidation::ValidateLongRange(const std::string& strValue, std::int32_t minValue, std::int32_t maxValue) const {
  return passes([&] {
    const std::int32_t number = toInt32(strValue, globals::locale());
    return number > minValue && number < maxValue;
  });
}

}  // namespace mervane
