#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

/// A file in the folder for temporary files, gone at the end.
class BenchFile {
  public:
    explicit BenchFile(const std::string& suffix = ".json")
        : path_(std::filesystem::temp_directory_path() /
                ("delvenbench" + std::to_string(std::random_device()()) + suffix)) {}
    ~BenchFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    BenchFile(const BenchFile&) = delete;
    BenchFile& operator=(const BenchFile&) = delete;
    const std::filesystem::path& path() const { return path_; }
    std::string argument() const { return " -fn \"" + path_.generic_string() + "\" "; }

    int size = 0;  // of the mesh whose data it holds

  private:
    std::filesystem::path path_;
};
