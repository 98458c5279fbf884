#include "strategy/best_hold.h"

#include <algorithm>

#include "core/evaluate.h"
#include "core/wrap.h"
#include "strategy/deuces_draws.h"
#include "strategy/joker_draws.h"
#include "strategy/standard_draws.h"

std::array<HoldResult, HoldCount> resultTable;

namespace {

// What a draw ending in each row pays at the bet, in coins.
struct RowPays {
    std::size_t rows;
    std::array<std::int32_t, MaxRows> pay;
};

RowPays PaysAtBet(const GameDescriptor& game, std::int32_t coins) {
    RowPays pays{std::min(static_cast<std::size_t>(game.rowCount), MaxRows), {}};
    for (std::size_t row = 0; row < pays.rows; ++row) {
        pays.pay[row] = RowPayout(static_cast<HandRank>(row), game, coins);
    }
    return pays;
}

void CopyCodes(const CardRecord* hand, Card* codes) {
    for (std::size_t i = 0; i < HandSize; ++i) {
        codes[i] = hand[i].code;
    }
}

// Holding all five is no draw at all: the dealt hand's own row, once.
void ScoreHoldAll(const Card* codes, const GameDescriptor& game, const RowPays& pays) {
    HoldResult& result = resultTable[HoldAllIndex];
    const HandRank rank = EvaluateCodes(game.id, codes);
    result.expectedReturn = rank < pays.rows ? pays.pay[rank] : 0.0;
    result.counts[std::min<std::size_t>(rank, pays.rows)] = 1;
    result.counts[pays.rows + 1] = 1;
    result.pattern = HoldAll;
}

// The rows of one hold as they are filled, each weighed at once. Counts times payouts may exceed 32
// bits for edited paytables; the sum wraps, as the handheld's does.
struct RowWriter {
    std::int32_t* counts;
    const std::int32_t* pay;
    std::uint32_t sum = 0;

    void Put(std::size_t row, std::int32_t count) {
        counts[row] = count;
        sum += static_cast<std::uint32_t>(count) * static_cast<std::uint32_t>(pay[row]);
    }
};

// Rows from the full house down to the high pair, which stand together in every game.
void MapBelowQuads(RowWriter& rows, std::size_t first, const StandardOutcomes& out) {
    for (std::size_t i = 0; i < FullHouse; ++i) {
        rows.Put(first + i, out[FullHouse - i]);
    }
}

void MapSuitedRuns(RowWriter& rows, const StandardOutcomes& out) {
    rows.Put(0, out[Royal]);
    rows.Put(1, out[StraightFlush]);
}

std::int32_t QuadsOf(const QuadsByRank& quads, std::int32_t lowest, std::int32_t highest) {
    std::int32_t sum = 0;
    for (std::int32_t rank = lowest; rank <= highest; ++rank) {
        sum += quads[static_cast<std::size_t>(rank)];
    }
    return sum;
}

void MapJacksOrBetter(RowWriter& rows, const StandardDraws& draws, std::size_t hold) {
    MapSuitedRuns(rows, draws.outcomes[hold]);
    rows.Put(2, draws.outcomes[hold][Quads]);
    MapBelowQuads(rows, 3, draws.outcomes[hold]);
}

void MapDoubleBonusPoker(RowWriter& rows, const StandardDraws& draws, std::size_t hold) {
    const QuadsByRank& quads = draws.quadsByRank[hold];
    MapSuitedRuns(rows, draws.outcomes[hold]);
    rows.Put(2, quads[RankAce]);
    rows.Put(3, QuadsOf(quads, RankDeuce, RankFour));
    rows.Put(4, QuadsOf(quads, RankFour + 1, RankKing));
    MapBelowQuads(rows, 5, draws.outcomes[hold]);
}

void MapDoubleDoubleJackpot(RowWriter& rows, const StandardDraws& draws, std::size_t hold) {
    const QuadsByRank& quads = draws.quadsByRank[hold];
    const KickerQuads& kicker = draws.courtQuads[hold];
    MapSuitedRuns(rows, draws.outcomes[hold]);
    rows.Put(2, kicker[3]);
    rows.Put(3, quads[RankAce] - kicker[3]);
    const std::int32_t withKicker = kicker[0] + kicker[1] + kicker[2];
    rows.Put(4, withKicker);
    rows.Put(5, QuadsOf(quads, RankJack, RankKing) - withKicker);
    rows.Put(6, QuadsOf(quads, RankDeuce, RankTen));
    MapBelowQuads(rows, 7, draws.outcomes[hold]);
}

void MapDoubleDoubleBonus(RowWriter& rows, const StandardDraws& draws, std::size_t hold) {
    const QuadsByRank& quads = draws.quadsByRank[hold];
    const KickerQuads& kicker = draws.lowQuads[hold];
    MapSuitedRuns(rows, draws.outcomes[hold]);
    rows.Put(2, kicker[3]);
    const std::int32_t withKicker = kicker[0] + kicker[1] + kicker[2];
    rows.Put(3, withKicker);
    rows.Put(4, quads[RankAce] - kicker[3]);
    rows.Put(5, QuadsOf(quads, RankDeuce, RankFour) - withKicker);
    rows.Put(6, QuadsOf(quads, RankFour + 1, RankKing));
    MapBelowQuads(rows, 7, draws.outcomes[hold]);
}

using MapRows = void (*)(RowWriter& rows, const StandardDraws& draws, std::size_t hold);

RowWriter RowsOfHold(std::size_t hold, const RowPays& pays) {
    return {resultTable[hold].counts.data(), pays.pay.data()};
}

void FinishHold(std::size_t hold, const RowWriter& rows, std::size_t rowCount, std::int32_t noPay,
                std::int32_t total) {
    HoldResult& result = resultTable[hold];
    result.counts[rowCount] = noPay;
    result.counts[rowCount + 1] = total;
    result.pattern = HoldOrder[hold];
    result.expectedReturn = static_cast<double>(static_cast<std::int32_t>(rows.sum)) / total;
}

inline void ScoreDraws(const StandardDraws& draws, const RowPays& pays, std::size_t rowCount,
                       MapRows mapRows) {
    for (std::size_t hold = 0; hold < HoldAllIndex; ++hold) {
        RowWriter rows = RowsOfHold(hold, pays);
        mapRows(rows, draws, hold);
        FinishHold(hold, rows, rowCount, draws.outcomes[hold][NoPay], draws.outcomes[hold][Total]);
    }
}

// Two kinds of four of a kind and of straight flush, with wild cards and without, pay alike.
void MapDeucesWild(RowWriter& rows, const DeucesCounter& count) {
    rows.Put(0, count[DeucesNaturalRoyal]);
    rows.Put(1, count[DeucesFourDeuces]);
    rows.Put(2, count[DeucesWildRoyal]);
    rows.Put(3, count[DeucesFiveOfAKind]);
    rows.Put(4, count[DeucesStraightFlush] + count[DeucesNaturalStraightFlush]);
    rows.Put(5, count[DeucesFourOfAKind] + count[DeucesNaturalFourOfAKind]);
    rows.Put(6, count[DeucesFullHouse]);
    rows.Put(7, count[DeucesFlush]);
    rows.Put(8, count[DeucesStraight]);
    rows.Put(9, count[DeucesThreeOfAKind]);
}

// The records run from nothing up to the top row.
void MapJokerWild(RowWriter& rows, const JokerCountRecord& count) {
    for (std::size_t row = 0; row < JokerNaturalRoyal; ++row) {
        rows.Put(row, count[JokerNaturalRoyal - row]);
    }
}

DeucesWorkArea deucesWork;
JokerWorkArea jokerWork;

} // namespace

