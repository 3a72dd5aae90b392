#pragma once

#include <maya/MSelectionList.h>

#include <vector>

#include "graph/selection.h"

namespace host::api {

/// The items of MSelectionList.
struct SelectionAccess {
    static std::vector<graph::SelectionItem>& items(MSelectionList& list);
    static const std::vector<graph::SelectionItem>& items(const MSelectionList& list);
};

}  // namespace host::api
