#pragma once

#include <memory>
#include <string>
#include <vector>

#include "graph/undo.h"
#include "mel/commandTable.h"
#include "mel/syntax.h"
#include "mel/value.h"

namespace host::mel {

/// What a call of a plug-in's command hands back: the result and, when the command can be undone, the entry
/// for the undo queue. An entry beside a failed result is dropped.
struct PluginCallResult {
    CommandResult result;
    std::unique_ptr<graph::UndoEntry> undo{};
};

/// A script command that a plug-in brings. One object stands for the command, not for one call of it.
///
/// While `call`, and later the entry's undo or redo, run, the graph has no recorder: what they change through
/// the graph is theirs to take back. Script text that they run through CommandRegistry::executeText leaves
/// entries only where that asks for it.
class PluginCommand {
  public:
    virtual ~PluginCommand() = default;
    PluginCommand() = default;
    PluginCommand(const PluginCommand&) = delete;
    PluginCommand& operator=(const PluginCommand&) = delete;

    virtual PluginCallResult call(std::vector<Value>&& arguments) = 0;
    /// For `help`; null when the command takes its words as they come.
    virtual const Syntax* syntax() const { return nullptr; }
};

}  // namespace host::mel
