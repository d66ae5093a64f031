#pragma once

#include "hosts/objects/refuse.h"

/// Failures with a text, which all hosts raise alike.
namespace mervane::workbook {

using hosts::refuse;

}  // namespace mervane::workbook
