#include "files/dataFile.h"

#include <cerrno>
#include <cstdint>
#include <ios>
#include <new>
#include <random>
#include <system_error>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// The file at the end of a chain of links, existing or not. A file that is no link is returned unchanged.
/// Empty if the links form a ring.
fs::path behindLinks(fs::path file) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int k = 0; k < kMostLinks; ++k) {
        if (!fs::is_symlink(fs::symlink_status(file, error))) return file;
        const fs::path next = fs::read_symlink(file, error);
        // If `next` is absolute, the result is `next`.
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

/// Whether a failure to make a file means that its folder allows no new files. Any other failure, such as a
/// full disk, would also happen when writing the file in place, and its content would be lost.
bool isFolderClosed(int code) {
    return code == EACCES || code == EPERM || code == EROFS;
}

/// @return whether the whole content was copied
bool copyContent(const fs::path& from, const fs::path& to) {
    std::ifstream source(from, std::ios::binary);
    std::ofstream target(to, std::ios::binary | std::ios::trunc);
    std::vector<char> block(std::size_t{1} << 20);
    while (source.good() && target.good()) {
        source.read(block.data(), static_cast<std::streamsize>(block.size()));
        target.write(block.data(), source.gcount());
    }
    target.close();
    return source.eof() && !source.bad() && target.good();
}

}  // namespace

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
    // Less than expected if another program shortens the file at this moment.
    size_ = static_cast<std::size_t>(stream.gcount());
    return true;
}

OutputFile::~OutputFile() {
    drop();
}

bool OutputFile::open(const std::string& name) {
    const fs::path asked = fs::u8path(name);
    file_ = behindLinks(asked);
    if (!file_.has_filename()) return false;
    std::error_code error;
    const fs::file_status status = fs::status(asked, error);
    if (!fs::exists(status)) return openBeside() == 0;
    // Opening for appending checks the right to write and changes nothing.
    stream_.open(asked, std::ios::binary | std::ios::app);
    if (!stream_) return false;
    // Some system links lead to something that has no path.
    if (!fs::is_regular_file(status) || !fs::equivalent(file_, asked, error)) {
        file_ = asked;
        return true;
    }
    std::ofstream inPlace;
    inPlace.swap(stream_);
    const int failure = openBeside();
    if (failure != 0 && !isFolderClosed(failure)) return false;
    if (failure == 0) {
        fs::permissions(beside_, status.permissions(), error);
        if (!error) return true;
        drop();
    }
    stream_ = std::move(inPlace);
    return true;
}

/// Begins the temporary file.
/// @return 0, or the system's error code
int OutputFile::openBeside() {
    const fs::path name = nameBeside(file_);
    errno = 0;
    stream_.open(name, std::ios::binary | std::ios::trunc);
    if (!stream_) return errno != 0 ? errno : EIO;
    beside_ = name;
    return 0;
}

/// Deletes the temporary file.
void OutputFile::drop() {
    if (beside_.empty()) return;
    stream_.close();
    std::error_code ignored;
    fs::remove(beside_, ignored);
    beside_.clear();
}

/// Empties a file that is written in place, once. A device is not emptied.
void OutputFile::empty() {
    if (isEmptied_ || !beside_.empty()) return;
    isEmptied_ = true;
    std::error_code error;
    if (!fs::is_regular_file(file_, error)) return;
    fs::resize_file(file_, 0, error);
    if (error) stream_.setstate(std::ios::badbit);
}

void OutputFile::write(std::string_view text) {
    empty();
    stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
}

bool OutputFile::close() {
    empty();
    stream_.flush();
    stream_.close();
    // The stream remembers a failure of any step.
    return stream_.good() && (beside_.empty() || replace());
}

/// Puts the new file in place of the old one.
bool OutputFile::replace() {
    std::error_code error;
    fs::rename(beside_, file_, error);
    if (!error) {
        beside_.clear();
        return true;
    }
    // For example a file of another user in a shared folder: it can be written, but not replaced.
    if (copyContent(beside_, file_)) return true;
    // The content of the old file may be lost, so the temporary file is kept: it is the only whole copy.
    beside_.clear();
    return false;
}
