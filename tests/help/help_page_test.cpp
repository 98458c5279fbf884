// The help page as a text: whole, with its pictures, and saying what the program says.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "core/game_tables.h"
#include "strategy/best_hold.h"
#include "training/game_analysis.h"
#include "training/hand_details.h"

namespace {

const std::filesystem::path helpFolder = TESSARIN_SOURCE "/help";

std::string ReadText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

const std::string& Page() {
    static const std::string page = ReadText(helpFolder / "Tessarin CE.htc");
    return page;
}

// The first group of every match.
std::vector<std::string> All(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at) {
        found.push_back((*at)[1]);
    }
    return found;
}

std::string Narrow(const std::wstring& text) {
    std::string narrow(text.size(), '\0');
    std::transform(text.begin(), text.end(), narrow.begin(),
                   [](wchar_t letter) { return static_cast<char>(letter); });
    return narrow;
}

void ExpectOnPage(const std::string& text) {
    EXPECT_NE(Page().find(text), std::string::npos) << "the help does not have: " << text;
}

TEST(HelpPage, HasOnlyLettersThatEveryViewerKnows) {
    ASSERT_FALSE(Page().empty());
    EXPECT_TRUE(std::all_of(Page().begin(), Page().end(),
                            [](unsigned char letter) { return letter < 128; }));
}

TEST(HelpPage, ClosesWhatItOpens) {
    std::vector<std::string> open;
    const std::set<std::string> single = {"br", "img", "meta"};
    for (const std::string& tag : All(Page(), "<(/?[a-z][a-z0-9]*)")) {
        if (tag[0] == '/') {
            ASSERT_FALSE(open.empty()) << "stray " << tag;
            EXPECT_EQ("/" + open.back(), tag);
            open.pop_back();
        } else if (single.count(tag) == 0) {
            open.push_back(tag);
        }
    }
    EXPECT_TRUE(open.empty());
}

TEST(HelpPage, LinksToPlacesItHas) {
    const std::vector<std::string> links = All(Page(), "href=\"#([^\"]*)\"");
    const std::vector<std::string> names = All(Page(), "<a name=\"([^\"]*)\"");
    EXPECT_FALSE(links.empty());
    for (const std::string& link : links) {
        EXPECT_EQ(std::count(names.begin(), names.end(), link), 1) << link;
    }
}

TEST(HelpPage, NeedsNothingFromElsewhere) {
    EXPECT_EQ(All(Page(), "((?:src|href)=\"[a-z]+:)").size(), 0U);
}

TEST(HelpPage, ShowsEveryPictureAndNoOther) {
    std::set<std::string> there;
    for (const auto& entry : std::filesystem::directory_iterator(helpFolder / "pictures")) {
        there.insert("pictures/" + entry.path().filename().string());
    }
    const std::vector<std::string> shown = All(Page(), "<img src=\"([^\"]*)\"");
    EXPECT_EQ(std::set<std::string>(shown.begin(), shown.end()), there);
    EXPECT_EQ(All(Page(), "(<img [^>]*alt=\"[^\"]+\")").size(), shown.size());
}

TEST(HelpPage, ExplainsEveryItemOfTheMenus) {
    const std::string menus = ReadText(TESSARIN_SOURCE "/ui/menus.cpp");
    const std::vector<std::string> items = All(menus, "\\{IDM_[A-Z_]+, L\"([^\"]+)\"");
    EXPECT_EQ(items.size(), 16U);
    for (const std::string& item : items) {
        ExpectOnPage(item);
    }
}

TEST(HelpPage, ExplainsEveryTextOfTheDialogs) {
    const std::string resources = ReadText(TESSARIN_SOURCE "/ui/tessarin.rc");
    for (std::string text : All(resources, "LTEXT \"([^\"]+)\"")) {
        text = std::regex_replace(text, std::regex(":|&"), "");
        text = std::regex_replace(text, std::regex("  +"), " ");
        ExpectOnPage(text);
    }
}

TEST(HelpPage, ExplainsEveryColumn) {
    GameDescriptor game{};
    Paytable payouts{};
    DescribeGame(game, JacksOrBetter, payouts);
    const std::vector<ListColumn> details = DetailColumns(game);
    for (std::size_t i = 0; i < LeadingDetailColumns; ++i) {
        ExpectOnPage("<td>" + Narrow(details[i].header) + "</td>");
    }
    for (const ListColumn& column : AnalysisColumns()) {
        ExpectOnPage("<td>" + Narrow(column.header) + "</td>");
    }
}

TEST(HelpPage, NamesEveryGame) {
    for (const GameTable& game : gameTables) {
        ExpectOnPage("<td>" + Narrow(game.title) + "</td>");
    }
}

std::int32_t Number(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), ','), text.end());
    return std::stoi(text);
}

// The pair of jacks of the last section: every row of its table, at one coin.
TEST(HelpPage, CountsItsExampleAsTheEngineDoes) {
    GameDescriptor game{};
    Paytable payouts{};
    DescribeGame(game, JacksOrBetter, payouts);
    std::array<CardRecord, HandSize> hand{};
    hand[0].code = CardOf(0, RankJack);
    hand[1].code = CardOf(1, RankJack);
    hand[2].code = CardOf(0, RankKing);
    hand[3].code = CardOf(2, RankFour);
    hand[4].code = CardOf(0, RankTen);
    FindBestHold(hand.data(), game, 1);
    const HoldResult& pair =
        *std::find_if(resultTable.begin(), resultTable.end(),
                      [](const HoldResult& result) { return result.pattern == 0b00011; });
    const auto rows = static_cast<std::size_t>(game.rowCount);
    std::int32_t shown = 0;
    std::int32_t coins = 0;
    for (std::size_t row = 0; row < rows; ++row) {
        const std::string start = "<tr><td>" + Narrow(game.rowNames[row]) + "</td>";
        const auto cells = All(Page(), start + "((?:<td class=\"n\">[0-9,]+</td>){3})");
        if (cells.empty()) {
            EXPECT_EQ(pair.counts[row], 0) << "row " << row << " is not shown";
            continue;
        }
        const std::vector<std::string> numbers = All(cells[0], ">([0-9,]+)<");
        EXPECT_EQ(Number(numbers[0]), pair.counts[row]);
        EXPECT_EQ(Number(numbers[1]), game.oneCoin[row]);
        EXPECT_EQ(Number(numbers[2]), pair.counts[row] * game.oneCoin[row]);
        shown += pair.counts[row];
        coins += pair.counts[row] * game.oneCoin[row];
    }
    EXPECT_EQ(shown, 16215);
    EXPECT_EQ(coins, 24915);
    char sentence[64];
    std::snprintf(sentence, sizeof sentence, "24,915 coins over 16,215 draws are %.4f coins",
                  pair.expectedReturn);
    ExpectOnPage(sentence);
}

} // namespace
