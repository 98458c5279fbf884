#include <array>
#include <string>

#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/play.h"
#include "ui/resource.h"

// The registry before a run and after it.

namespace {

class StoredSettings : public WindowTest {};

struct Value {
    const wchar_t* name;
    std::uint32_t value;
};

constexpr Value defaults[] = {
    {L"CoinsIn", 0},  {L"CoinsOut", 0}, {L"Hands", 0},    {L"Errors0", 0}, {L"Errors1", 0},
    {L"Errors2", 0},  {L"NoDraw", 0},   {L"Speed", 100},  {L"Sound", 1},   {L"Credits", 100},
    {L"DefBuy", 100}, {L"Lastbet", 5},  {L"Lastgame", 0},
};

constexpr Value others[] = {
    {L"CoinsIn", 1234}, {L"CoinsOut", 987}, {L"Hands", 246},  {L"Errors0", 3}, {L"Errors1", 2},
    {L"Errors2", 1},    {L"NoDraw", 1},     {L"Speed", 200},  {L"Sound", 0},   {L"Credits", 77777},
    {L"DefBuy", 250},   {L"Lastbet", 3},    {L"Lastgame", 4},
};

// A binary value of eight bytes, or nothing.
std::optional<double> StoredDouble(const wchar_t* name) {
    double value = 0;
    DWORD size = sizeof value;
    DWORD type = 0;
    if (RegGetValueW(HKEY_CURRENT_USER, L"TessarCE", name, RRF_RT_REG_BINARY, &type, &value,
                     &size) != ERROR_SUCCESS ||
        size != sizeof value) {
        return std::nullopt;
    }
    return value;
}

void StoreDouble(const wchar_t* name, double value) {
    RegSetKeyValueW(HKEY_CURRENT_USER, L"TessarCE", name, REG_BINARY, &value, sizeof value);
}

std::string Narrow(const std::wstring& name) {
    std::string narrow;
    for (const wchar_t letter : name) {
        narrow += static_cast<char>(letter);
    }
    return narrow;
}

} // namespace

TEST_F(StoredSettings, AFreshMachineStartsWithTheDefaults) {
    const RunningProgram program = StartProgram();
    EXPECT_FALSE(SettingsExist()) << "settings are written only at the end";
    EXPECT_TRUE(ShowsCredits(program, 100));
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 5");
    EXPECT_EQ(ControlText(program, IDC_STATUS), L"JACKS OR BETTER");
    CloseProgram(program);
    for (const Value& value : defaults) {
        EXPECT_EQ(Setting(value.name), value.value) << Narrow(value.name);
    }
    EXPECT_EQ(StoredDouble(L"Returns0"), 0.0);
    EXPECT_EQ(StoredDouble(L"Returns1"), 0.0);
}

TEST_F(StoredSettings, AreFoundAgain) {
    for (const Value& value : others) {
        SetSetting(value.name, value.value);
    }
    StoreDouble(L"Returns0", 12.75);
    StoreDouble(L"Returns1", -0.5);
    const RunningProgram program = StartProgram();
    EXPECT_TRUE(ShowsCredits(program, 77777));
    EXPECT_TRUE(ShowsCoinsIn(program, 3));
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 3");
    EXPECT_EQ(ControlText(program, IDC_STATUS), L"DOUBLE BONUS POKER");
    CloseProgram(program);
    for (const Value& value : others) {
        EXPECT_EQ(Setting(value.name), value.value) << Narrow(value.name);
    }
    EXPECT_EQ(StoredDouble(L"Returns0"), 12.75);
    EXPECT_EQ(StoredDouble(L"Returns1"), -0.5);
}

TEST_F(StoredSettings, OutOfRangeTakeTheirDefault) {
    struct Odd {
        const wchar_t* name;
        std::uint32_t stored;
        std::uint32_t becomes;
    };
    using Run = std::vector<Odd>;
    for (const Run& run : {Run{{L"Lastbet", 0, 5},
                               {L"Lastgame", GameCount + 1, 0},
                               {L"Speed", 73, 100},
                               {L"Sound", 2, 1},
                               {L"NoDraw", 7, 1},
                               {L"Credits", 0xFFFFFFF6, 0xFFFFFFF6}},
                           Run{{L"Lastbet", 9, 5},
                               {L"Lastgame", GameCount, 0},
                               {L"Speed", 0, 100},
                               {L"Sound", 0, 0}},
                           Run{{L"Lastbet", 0xFFFFFFFF, 5},
                               {L"Lastgame", 0xFFFFFFFF, 0},
                               {L"Speed", 0xFFFFFFFF, 100},
                               {L"Sound", 0xFFFFFFFF, 1}},
                           Run{{L"Lastbet", 1, 1},
                               {L"Lastgame", GameCount - 1, GameCount - 1},
                               {L"Speed", 50, 50},
                               {L"Sound", 1, 1}}}) {
        DeleteSettings();
        for (const Odd& odd : run) {
            SetSetting(odd.name, odd.stored);
        }
        CloseProgram(StartProgram());
        for (const Odd& odd : run) {
            EXPECT_EQ(Setting(odd.name), odd.becomes) << Narrow(odd.name) << " " << odd.stored;
        }
    }
}

