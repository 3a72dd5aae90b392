#include "files/dataFile.h"

#include <gtest/gtest.h>

#include "scratchFiles.h"
#include "support/fileWriterTests.h"

namespace {

bool writeInTwoPieces(const std::string& path, const std::string& text) {
    OutputFile file;
    if (!file.open(path)) return false;
    file.write(text.substr(0, text.size() / 3));
    file.write(text.substr(text.size() / 3));
    return file.close();
}

INSTANTIATE_TEST_SUITE_P(DataFile, FileWriter, testing::Values(&writeInTwoPieces));
#if defined(__linux__)
INSTANTIATE_TEST_SUITE_P(DataFile, FileWriterWithoutRights, testing::Values(&writeInTwoPieces));
#endif

TEST(DataFile, GivesBackEveryByte) {
    FileContent content;
    for (const std::string& text :
         {std::string("one\r\ntwo\n\0\x1A\xFF three", 19), std::string(3 << 20, 'x'), std::string()}) {
        ASSERT_TRUE(content.read(writeScratchFile("d\xC3\xA4ta file.json", text)));
        EXPECT_EQ(content.text(), text);
    }
}

TEST(DataFile, ReadsNothingButFiles) {
    FileContent content;
    ASSERT_TRUE(content.read(writeScratchFile("full", "something")));
    // The device has no end.
    for (const std::string& path : {std::string(), scratchFile("missing"), scratchFile("."),
                                    scratchFile("missing/file"), std::string("/dev/full")}) {
        EXPECT_FALSE(content.read(path)) << path;
        EXPECT_EQ(content.text(), "") << path;
    }
}

TEST(DataFile, StaysAsItWasUntilItIsComplete) {
    const std::string path = writeScratchFile("old.json", "old");
    const std::string fresh = scratchFile("fresh.json");
    for (const std::string& name : {path, fresh, std::string("/dev/null")}) {
        OutputFile file;
        ASSERT_TRUE(file.open(name));
        file.write(std::string(1 << 20, 'x'));
    }
    EXPECT_EQ(fileBytes(path), "old");
    EXPECT_FALSE(std::filesystem::exists(fresh));
    for (const auto& entry : std::filesystem::directory_iterator(scratchFile(".")))
        EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
}

}  // namespace
