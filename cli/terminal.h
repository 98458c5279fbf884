// The two standard streams that may be a terminal, and input as it arrives.
#ifndef TESSARIN_CLI_TERMINAL_H
#define TESSARIN_CLI_TERMINAL_H

#include <cstddef>
#include <string_view>

// Whether standard output shows escape sequences as colours and its reader wants them: a terminal,
// TERM neither unset nor "dumb", NO_COLOR unset or empty.
bool OutputShowsColour();

// What has arrived on standard input, at most `size` bytes; waits for the first. 0 at the end, -1
// on a failure.
long ReadInput(char* bytes, std::size_t size);

// Writes all of it to standard output at once; false if that fails.
bool WriteOutput(std::string_view text);

// Writes one line "tessarin: ..." to standard error.
void Complain(std::string_view message);

// A line on standard error that shows how far the work is, overwritten in place; nothing at all
// where that is no terminal. An interrupt clears it and then ends the program as usual.
void ShowProgressLine(std::string_view text);
void ClearProgressLine();

#endif