TEST_F(StoredSettings, OfAnotherLengthTakeTheirDefault) {
    const wchar_t text[] = L"100000 coins";
    RegSetKeyValueW(HKEY_CURRENT_USER, L"TessarCE", L"Credits", REG_SZ, text, sizeof text);
    SetSetting(L"Returns0", 5);
    const RunningProgram program = StartProgram();
    EXPECT_TRUE(ShowsCredits(program, 100));
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Credits"), 100U);
    EXPECT_EQ(StoredDouble(L"Returns0"), 0.0);
}

TEST_F(StoredSettings, KeepWhatWasChosen) {
    SetSetting(L"Credits", 0);
    RunningProgram program = StartSeeded(1, 0);
    for (const int command : {static_cast<int>(IDM_USE_SOUND), IDM_NO_DRAW, IDM_FAST, IDC_BET_ONE,
                              IDC_BET_ONE, IDM_FIRST_GAME + 2}) {
        Do(program, command);
    }
    Post(program, IDC_DEAL_DRAW);
    const HWND dialog = WaitForDialog(program, L"Need Money");
    SendMessageW(GetDlgItem(dialog, IDC_PURCHASE), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"321"));
    LeaveDialog(dialog, IDOK);
    CloseProgram(program);
    const std::array<Value, 7> chosen = {{{L"Sound", 0},
                                          {L"NoDraw", 1},
                                          {L"Speed", 50},
                                          {L"Lastbet", 2},
                                          {L"Lastgame", 2},
                                          {L"Credits", 321},
                                          {L"DefBuy", 321}}};
    for (const Value& value : chosen) {
        EXPECT_EQ(Setting(value.name), value.value) << Narrow(value.name);
    }
    program = StartSeeded(1, 0);
    EXPECT_EQ(ControlText(program, IDC_BET_ONE), L"Bet 2");
    EXPECT_EQ(ControlText(program, IDC_STATUS), L"JOKER WILD");
    EXPECT_TRUE(ShowsCredits(program, 321));
}

TEST_F(StoredSettings, DeletingTheKeyRestoresEveryDefault) {
    GameDescriptor game{};
    SetSetting(L"Lastgame", 0);
    SetSetting(L"Credits", 5000);
    PayFor(77);
    LoadGame(game, JacksOrBetter);
    RunningProgram program = StartProgram();
    EXPECT_TRUE(ShowsCredits(program, 5000));
    EXPECT_TRUE(ShowsRow(program, game, 8, 5, false));
    CloseProgram(program);
    EXPECT_EQ(Setting(L"8", L"JACKS OR BETTER\\5"), 77U);

    DeleteSettings();
    LoadGame(game, JacksOrBetter);
    ASSERT_EQ(game.fiveCoins[8], 5);
    program = StartProgram();
    EXPECT_TRUE(ShowsCredits(program, 100));
    for (std::int32_t row = 0; row < game.rowCount; ++row) {
        EXPECT_TRUE(ShowsRow(program, game, row, 5, false));
    }
    CloseProgram(program);
    for (const Value& value : defaults) {
        EXPECT_EQ(Setting(value.name), value.value) << Narrow(value.name);
    }
}

TEST_F(StoredSettings, ARunThatIsCutOffKeepsThoseOfTheRunBefore) {
    SetSetting(L"Credits", 500);
    const RunningProgram program = StartUntrained(1);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsCredits(program, 495));
    TerminateProcess(program.process, 1);
    ASSERT_EQ(ExitCodeOf(program.process), 1U);
    EXPECT_EQ(Setting(L"Credits"), 500U);
    EXPECT_EQ(Setting(L"Lastbet"), std::nullopt);
}
