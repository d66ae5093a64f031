#include <dlfcn.h>

#include <array>
#include <filesystem>
#include <system_error>

#include "cli/calc_module.h"
#include "cli/paths.h"
#include "cli/problem.h"

namespace mervane::cli {
namespace {

using Open = hosts::OpenBook* (*)(const std::filesystem::path&);

/// The module's path; empty where there is none.
std::filesystem::path modulePath() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return {};
  const std::filesystem::path folder = program.parent_path();
  for (const std::filesystem::path& place : {folder, folder / MERVANE_MODULES}) {
    std::filesystem::path module = place / "mervane-calc.so";
    if (std::filesystem::exists(module, error)) return module;
  }
  return {};
}

Open entryOf(const std::filesystem::path& module) {
  // NB: never closed again, since what comes of it lives as long as the program.
  void* const library = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const entry = library == nullptr ? nullptr : ::dlsym(library, "mervane_open_with_calc");
  if (entry != nullptr) return reinterpret_cast<Open>(entry);
  const char* const reason = ::dlerror();
  throw Problem(ExitStatus::usage,
                "LibreOffice cannot be used: " + std::string(reason == nullptr ? "no reason is told" : reason),
                "Install LibreOffice Calc, or save the file as .xlsx in the spreadsheet first.");
}

}  // namespace

bool hasCalcModule() {
  return !modulePath().empty();
}

std::unique_ptr<hosts::OpenBook> openWithCalc(const std::string& path) {
  const std::filesystem::path module = modulePath();
  if (module.empty()) {
    throw Problem(ExitStatus::usage, "--host calc: the module mervane-calc.so is missing",
                  "It is built with the program where LibreOffice's SDK is installed.");
  }
  static const Open open = entryOf(module);
  return std::unique_ptr<hosts::OpenBook>(open(toPath(path)));
}

}  // namespace mervane::cli
