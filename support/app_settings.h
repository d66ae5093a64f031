#pragma once

#include <cstdint>
#include <string>

#include "mervane/array.h"
#include "mervane/variant.h"

namespace mervane {

inline constexpr std::int32_t hkeyCurrentUser = -2147483647;   ///< 0x80000001
inline constexpr std::int32_t hkeyLocalMachine = -2147483646;  ///< 0x80000002

/// Named settings of one application in the machine's key store. A section is a store key below
/// MainBranch\CompanyName\AppName, a key is a named value in it. No handle is held between calls.
///
/// The errors named below reach the caller unchanged; anything unforeseen becomes eErr_SettingsFailure.
class CAppSettings {
 public:
  /// Both must not be empty, otherwise raises eErr_InvalidCompanyName or eErr_InvalidAppName; a refused application
  /// name leaves the new company name in force.
  void Init(const std::string& companyName, const std::string& appName);

  void AppName(const std::string& value);
  [[nodiscard]] const std::string& AppName() const noexcept { return appName_; }
  void CompanyName(const std::string& value);
  [[nodiscard]] const std::string& CompanyName() const noexcept { return companyName_; }
  void MainBranch(const std::string& value);  ///< not empty, otherwise raises eErr_InvalidMainBranch
  [[nodiscard]] const std::string& MainBranch() const noexcept { return mainBranch_; }
  void RootKey(std::int32_t value);  ///< one of the two roots above, otherwise raises eErr_InvalidRootKey
  [[nodiscard]] std::int32_t RootKey() const noexcept { return rootKey_; }

  /// Deletes a section, or with any non-empty key the store key named "Key" below it; never a single value.
  /// Raises eErr_DeleteSetting where the store refuses.
  void DeleteSetting(const std::string& section, const std::string& key);
  /// Names of a section's values in the order of the store; raises eErr_GetAllKeys where the section is missing.
  /// @param keys emptied first, whatever follows; then its bounds run from 1 to the number of names. A section without
  /// values leaves it without a dimension.
  void GetAllKeys(const std::string& section, Array<std::string>& keys);
  /// A text, a 32-bit integer, or the default where section, key or a value of those two types is missing.
  [[nodiscard]] Variant GetSetting(const std::string& section, const std::string& key, const Variant& defaultValue);
  /// Texts, dates and booleans are stored as text, everything else as a 32-bit integer, which the caller's variable
  /// then holds whatever becomes of the write. Raises eErr_SaveSetting where the store refuses.
  void SaveSetting(const std::string& section, const std::string& key, Variant& setting);

 private:
  [[nodiscard]] std::string pathOf(const std::string& section) const;

  std::int32_t rootKey_ = hkeyCurrentUser;
  std::string mainBranch_ = "Software";
  std::string companyName_ = "MyCompany";
  std::string appName_ = "MyApplication";
};

}  // namespace mervane
