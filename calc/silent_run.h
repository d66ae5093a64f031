#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "mervane/variant.h"
#include "platform/option_item.h"
#include "platform/services.h"

namespace mervane::addin {

/// Options by their keys in the dialog: numbers, or the texts that a user would type.
using EnteredOptions = std::vector<std::pair<std::string, Variant>>;

/// Whether what is entered is remembered for the next dialog.
enum class Memory { kept, leftAlone };

/// Has the services ask nobody: the dialog's window is not seen, the options are entered in it and "Clusterize" is
/// pressed; messages go to `report`, and failures are aborted and reported there too.
/// @param report outlives the services; it keeps the first thing that is told
/// @param refusalOf asked when all is entered: what keeps the run from beginning, or nothing
void makeSilent(platform::Services& services, const EnteredOptions& options, Memory memory, std::string& report,
                const std::function<std::string(const platform::OptionItems& items)>& refusalOf = {});

}  // namespace mervane::addin
