#pragma once

#include "batch/console.h"
#include "mel/commandRegistry.h"

namespace host::batch {

/// Adds the command cmdFileOutput, which copies what the console shows to files. The console must outlive the
/// registry.
void registerOutputCommand(mel::CommandRegistry& registry, Console& console);

}  // namespace host::batch
