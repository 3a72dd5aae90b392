// The commands on files and folders of any kind, in a folder of their own.
#include <filesystem>
#include <tuple>

#include "geometry/textFile.h"
#include "host/commandsFixture.h"
#include "support/scratchFolder.h"

namespace commandstest {
namespace {

class TextFileHost : public Host {
  public:
    std::string path(const std::string& name) const { return (folder_.path() / name).generic_string(); }
    std::string quoted(const std::string& name) const { return '"' + path(name) + '"'; }
    void write(const std::string& name, const std::string& text) const {
        EXPECT_EQ(geometry::writeTextFile(path(name), text), "");
    }
    std::string content(const std::string& name) const { return geometry::readTextFile(path(name)).text; }

  private:
    ScratchFolder folder_;
};

TEST(TextFileCommands, AFolderIsListedByNameAndPattern) {
    TextFileHost host;
    for (const char* name : {"b.ma", "a b.ma", "c.mb", "B.ma"})
        host.write(name, "");
    host.ok("sysFile -makeDir " + host.quoted("d.ma"));
    EXPECT_EQ(host.ok("getFileList -folder " + host.quoted("") + " -filespec \"*.ma\""),
              "B.ma a b.ma b.ma d.ma");
    EXPECT_EQ(host.ok("getFileList -folder " + host.quoted("") + " -filespec \"?.mb\""), "c.mb");
    EXPECT_EQ(host.ok("size(`getFileList -folder " + host.quoted("") + "`)"), "5");
#if !defined(_WIN32)
    host.write("a:b.md", "");
    EXPECT_EQ(host.ok("getFileList -folder " + host.quoted("") + " -filespec \"*.md\""), "a:b.md");
#endif
    EXPECT_EQ(host.ok("size(`getFileList -folder " + host.quoted("gone") + "`)"), "0");
    EXPECT_EQ(host.ok("size(`getFileList -folder " + host.quoted("b.ma") + "`)"), "0");
}

TEST(TextFileCommands, FilesAndFoldersAreToldApart) {
    TextFileHost host;
    host.write("file", "");
    for (const auto& [name, isFile, isFolder] :
         std::vector<std::tuple<std::string, std::string, std::string>>{
             {"file", "1", "0"}, {"", "0", "1"}, {"gone", "0", "0"}, {"file/below", "0", "0"}}) {
        EXPECT_EQ(host.ok("filetest -f " + host.quoted(name)), isFile) << name;
        EXPECT_EQ(host.ok("filetest -d " + host.quoted(name)), isFolder) << name;
    }
    EXPECT_EQ(host.fails("filetest " + host.quoted("file")), "filetest: Exactly one test is needed.");
    EXPECT_EQ(host.fails("filetest -w " + host.quoted("file")), "Flag '-w' is not covered by this host.");
}

TEST(TextFileCommands, FoldersAreMadeWithThoseAboveThemAndOnlyFilesAreDeleted) {
    TextFileHost host;
    EXPECT_EQ(host.ok("sysFile -makeDir " + host.quoted("a/b/c/")), "1");
    EXPECT_EQ(host.ok("sysFile -makeDir " + host.quoted("a/b/c")), "1") << "it is there";
    EXPECT_TRUE(std::filesystem::is_directory(host.path("a/b/c")));
    host.write("a/file", "");
    EXPECT_EQ(host.ok("sysFile -makeDir " + host.quoted("a/file")), "0");
    EXPECT_EQ(host.ok("sysFile -makeDir " + host.quoted("a/file/below")), "0");
    EXPECT_EQ(host.ok("sysFile -delete " + host.quoted("a/b/c")), "0");
    EXPECT_TRUE(std::filesystem::is_directory(host.path("a/b/c")));
    EXPECT_EQ(host.ok("sysFile -delete " + host.quoted("a/file")), "1");
    EXPECT_EQ(host.ok("sysFile -delete " + host.quoted("a/file")), "0");
    EXPECT_FALSE(std::filesystem::exists(host.path("a/file")));
}

TEST(TextFileCommands, WhatIsPrintedIsReadLineByLine) {
    TextFileHost host;
    host.ok("int $f = `fopen " + host.quoted("text") +
            " \"w\"`; fprint $f \"-help\\n\\n\"; fprint($f, \"a\" + 1); "
            "fclose $f;");
    EXPECT_EQ(host.content("text"), "-help\n\na1");
    host.ok("$f = fopen(" + host.quoted("text") + ", \"a\"); fprint $f \"\\nlast\"; fclose $f;");
    host.ok("$f = `fopen " + host.quoted("text") + " \"r\"`; string $lines[];");
    host.ok("for ($i = 0; $i < 6; $i++) $lines[$i] = `fgetline $f`; fclose $f;");
    EXPECT_EQ(host.run("$lines").value.toStringArray(),
              (std::vector<std::string>{"-help\n", "\n", "a1\n", "last", "", ""}));
    host.ok("$f = `fopen " + host.quoted("text") + "`; fclose $f;");
    EXPECT_EQ(host.content("text"), "") << "without a mode a file is written";
}

TEST(TextFileCommands, SeveralFilesAreOpenAtOnce) {
    TextFileHost host;
    host.ok("int $a = `fopen " + host.quoted("a") + " \"w\"`; int $b = `fopen " + host.quoted("b") +
            " \"w\"`;");
    host.ok("fprint $a \"to a\"; fprint $b \"to b\"; fclose $a;");
    EXPECT_EQ(host.fails("fprint $a \"more\""), "fprint: There is no open file of this number.");
    EXPECT_EQ(host.fails("fclose $a"), "fclose: There is no open file of this number.");
    EXPECT_EQ(host.fails("fgetline 99"), "fgetline: There is no open file of this number.");
    host.ok("fprint $b \", and more\"; fclose $b;");
    EXPECT_EQ(host.content("a") + '|' + host.content("b"), "to a|to b, and more");
}

TEST(TextFileCommands, AFileThatCannotBeOpenedHasTheNumberZero) {
    TextFileHost host;
    for (const char* call : {"\"r\"", "\"w\"", "\"a\""}) {
        EXPECT_EQ(host.ok("fopen " + host.quoted("gone/file") + ' ' + call), "0") << call;
        EXPECT_EQ(host.ok("fopen " + host.quoted("") + ' ' + call), "0") << call;
    }
    EXPECT_EQ(host.fails("fopen " + host.quoted("x") + " \"r+\""),
              "fopen: The mode 'r+' is not covered by this host.");
    EXPECT_FALSE(std::filesystem::exists(host.path("x")));
}

#if defined(__linux__)
TEST(TextFileCommands, AFullDiskIsReported) {
    TextFileHost host;
    host.ok("int $f = `fopen \"/dev/full\" \"w\"`; fprint $f \"lost\";");
    EXPECT_EQ(host.fails("fclose $f"), "fclose: /dev/full could not be written.");
}
#endif

}  // namespace
}  // namespace commandstest
