#include <gtest/gtest.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "api/values/statusMaker.h"

namespace {

using host::api::Explanation;
using host::api::StatusMaker;

struct CodeName {
    MStatus::MStatusCode code;
    int number;
    const char* name;
};

class MStatusCodes : public testing::TestWithParam<CodeName> {};

TEST_P(MStatusCodes, haveTheirNumberNameAndTruth) {
    const auto [code, number, name] = GetParam();
    const MStatus status(code);
    EXPECT_EQ(static_cast<int>(status.statusCode()), number);
    EXPECT_EQ(static_cast<bool>(status), number == 0);
    EXPECT_EQ(status.error(), number != 0);
    EXPECT_TRUE(status == code);
    EXPECT_TRUE(code == status);
    EXPECT_FALSE(status != code);
    EXPECT_FALSE(code != status);
    const std::string text = status.errorString().asChar();
    const std::string prefix = "(" + std::string(name) + "): ";
    EXPECT_EQ(text.substr(0, prefix.size()), prefix);
    EXPECT_GT(text.size(), prefix.size()) << "there must be an explanation";
}

INSTANTIATE_TEST_SUITE_P(All, MStatusCodes,
                         testing::Values(CodeName{MS::kSuccess, 0, "kSuccess"},
                                         CodeName{MS::kFailure, 1, "kFailure"},
                                         CodeName{MS::kInsufficientMemory, 2, "kInsufficientMemory"},
                                         CodeName{MS::kInvalidParameter, 3, "kInvalidParameter"},
                                         CodeName{MS::kLicenseFailure, 4, "kLicenseFailure"},
                                         CodeName{MS::kUnknownParameter, 5, "kUnknownParameter"},
                                         CodeName{MS::kNotImplemented, 6, "kNotImplemented"},
                                         CodeName{MS::kNotFound, 7, "kNotFound"},
                                         CodeName{MS::kEndOfFile, 8, "kEndOfFile"}));

struct Explained {
    MStatus::MStatusCode code;
    Explanation explanation;
    const char* text;
};

class MStatusTexts : public testing::TestWithParam<Explained> {};

TEST_P(MStatusTexts, namesCodeAndExplanation) {
    const auto [code, explanation, text] = GetParam();
    MStatus status = StatusMaker::make(code, explanation);
    EXPECT_STREQ(status.errorString().asChar(), text);
    std::ostringstream out;
    out << status;
    EXPECT_EQ(out.str(), text);
    EXPECT_TRUE(status == MStatus(code)) << "the explanation is no part of what is compared";
}

INSTANTIATE_TEST_SUITE_P(
    All, MStatusTexts,
    testing::Values(
        Explained{MS::kInvalidParameter, Explanation::ObjectDoesNotExist,
                  "(kInvalidParameter): Object does not exist"},
        Explained{MS::kInvalidParameter, Explanation::NoElementAtIndex,
                  "(kInvalidParameter): No element at given index"},
        Explained{MS::kInvalidParameter, Explanation::IncompatibleObject,
                  "(kInvalidParameter): Object is incompatible with this method"},
        Explained{MS::kFailure, Explanation::ObjectDoesNotExist, "(kFailure): Object does not exist"},
        Explained{MS::kFailure, Explanation::InternalFailure, "(kFailure): Unexpected Internal Failure"},
        Explained{MS::kFailure, Explanation::OfCode, "(kFailure): Unexpected Internal Failure"}));

TEST(MStatus, isSuccessUnlessToldOtherwise) {
    MStatus status;
    EXPECT_TRUE(status);
    status = MS::kNotFound;
    EXPECT_FALSE(status);
    status = StatusMaker::make(MS::kFailure, Explanation::ObjectDoesNotExist);
    status.clear();
    EXPECT_TRUE(status);
    EXPECT_STREQ(status.errorString().asChar(), MStatus().errorString().asChar());
}

TEST(MStatus, losesItsExplanationWithANewCode) {
    MStatus status = StatusMaker::make(MS::kInvalidParameter, Explanation::ObjectDoesNotExist);
    status = MS::kFailure;
    EXPECT_STREQ(status.errorString().asChar(), "(kFailure): Unexpected Internal Failure");
}

TEST(MStatus, reportFillsInOnlyWhatIsThere) {
    MStatus destination;
    EXPECT_EQ(host::api::report(&destination, MS::kNotFound), MS::kNotFound);
    EXPECT_EQ(destination, MS::kNotFound);
    EXPECT_EQ(host::api::report(nullptr, MS::kEndOfFile), MS::kEndOfFile);
}

TEST(MStatus, writesReportsToTheErrorStream) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    const MStatus status = StatusMaker::make(MS::kInvalidParameter, Explanation::ObjectDoesNotExist);
    status.perror("findPlug");
    status.perror(MString("again"));
    status.pAPIerror("common", 342);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    std::istringstream lines(testing::internal::GetCapturedStderr());
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(line, "findPlug: (kInvalidParameter): Object does not exist");
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(line, "again: (kInvalidParameter): Object does not exist");
    ASSERT_TRUE(std::getline(lines, line));
    for (const char* part : {"common", "342", "(kInvalidParameter): Object does not exist"}) {
        EXPECT_NE(line.find(part), std::string::npos) << part << " is missing in " << line;
    }
    EXPECT_FALSE(std::getline(lines, line));
}

TEST(MStatus, keepsTheLinesOfSeveralThreadsApart) {
    constexpr int kThreads = 4;
    constexpr int kLines = 50;
    testing::internal::CaptureStderr();
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([] {
            for (int line = 0; line < kLines; ++line) {
                MStatus(MS::kFailure).perror("worker");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::istringstream lines(testing::internal::GetCapturedStderr());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        EXPECT_EQ(line, "worker: (kFailure): Unexpected Internal Failure");
    }
    EXPECT_EQ(count, kThreads * kLines);
}

MStatus countedStatus(int& calls, MStatus::MStatusCode code) {
    ++calls;
    return code;
}

MStatus passedOn(int& calls, MStatus::MStatusCode code, bool& reachedEnd) {
    CHECK_MSTATUS_AND_RETURN_IT(countedStatus(calls, code));
    reachedEnd = true;
    return MS::kEndOfFile;
}

int replacedBy(MStatus::MStatusCode code) {
    CHECK_MSTATUS_AND_RETURN(MStatus(code), -1);
    return 1;
}

TEST(MStatus, checkMacrosReportFailuresAndLeaveOnlyWhenAsked) {
    testing::internal::CaptureStderr();
    int calls = 0;
    bool reachedEnd = false;
    CHECK_MSTATUS(countedStatus(calls, MS::kSuccess));
    EXPECT_EQ(passedOn(calls, MS::kSuccess, reachedEnd), MS::kEndOfFile);
    EXPECT_EQ(replacedBy(MS::kSuccess), 1);
    EXPECT_TRUE(reachedEnd);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");

    testing::internal::CaptureStderr();
    reachedEnd = false;
    CHECK_MSTATUS(countedStatus(calls, MS::kFailure));
    EXPECT_EQ(passedOn(calls, MS::kNotFound, reachedEnd), MS::kNotFound);
    EXPECT_EQ(replacedBy(MS::kFailure), -1);
    EXPECT_FALSE(reachedEnd);
    EXPECT_EQ(calls, 4);
    const std::string output = testing::internal::GetCapturedStderr();
    EXPECT_NE(output.find("apiStatusTest.cpp"), std::string::npos);
    EXPECT_NE(output.find("(kNotFound)"), std::string::npos);
}

}  // namespace
