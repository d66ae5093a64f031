#pragma once

#include <string>

#include "hosts/objects/refuse.h"

/// Failures with a text, which all hosts raise alike.
namespace mervane::workbook {

using hosts::refuse;

/// A part with content that cannot be. @param where a cell, row or column
[[noreturn]] inline void refuseDamaged(const std::string& part, const std::string& where, const std::string& what) {
  refuse("The part \"" + part + "\" of the workbook is damaged near " + where + ": " + what +
         ". Let the spreadsheet repair the file and save it anew.");
}

}  // namespace mervane::workbook
