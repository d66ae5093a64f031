#pragma once

#include "platform/key_store.h"

namespace mervane::cli {

/// A store that holds nothing and takes nothing, so that a run is the same whatever was remembered before.
class ForgetfulKeyStore final : public platform::KeyStore {
 public:
  std::int32_t RegOpenKeyExA(std::uint32_t, const std::string&, std::uint32_t, std::uint32_t, Handle&) override {
    return notFound;
  }
  std::int32_t RegCreateKeyExA(std::uint32_t, const std::string&, std::uint32_t, Handle&, std::uint32_t&) override {
    return accessDenied;
  }
  std::int32_t RegCloseKey(Handle) override { return invalidHandle; }
  std::int32_t RegQueryValueExA(Handle, const std::string&, std::uint32_t&, std::uint8_t*, std::uint32_t&) override {
    return invalidHandle;
  }
  std::int32_t RegSetValueExA(Handle, const std::string&, std::uint32_t, const std::uint8_t*, std::uint32_t) override {
    return invalidHandle;
  }
  std::int32_t RegQueryInfoKeyA(Handle, std::uint32_t&) override { return invalidHandle; }
  std::int32_t RegEnumValueA(Handle, std::uint32_t, char*, std::uint32_t&) override { return invalidHandle; }
  std::int32_t RegDeleteKeyA(std::uint32_t, const std::string&) override { return notFound; }
};

}  // namespace mervane::cli