void ScoreStandardHolds(const CardRecord* hand, const GameDescriptor& game, std::int32_t coins) {
    StandardDraws draws;
    CopyCodes(hand, draws.cards.data());
    const RowPays pays = PaysAtBet(game, coins);
    ScoreHoldAll(draws.cards.data(), game, pays);
    EnumerateStandardDraws(draws, RankJack);
    switch (game.id) {
    case JacksOrBetter:
        return ScoreDraws(draws, pays, 9, MapJacksOrBetter);
    case DoubleBonusPoker:
        return ScoreDraws(draws, pays, 11, MapDoubleBonusPoker);
    case DoubleDoubleJackpot:
        return ScoreDraws(draws, pays, 13, MapDoubleDoubleJackpot);
    case DoubleDoubleBonus:
        return ScoreDraws(draws, pays, 13, MapDoubleDoubleBonus);
    default:
        return;
    }
}

void ScoreDeucesHolds(const CardRecord* hand, const GameDescriptor& game, std::int32_t coins) {
    CopyCodes(hand, deucesWork.codes);
    CountDeucesHolds(&deucesWork);
    if (game.id != DeucesWild) {
        return;
    }
    const RowPays pays = PaysAtBet(game, coins);
    ScoreHoldAll(deucesWork.codes, game, pays);
    for (std::size_t hold = 0; hold < HoldAllIndex; ++hold) {
        const DeucesCounter& count = deucesWork.counters[hold];
        RowWriter rows = RowsOfHold(hold, pays);
        MapDeucesWild(rows, count);
        FinishHold(hold, rows, 10, count[DeucesNoPay], count[DeucesTotal]);
    }
}

void ScoreJokerHolds(const CardRecord* hand, const GameDescriptor& game, std::int32_t coins) {
    CopyCodes(hand, jokerWork.cards.data());
    jokerWork.pairThreshold = JokerPairThreshold;
    CountJokerDraws(jokerWork);
    if (game.id != JokerWild) {
        return;
    }
    const RowPays pays = PaysAtBet(game, coins);
    ScoreHoldAll(jokerWork.cards.data(), game, pays);
    for (std::size_t hold = 0; hold < HoldAllIndex; ++hold) {
        const JokerCountRecord& count = jokerWork.records[hold];
        RowWriter rows = RowsOfHold(hold, pays);
        MapJokerWild(rows, count);
        FinishHold(hold, rows, 11, count[JokerNoPay], count[JokerTotal]);
    }
}

std::int32_t FindBestHold(const CardRecord* hand, const GameDescriptor& game, std::int32_t coins) {
    resultTable[HoldAllIndex].counts.fill(0);
    switch (game.id) {
    case JacksOrBetter:
    case DoubleDoubleJackpot:
    case DoubleBonusPoker:
    case DoubleDoubleBonus:
        ScoreStandardHolds(hand, game, coins);
        break;
    case DeucesWild:
        ScoreDeucesHolds(hand, game, coins);
        break;
    case JokerWild:
        ScoreJokerHolds(hand, game, coins);
        break;
    default:
        break;
    }
    double best = -1.0;
    const HoldResult* bestResult = resultTable.data();
    for (const HoldResult& result : resultTable) {
        if (result.expectedReturn > best) {
            best = result.expectedReturn;
            bestResult = &result;
        }
    }
    return static_cast<std::int32_t>(bestResult - resultTable.data());
}
