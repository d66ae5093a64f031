#include "platform/windows/registry.h"

#include <windows.h>

#include <algorithm>
#include <vector>

#include "platform/com/code_page.h"

namespace mervane::windows {
namespace {

HKEY toKey(platform::KeyStore::Handle handle) {
  return reinterpret_cast<HKEY>(handle);
}

/// The two roots are sign-extended numbers, as the platform's own constants are.
HKEY rootKey(std::uint32_t root) {
  return reinterpret_cast<HKEY>(static_cast<std::intptr_t>(static_cast<std::int32_t>(root)));
}

/// Asks for a whole value; the size may grow between two calls.
LSTATUS query(HKEY key, const std::string& name, DWORD& type, std::vector<BYTE>& bytes) {
  DWORD size = 0;
  LSTATUS status = ::RegQueryValueExA(key, name.c_str(), nullptr, &type, nullptr, &size);
  while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
    bytes.resize(size);
    status = ::RegQueryValueExA(key, name.c_str(), nullptr, &type, bytes.data(), &size);
    if (status != ERROR_MORE_DATA) break;
  }
  bytes.resize(status == ERROR_SUCCESS ? size : 0);
  return status;
}

}  // namespace

std::int32_t Registry::RegOpenKeyExA(std::uint32_t root, const std::string& path, std::uint32_t options,
                                     std::uint32_t accessMask, Handle& key) {
  HKEY opened = nullptr;
  const LSTATUS status = ::RegOpenKeyExA(rootKey(root), com::toCodePage(path).c_str(), options, accessMask, &opened);
  key = reinterpret_cast<Handle>(opened);
  return static_cast<std::int32_t>(status);
}

std::int32_t Registry::RegCreateKeyExA(std::uint32_t root, const std::string& path, std::uint32_t accessMask,
                                       Handle& key, std::uint32_t& disposition) {
  HKEY opened = nullptr;
  DWORD how = 0;
  const LSTATUS status = ::RegCreateKeyExA(rootKey(root), com::toCodePage(path).c_str(), 0, nullptr, 0, accessMask,
                                           nullptr, &opened, &how);
  key = reinterpret_cast<Handle>(opened);
  disposition = how;
  return static_cast<std::int32_t>(status);
}

std::int32_t Registry::RegCloseKey(Handle key) {
  return static_cast<std::int32_t>(::RegCloseKey(toKey(key)));
}

std::int32_t Registry::RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type, std::uint8_t* data,
                                        std::uint32_t& size) {
  DWORD kind = REG_NONE;
  std::vector<BYTE> bytes;
  const LSTATUS status = query(toKey(key), com::toCodePage(name), kind, bytes);
  if (status != ERROR_SUCCESS) return static_cast<std::int32_t>(status);
  type = kind;
  if (kind == REG_SZ) {
    // The text is handed over in UTF-8, whose size is not that of the code page.
    const std::string text =
        com::fromCodePage(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    bytes.assign(text.begin(), text.end());
  }
  const auto needed = static_cast<std::uint32_t>(bytes.size());
  const std::uint32_t room = size;
  size = needed;
  if (data == nullptr) return success;
  if (room < needed) return ERROR_MORE_DATA;
  std::copy(bytes.begin(), bytes.end(), data);
  return success;
}

std::int32_t Registry::RegSetValueExA(Handle key, const std::string& name, std::uint32_t type, const std::uint8_t* data,
                                      std::uint32_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  if (type == typeText) bytes = com::toCodePage(bytes);
  return static_cast<std::int32_t>(::RegSetValueExA(toKey(key), com::toCodePage(name).c_str(), 0, type,
                                                    reinterpret_cast<const BYTE*>(bytes.data()),
                                                    static_cast<DWORD>(bytes.size())));
}

std::int32_t Registry::RegQueryInfoKeyA(Handle key, std::uint32_t& longestName) {
  DWORD longest = 0;
  const LSTATUS status = ::RegQueryInfoKeyA(toKey(key), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                            &longest, nullptr, nullptr, nullptr);
  // A character of the code page takes up to three bytes in UTF-8.
  longestName = longest * 3;
  return static_cast<std::int32_t>(status);
}

std::int32_t Registry::RegEnumValueA(Handle key, std::uint32_t index, char* name, std::uint32_t& size) {
  std::string buffer(static_cast<std::size_t>(size) + 1, '\0');
  auto length = static_cast<DWORD>(buffer.size());
  const LSTATUS status = ::RegEnumValueA(toKey(key), index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr);
  if (status != ERROR_SUCCESS) return static_cast<std::int32_t>(status);
  const std::string text = com::fromCodePage(std::string_view(buffer.data(), length));
  if (text.size() + 1 > size) return ERROR_MORE_DATA;
  std::copy(text.begin(), text.end(), name);
  name[text.size()] = '\0';
  size = static_cast<std::uint32_t>(text.size());
  return success;
}

std::int32_t Registry::RegDeleteKeyA(std::uint32_t root, const std::string& path) {
  return static_cast<std::int32_t>(::RegDeleteKeyA(rootKey(root), com::toCodePage(path).c_str()));
}

}  // namespace mervane::windows
