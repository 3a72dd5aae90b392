#include "dataFile.h"

#include <cstdint>
#include <filesystem>
#include <ios>
#include <new>
#include <system_error>

namespace {

namespace fs = std::filesystem;

/// Removes what is left of a file; a device stays.
void removeRegularFile(const fs::path& path) {
    std::error_code error;
    // A link stays as well; the file that it points to is the half one.
    const fs::path file = fs::canonical(path, error);
    if (!error && fs::is_regular_file(file, error)) fs::remove(file, error);
}

}  // namespace

bool isJsonFile(std::string_view name) {
    constexpr std::string_view kEnd = "json";
    return name.size() >= kEnd.size() && name.substr(name.size() - kEnd.size()) == kEnd;
}

bool FileContent::read(const std::string& name) {
    bytes_.reset();
    size_ = 0;
    const fs::path path = fs::u8path(name);
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return false;
    const std::uintmax_t size = fs::file_size(path, error);
    std::ifstream stream(path, std::ios::binary);
    if (error || !stream) return false;
    bytes_.reset(new (std::nothrow) char[static_cast<std::size_t>(size)]);
    if (bytes_ == nullptr) return false;
    stream.read(bytes_.get(), static_cast<std::streamsize>(size));
    if (stream.bad()) return false;
    // Less than expected when something cuts the file at this very moment.
    size_ = static_cast<std::size_t>(stream.gcount());
    return true;
}

bool OutputFile::open(const std::string& name) {
    name_ = name;
    stream_.open(fs::u8path(name), std::ios::binary | std::ios::trunc);
    return stream_.is_open();
}

void OutputFile::write(std::string_view text) {
    stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
}

bool OutputFile::close() {
    stream_.flush();
    stream_.close();
    // The stream keeps the failure of any step.
    if (stream_.good()) return true;
    removeRegularFile(fs::u8path(name_));
    return false;
}
