#include <gtest/gtest.h>
#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MFn.h>
#include <maya/MString.h>
#include <maya/MTime.h>
#include <maya/MTypeId.h>
#include <maya/MUuid.h>

#include <algorithm>
#include <set>
#include <string>

namespace {

/// Puts the program's units back however a test ends.
class Units : public testing::Test {
  protected:
    ~Units() override {
        MAngle::setUIUnit(MAngle::kDegrees);
        MDistance::setUIUnit(MDistance::kCentimeters);
    }
};

TEST_F(Units, anglesConvert) {
    const MAngle angle(180.0, MAngle::kDegrees);
    EXPECT_NEAR(angle.asRadians(), 3.14159265358979323846, 1e-15);
    EXPECT_DOUBLE_EQ(angle.asDegrees(), 180.0);
    EXPECT_NEAR(angle.asAngMinutes(), 10800.0, 1e-9);
    EXPECT_NEAR(angle.asAngSeconds(), 648000.0, 1e-6);
    EXPECT_NEAR(MAngle(1.0).as(MAngle::kDegrees), 57.29577951308232, 1e-13) << "radians are the default";
    EXPECT_EQ(angle.as(MAngle::kInvalid), 0.0);
    EXPECT_EQ(MAngle().value(), 0.0);
}

TEST_F(Units, distancesConvert) {
    const MDistance metre(1.0, MDistance::kMeters);
    EXPECT_DOUBLE_EQ(metre.asCentimeters(), 100.0);
    EXPECT_DOUBLE_EQ(metre.asMillimeters(), 1000.0);
    EXPECT_DOUBLE_EQ(metre.asKilometers(), 0.001);
    EXPECT_DOUBLE_EQ(metre.asMeters(), 1.0);
    const MDistance mile(1.0, MDistance::kMiles);
    EXPECT_NEAR(mile.asYards(), 1760.0, 1e-9);
    EXPECT_NEAR(mile.asFeet(), 5280.0, 1e-9);
    EXPECT_NEAR(mile.asInches(), 63360.0, 1e-8);
    EXPECT_NEAR(mile.asMiles(), 1.0, 1e-15);
    EXPECT_EQ(MDistance(3.0).unit(), MDistance::kCentimeters);
    EXPECT_EQ(metre.as(MDistance::kLast), 0.0);
}

TEST_F(Units, changingTheUnitKeepsTheValue) {
    MAngle angle(2.0, MAngle::kDegrees);
    EXPECT_EQ(angle.setUnit(MAngle::kRadians), MS::kSuccess);
    EXPECT_EQ(angle.asRadians(), 2.0);
    EXPECT_EQ(angle.setUnit(MAngle::kLast), MS::kInvalidParameter);
    EXPECT_EQ(angle.unit(), MAngle::kRadians);
    MDistance distance(2.0, MDistance::kFeet);
    EXPECT_EQ(distance.setUnit(MDistance::kInches), MS::kSuccess);
    EXPECT_EQ(distance.setValue(5.0), MS::kSuccess);
    EXPECT_DOUBLE_EQ(distance.asCentimeters(), 12.7);
    EXPECT_EQ(distance.setUnit(MDistance::kInvalid), MS::kInvalidParameter);
    MTime time(24.0, MTime::kFilm);
    EXPECT_EQ(time.setUnit(MTime::kSeconds), MS::kSuccess);
    EXPECT_EQ(time.as(MTime::kMinutes), 0.4);
    EXPECT_EQ(time.setUnit(MTime::kInvalid), MS::kInvalidParameter);
    EXPECT_EQ(time.unit(), MTime::kSeconds);
}

TEST_F(Units, userUnitsBelongToTheProgram) {
    EXPECT_EQ(MAngle::uiUnit(), MAngle::kDegrees);
    EXPECT_EQ(MDistance::uiUnit(), MDistance::kCentimeters);
    EXPECT_EQ(MDistance::setUIUnit(MDistance::kMeters), MS::kSuccess);
    EXPECT_DOUBLE_EQ(MDistance::internalToUI(250.0), 2.5);
    EXPECT_DOUBLE_EQ(MDistance::uiToInternal(2.5), 250.0);
    EXPECT_EQ(MDistance::setUIUnit(MDistance::kInvalid), MS::kInvalidParameter);
    EXPECT_EQ(MDistance::uiUnit(), MDistance::kMeters);
    EXPECT_NEAR(MAngle::uiToInternal(90.0), 1.5707963267948966, 1e-15);
    EXPECT_EQ(MAngle::setUIUnit(MAngle::kRadians), MS::kSuccess);
    EXPECT_EQ(MAngle::internalToUI(1.25), 1.25);
}

struct Rate {
    MTime::Unit unit;
    double perSecond;
};

class MTimeRates : public testing::TestWithParam<Rate> {};

// Whole frames must stay whole: they are compared with key times.
TEST_P(MTimeRates, wholeFramesConvertExactly) {
    const auto [unit, perSecond] = GetParam();
    EXPECT_EQ(MTime(24.0).as(unit), perSecond) << "film, where no unit is given";
    for (int frame = -10; frame <= 2000; frame += 7) {
        const MTime time(frame * perSecond, unit);
        EXPECT_EQ(time.as(MTime::kSeconds), frame);
        EXPECT_EQ(time.as(MTime::kFilm), frame * 24.0);
        EXPECT_TRUE(time == MTime(frame, MTime::kSeconds));
    }
}

INSTANTIATE_TEST_SUITE_P(Units, MTimeRates,
                         testing::Values(Rate{MTime::kSeconds, 1}, Rate{MTime::kMilliseconds, 1000},
                                         Rate{MTime::kGames, 15}, Rate{MTime::kFilm, 24},
                                         Rate{MTime::kPALFrame, 25}, Rate{MTime::kNTSCFrame, 30},
                                         Rate{MTime::kShowScan, 48}, Rate{MTime::kPALField, 50},
                                         Rate{MTime::kNTSCField, 60}, Rate{MTime::k2FPS, 2},
                                         Rate{MTime::k12FPS, 12}, Rate{MTime::k75FPS, 75},
                                         Rate{MTime::k80FPS, 80}, Rate{MTime::k120FPS, 120}));

TEST(MTime, comparesTimesAndNotValues) {
    const MTime oneSecond(1.0, MTime::kSeconds);
    const MTime lastFrame(23.0, MTime::kFilm);
    EXPECT_TRUE(lastFrame < oneSecond);
    EXPECT_TRUE(lastFrame <= oneSecond);
    EXPECT_TRUE(oneSecond > lastFrame);
    EXPECT_TRUE(oneSecond >= MTime(24.0, MTime::kFilm));
    EXPECT_TRUE(oneSecond != lastFrame);
    EXPECT_TRUE(MTime(0.1 + 0.2) == MTime(0.3)) << "less than a tick apart";
}

TEST(MTime, sumsHaveTheUnitOfTheLeftSide) {
    MTime time(12.0, MTime::kFilm);
    time += MTime(1.0, MTime::kSeconds);
    EXPECT_EQ(time.unit(), MTime::kFilm);
    EXPECT_EQ(time.value(), 36.0);
    time -= MTime(500.0, MTime::kMilliseconds);
    time += 1.0;
    time -= 5.0;
    time *= 2.0;
    time /= 4.0;
    EXPECT_EQ(time.value(), 10.0);
    EXPECT_EQ((time + 2.0).value(), 12.0);
    EXPECT_EQ(((time - 2.0) * 3.0 / 2.0).value(), 12.0);
}

TEST(MTypeId, isANumberOrAPrefixAndANumber) {
    EXPECT_EQ(MTypeId(0x00123456).id(), 0x00123456U);
    EXPECT_TRUE(MTypeId(0x1234, 0x56) == MTypeId(0x00123456));
    EXPECT_TRUE(MTypeId() != MTypeId(1));
}

TEST(MUuid, textRoundTrips) {
    const char* text = "01234567-89AB-CDEF-0123-456789ABCDEF";
    MStatus status = MS::kFailure;
    const MUuid uuid(text, &status);
    EXPECT_EQ(status, MS::kSuccess);
    EXPECT_TRUE(uuid.valid());
    EXPECT_STREQ(uuid.asString().asChar(), text);
    EXPECT_TRUE(MUuid("01234567-89ab-cdef-0123-456789abcdef") == uuid);
    unsigned char bytes[16] = {};
    uuid.get(bytes);
    EXPECT_EQ(bytes[0], 0x01);
    EXPECT_EQ(bytes[15], 0xef);
    EXPECT_TRUE(MUuid(bytes) == uuid);
    MUuid copy;
    EXPECT_FALSE(copy.valid());
    copy.copy(uuid);
    EXPECT_TRUE(copy == uuid);
}

}  // namespace
