#include "geometry/textFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace host::geometry {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, CloseFile>;

std::string cannot(const char* what, const std::string& path, int code) {
    return std::string("cannot ") + what + " '" + path + "': " + std::strerror(code);
}

}  // namespace

FileText readTextFile(const std::string& path) {
    FilePtr file(std::fopen(path.c_str(), "rb"));
    if (!file) return {{}, cannot("open", path, errno)};
    FileText result;
    constexpr std::size_t kBlock = std::size_t{1} << 20;
    for (;;) {
        const std::size_t before = result.text.size();
        result.text.resize(before + kBlock);
        // A directory opens on some systems; reading it is what fails.
        const std::size_t count = std::fread(result.text.data() + before, 1, kBlock, file.get());
        result.text.resize(before + count);
        if (count == kBlock) continue;
        if (std::ferror(file.get()) != 0) return {{}, cannot("read", path, errno)};
        return result;
    }
}

std::string writeTextFile(const std::string& path, std::string_view text) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return cannot("open", path, errno);
    // A full disk may show only when the buffers are emptied, so the close counts as well.
    const bool written =
        std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
    int code = written ? 0 : errno;
    if (std::fclose(file) != 0 && code == 0) code = errno;
    return code == 0 ? std::string() : cannot("write", path, code);
}

}  // namespace host::geometry
