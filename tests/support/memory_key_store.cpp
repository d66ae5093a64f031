#include "tests/support/memory_key_store.h"

#include <algorithm>
#include <cstring>

namespace mervane::tests {

namespace {

std::string lowerCase(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return text;
}

/// The elements of a path; empty ones, as two backslashes in a row make them, count for nothing.
std::vector<std::string> elementsOf(const std::string& path) {
  std::vector<std::string> elements;
  std::string element;
  for (const char c : path + '\\') {
    if (c != '\\') {
      element += c;
    } else if (!element.empty()) {
      elements.push_back(lowerCase(element));
      element.clear();
    }
  }
  return elements;
}

}  // namespace

struct MemoryKeyStore::Key {
  struct Value {
    std::string name;
    std::uint32_t type;
    std::vector<std::uint8_t> bytes;
  };

  Value* valueNamed(const std::string& name) {
    const auto found = std::ranges::find(values, lowerCase(name), [](const Value& one) { return lowerCase(one.name); });
    return found != values.end() ? &*found : nullptr;
  }

  void set(const std::string& name, std::uint32_t type, std::vector<std::uint8_t> bytes) {
    if (Value* present = valueNamed(name)) {
      present->type = type;
      present->bytes = std::move(bytes);
    } else {
      values.push_back({name, type, std::move(bytes)});
    }
  }

