#include "graph/namespaces.h"

namespace host::graph {

std::string_view namespaceOf(std::string_view name) {
    const std::size_t colon = name.rfind(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

std::string_view baseName(std::string_view name) {
    return name.substr(name.rfind(':') + 1);
}

std::string_view withoutRoot(std::string_view name) {
    return !name.empty() && name.front() == ':' ? name.substr(1) : name;
}

bool isWithin(std::string_view nameSpace, std::string_view outer) {
    if (outer.empty() || nameSpace == outer) return true;
    return nameSpace.size() > outer.size() && nameSpace.substr(0, outer.size()) == outer &&
           nameSpace[outer.size()] == ':';
}

}  // namespace host::graph
