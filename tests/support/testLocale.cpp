// In every test program: with $DELVEN_TEST_LOCALE set, all of its tests run in that locale, for C and for
// C++.

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>

namespace {

class TestLocale final : public ::testing::Environment {
  public:
    explicit TestLocale(const char* name) : name_(name) {}

    void SetUp() override {
        ASSERT_NE(std::setlocale(LC_ALL, name_), nullptr) << name_ << " is not installed";
        std::locale::global(std::locale(name_));
        char text[8];
        std::snprintf(text, sizeof text, "%.1f", 0.5);
        ASSERT_STREQ(text, "0,5") << name_ << " has no decimal comma and would show nothing";
    }

  private:
    const char* name_;
};

/// Before main, because the program's main is that of GoogleTest.
[[maybe_unused]] const bool isSet = [] {
    const char* const name = std::getenv("DELVEN_TEST_LOCALE");
    if (name != nullptr) ::testing::AddGlobalTestEnvironment(new TestLocale(name));
    return name != nullptr;
}();

}  // namespace
