#include "support/app_settings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

#include "mervane/convert.h"
#include "mervane/runtime_errors.h"
#include "mervane/service_errors.h"
#include "platform/key_store.h"
#include "support/globals.h"
#include "support/procedures.h"

namespace mervane {

namespace {

using platform::KeyStore;

constexpr const char* className = "CAppSettings";
/// NB: the failures of the store name the class one letter short.
constexpr const char* storeFailureSource = "MervaneCls31.CAppSetting";
constexpr std::uint32_t queryValueAccess = 1;
constexpr std::uint32_t readAccess = 0x20019;
constexpr std::uint32_t allButSecurityAccess = 63;
constexpr std::size_t mostKeys = std::numeric_limits<std::int16_t>::max();

template <class Body>
decltype(auto) guarded(Body&& body) {
  return service(className, eErr_SettingsFailure, std::forward<Body>(body));
}

KeyStore& store() {
  const auto& keyStore = globals::platform().keyStore;
  if (!keyStore) raise(runtime::objectNotSet);
  return *keyStore;
}

[[noreturn]] void refuseStore(ServiceTrap& trap, std::int32_t number, const char* text) {
  trap.refuse(number, text, storeFailureSource);
}

void checkText(ServiceTrap& trap, const std::string& value, std::int32_t number, const char* text) {
  if (value.empty()) trap.refuse(number, text);
}

/// Integers lie in the store with the low byte first, on every machine.
std::array<std::uint8_t, 4> bytesOf(std::int32_t value) {
  const auto bits = static_cast<std::uint32_t>(value);
  std::array<std::uint8_t, 4> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(bits >> (8 * i));
  return bytes;
}

std::int32_t integerOf(const std::array<std::uint8_t, 4>& bytes) {
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) bits |= static_cast<std::uint32_t>(bytes[i]) << (8 * i);
  return static_cast<std::int32_t>(bits);
}

}  // namespace

std::string CAppSettings::pathOf(const std::string& section) const {
  return mainBranch_ + "\\" + companyName_ + "\\" + appName_ + "\\" + section;
}

void CAppSettings::Init(const std::string& companyName, const std::string& appName) {
  guarded([&](ServiceTrap& trap) {
    checkText(trap, companyName, eErr_InvalidCompanyName, "Invalid CompanyName value");
    companyName_ = companyName;
    checkText(trap, appName, eErr_InvalidAppName, "Invalid AppName value");
    appName_ = appName;
  });
}

void CAppSettings::AppName(const std::string& value) {
  guarded([&](ServiceTrap& trap) {
    checkText(trap, value, eErr_InvalidAppName, "Invalid AppName value");
    appName_ = value;
  });
}

void CAppSettings::CompanyName(const std::string& value) {
  guarded([&](ServiceTrap& trap) {
    checkText(trap, value, eErr_InvalidCompanyName, "Invalid CompanyName value");
    companyName_ = value;
  });
}

void CAppSettings::MainBranch(const std::string& value) {
  guarded([&](ServiceTrap& trap) {
    checkText(trap, value, eErr_InvalidMainBranch, "Invalid MainBranch value");
    mainBranch_ = value;
  });
}

void CAppSettings::RootKey(std::int32_t value) {
  guarded([&](ServiceTrap& trap) {
    if (value != hkeyCurrentUser && value != hkeyLocalMachine) {
      trap.refuse(eErr_InvalidRootKey, "Invalid root key value");
    }
    rootKey_ = value;
  });
}

void CAppSettings::DeleteSetting(const std::string& section, const std::string& key) {
  guarded([&](ServiceTrap& trap) {
    std::string path = pathOf(section);
    // NB: the fixed name "Key", whatever the argument says; a single value is never deleted.
    if (!key.empty()) path += "\\Key";
    if (store().RegDeleteKeyA(static_cast<std::uint32_t>(rootKey_), path) != KeyStore::success) {
      refuseStore(trap, eErr_DeleteSetting, "Failed deleting the application setting");
    }
  });
}

