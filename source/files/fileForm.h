#pragma once

#include <string_view>

/// The two layouts of weight files and region files.
enum class FileForm { kJson, kPlain };

/// The form that the name of a file asks for: JSON where it ends in "json", in lower case.
inline FileForm fileFormOf(std::string_view name) {
    constexpr std::string_view kEnd = "json";
    const bool isJson = name.size() >= kEnd.size() && name.substr(name.size() - kEnd.size()) == kEnd;
    return isJson ? FileForm::kJson : FileForm::kPlain;
}
