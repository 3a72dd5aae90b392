#include "geometry/textFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <system_error>

namespace host::geometry {

namespace {

namespace fs = std::filesystem;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, CloseFile>;

std::string cannot(const char* what, const std::string& path, int code) {
    return std::string("cannot ") + what + " '" + path + "': " + std::strerror(code);
}

/// The system's error code for a stream that has just failed.
int lastFailure() {
    return errno != 0 ? errno : EIO;
}

void writeNothing(std::ostream&) {}

/// Writes a file from its beginning.
/// @return 0, or the failure
int put(const fs::path& file, const FileContent& write) {
    errno = 0;
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    if (!stream) return lastFailure();
    write(stream);
    // A full disk may show only when the buffers are flushed, so a failure to close counts too.
    stream.close();
    return stream ? 0 : lastFailure();
}

/// Whether a file may be written. The file does not change.
/// @return 0, or the failure
int tryWriting(const fs::path& file) {
    errno = 0;
    const std::ofstream stream(file, std::ios::binary | std::ios::app);
    return stream ? 0 : lastFailure();
}

/// The file that a link finally leads to, existing or not; for any other file, the file itself. Nothing if
/// links form a ring.
fs::path behindLinks(fs::path file) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int k = 0; k < kMostLinks; ++k) {
        if (!fs::is_symlink(fs::symlink_status(file, error))) return file;
        const fs::path next = fs::read_symlink(file, error);
        // An absolute path stays as it is.
        file = file.parent_path() / next;
    }
    return {};
}

/// An unused name in the folder of a file.
fs::path nameBeside(const fs::path& file) {
    std::random_device random;
    const std::string number = std::to_string(random()) + '-' + std::to_string(random());
    return fs::path(file).replace_filename(".delven-" + number + ".tmp");
}

/// Whether something can never be done here. Any other failure, such as a full disk, would also hit what is
/// done instead.
bool isImpossible(const std::error_code& error) {
    constexpr std::errc kNever[] = {std::errc::permission_denied,       std::errc::operation_not_permitted,
                                    std::errc::read_only_file_system,   std::errc::device_or_resource_busy,
                                    std::errc::operation_not_supported, std::errc::function_not_supported};
    return std::any_of(std::begin(kNever), std::end(kNever), [&](std::errc never) { return error == never; });
}

/// The error code of this system's C library.
int codeOf(const std::error_code& error) {
    return error.default_error_condition().value();
}

/// Puts a new file in place of the existing one, if any. On failure nothing is left of the new one.
/// @return 0, or the failure
int replace(const fs::path& file, const fs::file_status& status, const FileContent& write,
            const FileStep& settle) {
    const fs::path beside = nameBeside(file);
    const auto make = [&]() -> std::error_code {
        if (const int code = put(beside, writeNothing)) return {code, std::generic_category()};
        std::error_code error;
        // Before the text is written: perhaps only few users may read the old file.
        if (fs::exists(status)) fs::permissions(beside, status.permissions(), error);
        return error;
    };
    const auto fill = [&] {
        const int code = put(beside, write);
        return code == 0 && settle ? settle(beside.u8string()) : code;
    };
    std::error_code error = make();
    const int code = error ? 0 : fill();
    if (!error && code == 0) fs::rename(beside, file, error);
    if (!error && code == 0) return 0;
    std::error_code ignored;
    fs::remove(beside, ignored);
    // Some folders take no new file, and some files may be written but not replaced, for example one of
    // another user in a shared folder.
    if (fs::exists(status) && isImpossible(error)) return put(file, write);
    return error ? codeOf(error) : code;
}

int writeAt(const fs::path& asked, const FileContent& write, const FileStep& settle) {
    std::error_code error;
    const fs::file_status status = fs::status(asked, error);
    const fs::path file = behindLinks(asked);
    if (!fs::exists(status))
        return file.has_filename() ? replace(file, status, write, settle) : put(asked, write);
    // Some links of the system lead to something without a path.
    if (!fs::is_regular_file(status) || !fs::equivalent(file, asked, error)) return put(asked, write);
    const int code = tryWriting(file);
    return code == 0 ? replace(file, status, write, settle) : code;
}

}  // namespace

FileText readTextFile(const std::string& path) {
    FilePtr file(std::fopen(path.c_str(), "rb"));
    if (!file) return {{}, cannot("open", path, errno)};
    FileText result;
    std::string& text = result.text;
    // Room for the whole file at once, so that nothing read is copied, and for a byte more: the end shows
    // only beyond the last byte. What the system says is a hint. Devices have no size, and files may grow.
    std::error_code ignored;
    const std::uintmax_t size = fs::file_size(fs::u8path(path), ignored);
    if (!ignored && size < text.max_size()) text.reserve(static_cast<std::size_t>(size) + 1);
    // Small enough to be still in the cache when the bytes arrive.
    constexpr std::size_t kBlock = std::size_t{1} << 18;
    for (;;) {
        const std::size_t before = text.size();
        const std::size_t room = text.capacity() - before;
        const std::size_t wanted = room > 0 ? std::min(room, kBlock) : kBlock;
        text.resize(before + wanted);
        // Some systems can open a directory. Reading it then fails.
        const std::size_t count = std::fread(text.data() + before, 1, wanted, file.get());
        text.resize(before + count);
        if (count == wanted) continue;
        if (std::ferror(file.get()) != 0) return {{}, cannot("read", path, errno)};
        return result;
    }
}

std::string writeTextFile(const std::string& path, std::string_view text) {
    return writeFile(path, [text](std::ostream& stream) {
        stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    });
}

std::string writeFile(const std::string& path, const FileContent& write, const FileStep& settle) {
    const int code = writeAt(fs::u8path(path), write, settle);
    return code == 0 ? std::string() : cannot("write", path, code);
}

}  // namespace host::geometry
