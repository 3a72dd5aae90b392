#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "fixtures.h"

/// Tests on a character of production size, from the folder that $DELVEN_DATA_FOLDER names (tests/README.md).
/// They skip themselves where it names none, and fail where the folder lacks the character.
class MakeHuman : public ::testing::Test {
  protected:
    void SetUp() override {
        if (dataFolder().empty()) GTEST_SKIP() << "DELVEN_DATA_FOLDER names no folder";
        ASSERT_TRUE(std::filesystem::exists(path("base.obj"))) << path("base.obj");
    }

    static std::string dataFolder() {
        const char* const folder = std::getenv("DELVEN_DATA_FOLDER");
        return folder != nullptr ? folder : "";
    }

    /// Path of a file of the folder, as scripts take it.
    static std::string path(const std::string& file) {
        const std::filesystem::path folder = std::filesystem::u8path(dataFolder());
        return (folder / "makehuman" / file).lexically_normal().generic_string();
    }

    /// Imports a mesh of the folder as an object of this name.
    void import(const std::string& file, const std::string& name) {
        const Outcome outcome =
            scene_.run("string $new[] = `file -import -type \"OBJ\" -returnNewNodes \"" + path(file) +
                       "\"`; string $mesh[] = `ls -type mesh $new`; string $up[] = `listRelatives -parent "
                       "$mesh[0]`; rename $up[0] " +
                       name);
        ASSERT_TRUE(outcome.ok) << ::testing::PrintToString(outcome.errors);
    }

    Scene scene_;
};
