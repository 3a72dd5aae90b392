#pragma once

#include <memory>
#include <string>
#include <vector>

#include "graph/undo.h"
#include "mel/commandTable.h"
#include "mel/syntax.h"
#include "mel/value.h"

namespace host::mel {

/// What a call of a plug-in's command returns: the result and, if the command can be undone, the entry for
/// the undo queue. The entry of a failed call is dropped.
struct PluginCallResult {
    CommandResult result;
    std::unique_ptr<graph::UndoEntry> undo{};
};

/// A script command of a plug-in. One object represents the command, not one call of it.
///
/// The graph has no recorder while `call`, and later the entry's undo or redo, run: they must undo their own
/// changes to the graph. Script text that they run through CommandRegistry::executeText leaves entries only
/// if they ask for it.
class PluginCommand {
  public:
    virtual ~PluginCommand() = default;
    PluginCommand() = default;
    PluginCommand(const PluginCommand&) = delete;
    PluginCommand& operator=(const PluginCommand&) = delete;

    virtual PluginCallResult call(std::vector<Value>&& arguments) = 0;
    /// For `help`; null if the command takes its words unparsed.
    virtual const Syntax* syntax() const { return nullptr; }
};

}  // namespace host::mel
