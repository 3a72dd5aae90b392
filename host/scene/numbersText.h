#pragma once

#include <string>

#include "text/numbers.h"

namespace host::scene {

/// A double as the host writes it: with up to 17 significant digits, so that it reads back the same.
inline void appendDouble(std::string& text, double value) {
    text::appendRounded(text, value, 17);
}

/// A number of single precision, in the fewest digits that read back as the same.
inline void appendSingle(std::string& text, double value) {
    text::appendShortest(text, static_cast<float>(value));
}

}  // namespace host::scene
