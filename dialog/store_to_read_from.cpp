#include "dialog/store_to_read_from.h"

#include <string>
#include <utility>

namespace mervane::dialog {
namespace {

class StoreToReadFrom final : public platform::KeyStore {
 public:
  explicit StoreToReadFrom(std::shared_ptr<platform::KeyStore> store) : store_(std::move(store)) {}

  std::int32_t RegOpenKeyExA(std::uint32_t root, const std::string& path, std::uint32_t options,
                             std::uint32_t accessMask, Handle& key) override {
    return store_->RegOpenKeyExA(root, path, options, accessMask, key);
  }
  std::int32_t RegCreateKeyExA(std::uint32_t, const std::string&, std::uint32_t, Handle&, std::uint32_t&) override {
    return accessDenied;
  }
  std::int32_t RegCloseKey(Handle key) override { return store_->RegCloseKey(key); }
  std::int32_t RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::uint8_t* data,
                                std::uint32_t& size) override {
    return store_->RegQueryValueExA(key, name, type, data, size);
  }
  std::int32_t RegSetValueExA(Handle, const std::string&, std::uint32_t, const std::uint8_t*, std::uint32_t) override {
    return accessDenied;
  }
  std::int32_t RegQueryInfoKeyA(Handle key, std::uint32_t& longestName) override {
    return store_->RegQueryInfoKeyA(key, longestName);
  }
  std::int32_t RegEnumValueA(Handle key, std::uint32_t index, char* name, std::uint32_t& size) override {
    return store_->RegEnumValueA(key, index, name, size);
  }
  std::int32_t RegDeleteKeyA(std::uint32_t, const std::string&) override { return accessDenied; }

 private:
  std::shared_ptr<platform::KeyStore> store_;
};

}  // namespace

std::shared_ptr<platform::KeyStore> storeToReadFrom(std::shared_ptr<platform::KeyStore> store) {
  return std::make_shared<StoreToReadFrom>(std::move(store));
}

}  // namespace mervane::dialog
