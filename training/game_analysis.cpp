#include "training/game_analysis.h"

#include <cmath>

#include "settings/settings.h"
#include "strategy/choose.h"
#include "training/deal_classes.h"

namespace {

// Value names of a row's texts: its number and one of these.
constexpr wchar_t OccursEverySuffix[] = L"-1";
constexpr wchar_t ReturnShareSuffix[] = L"-2";
constexpr wchar_t ProbabilitySuffix[] = L"-3";
constexpr wchar_t FrequencySuffix[] = L"-4";
constexpr wchar_t GameReturnName[] = L"Return";

constexpr wchar_t NothingName[] = L"NOTHING";

// No class weighs more, so the deals done pass each percent within this of it.
constexpr std::uint32_t LargestWeight = 24;

std::size_t RowCount(const GameDescriptor& game) {
    return static_cast<std::size_t>(game.rowCount);
}

// Only these deals come in numbers that are worth a look at the stop flag.
bool HeedsStop(DealBlock block) {
    return block == DealBlock::TwoPair || block == DealBlock::OnePair || block == DealBlock::NoPair;
}

bool VisitDeal(void* context, const DealClass& deal) {
    GameAnalysis& analysis = *static_cast<GameAnalysis*>(context);
    if (HeedsStop(deal.block) && analysis.stop) {
        return false;
    }
    for (std::size_t i = 0; i < HandSize; ++i) {
        analysis.hand[i].code = deal.cards[i];
    }
    AnalyseDealClass(analysis, deal.weight);
    return true;
}

void EnterLock(const AnalysisHost& host) {
    if (host.enterLock != nullptr) {
        host.enterLock();
    }
}

void LeaveLock(const AnalysisHost& host) {
    if (host.leaveLock != nullptr) {
        host.leaveLock();
    }
}

// The coins a row pays at the bet. In double precision: an edited payout times the draws that earn
// it, or times the bet, may not fit 32 bits, and a share must be right for any paytable.
double RowCoins(const GameAnalysis& analysis, std::size_t row) {
    return analysis.coins == MaxBet ? static_cast<double>(analysis.game.fiveCoins[row])
                                    : static_cast<double>(analysis.coins) *
                                          static_cast<double>(analysis.game.oneCoin[row]);
}

void AddOutcomes(GameAnalysis& analysis, const HoldResult& best, std::int32_t weight) {
    const std::size_t rows = RowCount(analysis.game);
    const double deals = static_cast<double>(weight);
    const double draws = static_cast<double>(best.counts[rows + 1]);
    const double coinsBet = draws * static_cast<double>(analysis.coins);
    analysis.totalReturn += best.expectedReturn * deals;
    for (std::size_t row = 0; row <= rows; ++row) {
        analysis.frequency[row] += static_cast<double>(best.counts[row]) / draws * deals;
    }
    for (std::size_t row = 0; row < rows; ++row) {
        const double won = static_cast<double>(best.counts[row]) * RowCoins(analysis, row);
        analysis.returnShare[row] += won / coinsBet * deals;
    }
    analysis.frequency[rows + 1] += draws * deals;
}

void ShowProgress(const GameAnalysis& analysis) {
    if (analysis.host.showProgress == nullptr ||
        analysis.dealsDone % analysis.onePercent >= LargestWeight) {
        return;
    }
    const std::uint32_t total = static_cast<std::uint32_t>(analysis.totalDeals);
    const auto percent = static_cast<std::int32_t>(analysis.dealsDone * 100 / total);
    analysis.host.showProgress(analysis.host.context, FormatInteger(L"%i%% Done", percent).c_str());
}

// From here on the run has its own payouts: an edit or a reload of the program's tables while it
// works does not mix two paytables in one result.
bool LoadAnalysisGame(GameAnalysis& analysis, std::int32_t id) {
    EnterLock(analysis.host);
    const bool loaded = LoadGame(analysis.game, id) == 1;
    LeaveLock(analysis.host);
    if (!loaded) {
        return false;
    }
    for (std::size_t row = 0; row < RowCount(analysis.game); ++row) {
        analysis.payouts.oneCoin[row] = analysis.game.oneCoin[row];
        analysis.payouts.fiveCoins[row] = analysis.game.fiveCoins[row];
    }
    analysis.game.oneCoin = analysis.payouts.oneCoin.data();
    analysis.game.fiveCoins = analysis.payouts.fiveCoins.data();
    return true;
}

std::int32_t ColumnPayout(const GameDescriptor& game, std::int32_t coins, std::size_t row) {
    return coins == MaxBet ? game.fiveCoins[row] : game.oneCoin[row];
}

// One a row, with name and payout.
std::vector<AnalysisRowText> NamedRows(const GameDescriptor& game, std::int32_t coins) {
    std::vector<AnalysisRowText> rows;
    for (std::size_t row = 0; row < RowCount(game); ++row) {
        rows.push_back({game.rowNames[row],
                        FormatInteger(L"%i", ColumnPayout(game, coins, row)),
                        {},
                        {},
                        {},
                        {}});
    }
    rows.push_back({NothingName, L"0", {}, {}, {}, {}});
    return rows;
}

struct RowValue {
    const wchar_t* suffix;
    std::wstring AnalysisRowText::*text;
};

constexpr RowValue rowValues[] = {
    {OccursEverySuffix, &AnalysisRowText::occursEvery},
    {ReturnShareSuffix, &AnalysisRowText::returnShare},
    {ProbabilitySuffix, &AnalysisRowText::probability},
    {FrequencySuffix, &AnalysisRowText::frequency},
};

std::wstring RowValueName(std::size_t row, const RowValue& value) {
    return FormatInteger(L"%i", static_cast<std::int32_t>(row)) + value.suffix;
}

std::wstring ReadText(const std::wstring& keyPath, const std::wstring& name) {
    SettingText text;
    ReadString(SettingsRoot::CurrentUser, keyPath.c_str(), name.c_str(), text);
    return text;
}

void WriteText(const std::wstring& keyPath, const std::wstring& name, const std::wstring& text) {
    WriteString(SettingsRoot::CurrentUser, keyPath.c_str(), name.c_str(), text.c_str(), 0);
}

} // namespace

