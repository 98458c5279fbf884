#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>

#include "tests/window/forecast.h"
#include "tests/window/harness.h"
#include "tests/window/looks.h"
#include "tests/window/play.h"
#include "tests/window/sound_device.h"
#include "ui/resource.h"

// The sounds as a device of the test's own records them.

namespace {

class Sounds : public WindowTest {
  protected:
    void SetUp() override {
        if (!CanChooseSoundDevice()) {
            GTEST_SKIP() << "the sound device cannot be chosen here";
        }
        WindowTest::SetUp();
        UseRecordingDevice();
    }
};

constexpr int Audible = 300; // of 32767

// From the first to the last audible sample.
Recording Trimmed(const Recording& recording) {
    const auto audible = [](std::int16_t sample) { return std::abs(sample) > Audible; };
    const auto first = std::find_if(recording.begin(), recording.end(), audible);
    const auto last = std::find_if(recording.rbegin(), recording.rend(), audible).base();
    return first < last ? Recording(first, last) : Recording{};
}

double Seconds(const Recording& recording) {
    return static_cast<double>(recording.size()) / RecordingRate;
}

// How strongly a pitch sounds, by the Goertzel method.
double Strength(const Recording& recording, double pitch) {
    const double factor = 2 * std::cos(2 * std::numbers::pi * pitch / RecordingRate);
    double one = 0;
    double two = 0;
    for (const std::int16_t sample : recording) {
        const double next = sample + factor * one - two;
        two = one;
        one = next;
    }
    return one * one + two * two - factor * one * two;
}

// The strongest pitch between 150 and 4000 Hz.
double Pitch(const Recording& recording) {
    double best = 0;
    double strongest = 0;
    for (double pitch = 150; pitch <= 4000; pitch *= 1.01) {
        const double strength = Strength(recording, pitch);
        if (strength > strongest) {
            strongest = strength;
            best = pitch;
        }
    }
    return best;
}

bool IsClick(const Recording& sound) {
    const Recording trimmed = Trimmed(sound);
    return !trimmed.empty() && Seconds(trimmed) < 0.06 && Pitch(trimmed) < 800;
}

bool IsChime(const Recording& sound) {
    const Recording trimmed = Trimmed(sound);
    return Seconds(trimmed) > 0.6 && Seconds(trimmed) < 1.2 && Pitch(trimmed) > 700 &&
           Pitch(trimmed) < 1700;
}

bool IsCoins(const Recording& sound) {
    const Recording trimmed = Trimmed(sound);
    return Seconds(trimmed) > 0.1 && Pitch(trimmed) > 2000 && Pitch(trimmed) < 3200;
}

std::string Described(const Recording& sound) {
    const Recording trimmed = Trimmed(sound);
    return std::to_string(Seconds(trimmed)) + " s, " + std::to_string(Pitch(trimmed)) + " Hz";
}

// Waits until so many sounds have begun and the last has come to its end.
std::vector<Recording> WaitForSounds(std::size_t count) {
    std::vector<Recording> sounds;
    EXPECT_TRUE(Eventually([&] { return Recordings().size() >= count; })) << "too few sounds";
    std::size_t length = 0;
    EXPECT_TRUE(Eventually([&] {
        Sleep(150);
        sounds = Recordings();
        const std::size_t before = length;
        length = sounds.empty() ? 0 : sounds.back().size();
        return length > 0 && length == before;
    })) << "the last sound does not end";
    return sounds;
}

} // namespace

// A busy machine needs its time to open the device, and each sound ends the one before.
TEST_F(Sounds, EveryCardTurnedUpClicks) {
    const std::uint32_t seed = FindSeed(
        [](const Table& table) { return !IsWinning(table) && ForetoldDraw(table, 7).payout == 0; });
    const RunningProgram program = StartUntrained(seed, 400);
    Do(program, IDC_DEAL_DRAW);
    WaitForSounds(5);
    Hold(program, 7);
    Do(program, IDC_DEAL_DRAW);
    const std::vector<Recording> sounds = WaitForSounds(7);
    EXPECT_EQ(sounds.size(), 7U) << "five cards dealt and two replaced";
    for (const Recording& sound : sounds) {
        EXPECT_TRUE(IsClick(sound)) << Described(sound);
        EXPECT_FALSE(IsChime(sound));
        EXPECT_FALSE(IsCoins(sound));
    }
}

