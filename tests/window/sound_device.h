// The sound device of the programs started from now on.
#ifndef TESSARIN_TESTS_WINDOW_SOUND_DEVICE_H
#define TESSARIN_TESTS_WINDOW_SOUND_DEVICE_H

#include <cstdint>
#include <vector>

// Under Wine, when the test was told where the sound library looks for its devices; otherwise the
// choices below change nothing.
bool CanChooseSoundDevice();

void UseSilentDevice();    // takes every sound, as fast as it comes, and is not heard
void UseNoDevice();        // there is none
void UseRecordingDevice(); // keeps every sound as a recording of its own; forgets earlier ones

inline constexpr int RecordingRate = 44100; // samples a second
using Recording = std::vector<std::int16_t>;

// The sounds recorded so far, in the order they were begun; a device that was only tried out is
// none.
std::vector<Recording> Recordings();

#endif
