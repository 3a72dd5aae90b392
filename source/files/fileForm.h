#pragma once

#include <string_view>

/// The two layouts of weight files and region files.
enum class FileForm { kJson, kPlain };

/// The form of a file, by its name: JSON if it ends in "json", in lower case.
inline FileForm fileFormOf(std::string_view name) {
    constexpr std::string_view kEnd = "json";
    const bool isJson = name.size() >= kEnd.size() && name.substr(name.size() - kEnd.size()) == kEnd;
    return isJson ? FileForm::kJson : FileForm::kPlain;
}
