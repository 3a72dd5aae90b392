#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "commands/commandSupport.h"
#include "commands/nodeStates.h"

namespace host::commands {

/// Which nodes `ls` lists.
struct ListFilter {
    std::vector<std::string> kinds;  // names of types; one of them must fit
    std::vector<std::string> exactTypes;
    std::vector<std::string> excludedTypes;
    bool intermediateOnly = false;
    bool noIntermediate = false;
    std::vector<const NodeState*> states;  // all of them must be true
    bool dagOnly = false;

    bool isTyped() const { return !kinds.empty() || !exactTypes.empty(); }
};

/// Adds the flags that say which nodes are wanted.
void addFilterFlags(Syntax& syntax);
ListFilter filterOf(const ParsedArguments& arguments);
bool passes(graph::Graph& graph, const ListFilter& filter, const graph::SelectionItem& item);

}  // namespace host::commands
