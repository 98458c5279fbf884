// Runs the built command line as a user would, over files or on a terminal.
#ifndef TESSARIN_TESTS_CLI_RUN_PROGRAM_H
#define TESSARIN_TESTS_CLI_RUN_PROGRAM_H

#include <string>
#include <vector>

struct ProgramRun {
    int status; // the exit status, or 128 + the signal that ended it
    std::string out;
    std::string err;
};

using Arguments = std::vector<std::string>;

// With the text as its standard input.
ProgramRun RunProgram(const Arguments& arguments, const std::string& input = "");

// With its standard output in the file, which is there.
ProgramRun RunProgramInto(const char* path, const Arguments& arguments,
                          const std::string& input = "");

// Over pipes: each line is sent only when the one before has been answered by a whole line.
ProgramRun Converse(const Arguments& arguments, const std::vector<std::string>& lines);

// On a terminal, which shows both streams in `out`. With a signal given, it is sent as soon as the
// terminal shows the text waited for.
ProgramRun RunOnTerminal(const Arguments& arguments, int signal = 0,
                         const std::string& waitedFor = "");

#endif