  std::map<std::string, std::shared_ptr<Key>> keys;
  std::vector<Value> values;
};

MemoryKeyStore::MemoryKeyStore(std::shared_ptr<Journal> journal)
    : script(std::move(journal)), roots_{{user, std::make_shared<Key>()}, {machine, std::make_shared<Key>()}} {}

MemoryKeyStore::~MemoryKeyStore() = default;

std::shared_ptr<MemoryKeyStore::Key> MemoryKeyStore::find(std::uint32_t root, const std::string& path) const {
  const auto top = roots_.find(root);
  if (top == roots_.end()) return nullptr;
  std::shared_ptr<Key> key = top->second;
  for (const std::string& element : elementsOf(path)) {
    const auto next = key->keys.find(element);
    if (next == key->keys.end()) return nullptr;
    key = next->second;
  }
  return key;
}

std::shared_ptr<MemoryKeyStore::Key> MemoryKeyStore::make(std::uint32_t root, const std::string& path) {
  std::shared_ptr<Key> key = roots_.at(root);
  for (const std::string& element : elementsOf(path)) {
    std::shared_ptr<Key>& next = key->keys[element];
    if (!next) next = std::make_shared<Key>();
    key = next;
  }
  return key;
}

platform::KeyStore::Handle MemoryKeyStore::open(std::shared_ptr<Key> key, std::uint32_t rights) {
  handles_.emplace(next_, Open{std::move(key), rights});
  return next_++;
}

std::int32_t MemoryKeyStore::check(Handle key, std::uint32_t right) const {
  const auto found = handles_.find(key);
  if (found == handles_.end()) return invalidHandle;
  return (found->second.rights & right) == right ? success : accessDenied;
}

std::int32_t MemoryKeyStore::RegOpenKeyExA(std::uint32_t root, const std::string& path, std::uint32_t options,
                                           std::uint32_t accessMask, Handle& key) {
  accessMasks.push_back(accessMask);
  if (script.due("keyStore.open " + path)) return failingAnswer;
  if (!roots_.contains(root)) return invalidHandle;
  if (options != 0) return invalidParameter;
  std::shared_ptr<Key> found = find(root, path);
  if (!found) return notFound;
  key = open(std::move(found), accessMask);
  return success;
}

std::int32_t MemoryKeyStore::RegCreateKeyExA(std::uint32_t root, const std::string& path, std::uint32_t accessMask,
                                             Handle& key, std::uint32_t& disposition) {
  accessMasks.push_back(accessMask);
  if (script.due("keyStore.create " + path)) return failingAnswer;
  if (!roots_.contains(root)) return invalidHandle;
  constexpr std::uint32_t createdNew = 1;
  constexpr std::uint32_t openedExisting = 2;
  disposition = find(root, path) ? openedExisting : createdNew;
  key = open(make(root, path), accessMask);
  return success;
}

std::int32_t MemoryKeyStore::RegCloseKey(Handle key) {
  if (script.due("keyStore.close")) return failingAnswer;
  return handles_.erase(key) == 1 ? success : invalidHandle;
}

std::int32_t MemoryKeyStore::RegQueryValueExA(Handle key, const std::string& name, std::uint32_t& type,
                                              std::uint8_t* data, std::uint32_t& size) {
  if (script.due("keyStore.query " + name)) return failingAnswer;
  if (const std::int32_t refusal = check(key, rightToQuery); refusal != success) return refusal;
  const Key::Value* found = handles_.at(key).key->valueNamed(name);
  if (found == nullptr) return notFound;
  type = found->type;
  const std::uint32_t room = size;
  size = static_cast<std::uint32_t>(found->bytes.size());
  if (data == nullptr) return success;
  if (room < size) return moreData;
  std::ranges::copy(found->bytes, data);
  return success;
}

std::int32_t MemoryKeyStore::RegSetValueExA(Handle key, const std::string& name, std::uint32_t type,
                                            const std::uint8_t* data, std::uint32_t size) {
  if (script.due("keyStore.set " + name)) return failingAnswer;
  if (const std::int32_t refusal = check(key, rightToSet); refusal != success) return refusal;
  handles_.at(key).key->set(name, type, std::vector<std::uint8_t>(data, data + size));
  return success;
}

std::int32_t MemoryKeyStore::RegQueryInfoKeyA(Handle key, std::uint32_t& longestName) {
  if (script.due("keyStore.info")) return failingAnswer;
  if (const std::int32_t refusal = check(key, rightToQuery); refusal != success) return refusal;
  longestName = 0;
  for (const Key::Value& one : handles_.at(key).key->values)
    longestName = std::max(longestName, static_cast<std::uint32_t>(one.name.size()));
  return success;
}

std::int32_t MemoryKeyStore::RegEnumValueA(Handle key, std::uint32_t index, char* name, std::uint32_t& size) {
  if (script.due("keyStore.enumerate")) return failingAnswer;
  if (const std::int32_t refusal = check(key, rightToQuery); refusal != success) return refusal;
  const std::vector<Key::Value>& values = handles_.at(key).key->values;
  if (index >= values.size()) return noMoreItems;
  const std::string& found = values[index].name;
  if (size < found.size() + 1) return moreData;
  std::memcpy(name, found.c_str(), found.size() + 1);
  size = static_cast<std::uint32_t>(found.size());
  return success;
}

std::int32_t MemoryKeyStore::RegDeleteKeyA(std::uint32_t root, const std::string& path) {
  if (script.due("keyStore.delete " + path)) return failingAnswer;
  if (!roots_.contains(root)) return invalidHandle;
  std::vector<std::string> elements = elementsOf(path);
  if (elements.empty()) return accessDenied;
  std::string parentPath;
  for (std::size_t i = 0; i + 1 < elements.size(); ++i) parentPath += elements[i] + "\\";
  const std::shared_ptr<Key> parent = find(root, parentPath);
  if (!parent || !parent->keys.contains(elements.back())) return notFound;
  if (!parent->keys.at(elements.back())->keys.empty()) return accessDenied;
  parent->keys.erase(elements.back());
  return success;
}

void MemoryKeyStore::put(std::uint32_t root, const std::string& path, const std::string& name, std::uint32_t type,
                         std::vector<std::uint8_t> bytes) {
  make(root, path)->set(name, type, std::move(bytes));
}

void MemoryKeyStore::putText(const std::string& path, const std::string& name, const std::string& text) {
  std::vector<std::uint8_t> bytes(text.begin(), text.end());
  bytes.push_back(0);
  put(user, path, name, typeText, std::move(bytes));
}

void MemoryKeyStore::putInteger(const std::string& path, const std::string& name, std::int32_t value) {
  std::vector<std::uint8_t> bytes(sizeof value);
  std::memcpy(bytes.data(), &value, sizeof value);
  put(user, path, name, typeInteger, std::move(bytes));
}

std::optional<std::pair<std::uint32_t, std::vector<std::uint8_t>>> MemoryKeyStore::value(
    std::uint32_t root, const std::string& path, const std::string& name) const {
  const std::shared_ptr<Key> key = find(root, path);
  const Key::Value* found = key ? key->valueNamed(name) : nullptr;
  if (found == nullptr) return std::nullopt;
  return std::pair{found->type, found->bytes};
}

std::optional<std::string> MemoryKeyStore::text(const std::string& path, const std::string& name) const {
  const auto found = value(user, path, name);
  if (!found || found->first != typeText || found->second.empty()) return std::nullopt;
  return std::string(found->second.begin(), found->second.end() - 1);
}

std::optional<std::int32_t> MemoryKeyStore::integer(const std::string& path, const std::string& name) const {
  const auto found = value(user, path, name);
  std::int32_t number = 0;
  if (!found || found->first != typeInteger || found->second.size() != sizeof number) return std::nullopt;
  std::memcpy(&number, found->second.data(), sizeof number);
  return number;
}

bool MemoryKeyStore::hasKey(std::uint32_t root, const std::string& path) const {
  return find(root, path) != nullptr;
}

}  // namespace mervane::tests
