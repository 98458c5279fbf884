// The sound device of the programs started from now on; nothing outside Wine.
#ifndef TESSARIN_TESTS_WINDOW_SOUND_DEVICE_H
#define TESSARIN_TESTS_WINDOW_SOUND_DEVICE_H

#include <cstdint>
#include <vector>

void UseSilentDevice();    // takes every sound, as fast as it comes, and is not heard
void UseNoDevice();        // there is none
void UseRecordingDevice(); // keeps every sound as a recording of its own; forgets earlier ones

inline constexpr int RecordingRate = 44100; // samples a second
using Recording = std::vector<std::int16_t>;

// The sounds recorded so far, in the order they were begun.
std::vector<Recording> Recordings();

#endif
