#pragma once

#include <string>
#include <string_view>

#include "hosts/book/open_book.h"

namespace mervane::cli {

/// What is wrong with a reference text, as a sentence without a full stop that names the flag and what to give
/// instead; empty where the component takes it.
[[nodiscard]] std::string referenceTrouble(hosts::OpenBook& book, std::string_view flag, const std::string& reference);

/// Where the trouble lies that made the component refuse a run: a reference, a cell and its text, or a column. Empty
/// where nothing is found. The two references are those that the dialog held.
/// @param message what the component itself has said.
[[nodiscard]] std::string whyRefused(hosts::OpenBook& book, const std::string& message, const std::string& inputs,
                                     const std::string& outputs);

}  // namespace mervane::cli
