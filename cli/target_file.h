#pragma once

#include <string>

#include "hosts/book/file_stamp.h"

namespace mervane::cli {

/// The file that a run will replace, watched from before the run's data are read until it is replaced, so that nobody
/// else's work on it is lost.
class TargetFile {
 public:
  /// Raises a Problem with the status fileTrouble where an office has the file open.
  /// @param path empty or "-" for none, of which nothing is asked
  /// @param force whether an office's lock counts for nothing
  TargetFile(std::string path, bool force);

  /// To be asked just before the file is replaced. Raises a Problem with the status fileTrouble where somebody else has
  /// written it since, or an office has opened it.
  void requireUntouched() const;

 private:
  void requireUnlocked() const;
  [[nodiscard]] bool isFile() const { return !path_.empty() && path_ != "-"; }

  std::string path_;
  bool force_;
  hosts::FileStamp stamp_;
};

/// Copies the file to a new one beside it: FILE and the suffix, or where there is such a file FILE, the suffix and .2,
/// .3 and so on, so that no earlier copy is lost. The copy may be read by nobody who may not read the file; on Windows
/// it has the access rights of its folder. It is removed again where the object goes before it was kept.
class SafetyCopy {
 public:
  /// Raises a Problem with the status fileTrouble.
  SafetyCopy(const std::string& path, const std::string& suffix);
  ~SafetyCopy();
  SafetyCopy(const SafetyCopy&) = delete;
  SafetyCopy& operator=(const SafetyCopy&) = delete;

  /// The name that a copy would have now.
  [[nodiscard]] static std::string freeName(const std::string& path, const std::string& suffix);
  [[nodiscard]] const std::string& path() const noexcept { return path_; }
  void keep() noexcept { isKept_ = true; }

 private:
  std::string path_;
  bool isKept_ = false;
};

}  // namespace mervane::cli
