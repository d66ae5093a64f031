#pragma once

#include "guard/text_display.h"

/// The program shows texts by the rules of all hosts.
namespace mervane::cli {

using guard::counted;
using guard::cutToWidth;
using guard::decimal;
using guard::displayWidth;
using guard::grouped;
using guard::isUtf8;
using guard::nameForMessage;
using guard::printable;
using guard::quoted;

}  // namespace mervane::cli
