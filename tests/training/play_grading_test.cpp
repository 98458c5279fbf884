#include "training/play_grading.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// A result table in which every hold returns 1 coin but those that a test changes.
std::array<HoldResult, HoldCount> EqualReturns() {
    std::array<HoldResult, HoldCount> results{};
    for (std::size_t i = 0; i < results.size(); ++i) {
        results[i].pattern = HoldOrder[i];
        results[i].expectedReturn = 1.0;
    }
    return results;
}

DialogText Field(const PlayGrade& grade, std::int32_t id) {
    for (const DialogText& field : DescribeGrade(grade).fields) {
        if (field.id == id) {
            return field;
        }
    }
    ADD_FAILURE() << "no field " << id;
    return {};
}

} // namespace

TEST(PlayErrors, AreClassedByStrictThresholds) {
    EXPECT_EQ(ClassifyCost(0.0), PlayError::None);
    EXPECT_EQ(ClassifyCost(-1.0), PlayError::None);
    EXPECT_EQ(ClassifyCost(1e-12), PlayError::Minor);
    EXPECT_EQ(ClassifyCost(0.02), PlayError::Minor);
    EXPECT_EQ(ClassifyCost(std::nextafter(0.02, 1.0)), PlayError::Moderate);
    EXPECT_EQ(ClassifyCost(0.1), PlayError::Moderate);
    EXPECT_EQ(ClassifyCost(std::nextafter(0.1, 1.0)), PlayError::Major);
    EXPECT_EQ(ClassifyCost(4000.0), PlayError::Major);
}

TEST(PlayGrading, EveryPatternIsGradedByItsOwnRecord) {
    std::array<HoldResult, HoldCount> results = EqualReturns();
    for (std::size_t i = 0; i < results.size(); ++i) {
        results[i].expectedReturn = static_cast<double>(i);
    }
    for (std::size_t i = 0; i < results.size(); ++i) {
        const PlayGrade grade = GradePlay(results, 31, HoldOrder[i]);
        EXPECT_EQ(grade.bestReturn, 31.0);
        EXPECT_EQ(grade.yourReturn, static_cast<double>(i));
        EXPECT_EQ(grade.cost, 31.0 - static_cast<double>(i));
        EXPECT_EQ(grade.error, i == 31 ? PlayError::None : PlayError::Major);
    }
}

TEST(PlayGrading, TheBestHoldIsNoErrorAndStillCountsItsReturns) {
    std::array<HoldResult, HoldCount> results = EqualReturns();
    results[7].expectedReturn = 2.5;
    SessionStats stats{};
    const PlayGrade grade = GradePlay(results, 7, HoldOrder[7]);
    CountGrade(stats, grade);
    EXPECT_EQ(grade.error, PlayError::None);
    EXPECT_FALSE(NeedsWarning(TrainingMode::Warn, grade));
    EXPECT_EQ(stats.bestReturn, 2.5);
    EXPECT_EQ(stats.yourReturn, 2.5);
    EXPECT_EQ(stats.minorErrors + stats.moderateErrors + stats.majorErrors, 0);
}

TEST(PlayGrading, ATieWithAnotherHoldIsNoError) {
    const PlayGrade grade = GradePlay(EqualReturns(), 0, HoldAll);
    EXPECT_EQ(grade.error, PlayError::None);
    EXPECT_EQ(grade.cost, 0.0);
    EXPECT_FALSE(NeedsWarning(TrainingMode::Autohold, grade));
}

TEST(PlayGrading, ErrorsAreCountedByClassAndWrap) {
    SessionStats stats{};
    CountGrade(stats, GradeReturns(1.0, 0.995));
    CountGrade(stats, GradeReturns(1.0, 0.95));
    CountGrade(stats, GradeReturns(1.0, 0.5));
    CountGrade(stats, GradeReturns(1.0, 0.25));
    EXPECT_EQ(stats.minorErrors, 1);
    EXPECT_EQ(stats.moderateErrors, 1);
    EXPECT_EQ(stats.majorErrors, 2);
    EXPECT_EQ(stats.bestReturn, 4.0);
    EXPECT_EQ(stats.yourReturn, 0.995 + 0.95 + 0.5 + 0.25);
    stats.majorErrors = 2147483647;
    CountGrade(stats, GradeReturns(1.0, 0.5));
    EXPECT_EQ(stats.majorErrors, -2147483647 - 1);
}

TEST(PlayGrading, TheSameThresholdsHoldAtEveryBet) {
    // 0.03 coins short at one coin is 0.15 short at five.
    EXPECT_EQ(GradeReturns(1.0, 0.97).error, PlayError::Moderate);
    EXPECT_EQ(GradeReturns(5.0, 4.85).error, PlayError::Major);
}

TEST(PlayGrading, EveryErrorIsWarnedOfUnlessTrainingIsOff) {
    for (const double cost : {1e-12, 0.02, 0.1, 3.0}) {
        const PlayGrade grade = GradeReturns(4.0, 4.0 - cost);
        EXPECT_TRUE(NeedsWarning(TrainingMode::Warn, grade)) << cost;
        EXPECT_TRUE(NeedsWarning(TrainingMode::Autohold, grade)) << cost;
        EXPECT_FALSE(NeedsWarning(TrainingMode::NoTraining, grade)) << cost;
    }
}

TEST(GradingTexts, SayTheClassTheCostAndBothReturns) {
    const PlayGrade major = GradeReturns(23.09437, 20.0);
    EXPECT_EQ(Field(major, 2101).text, L"Major Error!!!");
    EXPECT_EQ(Field(major, 2102).text, L"23.0944");
    EXPECT_EQ(Field(major, 2103).text, L"20.0000");
    EXPECT_EQ(Field(major, 2104).text, L"Cost: 3.09 Coins");
    EXPECT_EQ(Field(GradeReturns(0.1, 0.0), 2101).text, L"Moderate Error!");
    EXPECT_EQ(Field(GradeReturns(0.02, 0.0), 2101).text, L"Minor Error!");
    EXPECT_EQ(Field(GradeReturns(0.001, 0.0), 2104).text, L"Cost: 0.00 Coins");
}

TEST(GradingTexts, ColoursAndFontFollowTheCost) {
    const PlayGrade grave = GradeReturns(0.05, 0.0);
    EXPECT_EQ(Field(grave, 2101).colour, 0x000000FFU);
    EXPECT_EQ(Field(grave, 2104).colour, 0x00000080U);
    EXPECT_TRUE(DescribeGrade(grave).errorInDisplayFont);
    const PlayGrade minor = GradeReturns(0.02, 0.0);
    EXPECT_EQ(Field(minor, 2101).colour, 0x00FFFFFFU);
    EXPECT_EQ(Field(minor, 2104).colour, 0x00000000U);
    EXPECT_FALSE(DescribeGrade(minor).errorInDisplayFont);
    EXPECT_EQ(Field(minor, 2101).ground, TextGround::Black);
    EXPECT_EQ(Field(minor, 2102).ground, TextGround::Dialog);
    EXPECT_EQ(Field(minor, 2103).ground, TextGround::Dialog);
    EXPECT_EQ(Field(minor, 2104).ground, TextGround::White);
}
