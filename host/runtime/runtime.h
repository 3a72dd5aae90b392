#pragma once

#include <string>

#include "api/handles/session.h"
#include "api/plugin/pluginLoader.h"
#include "graph/graph.h"
#include "graph/variants.h"
#include "mel/commandRegistry.h"

namespace host::runtime {

/// A host that is ready for use: the scene with which it starts, all its commands and the plug-in loader. One
/// may exist at a time.
class Runtime {
  public:
    /// @param output, messages  where scripts and commands write; must outlive this
    Runtime(mel::Output& output, graph::MessageSink& messages, const graph::Variants& variants = {});

    /// Loads DELVENTools from the folder of the host's library.
    /// @return failure too if it is not there: the text says so
    mel::CommandResult loadOwnPlugin();
    /// Whether it is there.
    static bool hasOwnPlugin();

    graph::Graph& graph() { return graph_; }
    mel::CommandRegistry& commands() { return commands_; }
    mel::PluginService& plugins() { return loader_; }

  private:
    // The order of these members matters: later ones use earlier ones.
    graph::Graph graph_;
    mel::CommandRegistry commands_;
    api::Session session_;
    api::PluginLoader loader_;
};

}  // namespace host::runtime
