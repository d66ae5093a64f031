#include "dialog/store_without_places.h"

#include <string>
#include <utility>

#include "dialog/remembered_options.h"

namespace mervane::dialog {
namespace {

class StoreWithoutPlaces final : public platform::KeyStore {
 public:
  explicit StoreWithoutPlaces(std::shared_ptr<platform::KeyStore> store) : store_(std::move(store)) {}

  std::int32_t RegOpenKeyExA(std::uint32_t root, const std::string& path, std::uint32_t options,
                             std::uint32_t accessMask, Handle& key) override {
    return store_->RegOpenKeyExA(root, path, options, accessMask, key);
  }
  std::int32_t RegCreateKeyExA(std::uint32_t root, const std::string& path, std::uint32_t accessMask, Handle& key,
                               std::uint32_t& disposition) override {
    const std::string places = std::string("\\") + windowSection;
    if (path.ends_with(places)) return accessDenied;
    return store_->RegCreateKeyExA(root, path, accessMask, key, disposition);
  }
  std::int32_t RegCloseKey(Handle key) override { return store_->RegCloseKey(key); }
  std::int32_t RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::uint8_t* data,
                                std::uint32_t& size) override {
    return store_->RegQueryValueExA(key, name, type, data, size);
  }
  std::int32_t RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, const std::uint8_t* data,
                              std::uint32_t size) override {
    return store_->RegSetValueExA(key, name, type, data, size);
  }
  std::int32_t RegQueryInfoKeyA(Handle key, std::uint32_t& longestName) override {
    return store_->RegQueryInfoKeyA(key, longestName);
  }
  std::int32_t RegEnumValueA(Handle key, std::uint32_t index, char* name, std::uint32_t& size) override {
    return store_->RegEnumValueA(key, index, name, size);
  }
  std::int32_t RegDeleteKeyA(std::uint32_t root, const std::string& path) override {
    return store_->RegDeleteKeyA(root, path);
  }

 private:
  std::shared_ptr<platform::KeyStore> store_;
};

}  // namespace

std::shared_ptr<platform::KeyStore> storeWithoutPlaces(std::shared_ptr<platform::KeyStore> store) {
  return std::make_shared<StoreWithoutPlaces>(std::move(store));
}

}  // namespace mervane::dialog
