#include "training/session_stats.h"

#include <cmath>
#include <iterator>
#include <utility>

#include "core/wrap.h"
#include "settings/settings.h"

namespace {

struct StoredCount {
    const wchar_t* name;
    std::int32_t SessionStats::*field;
};

struct StoredReturn {
    const wchar_t* name;
    double SessionStats::*field;
};

constexpr StoredCount storedCounts[] = {
    {L"CoinsIn", &SessionStats::coinsIn},
    {L"CoinsOut", &SessionStats::coinsOut},
    {L"Hands", &SessionStats::hands},
    {L"Errors0", &SessionStats::minorErrors},
    {L"Errors1", &SessionStats::moderateErrors},
    {L"Errors2", &SessionStats::majorErrors},
};

constexpr StoredReturn storedReturns[] = {
    {L"Returns0", &SessionStats::bestReturn},
    {L"Returns1", &SessionStats::yourReturn},
};

static_assert(std::size(storedCounts) + std::size(storedReturns) == 8);

// No hand would ever move a sum that is infinite or not a number.
double ReadReturn(const wchar_t* name) {
    const double stored = ReadDouble(SettingsRoot::CurrentUser, SettingsKey, name, 0.0);
    return std::isfinite(stored) ? stored : 0.0;
}

std::int32_t AllErrors(const SessionStats& stats) {
    return WrapAdd(WrapAdd(stats.minorErrors, stats.moderateErrors), stats.majorErrors);
}

// A loss is told by its label and colour: the sign gives way to a blank.
std::wstring NetText(std::int32_t net) {
    std::wstring text = FormatInteger(L"%i ", net);
    if (net < 0) {
        text[0] = L' ';
    }
    return text;
}

// The two percentages over counts are worked out in single precision, digits included.
std::wstring PaidText(const SessionStats& stats) {
    if (stats.coinsIn == 0) {
        return L"100.00% ";
    }
    const float in = static_cast<float>(stats.coinsIn);
    const float out = static_cast<float>(stats.coinsOut);
    const float percent = out / in * 100.0F;
    return FormatReal(L"%1.2f%% ", static_cast<double>(percent));
}

std::wstring CorrectText(const SessionStats& stats) {
    if (stats.hands == 0) {
        return L"N/A ";
    }
    const float errors = static_cast<float>(AllErrors(stats));
    const float hands = static_cast<float>(stats.hands);
    const float percent = (1.0F - errors / hands) * 100.0F;
    return FormatReal(L"%1.2f%% ", static_cast<double>(percent));
}

// The percentage over returns is in double precision.
std::wstring ReturnText(const SessionStats& stats) {
    if (!(stats.bestReturn > 0.0)) {
        return L"100.00% ";
    }
    return FormatReal(L"%1.2f%% ", stats.yourReturn / stats.bestReturn * 100.0);
}

std::wstring CostText(const SessionStats& stats) {
    if (!(stats.bestReturn > 0.0)) {
        return L"0 ";
    }
    return FormatReal(L"%1.2f ", stats.bestReturn - stats.yourReturn);
}

TextColour ErrorColour(std::int32_t errors) {
    return errors == 0 ? ColourCyan : ColourRed;
}

DialogText OnBlack(std::int32_t id, std::wstring text, TextColour colour) {
    return {id, std::move(text), colour, TextGround::Black};
}

DialogText CountField(std::int32_t id, std::int32_t count, TextColour colour) {
    return OnBlack(id, FormatInteger(L"%i ", count), colour);
}

} // namespace

SessionStats LoadSessionStats() {
    SessionStats stats{};
    for (const StoredCount& stored : storedCounts) {
        stats.*stored.field = ReadInteger(SettingsRoot::CurrentUser, SettingsKey, stored.name, 0);
    }
    for (const StoredReturn& stored : storedReturns) {
        stats.*stored.field = ReadReturn(stored.name);
    }
    return stats;
}

void StoreSessionStats(const SessionStats& stats) {
    for (const StoredCount& stored : storedCounts) {
        WriteInteger(SettingsRoot::CurrentUser, SettingsKey, stored.name, stats.*stored.field, 0);
    }
    for (const StoredReturn& stored : storedReturns) {
        WriteDouble(SettingsRoot::CurrentUser, SettingsKey, stored.name, stats.*stored.field, 0);
    }
}

void CountHand(SessionStats& stats) {
    stats.hands = WrapAdd(stats.hands, 1);
}

void CountCoinsIn(SessionStats& stats, std::int32_t coins) {
    stats.coinsIn = WrapAdd(stats.coinsIn, coins);
}

void CountCoinsOut(SessionStats& stats, std::int32_t coins) {
    stats.coinsOut = WrapAdd(stats.coinsOut, coins);
}

void ResetSessionStats(SessionStats& stats) {
    stats = SessionStats{};
}

std::array<DialogText, StatsFieldCount> DescribeSessionStats(const SessionStats& stats) {
    const std::int32_t net = WrapSubtract(stats.coinsOut, stats.coinsIn);
    const std::int32_t errors = AllErrors(stats);
    const bool won = net >= 0;
    return {{
        {StatsResult, won ? L"YOU WIN:" : L"YOU LOST:", won ? ColourDarkGreen : ColourMaroon,
         TextGround::LightGrey},
        OnBlack(StatsNet, NetText(net), won ? ColourGreen : ColourRed),
        CountField(StatsHands, stats.hands, ColourWhite),
        CountField(StatsCoinsIn, stats.coinsIn, ColourCyan),
        CountField(StatsCoinsOut, stats.coinsOut, ColourCyan),
        OnBlack(StatsPercentPaid, PaidText(stats), ColourCyan),
        CountField(StatsErrors, errors, ErrorColour(errors)),
        CountField(StatsMinorErrors, stats.minorErrors, ErrorColour(stats.minorErrors)),
        CountField(StatsModerateErrors, stats.moderateErrors, ErrorColour(stats.moderateErrors)),
        CountField(StatsMajorErrors, stats.majorErrors, ErrorColour(stats.majorErrors)),
        OnBlack(StatsPercentCorrect, CorrectText(stats), ColourCyan),
        OnBlack(StatsBestReturn, FormatReal(L"%1.4f ", stats.bestReturn), ColourCyan),
        OnBlack(StatsYourReturn, FormatReal(L"%1.4f ", stats.yourReturn), ColourCyan),
        OnBlack(StatsPercentReturn, ReturnText(stats), ColourCyan),
        OnBlack(StatsCost, CostText(stats), ColourCyan),
    }};
}
