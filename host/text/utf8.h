#pragma once

#include <string_view>

namespace host::text {

/// Whether a text has characters beyond ASCII, and is whole UTF-8.
bool hasWideCharacters(std::string_view text);

}  // namespace host::text
