#include "hosts/calc/calc_book.h"

/// The way into this module for a program that loads it: opens the file with an office of its own. The caller deletes
/// the book. Raises Failure as all hosts do; both sides are built together.
extern "C" __attribute__((visibility("default"))) mervane::hosts::OpenBook* mervane_open_with_calc(
    const std::filesystem::path& path) {
  return std::make_unique<mervane::calc::CalcBook>(path).release();
}
