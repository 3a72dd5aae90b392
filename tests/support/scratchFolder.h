#pragma once

#include <filesystem>
#include <random>
#include <string>

/// An empty folder of its own, gone with the object: other test programs run at the same time.
class ScratchFolder {
  public:
    ScratchFolder()
        : path_(std::filesystem::temp_directory_path() /
                ("delven-test-" + std::to_string(std::random_device{}()))) {
        std::filesystem::create_directories(path_);
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};
