#pragma once

#include <maya/MSyntax.h>

#include <climits>

#include "mel/syntax.h"

namespace host::api {

/// The content of an MSyntax: the host's table, and what the parsers of the API do themselves.
struct SyntaxTable {
    mel::Syntax syntax;
    MSyntax::MObjectFormat format = MSyntax::kNone;
    bool usesSelection = false;
    // Counted after the selection has replaced missing names, so the table itself must not count.
    unsigned int minimumObjects = 0;
    unsigned int maximumObjects = UINT_MAX;
};

struct SyntaxAccess {
    static const SyntaxTable& table(const MSyntax& syntax);
    /// The same syntax, not a copy: flags added to it are added to the other one. Copies of it are copies.
    static MSyntax shared(const MSyntax& syntax);
};

}  // namespace host::api
