#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "fixtures.h"

/// Tests on a character of production size: they skip themselves where its folder is not at hand.
class MakeHuman : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!std::filesystem::exists(path("base.obj"))) GTEST_SKIP() << "needs " << path("base.obj");
    }

    /// Path of a file of the folder, as scripts take it.
    static std::string path(const std::string& file) {
        const std::filesystem::path folder =
            std::filesystem::path(DELVEN_SOURCE_DIR) / "../shared/data/makehuman";
        return (folder / file).lexically_normal().generic_string();
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
