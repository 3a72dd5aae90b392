#include "scratchFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

namespace fs = std::filesystem;

class Folder {
  public:
    Folder() : path_(fs::temp_directory_path() / ("delven-test-" + std::to_string(std::random_device()()))) {
        fs::create_directories(path_);
    }
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

}  // namespace

std::string scratchFile(const std::string& name) {
    static const Folder folder;
    return (folder.path() / name).generic_string();
}

std::string writeScratchFile(const std::string& name, const std::string& content) {
    const std::string path = scratchFile(name);
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string fileBytes(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream.is_open()) << path;
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}
