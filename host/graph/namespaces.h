#pragma once

#include <string_view>

namespace host::graph {

/// "a:b" of "a:b:node"; empty for a name in the root namespace.
std::string_view namespaceOf(std::string_view name);
/// "node" of "a:b:node".
std::string_view baseName(std::string_view name);
/// A name without a colon in front, which stands for the root namespace.
std::string_view withoutRoot(std::string_view name);
/// Whether a namespace is another one, or lies in it.
bool isWithin(std::string_view nameSpace, std::string_view outer);

}  // namespace host::graph
