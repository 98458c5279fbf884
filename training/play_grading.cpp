#include "training/play_grading.h"

#include "core/wrap.h"

PlayError ClassifyCost(double cost) {
    if (cost > MajorCost) {
        return PlayError::Major;
    }
    if (cost > ModerateCost) {
        return PlayError::Moderate;
    }
    return cost > 0.0 ? PlayError::Minor : PlayError::None;
}

PlayGrade GradeReturns(double bestReturn, double yourReturn) {
    const double cost = yourReturn < bestReturn ? bestReturn - yourReturn : 0.0;
    return {bestReturn, yourReturn, cost, ClassifyCost(cost)};
}

PlayGrade GradePlay(const std::array<HoldResult, HoldCount>& results, std::int32_t best,
                    HoldPattern held) {
    const std::int32_t yours = HoldIndex[static_cast<std::size_t>(held & HoldAll)];
    return GradeReturns(results[static_cast<std::size_t>(best)].expectedReturn,
                        results[static_cast<std::size_t>(yours)].expectedReturn);
}

void CountGrade(SessionStats& stats, const PlayGrade& grade) {
    stats.bestReturn += grade.bestReturn;
    stats.yourReturn += grade.yourReturn;
    switch (grade.error) {
    case PlayError::None:
        break;
    case PlayError::Minor:
        stats.minorErrors = WrapAdd(stats.minorErrors, 1);
        break;
    case PlayError::Moderate:
        stats.moderateErrors = WrapAdd(stats.moderateErrors, 1);
        break;
    case PlayError::Major:
        stats.majorErrors = WrapAdd(stats.majorErrors, 1);
        break;
    }
}

bool NeedsWarning(TrainingMode mode, const PlayGrade& grade) {
    return mode != TrainingMode::NoTraining && grade.error != PlayError::None &&
           grade.cost > WarningCost;
}

GradingTexts DescribeGrade(const PlayGrade& grade) {
    const bool grave = grade.cost > ModerateCost;
    const wchar_t* error = grade.cost > MajorCost ? L"Major Error!!!"
                           : grave                ? L"Moderate Error!"
                                                  : L"Minor Error!";
    return {{{
                {GradingError, error, grave ? ColourRed : ColourWhite, TextGround::Black},
                {GradingBestReturn, FormatReal(L"%1.4f", grade.bestReturn), ColourBlack,
                 TextGround::Dialog},
                {GradingYourReturn, FormatReal(L"%1.4f", grade.yourReturn), ColourBlack,
                 TextGround::Dialog},
                {GradingCost, FormatReal(L"Cost: %1.2f Coins", grade.cost),
                 grave ? ColourMaroon : ColourBlack, TextGround::White},
            }},
            grave};
}