std::wstring BuildPaytableKey(const GameDescriptor& game, std::int32_t coins) {
    std::wstring key;
    for (std::size_t row = 0; row < RowCount(game); ++row) {
        key += FormatInteger(L"%i-", ColumnPayout(game, coins, row));
    }
    key.pop_back();
    return key;
}

std::wstring AnalysisKeyPath(const GameDescriptor& game, std::int32_t coins) {
    return std::wstring(SettingsKey) + L"\\" + game.title + L"\\" + BuildPaytableKey(game, coins);
}

void PrepareGameAnalysis(GameAnalysis& analysis, const GameDescriptor& game, std::int32_t coins) {
    analysis.keyPath = AnalysisKeyPath(game, coins);
    analysis.coins = coins;
    analysis.stop = false;
}

bool RunGameAnalysis(GameAnalysis& analysis, std::int32_t id) {
    const bool finished = LoadAnalysisGame(analysis, id) && CountAllDeals(analysis);
    if (finished) {
        StoreAnalysis(analysis.keyPath,
                      FormatAnalysis(SummarizeAnalysis(analysis), analysis.game, analysis.coins));
    }
    analysis.stop = true;
    return finished;
}

bool CountAllDeals(GameAnalysis& analysis) {
    analysis.totalDeals = Choose(analysis.game.deckSize, HandSize);
    analysis.onePercent = static_cast<std::uint32_t>(analysis.totalDeals / 100);
    analysis.dealsDone = 0;
    analysis.totalReturn = 0.0;
    analysis.frequency.fill(0.0);
    analysis.returnShare.fill(0.0);
    return EnumerateStandardDeals(VisitDeal, &analysis) &&
           (analysis.game.id != JokerWild || EnumerateJokerDeals(VisitDeal, &analysis));
}

void AnalyseDealClass(GameAnalysis& analysis, std::int32_t weight) {
    EnterLock(analysis.host);
    const std::int32_t best = FindBestHold(analysis.hand.data(), analysis.game, analysis.coins);
    AddOutcomes(analysis, resultTable[static_cast<std::size_t>(best)], weight);
    LeaveLock(analysis.host);
    analysis.dealsDone += static_cast<std::uint32_t>(weight);
    ShowProgress(analysis);
}

AnalysisResult SummarizeAnalysis(const GameAnalysis& analysis) {
    const double deals = static_cast<double>(analysis.dealsDone);
    AnalysisResult result;
    result.gameReturn = analysis.totalReturn / (static_cast<double>(analysis.coins) * deals);
    for (std::size_t row = 0; row <= RowCount(analysis.game); ++row) {
        const double frequency = analysis.frequency[row];
        result.rows.push_back({frequency, frequency / deals,
                               frequency > 0.0 ? deals / frequency : INFINITY,
                               analysis.returnShare[row] / deals});
    }
    return result;
}

std::vector<ListColumn> AnalysisColumns() {
    return {{L"Hand Name", 100}, {L"Payout", 45},       {L"Frequency", 65},
            {L"% Prob.", 53},    {L"Occurs Every", 75}, {L"% of Ret.", 61}};
}

AnalysisTexts FormatAnalysis(const AnalysisResult& result, const GameDescriptor& game,
                             std::int32_t coins) {
    AnalysisTexts texts{NamedRows(game, coins), FormatReal(L"%05.4f%%", result.gameReturn * 100)};
    for (std::size_t row = 0; row < texts.rows.size(); ++row) {
        const AnalysisRow& numbers = result.rows[row];
        AnalysisRowText& text = texts.rows[row];
        text.occursEvery = std::isfinite(numbers.occursEvery)
                               ? FormatReal(L"%#.7g", numbers.occursEvery)
                               : L"Never";
        text.returnShare = FormatReal(L"%1.2f%%", numbers.returnShare * 100);
        text.probability = FormatReal(L"%1.3f%%", numbers.probability * 100);
        text.frequency = FormatReal(L"%#.8g", numbers.frequency);
    }
    return texts;
}

void StoreAnalysis(const std::wstring& keyPath, const AnalysisTexts& texts) {
    for (std::size_t row = 0; row < texts.rows.size(); ++row) {
        for (const RowValue& value : rowValues) {
            WriteText(keyPath, RowValueName(row, value), texts.rows[row].*value.text);
        }
    }
    WriteText(keyPath, GameReturnName, texts.gameReturn);
}

AnalysisTexts ReadAnalysis(const GameDescriptor& game, std::int32_t coins) {
    const std::wstring keyPath = AnalysisKeyPath(game, coins);
    AnalysisTexts texts{NamedRows(game, coins), {}};
    for (std::size_t row = 0; row < texts.rows.size(); ++row) {
        for (const RowValue& value : rowValues) {
            texts.rows[row].*value.text = ReadText(keyPath, RowValueName(row, value));
        }
    }
    texts.gameReturn = ReadText(keyPath, GameReturnName);
    return texts;
}
