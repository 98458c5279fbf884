#include <algorithm>
#include <thread>
#include <utility>
#include <vector>

#include "tests/window/forecast.h"
#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/pauses.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// How play takes its time: the pauses of deal, draw and count-up, and what hurries them.

namespace {

class Pace : public WindowTest {};

using Pauses = std::vector<LONG>;

// Those asked for while the work is done and until there are so many.
template <typename Work>
Pauses PausesOf(std::size_t count, Work work) {
    const std::size_t before = PausesAsked().size();
    work();
    EXPECT_TRUE(Eventually([&] { return PausesAskedSince(before).size() >= count; }));
    return PausesAskedSince(before);
}

bool CountsOn(std::size_t coins) {
    const std::size_t before = PausesAsked().size();
    return Eventually([&] { return PausesAsked().size() >= before + coins; });
}

bool StandsStill() {
    std::size_t before = PausesAsked().size();
    return Eventually([&] {
        Sleep(100);
        const std::size_t seen = PausesAsked().size();
        const bool still = seen == before;
        before = seen;
        return still;
    });
}

// Which cards show a face, bit i for position i, and what else changes as cards move.
struct Scene {
    int faces;
    bool credits;
    bool prompt;
    bool held;
    bool operator==(const Scene&) const = default;
};

// What to look for in the window: it is grabbed whole, so that a scene is of one moment.
class Watcher {
  public:
    Watcher(const RunningProgram& watched, std::int32_t credits) : program(watched) {
        back = CardOf(GrabStill(program), 0);
        creditsPaid =
            PaintPair(program, program.layout.credits, Navy, {L"Credits", credits, White}, 15);
        holding = OnScreen(PaintLines(program, program.layout.prompt, Navy,
                                      {{HoldAndDraw, Yellow, DT_CENTER}}, 15));
    }

    // The scenes from now on until the cards have moved and all show their faces, each told once.
    // Asks the program nothing, which would wait for it.
    std::vector<Scene> Watch() const {
        std::vector<Scene> scenes;
        bool moved = false;
        EXPECT_TRUE(Eventually([&] {
            const Scene scene = SceneOf(GrabClient(program));
            if (scenes.empty() || !(scenes.back() == scene)) {
                scenes.push_back(scene);
            }
            moved = moved || scene.faces != AllFaces;
            return moved && scene.faces == AllFaces;
        })) << "the cards do not come";
        return scenes;
    }

    static constexpr int AllFaces = 31;

  private:
    const RunningProgram& program;
    Picture back;
    Picture creditsPaid;
    Picture holding;

    // The inside of a card, where a face and the back differ for certain.
    Picture CardOf(const Picture& client, std::size_t position) const {
        const Area& card = program.layout.cards[position];
        const int in = 4 * program.scale;
        return Crop(client, {card.left + in, card.top + in, card.right - in, card.bottom - in});
    }

    // The part of the prompt band that lies in the client area.
    Picture OnScreen(const Picture& band) const {
        const Area& area = program.layout.prompt;
        return Crop(band, {0, 0, band.width, DesignHeight * program.scale - area.top});
    }

    Scene SceneOf(const Picture& client) const {
        Area prompt = program.layout.prompt;
        prompt.bottom = DesignHeight * program.scale;
        Scene scene = {0, Crop(client, program.layout.credits) == creditsPaid,
                       Crop(client, prompt) == holding, false};
        for (std::size_t i = 0; i < HandSize; ++i) {
            scene.faces |= CardOf(client, i) == back ? 0 : 1 << i;
            const Picture label = Crop(client, program.layout.held[i]);
            scene.held = scene.held || std::count(label.pixels.begin(), label.pixels.end(), White);
        }
        return scene;
    }
};

// The cards go through these steps in order; a busy machine misses some, but not all between the
// first and the last.
void ExpectSteps(const std::vector<Scene>& scenes, const std::vector<int>& steps) {
    std::size_t at = 0;
    std::size_t seen = 0;
    for (std::size_t i = 0; i < scenes.size(); ++i) {
        if (i > 0 && scenes[i].faces == scenes[i - 1].faces) {
            continue;
        }
        const auto found = std::find(steps.begin() + static_cast<std::ptrdiff_t>(at), steps.end(),
                                     scenes[i].faces);
        ASSERT_NE(found, steps.end()) << "faces " << scenes[i].faces << " out of turn";
        at = static_cast<std::size_t>(found - steps.begin()) + 1;
        ++seen;
    }
    EXPECT_GE(seen, 3U) << "the cards were not seen to move one by one";
}

constexpr std::uint32_t LongPayout = 3000;
constexpr unsigned CoinPause = 10; // half a minute of it

} // namespace

