#include "hosts/book/office_lock.h"

#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

namespace mervane::hosts {

namespace {

constexpr std::size_t longestLock = 4096;

std::string beginOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(longestLock, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

/// Fields with commas between; a backslash stands before one that belongs to a field.
std::vector<std::string> fieldsOf(std::string_view line) {
  std::vector<std::string> fields(1);
  for (std::size_t i = 0; i < line.size() && line[i] != ';'; ++i) {
    if (line[i] == ',') {
      fields.emplace_back();
    } else {
      if (line[i] == '\\' && i + 1 < line.size()) ++i;
      fields.back() += line[i];
    }
  }
  return fields;
}

/// "Anna on host": the person's name, else that of the account, and the machine.
std::string ownerOfFields(std::string_view content) {
  const std::vector<std::string> fields = fieldsOf(content);
  constexpr std::size_t person = 0;
  constexpr std::size_t account = 1;
  constexpr std::size_t machine = 2;
  if (fields.size() <= machine) return {};
  const std::string& name = fields[person].empty() ? fields[account] : fields[person];
  if (name.empty() || fields[machine].empty()) return name;
  return name + " on " + fields[machine];
}

/// A length and so many characters, in whatever code page the machine has; only plain ones are told.
std::string ownerOfLength(std::string_view content) {
  if (content.empty()) return {};
  const std::string_view name = content.substr(1, static_cast<unsigned char>(content.front()));
  for (const char c : name) {
    if (c < ' ' || c > '~') return {};
  }
  return std::string(name);
}

std::optional<OfficeLock> lockIn(const std::filesystem::path& folder, const std::filesystem::path& name) {
  std::error_code error;
  std::filesystem::path withFields = folder / ".~lock.";
  withFields += name;
  withFields += "#";
  if (std::filesystem::exists(withFields, error)) return OfficeLock{withFields, ownerOfFields(beginOf(withFields))};
  std::filesystem::path withLength = folder / "~$";
  withLength += name;
  if (std::filesystem::exists(withLength, error)) return OfficeLock{withLength, ownerOfLength(beginOf(withLength))};
  return std::nullopt;
}

}  // namespace

std::optional<OfficeLock> officeLockOf(const std::filesystem::path& document) {
  if (auto lock = lockIn(document.parent_path(), document.filename())) return lock;
  // An office that was given a link may lock what it leads to.
  std::error_code error;
  const std::filesystem::path behind = std::filesystem::weakly_canonical(document, error);
  if (error) return std::nullopt;
  return lockIn(behind.parent_path(), behind.filename());
}

}  // namespace mervane::hosts
