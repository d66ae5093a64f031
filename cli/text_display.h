#pragma once

#include "checks/text_display.h"

/// The program shows texts by the rules of all hosts.
namespace mervane::cli {

using checks::counted;
using checks::cutToWidth;
using checks::decimal;
using checks::displayWidth;
using checks::grouped;
using checks::isUtf8;
using checks::nameForMessage;
using checks::printable;
using checks::quoted;

}  // namespace mervane::cli