void CAppSettings::GetAllKeys(const std::string& section, Array<std::string>& keys) {
  guarded([&](ServiceTrap& trap) {
    // 1.
    keys = Array<std::string>();
    // 2.
    KeyStore::Handle handle = 0;
    if (store().RegOpenKeyExA(static_cast<std::uint32_t>(rootKey_), pathOf(section), 0, queryValueAccess, handle) !=
        KeyStore::success) {
      refuseStore(trap, eErr_GetAllKeys, "Failed getting all the application keys");
    }
    // 3.
    std::uint32_t longestName = 0;
    if (store().RegQueryInfoKeyA(handle, longestName) == KeyStore::success) {
      // 4.
      std::vector<std::string> names;
      std::vector<char> buffer(std::size_t{longestName} + 1);
      bool tooMany = false;
      for (std::uint32_t index = 0;; ++index) {
        auto size = static_cast<std::uint32_t>(buffer.size());
        if (store().RegEnumValueA(handle, index, buffer.data(), size) != KeyStore::success) break;
        tooMany = names.size() == mostKeys;
        if (tooMany) break;
        names.emplace_back(buffer.data(), std::min<std::size_t>(size, buffer.size()));
      }
      if (!names.empty()) {
        const Bounds bounds{1, static_cast<std::int32_t>(names.size())};
        keys = Array<std::string>({bounds}, std::move(names));
      }
      if (tooMany) raise(runtime::overflow);  // NB: index and count have 16 bits.
    }
    // 5.
    store().RegCloseKey(handle);
  });
}

Variant CAppSettings::GetSetting(const std::string& section, const std::string& key, const Variant& defaultValue) {
  return guarded([&](ServiceTrap&) {
    // 1.
    Variant result = defaultValue;
    // 2.
    KeyStore::Handle handle = 0;
    if (store().RegOpenKeyExA(static_cast<std::uint32_t>(rootKey_), pathOf(section), 0, readAccess, handle) !=
        KeyStore::success) {
      return result;
    }
    // 3.
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    if (store().RegQueryValueExA(handle, key, type, nullptr, size) == KeyStore::success) {
      // 4. The second query may find a value that another process has changed since; it then counts as unreadable
      // where it has grown or is of another type.
      const std::uint32_t firstType = type;
      if (type == KeyStore::typeText) {
        std::vector<std::uint8_t> buffer(size);
        // A buffer of no bytes would ask for the size again; the store must see a place to write to.
        if (buffer.empty()) buffer.resize(1);
        if (store().RegQueryValueExA(handle, key, type, buffer.data(), size) == KeyStore::success &&
            type == firstType && size <= buffer.size()) {
          // NB: a text without even its NUL is not provided for. The length comes out as -1, and the handle stays open.
          if (size == 0) raise(runtime::invalidProcedureCall);
          result = std::string(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(size - 1));
        }
      } else if (type == KeyStore::typeInteger) {
        std::array<std::uint8_t, 4> bytes{};
        size = static_cast<std::uint32_t>(bytes.size());
        if (store().RegQueryValueExA(handle, key, type, bytes.data(), size) == KeyStore::success && type == firstType) {
          result = integerOf(bytes);
        }
      }
    }
    // 5.
    store().RegCloseKey(handle);
    return result;
  });
}

void CAppSettings::SaveSetting(const std::string& section, const std::string& key, Variant& setting) {
  guarded([&](ServiceTrap& trap) {
    constexpr const char* refusal = "Failed saving the application setting";
    // 1.
    KeyStore::Handle handle = 0;
    std::uint32_t disposition = 0;
    if (store().RegCreateKeyExA(static_cast<std::uint32_t>(rootKey_), pathOf(section), allButSecurityAccess, handle,
                                disposition) != KeyStore::success) {
      refuseStore(trap, eErr_SaveSetting, refusal);
    }
    // 2.
    std::int32_t written = KeyStore::success;
    const std::string kind = typeName(setting);
    if (kind == "String" || kind == "Date" || kind == "Boolean") {
      const std::string text = toText(setting, globals::locale());
      written =
          store().RegSetValueExA(handle, key, KeyStore::typeText, reinterpret_cast<const std::uint8_t*>(text.c_str()),
                                 static_cast<std::uint32_t>(text.size() + 1));
    } else {
      const std::int32_t number = toInt32(setting, globals::locale());
      setting = number;  // NB: before the write, so the caller sees it whatever becomes of that.
      const auto bytes = bytesOf(number);
      written = store().RegSetValueExA(handle, key, KeyStore::typeInteger, bytes.data(),
                                       static_cast<std::uint32_t>(bytes.size()));
    }
    // 3. NB: a failure from here or from the conversion leaves the handle open.
    if (written != KeyStore::success) refuseStore(trap, eErr_SaveSetting, refusal);
    store().RegCloseKey(handle);
  });
}

}  // namespace mervane
