#include "cli/parse.h"

#include <algorithm>
#include <charconv>
#include <cstring>

constexpr std::array<const char*, GameCount> gameNames = {
    "jacks-or-better",       "deuces-wild",        "joker-wild",
    "double-double-jackpot", "double-bonus-poker", "double-double-bonus",
};
static_assert(gameNames.back() != nullptr, "a game has no name to type");

namespace {

constexpr char SuitLetters[] = "cdhs";
constexpr char JokerName[] = "Jo";
constexpr std::string_view Blanks = " \t\r\n\v\f,";
constexpr std::string_view Digits = "0123456789";
constexpr std::size_t LongestQuote = 40;
constexpr std::size_t LongestText = 120;

constexpr char AcceptedCards[] =
    "a card is a rank of 23456789TJQKA and a suit of cdhs, or Jo for the joker, or a code 0..52";

std::string Shorten(std::string_view text, std::size_t longest) {
    std::string shown;
    for (const char c : text.substr(0, longest)) {
        shown.push_back(c >= ' ' && c <= '~' ? c : '?');
    }
    return shown + (text.size() > longest ? "..." : "");
}

std::string Quote(std::string_view text) {
    std::string quoted = "'";
    quoted += Shorten(text, LongestQuote);
    quoted += '\'';
    return quoted;
}

// Decimal digits and nothing else, no sign, within 32 bits.
bool ParseNumber(std::string_view text, std::int32_t& number) {
    if (text.empty() || text.find_first_not_of(Digits) != std::string_view::npos) {
        return false;
    }
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return failure == std::errc() && end == text.data() + text.size();
}

char LowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The place of the letter among the letters in either case, -1 if it is not there.
std::int32_t PlaceOf(char letter, const char* letters) {
    for (std::int32_t i = 0; letters[i] != '\0'; ++i) {
        if (LowerCase(letters[i]) == LowerCase(letter)) {
            return i;
        }
    }
    return -1;
}

bool ParseCardName(std::string_view name, Card& card) {
    if (name.size() != 2) {
        return false;
    }
    if (LowerCase(name[0]) == 'j' && LowerCase(name[1]) == 'o') {
        card = JokerCard;
        return true;
    }
    const std::int32_t rank = PlaceOf(name[0], RankLettersNarrow);
    const std::int32_t suit = PlaceOf(name[1], SuitLetters);
    if (rank < 0 || suit < 0) {
        return false;
    }
    card = CardOf(suit, rank);
    return true;
}

// The cards read so far; further ones are counted but have no place.
struct CardList {
    HandCodes codes;
    std::size_t count;

    void Add(Card card) {
        if (count < codes.size()) {
            codes[count] = card;
        }
        ++count;
    }
};

// One word of a hand: a code, or one or more names without blanks between them.
bool ParseCardWord(std::string_view word, CardList& list, std::string& error) {
    Card card = 0;
    if (word.find_first_not_of(Digits) == std::string_view::npos) {
        if (!ParseNumber(word, card) || card > JokerCard) {
            error = "no card " + Quote(word) + ": " + AcceptedCards;
            return false;
        }
        list.Add(card);
        return true;
    }
    for (std::size_t i = 0; i < word.size(); i += 2) {
        if (!ParseCardName(word.substr(i, 2), card)) {
            error = "no card " + Quote(word) + ": " + AcceptedCards;
            return false;
        }
        list.Add(card);
    }
    return true;
}

bool AreDealable(const HandCodes& codes, const GameDescriptor& game, std::string& error) {
    for (std::size_t i = 0; i < codes.size(); ++i) {
        if (codes[i] >= game.deckSize) {
            error = "the joker is not in this game's deck: only joker-wild has it";
            return false;
        }
        if (std::find(codes.begin(), codes.begin() + static_cast<std::ptrdiff_t>(i), codes[i]) !=
            codes.begin() + static_cast<std::ptrdiff_t>(i)) {
            error =
                "the card " + CardName(codes[i]) + " stands twice: a hand is five different cards";
            return false;
        }
    }
    return true;
}

} // namespace

std::string PrintableText(std::string_view text) {
    return Shorten(text, LongestText);
}

std::string CardName(Card card) {
    if (SuitOf(card) == JokerSuit) {
        return JokerName;
    }
    return {RankLettersNarrow[RankOf(card)], SuitLetters[SuitOf(card)]};
}

bool ParseGame(std::string_view text, std::int32_t& id, std::string& error) {
    std::int32_t number = 0;
    if (ParseNumber(text, number) && number < GameCount) {
        id = number;
        return true;
    }
    const auto name = std::find(gameNames.begin(), gameNames.end(), text);
    if (name != gameNames.end()) {
        id = static_cast<std::int32_t>(name - gameNames.begin());
        return true;
    }
    error = "no game " + Quote(text) + ": a game is a number 0.." + std::to_string(GameCount - 1) +
            " or one of";
    for (const char* accepted : gameNames) {
        error += std::string(accepted == gameNames.front() ? " " : ", ") + accepted;
    }
    return false;
}

bool ParseBet(std::string_view text, std::int32_t& bet, std::string& error) {
    std::int32_t number = 0;
    if (!ParseNumber(text, number) || number < 1 || number > MaxBet) {
        error = "no bet " + Quote(text) + ": a bet is 1..5 coins";
        return false;
    }
    bet = number;
    return true;
}

bool ParsePayouts(std::string_view text, const GameDescriptor& game,
                  std::vector<std::int32_t>& payouts, std::string& error) {
    constexpr std::string_view separators = "-,";
    const std::string accepted = "payouts are " + std::to_string(game.rowCount) +
                                 " numbers 0..2147483647 for this game, top row first, joined by "
                                 "'-' or ','";
    std::vector<std::int32_t> numbers;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find_first_of(separators, start), text.size());
        const std::string_view word = text.substr(start, end - start);
        std::int32_t number = 0;
        if (!ParseNumber(word, number)) {
            error = "no payout " + Quote(word) + ": " + accepted;
            return false;
        }
        numbers.push_back(number);
        start = end + 1;
    }
    if (numbers.size() != static_cast<std::size_t>(game.rowCount)) {
        error = std::to_string(numbers.size()) +
                (numbers.size() == 1 ? " payout: " : " payouts: ") + accepted;
        return false;
    }
    payouts = numbers;
    return true;
}

bool ParseCards(std::string_view text, const GameDescriptor& game, HandCodes& cards,
                std::string& error) {
    CardList list{};
    for (std::size_t start = text.find_first_not_of(Blanks); start != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(Blanks, start), text.size());
        if (!ParseCardWord(text.substr(start, end - start), list, error)) {
            return false;
        }
        start = text.find_first_not_of(Blanks, end);
    }
    if (list.count != HandSize) {
        error = std::to_string(list.count) + (list.count == 1 ? " card" : " cards") +
                ": a hand is five different cards";
        return false;
    }
    if (!AreDealable(list.codes, game, error)) {
        return false;
    }
    cards = list.codes;
    return true;
}
