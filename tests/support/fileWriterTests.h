#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#if defined(__linux__)
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <thread>
#endif

/// What every writer of files promises, to be instantiated with each: a function that writes a text to a
/// file, and says whether it did.
class FileWriter : public testing::TestWithParam<bool (*)(const std::string& path, const std::string& text)> {
  protected:
    FileWriter()
        : folder_(std::filesystem::temp_directory_path() /
                  ("delven-writer-" + std::to_string(std::random_device()()))) {
        std::filesystem::create_directories(folder_);
    }
    ~FileWriter() override {
        std::error_code ignored;
        std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(folder_, ignored);
    }

    bool write(const std::string& name, const std::string& text) const {
        return GetParam()(path(name).string(), text);
    }
    std::filesystem::path path(const std::string& name) const { return folder_ / name; }
    void make(const std::string& name, const std::string& text) const {
        std::ofstream(path(name), std::ios::binary) << text;
    }
    std::string bytes(const std::string& name) const {
        std::ifstream stream(path(name), std::ios::binary);
        EXPECT_TRUE(stream.is_open()) << name;
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    /// How many entries the folder has: nothing may be left beside a file.
    std::ptrdiff_t entryCount() const {
        return std::distance(std::filesystem::directory_iterator(folder_), {});
    }

  private:
    std::filesystem::path folder_;
};

TEST_P(FileWriter, ReplacesAFileAndLeavesNothingBesideIt) {
    make("old", "something longer than the new text");
    for (const std::string& text :
         {std::string("new\0\r\n\xFF", 7), std::string(3 << 20, 'x'), std::string()}) {
        ASSERT_TRUE(write("old", text));
        EXPECT_EQ(bytes("old"), text);
        ASSERT_TRUE(write("fr\xC3\xA4sh", text));
        EXPECT_EQ(bytes("fr\xC3\xA4sh"), text);
    }
    EXPECT_EQ(entryCount(), 2);
}

TEST_P(FileWriter, RefusesNamesThatNoFileCanHave) {
    std::filesystem::create_directories(path("folder"));
    for (const char* name : {"", ".", "folder", "folder/", "missing/file", "missing/"})
        EXPECT_FALSE(write(name, "text")) << name;
    EXPECT_FALSE(GetParam()("", "text"));
    EXPECT_EQ(entryCount(), 1);
}

#if !defined(_WIN32)

TEST_P(FileWriter, ReplacesTheFileBehindALink) {
    std::filesystem::create_directories(path("folder"));
    make("folder/file", "old");
    std::filesystem::create_symlink("file", path("folder/near"));
    std::filesystem::create_symlink("folder/near", path("link"));
    ASSERT_TRUE(write("link", "new"));
    EXPECT_EQ(bytes("folder/file"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(path("folder/near")));

    std::filesystem::create_symlink(path("folder/later"), path("early"));
    ASSERT_TRUE(write("early", "made"));
    EXPECT_EQ(bytes("folder/later"), "made");
    EXPECT_TRUE(std::filesystem::is_symlink(path("early")));

    std::filesystem::create_symlink("ring", path("ring"));
    EXPECT_FALSE(write("ring", "text"));
}

TEST_P(FileWriter, KeepsThePermissions) {
    make("usual", "");
    const std::filesystem::perms usual = std::filesystem::status(path("usual")).permissions();
    for (const unsigned bits : {0600U, 0640U, 0666U, 0755U}) {
        make("old", "old");
        std::filesystem::permissions(path("old"), static_cast<std::filesystem::perms>(bits));
        ASSERT_TRUE(write("old", "new"));
        EXPECT_EQ(static_cast<unsigned>(std::filesystem::status(path("old")).permissions()), bits);
    }
    ASSERT_TRUE(write("fresh", "new"));
    EXPECT_EQ(std::filesystem::status(path("fresh")).permissions(), usual);
}

#endif

#if defined(__linux__)

TEST_P(FileWriter, LeavesTheOldFileWholeWhenTheDiskIsFull) {
    make("old", "old");
    std::filesystem::create_symlink("old", path("link"));
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    std::vector<const char*> written;
    for (const char* name : {"old", "link", "fresh"}) {
        for (const std::size_t size : {5000U, 1000000U}) {
            if (write(name, std::string(size, 'x'))) written.push_back(name);
        }
    }
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_TRUE(written.empty());
    EXPECT_EQ(bytes("old"), "old");
    EXPECT_EQ(entryCount(), 2);
}

TEST_P(FileWriter, WritesDevicesInPlace) {
    EXPECT_FALSE(GetParam()("/dev/full", "x"));
    EXPECT_FALSE(GetParam()("/dev/full", std::string(1 << 20, 'x')));
    EXPECT_TRUE(GetParam()("/dev/null", std::string(1 << 20, 'x')));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));

    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = bytes("pipe"); });
    EXPECT_TRUE(write("pipe", "through"));
    reader.join();
    EXPECT_EQ(read, "through");
    EXPECT_TRUE(std::filesystem::is_fifo(path("pipe")));
}

/// Runs in a child of the test program as a user who is not root, since root may do everything.
class FileWriterWithoutRights : public FileWriter {
  protected:
    template <typename Work>
    void runWithoutRights(Work work) {
        EXPECT_EXIT(
            {
                constexpr unsigned kNobody = 65534;
                if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(3);
                _exit(work() ? 0 : 1);
            },
            testing::ExitedWithCode(0), "");
    }
    void close(const std::string& name, unsigned permissions) {
        std::filesystem::permissions(path(name), static_cast<std::filesystem::perms>(permissions));
    }
};

TEST_P(FileWriterWithoutRights, RefuseAFileThatMayNotBeWritten) {
    make("old", "old");
    close("old", 0444);
    close(".", 0777);
    runWithoutRights([&] { return !write("old", "new") && write("fresh", "new"); });
    EXPECT_EQ(bytes("old"), "old");
    EXPECT_EQ(entryCount(), 2);
}

TEST_P(FileWriterWithoutRights, WriteInPlaceWhereTheFolderTakesNoFiles) {
    make("old", "something longer than the new text");
    close("old", 0666);
    close(".", 0555);
    runWithoutRights([&] { return write("old", "new") && !write("fresh", "new"); });
    EXPECT_EQ(bytes("old"), "new");
    EXPECT_EQ(entryCount(), 1);
}

TEST_P(FileWriterWithoutRights, WriteInPlaceWhatMayNotBeReplaced) {
    if (geteuid() != 0) GTEST_SKIP() << "needs root, to have a file of another user";
    make("old", "something longer than the new text");
    close("old", 0666);
    // As in /tmp, only its owner may replace a file.
    close(".", 01777);
    runWithoutRights([&] { return write("old", "new"); });
    EXPECT_EQ(bytes("old"), "new");
    EXPECT_EQ(entryCount(), 1);
}

#endif
