#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "geometry/textFile.h"
#include "support/scratchFolder.h"
#if !defined(_WIN32)
#include <sys/wait.h>
#endif

namespace batchTest {

using host::geometry::readTextFile;

struct Outcome {
    int status = -1;
    std::string output;    // standard output
    std::string messages;  // standard error
};

inline std::string quoted(const std::string& word) {
#if defined(_WIN32)
    const char quote = '"';
#else
    const char quote = '\'';
#endif
    return quote + word + quote;
}

/// Runs the program in a folder of its own.
class Batch : public testing::Test {
  protected:
    std::string path(const std::string& name) const { return (folder_.path() / name).generic_string(); }
    std::string written(const std::string& name, const std::string& text) const {
        EXPECT_EQ(host::geometry::writeTextFile(path(name), text), "");
        return path(name);
    }

    /// @param output  where standard output goes, as the shell takes it; a file when it is empty
    Outcome runWithPlugin(const std::vector<std::string>& words, const std::string& input = {},
                          const std::string& output = {}) const {
        std::string command = quoted(DELVEN_BINARY_DIR "/delvenbatch");
        for (const std::string& word : words)
            command += ' ' + quoted(word);
        // A run that writes elsewhere must not seem to have written what an earlier one did.
        const std::string out = written("out", {});
        command += " <" + quoted(written("in", input)) + (output.empty() ? " >" + quoted(out) : output) +
                   " 2>" + quoted(path("err"));
        int status = std::system(command.c_str());
#if !defined(_WIN32)
        status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
        return {status, readTextFile(path("out")).text, readTextFile(path("err")).text};
    }
    Outcome run(std::vector<std::string> words, const std::string& input = {},
                const std::string& output = {}) const {
        words.emplace_back("-noAutoloadPlugins");
        return runWithPlugin(words, input, output);
    }
    Outcome prompt(const std::string& input) const {
        return run({"-prompt"}, input);
    }

  private:
    ScratchFolder folder_;
};

}  // namespace batchTest
