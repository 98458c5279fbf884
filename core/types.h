// The vocabulary of the game: cards, games, hand ranks and hold patterns.
#ifndef TESSARIN_CORE_TYPES_H
#define TESSARIN_CORE_TYPES_H

#include <array>
#include <cstddef>
#include <cstdint>

// A card code. 0..51 are the ordinary cards, suit * 13 + rank, where rank 0 is the deuce and 12
// the ace; 52 is the joker, which only the Joker Wild deck holds.
using Card = std::int32_t;

inline constexpr Card JokerCard = 52;
inline constexpr std::int32_t RanksPerSuit = 13;
inline constexpr std::int32_t SuitCount = 4;
inline constexpr std::int32_t JokerSuit = 4;
inline constexpr std::int32_t StandardDeckSize = 52;
inline constexpr std::int32_t JokerDeckSize = 53;

// Rank indices that rules name.
inline constexpr std::int32_t RankDeuce = 0;
inline constexpr std::int32_t RankFour = 2;
inline constexpr std::int32_t RankTen = 8;
inline constexpr std::int32_t RankJack = 9;
inline constexpr std::int32_t RankQueen = 10;
inline constexpr std::int32_t RankKing = 11;
inline constexpr std::int32_t RankAce = 12;

// 0..3 for the ordinary cards, 4 for the joker. Only equality of suits matters to the rules.
constexpr std::int32_t SuitOf(Card card) {
    return card / RanksPerSuit;
}

// 0..12; the joker's is 0, so ask for its suit first.
constexpr std::int32_t RankOf(Card card) {
    return card % RanksPerSuit;
}

constexpr Card CardOf(std::int32_t suit, std::int32_t rank) {
    return suit * RanksPerSuit + rank;
}

// One letter a rank, by rank index.
inline constexpr wchar_t RankLetters[] = L"23456789TJQKA";
inline constexpr char RankLettersNarrow[] = "23456789TJQKA";

// A card as deck and hand hold it.
struct CardRecord {
    Card code;
    std::int32_t rankValue; // rank index + 2; the joker's is 2; 0 marks an empty hand position
    std::int32_t suit;      // 0..3, 4 for the joker
    std::int32_t reserved;  // never set by the deck builder
};

inline constexpr std::size_t HandSize = 5;

// Five cards in position order, left to right, each with a held flag of 0 or 1.
struct Hand {
    std::array<CardRecord, HandSize> cards;
    std::array<std::int32_t, HandSize> held;
};

// The six games. A plain enumeration over a fixed width, because numbers outside 0..5 are asked
// about (a stored setting, a menu id) and must have a defined answer.
enum GameId : std::int32_t {
    JacksOrBetter = 0,
    DeucesWild = 1,
    JokerWild = 2,
    DoubleDoubleJackpot = 3,
    DoubleBonusPoker = 4,
    DoubleDoubleBonus = 5,
};

inline constexpr std::int32_t GameCount = 6;

// The most paying rows a game has.
inline constexpr std::size_t MaxRows = 13;

// The paytable row a five-card hand earns, 0 being the top row; the game's row count means
// "nothing".
using HandRank = std::uint32_t;

// No hand on the table, or no such game.
inline constexpr HandRank NoHand = 99;

// Bit i set: the card at position i is held. 0 draws five cards, 31 holds all.
using HoldPattern = std::int32_t;

inline constexpr HoldPattern HoldAll = 31;

// Bets are 1..MaxBet coins a hand.
inline constexpr std::int32_t MaxBet = 5;

#endif
