#include "dataFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "scratchFiles.h"

#if defined(__linux__)
#include <sys/resource.h>

#include <csignal>
#endif

namespace {

bool write(const std::string& path, const std::string& text) {
    OutputFile file;
    if (!file.open(path)) return false;
    file.write(text.substr(0, text.size() / 3));
    file.write(text.substr(text.size() / 3));
    return file.close();
}

TEST(DataFile, KeepsEveryByte) {
    const std::string path = scratchFile("d\xC3\xA4ta file.json");
    FileContent content;
    for (const std::string& text :
         {std::string("one\r\ntwo\n\0\x1A\xFF three", 19), std::string(3 << 20, 'x'), std::string()}) {
        ASSERT_TRUE(write(path, text));
        EXPECT_EQ(fileBytes(path), text);
        ASSERT_TRUE(content.read(path));
        EXPECT_EQ(content.text(), text);
    }
}

TEST(DataFile, RefusesWhatIsNoFile) {
    FileContent content;
    ASSERT_TRUE(content.read(writeScratchFile("full", "something")));
    for (const std::string& path :
         {std::string(), scratchFile("missing"), scratchFile("."), scratchFile("missing/file")}) {
        EXPECT_FALSE(content.read(path)) << path;
        EXPECT_EQ(content.text(), "") << path;
    }
    for (const std::string& path : {std::string(), scratchFile("."), scratchFile("missing/file")})
        EXPECT_FALSE(write(path, "text")) << path;
}

TEST(DataFile, SaysThatTheDiskIsFull) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "needs /dev/full";
    EXPECT_FALSE(write("/dev/full", "x"));
    EXPECT_FALSE(write("/dev/full", std::string(1 << 20, 'x')));
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
    FileContent content;
    EXPECT_FALSE(content.read("/dev/full")) << "a device has no end";
}

#if defined(__linux__)

TEST(DataFile, LeavesNoHalfFile) {
    const std::string path = scratchFile("half");
    const std::string link = scratchFile("link");
    std::filesystem::create_symlink(path, link);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool isWritten = write(link, std::string(10000, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(isWritten);
    EXPECT_FALSE(std::filesystem::exists(path));
}

#endif

}  // namespace
