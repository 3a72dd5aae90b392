#include "scratchFiles.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "support/scratchFolder.h"

std::string scratchFile(const std::string& name) {
    static const ScratchFolder folder;
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
