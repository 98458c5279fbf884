#include "tests/window/hostile/filling.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "tests/window/hostile/faulty_program.h"
#include "training/game_analysis.h"

namespace {

constexpr std::int32_t Least = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Most = std::numeric_limits<std::int32_t>::max();

constexpr const wchar_t* NumberNames[] = {
    L"CoinsIn", L"CoinsOut", L"Hands",  L"Errors0", L"Errors1", L"Errors2", L"NoDraw",
    L"Speed",   L"Sound",    L"DefBuy", L"Credits", L"Lastbet", L"Lastgame"};
constexpr const wchar_t* RealNames[] = {L"Returns0", L"Returns1"};

template <typename Item, std::size_t count>
const Item& Any(std::mt19937& random, const Item (&items)[count]) {
    return items[random() % count];
}

StoredValue Bytes(std::mt19937& random, DWORD type, std::size_t length) {
    StoredValue value = {type, std::vector<std::uint8_t>(length)};
    for (std::uint8_t& byte : value.bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    return value;
}

DWORD AnyType(std::mt19937& random) {
    constexpr DWORD types[] = {REG_NONE,
                               REG_SZ,
                               REG_EXPAND_SZ,
                               REG_BINARY,
                               REG_DWORD,
                               REG_DWORD_BIG_ENDIAN,
                               REG_LINK,
                               REG_MULTI_SZ,
                               REG_RESOURCE_LIST,
                               REG_FULL_RESOURCE_DESCRIPTOR,
                               REG_RESOURCE_REQUIREMENTS_LIST,
                               REG_QWORD};
    return OneIn(random, 8) ? static_cast<DWORD>(random()) : Any(random, types);
}

StoredValue AnyValue(std::mt19937& random) {
    constexpr std::size_t lengths[] = {0,  1,  2,   3,   4,   4,   4,    5,    7,    8,
                                       8,  9,  16,  64,  258, 259, 260,  261,  262,  511,
                                       12, 20, 100, 400, 520, 524, 1000, 4096, 8192, 65536};
    const std::size_t length = OneIn(random, 200) ? 1U << 20 : Any(random, lengths);
    return Bytes(random, AnyType(random), length);
}

std::int32_t AnyNumber(std::mt19937& random) {
    constexpr std::int32_t edges[] = {
        0,    1,     2,        3,         4,     5,     6,        7,          9,   -1,
        -5,   50,    100,      200,       73,    10000, 255,      256,        400, 101,
        Most, Least, Most - 3, Least + 3, 65535, 65536, 99999999, -2000000000};
    return OneIn(random, 3) ? static_cast<std::int32_t>(random()) : Any(random, edges);
}

StoredValue AnyReal(std::mt19937& random) {
    constexpr double edges[] = {0.0,
                                -0.0,
                                1.5,
                                -12.25,
                                1e9,
                                1e300,
                                -1e300,
                                5e-324,
                                std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN(),
                                std::numeric_limits<double>::signaling_NaN()};
    return OneIn(random, 4) ? Bytes(random, REG_BINARY, 8) : RealValue(Any(random, edges));
}

// A text of the analysis: some of them as it writes them, others with or without an end, of any
// length and of any characters.
StoredValue AnyText(std::mt19937& random) {
    constexpr const wchar_t* texts[] = {L"40390.55",
                                        L"99.5439%",
                                        L"",
                                        L"%s%n%i%1000000i",
                                        L"\x202E"
                                        L"9\x0301\x0301\x0301",
                                        L"\t\r\n\x01\x7F",
                                        L"\xD83D\xDCA5",
                                        L"\xDCA5\xD83D",
                                        L"a\0b",
                                        L"\xFFFF\xFFFE"};
    std::wstring text = Any(random, texts);
    if (OneIn(random, 3)) {
        constexpr std::size_t lengths[] = {1, 64, 127, 128, 129, 130, 131, 259, 260, 5000, 100000};
        text.assign(Any(random, lengths), static_cast<wchar_t>(Between(random, 32, 0xFFFF)));
    }
    std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    if (OneIn(random, 3)) { // without its end, or with half a character there
        const std::size_t less = static_cast<std::size_t>(Between(random, 1, 3));
        size = size > less ? size - less : 0;
    }
    StoredValue value = {REG_SZ, std::vector<std::uint8_t>(size)};
    std::memcpy(value.bytes.data(), text.c_str(), size);
    return value;
}

// Capitals and small letters by chance: for the registry it is the same name.
std::wstring Spelt(std::mt19937& random, std::wstring name) {
    if (OneIn(random, 8)) {
        for (wchar_t& letter : name) {
            const wchar_t other = static_cast<wchar_t>(letter ^ 0x20);
            const bool isLetter = FoldedName({letter}) == FoldedName({other});
            letter = isLetter && OneIn(random, 2) ? other : letter;
        }
    }
    return name;
}

void Fill(std::mt19937& random, const std::wstring& path, const std::wstring& name,
          const StoredValue& usual) {
    if (OneIn(random, 4)) {
        return;
    }
    PutValue(path, Spelt(random, name), OneIn(random, 3) ? AnyValue(random) : usual);
}

std::wstring AnyLetters(std::mt19937& random, int most) {
    std::wstring letters(static_cast<std::size_t>(Between(random, 0, most)), L' ');
    const int highest = OneIn(random, 2) ? 0x7E : 0xFFFF;
    for (wchar_t& letter : letters) {
        letter = static_cast<wchar_t>(Between(random, 1, highest));
    }
    return letters;
}

std::wstring NameLike(std::mt19937& random, const std::wstring& name) {
    switch (Between(random, 0, 5)) {
    case 0:
        return name + L" ";
    case 1:
        return L" " + name;
    case 2:
        return name.substr(1) + L"0";
    case 3:
        return name + L"\\" + name;
    case 4:
        return name + static_cast<wchar_t>(Between(random, 0x300, 0x36F));
    default:
        return name + name;
    }
}

// The system may refuse a name, which is then none of the program's business.
void FillOddNames(std::mt19937& random, const std::wstring& path, const std::wstring& likeness) {
    for (int i = Between(random, 0, 4); i > 0; --i) {
        PutValue(path, NameLike(random, likeness), AnyValue(random));
    }
    for (int i = Between(random, 0, 3); i > 0; --i) {
        PutValue(path, AnyLetters(random, OneIn(random, 10) ? 16000 : 40), AnyValue(random));
    }
}

void FillPaytable(std::mt19937& random, const GameDescriptor& game, bool fiveCoins) {
    const std::wstring path = PaytablePath(game, fiveCoins);
    for (std::int32_t row = 0; row < game.rowCount; ++row) {
        if (OneIn(random, 2)) {
            Fill(random, path, std::to_wstring(row), NumberValue(AnyNumber(random)));
        }
    }
    for (const wchar_t* name : {L"-1", L"00", L" 0", L"0 ", L"13", L"99", L"+1", L""}) {
        if (OneIn(random, 8)) {
            PutValue(path, name, AnyValue(random));
        }
    }
    FillOddNames(random, path, L"1");
}

void FillPaytables(std::mt19937& random) {
    for (std::int32_t id = 0; id < GameCount; ++id) {
        GameDescriptor game{};
        Paytable payouts{};
        DescribeGame(game, id, payouts);
        for (const bool fiveCoins : {false, true}) {
            if (OneIn(random, 3)) {
                FillPaytable(random, game, fiveCoins);
            }
        }
        if (OneIn(random, 10)) {
            PutValue(L"", game.title, AnyValue(random)); // a value where a key is looked for
            PutValue(game.title, L"5", AnyValue(random));
        }
    }
}

void FillOddKeys(std::mt19937& random) {
    for (int i = Between(random, 0, 3); i > 0; --i) {
        std::wstring key = OneIn(random, 2) ? Any(random, NumberNames) : AnyLetters(random, 60);
        std::erase(key, L'\\');
        if (!key.empty()) {
            PutKey(key);
            FillOddNames(random, key, L"Credits");
        }
    }
}

void FillAnalysis(std::mt19937& random) {
    Table table;
    SessionStats stats{};
    Understand(ReadTree(), table, stats);
    const std::wstring path =
        std::wstring(table.game.title) + L"\\" + BuildPaytableKey(table.game, table.bet);
    for (int row = 0; row <= table.game.rowCount; ++row) {
        for (const wchar_t* suffix : {L"-1", L"-2", L"-3", L"-4"}) {
            Fill(random, path, std::to_wstring(row) + suffix, AnyText(random));
        }
    }
    Fill(random, path, L"Return", AnyText(random));
    FillOddNames(random, path, L"Return");
}

std::int32_t NumberOf(const StoredTree& tree, const std::wstring& path, const std::wstring& name,
                      std::int32_t fallback) {
    const StoredValue* value = FindValue(tree, path, name);
    if (value == nullptr || value->bytes.size() != sizeof fallback) {
        return fallback;
    }
    std::memcpy(&fallback, value->bytes.data(), sizeof fallback);
    return fallback;
}

double RealOf(const StoredTree& tree, const std::wstring& name) {
    const StoredValue* value = FindValue(tree, L"", name);
    double number = 0.0;
    if (value != nullptr && value->bytes.size() == sizeof number) {
        std::memcpy(&number, value->bytes.data(), sizeof number);
    }
    return std::isfinite(number) ? number : 0.0;
}

// A game's payouts as the test understands them.
Paytable understood;

void UnderstandGame(const StoredTree& tree, GameDescriptor& game, std::int32_t id) {
    DescribeGame(game, id, understood);
    for (std::int32_t row = 0; row < game.rowCount; ++row) {
        const std::wstring name = std::to_wstring(row);
        game.oneCoin[row] =
            NumberOf(tree, PaytablePath(game, false), name, game.defaultOneCoin[row]);
        game.fiveCoins[row] =
            NumberOf(tree, PaytablePath(game, true), name, game.defaultFiveCoins[row]);
    }
}

} // namespace

void FillSettings(std::mt19937& random) {
    if (OneIn(random, 40)) {
        PutKey(L"");
        return;
    }
    for (const wchar_t* name : NumberNames) {
        Fill(random, L"", name, NumberValue(AnyNumber(random)));
    }
    for (const wchar_t* name : RealNames) {
        Fill(random, L"", name, AnyReal(random));
    }
    for (const wchar_t* name : PlaceNames) {
        if (OneIn(random, 2)) {
            Fill(random, L"", name, NumberValue(AnyNumber(random)));
        }
    }
    FillOddNames(random, L"", Any(random, NumberNames));
    FillPaytables(random);
    FillOddKeys(random);
    FillAnalysis(random);
}

void Understand(const StoredTree& tree, Table& table, SessionStats& stats) {
    const auto number = [&](const wchar_t* name, std::int32_t fallback) {
        return NumberOf(tree, L"", name, fallback);
    };
    stats = {number(L"CoinsIn", 0),     number(L"CoinsOut", 0),   number(L"Hands", 0),
             number(L"Errors0", 0),     number(L"Errors1", 0),    number(L"Errors2", 0),
             RealOf(tree, L"Returns0"), RealOf(tree, L"Returns1")};
    table.noDraw = number(L"NoDraw", 0) != 0;
    const std::int32_t speed = number(L"Speed", MediumDeal);
    table.dealSpeed = speed == SlowDeal || speed == FastDeal ? speed : MediumDeal;
    table.sound = number(L"Sound", 1) != 0;
    table.defaultPurchase = number(L"DefBuy", 100);
    table.credits = number(L"Credits", 100);
    const std::int32_t bet = number(L"Lastbet", 5);
    table.bet = bet >= 1 && bet <= 5 ? bet : 5;
    const std::int32_t game = number(L"Lastgame", 0);
    UnderstandGame(tree, table.game, game >= 0 && game < GameCount ? game : 0);
}

std::wstring TextOf(const StoredValue* value) {
    constexpr std::size_t most = 129;
    if (value == nullptr || value->type != REG_SZ || value->bytes.size() > 260) {
        return L"";
    }
    std::wstring text(value->bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), value->bytes.data(), text.size() * sizeof(wchar_t));
    text = text.substr(0, text.find(L'\0'));
    return text.substr(0, most);
}