TEST_F(Sounds, APatHandChimes) {
    const RunningProgram program = StartUntrained(FindSeed(IsWinning), 150);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(Eventually([] {
        const std::vector<Recording> sounds = Recordings();
        return std::any_of(sounds.begin(), sounds.end(), IsChime);
    }));
    const Recording chime = WaitForSounds(1).back();
    EXPECT_TRUE(IsChime(chime)) << Described(chime);
    EXPECT_FALSE(IsClick(chime));
    EXPECT_FALSE(IsCoins(chime));
}

TEST_F(Sounds, ACountUpRingsUntilItsLastCoin) {
    PayFor(40);
    const RunningProgram program = StartUntrained(FindSeed(IsWinning), 25);
    Do(program, IDC_DEAL_DRAW);
    Hold(program, HoldAll);
    WaitForSounds(2);
    UseRecordingDevice(); // of the draw alone: all cards are held, so none clicks
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsPaid(program, 40));
    const std::vector<Recording> sounds = WaitForSounds(1);
    ASSERT_EQ(sounds.size(), 1U);
    EXPECT_TRUE(IsCoins(sounds[0])) << Described(sounds[0]);
    EXPECT_FALSE(IsClick(sounds[0]));
    EXPECT_FALSE(IsChime(sounds[0]));
}

TEST_F(Sounds, NothingSoundsWhenUseSoundIsOff) {
    PayFor(20);
    SetSetting(L"Sound", 0);
    const RunningProgram program = StartUntrained(FindSeed(IsWinning), 20);
    Do(program, IDC_DEAL_DRAW);
    Hold(program, HoldAll);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsPaid(program, 20));
    CloseProgram(program);
    EXPECT_TRUE(Recordings().empty());
}

TEST_F(Sounds, TurningSoundOffStopsACountUpsRinging) {
    const RunningProgram program = StartCountUp(2000, 25);
    ASSERT_TRUE(Eventually([] {
        const std::vector<Recording> sounds = Recordings();
        return !sounds.empty() && IsCoins(sounds.back());
    }));
    Do(program, IDM_USE_SOUND);
    WaitForSounds(1); // to their end
    CloseProgram(program);
    EXPECT_EQ(Setting(L"Credits"), 2095U);
}

TEST_F(Sounds, WithoutADeviceTheGamePlaysOn) {
    UseNoDevice();
    PayFor(20);
    const RunningProgram program = StartUntrained(FindSeed(IsWinning), 5);
    Do(program, IDC_DEAL_DRAW);
    Hold(program, HoldAll);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsPaid(program, 20));
    EXPECT_TRUE(ShowsCredits(program, 115));
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(Holding(program));
    CloseProgram(program);
}

// The program alone in a folder of its own.
TEST_F(Sounds, WithoutItsFilesTheGamePlaysOnSilently) {
    PayFor(20);
    const std::uint32_t seed = FindSeed(IsWinning);
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    const std::wstring copy = folder + std::wstring(L"tessarin-alone.exe");
    ASSERT_TRUE(CopyFileW((ProgramFolder() + L"tessarin-seeded.exe").c_str(), copy.c_str(), FALSE));
    const RunningProgram program = StartAndWait(copy + L" " + std::to_wstring(seed) + L" 5");
    Do(program, IDM_NO_TRAINING);
    Do(program, IDC_DEAL_DRAW);
    Hold(program, HoldAll);
    Do(program, IDC_DEAL_DRAW);
    EXPECT_TRUE(ShowsPaid(program, 20));
    EXPECT_TRUE(ShowsCredits(program, 115));
    CloseProgram(program);
    EXPECT_TRUE(Recordings().empty()) << "not even the system's own sound";
    DeleteFileW(copy.c_str());
}
