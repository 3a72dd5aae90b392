#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

/// A file in the folder for temporary files, gone at the end.
class BenchFile {
  public:
    BenchFile()
        : path_(std::filesystem::temp_directory_path() /
                ("delvenbench" + std::to_string(std::random_device()()) + ".json")) {}
    ~BenchFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    const std::filesystem::path& path() const { return path_; }
    std::string argument() const { return " -fn \"" + path_.generic_string() + "\" "; }

    int size = 0;  // of the mesh whose data it holds

  private:
    std::filesystem::path path_;
};
