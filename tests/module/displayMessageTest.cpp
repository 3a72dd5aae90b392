#include <gtest/gtest.h>

#include <ostream>

#include "support/scene.h"

namespace {

using Strings = std::vector<std::string>;

struct Message {
    const char* name;
    const char* flags;
    Strings infos;
    Strings warnings;
    Strings errors;
};

void PrintTo(const Message& message, std::ostream* out) {
    *out << message.name;
}

class DisplayMessage : public ::testing::TestWithParam<Message> {};

TEST_P(DisplayMessage, ShowsOneText) {
    Scene scene;
    const Outcome outcome = scene.run(std::string("dv_displayMessage ") + GetParam().flags);
    EXPECT_EQ(outcome.infos, GetParam().infos);
    EXPECT_EQ(outcome.warnings, GetParam().warnings);
    EXPECT_EQ(outcome.errors, GetParam().errors);
    EXPECT_EQ(outcome.ok, GetParam().errors.empty());
    EXPECT_TRUE(outcome.value.isNone());
}

INSTANTIATE_TEST_SUITE_P(Kinds, DisplayMessage,
                         ::testing::Values(Message{"Info", "-info \"all is well\"", {"all is well"}, {}, {}},
                                           Message{"Warning", "-warning careful", {}, {"careful"}, {}},
                                           Message{"Error", "-error broken", {}, {}, {"broken"}},
                                           Message{"InfoAndError", "-i a -e c", {"c"}, {}, {}},
                                           Message{"InfoAndWarning", "-w b -i a", {"b"}, {}, {}},
                                           Message{"WarningAndError", "-w b -e c", {}, {}, {"c"}},
                                           Message{"All", "-e c -w b -i a", {"c"}, {}, {}},
                                           Message{"None", "", {}, {}, {}}),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(DisplayMessageInAScript, OnlyTheErrorStopsIt) {
    Scene scene;
    EXPECT_EQ(scene.run("dv_displayMessage -i a; dv_displayMessage -w b; print \"on\"").printed, "on");
    EXPECT_EQ(scene.run("dv_displayMessage -e c; print \"on\"").printed, "");
}

}  // namespace
