// What the variants of the host are run with: every one of them has its entry in ctest, and the demo, which
// the program runs with the host as it is, comes out right under each.

#include <gtest/gtest.h>

#include <sstream>

#include "support/scene.h"
#include "support/variants.h"

namespace {

TEST(HostVariants, AreAllRegistered) {
    std::istringstream registered(DELVEN_REGISTERED_VARIANTS);
    std::vector<std::string> names;
    for (std::string name; std::getline(registered, name, ',');)
        names.push_back(name);
    EXPECT_EQ(names, variantNames());
}

TEST(HostVariants, TheDemoComesOutRight) {
    Scene scene;
    const Outcome outcome = scene.run("source \"" DELVEN_SOURCE_DIR "/examples/demo.mel\"");
    EXPECT_TRUE(outcome.ok);
    EXPECT_EQ(outcome.errors, std::vector<std::string>());
}

}  // namespace