TEST_F(Pace, EveryCardAndCoinPausesAsTheDealSpeedSays) {
    SetSetting(L"Sound", 0);
    constexpr HoldPattern hold = 5;
    const std::uint32_t seed =
        FindSeed([](const Table& table) { return ForetoldDraw(table, hold).payout > 0; });
    Table table;
    ForetellStart(table, seed);
    const RunningProgram program = StartUntrained(seed);
    const auto deal = [&] { Do(program, IDC_DEAL_DRAW); };
    for (const auto& [command, speed] :
         {std::pair{IDM_SLOW, 200}, {IDM_MEDIUM, 100}, {IDM_FAST, 50}}) {
        SCOPED_TRACE(speed);
        Do(program, command);
        ForetellDeal(table);
        EXPECT_EQ(PausesOf(6, deal), Pauses(6, speed)) << "the backs, and five cards";
        Hold(program, hold);
        const auto coins = static_cast<std::size_t>(ForetellDraw(table, hold).payout);
        Pauses expected(3, speed);
        expected.insert(expected.end(), coins, speed / 2);
        EXPECT_EQ(PausesOf(expected.size(), deal), expected) << "three cards, and each coin";
    }
}

TEST_F(Pace, TheStoredSpeedIsThePaceFromTheStart) {
    for (const std::uint32_t speed : {200U, 50U}) {
        SetSetting(L"Speed", speed);
        const RunningProgram program = StartUntrained(1);
        EXPECT_EQ(PausesOf(6, [&] { Do(program, IDC_DEAL_DRAW); }),
                  Pauses(6, static_cast<LONG>(speed)));
        CloseProgram(program);
    }
}

TEST_F(Pace, ADealTakesItsPausesForReal) {
    SetSetting(L"Sound", 0);
    SetSetting(L"Speed", 50);
    const RunningProgram program = StartSeeded(1);
    const ULONGLONG start = GetTickCount64();
    Do(program, IDC_DEAL_DRAW);
    EXPECT_GE(GetTickCount64() - start, 6 * 50U - 20U);
}

// Credits and prompt change before the first card.
TEST_F(Pace, CardsTurnOneByOneFromTheLeft) {
    SetSetting(L"Sound", 0);
    SetSetting(L"Speed", 200);
    constexpr HoldPattern hold = 5;
    const std::uint32_t seed =
        FindSeed([](const Table& table) { return ForetoldDraw(table, hold).payout == 0; });
    const RunningProgram program = StartSeeded(seed);
    Do(program, IDM_NO_TRAINING);
    const Watcher first(program, 95);
    // Waited for to its end, for taps that come before it are thrown away.
    std::thread dealing([&] { Do(program, IDC_DEAL_DRAW); });
    const std::vector<Scene> deal = first.Watch();
    dealing.join();
    ExpectSteps(deal, {0, 1, 3, 7, 15, 31});
    for (const Scene& scene : deal) {
        EXPECT_TRUE(scene.faces == 0 || (scene.credits && scene.prompt)) << scene.faces;
    }

    Hold(program, hold);
    Post(program, IDC_DEAL_DRAW);
    const std::vector<Scene> draw = first.Watch();
    ExpectSteps(draw, {31, 29, 21, 5, 7, 15, 31});
    for (const Scene& scene : draw) {
        EXPECT_TRUE(scene.held) << "the holds stay for all to see";
    }
}

TEST_F(Pace, ANewHandStartsFromBacksWithoutAHold) {
    SetSetting(L"Sound", 0);
    SetSetting(L"Speed", 200);
    constexpr HoldPattern hold = 31;
    const std::uint32_t seed =
        FindSeed([](const Table& table) { return ForetoldDraw(table, hold).payout == 0; });
    const RunningProgram program = StartSeeded(seed);
    Do(program, IDM_NO_TRAINING);
    const Watcher second(program, 90);
    Do(program, IDC_DEAL_DRAW);
    Hold(program, hold);
    Do(program, IDC_DEAL_DRAW);
    ASSERT_TRUE(ShowsHeld(program, 4, true));
    Post(program, IDC_DEAL_DRAW);
    const std::vector<Scene> deal = second.Watch();
    ExpectSteps(deal, {31, 30, 28, 24, 16, 0, 1, 3, 7, 15, 31});
    bool backs = false;
    for (const Scene& scene : deal) {
        backs = backs || scene.faces == 0;
        EXPECT_TRUE(!backs || scene.faces == 0 || !scene.held) << scene.faces;
    }
}

TEST_F(Pace, ACountUpLeavesThePromptUntilItsLastCoin) {
    SetSetting(L"Sound", 0);
    const RunningProgram program = StartCountUp(LongPayout, CoinPause);
    EXPECT_TRUE(ShowsPrompt(program, HoldAndDraw));
    EXPECT_EQ(ControlText(program, IDC_DEAL_DRAW), L"Deal");
    EXPECT_TRUE(IsWindowEnabled(Control(program, IDC_BET_ONE)));
    TypeKey(program, L'2');
    Settle(program);
    EXPECT_TRUE(ShowsHeld(program, 1, true)) << "there is nothing to let go of any more";
    EXPECT_TRUE(CountsOn(2)) << "a key that does nothing hurried the coins";
    Do(program, IDC_BET_ONE);
    EXPECT_TRUE(ShowsPrompt(program, GameOver));
    EXPECT_TRUE(ShowsPaid(program, LongPayout));
    EXPECT_TRUE(ShowsCredits(program, 95 + static_cast<std::int32_t>(LongPayout)));
}

TEST_F(Pace, ACountUpGoesOnBesideCommandsThatDoNotPlay) {
    SetSetting(L"Sound", 0);
    const RunningProgram program = StartCountUp(LongPayout, CoinPause);
    for (const int command : {IDM_NO_DRAW, IDM_USE_SOUND, IDM_USE_SOUND, IDM_RESET_CREDITS,
                              IDM_MEDIUM, 503, IDM_FIRST_GAME + GameCount}) {
        Do(program, command);
        EXPECT_TRUE(CountsOn(3)) << "command " << command;
    }
    for (const int command : {IDC_MENU, IDM_DEAL_SPEED}) {
        OpenMenu(program, command);
        EXPECT_TRUE(CountsOn(3)) << "menu of command " << command;
        CloseMenu(program);
    }
    EXPECT_LT(PausesAsked().size(), LongPayout) << "the count-up was too short for this test";
}

TEST_F(Pace, ACountUpTakesUpAnotherSpeedAtOnce) {
    SetSetting(L"Sound", 0);
    const RunningProgram program = StartCountUp(LongPayout, CoinPause);
    ASSERT_TRUE(CountsOn(2));
    EXPECT_EQ(PausesAsked().back(), 50);
    Do(program, IDM_SLOW);
    ASSERT_TRUE(CountsOn(2));
    EXPECT_EQ(PausesAsked().back(), 100);
    Do(program, IDM_FAST);
    ASSERT_TRUE(CountsOn(2));
    EXPECT_EQ(PausesAsked().back(), 25);
}

TEST_F(Pace, ADialogOfTheEngineEndsACountUp) {
    SetSetting(L"Sound", 0);
    for (const int command : {IDM_HAND_ANALYSIS, IDM_GAME_ANALYSIS, IDM_HAND_DETAILS}) {
        SCOPED_TRACE(command);
        const RunningProgram program = StartCountUp(LongPayout, CoinPause);
        ASSERT_TRUE(CountsOn(1));
        Post(program, command);
        HWND dialog = nullptr;
        ASSERT_TRUE(Eventually([&] {
            dialog = GetLastActivePopup(program.window);
            return dialog != program.window && IsWindowVisible(dialog);
        })) << "no dialog";
        EXPECT_TRUE(StandsStill());
        EXPECT_LT(PausesAsked().size(), LongPayout);
        LeaveDialog(dialog, IDCANCEL);
        EXPECT_TRUE(ShowsCredits(program, 95 + static_cast<std::int32_t>(LongPayout)));
        CloseProgram(program);
        DeleteSettings();
        SetSetting(L"Sound", 0);
    }
}
