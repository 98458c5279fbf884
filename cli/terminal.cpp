#include "cli/terminal.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr int StandardInput = 0;
constexpr int StandardOutput = 1;
constexpr int StandardError = 2;

// Blanks over the whole line, because not every terminal knows a sequence for it.
constexpr char EmptyLine[] = "\r                                                            \r";
constexpr std::size_t ProgressWidth = sizeof EmptyLine - 3;

bool progressShown = false;

// Only what a signal handler may call: the line is cleared, and the signal takes its usual way.
void ClearAndDie(int signal) {
    [[maybe_unused]] const auto written = write(StandardError, EmptyLine, sizeof EmptyLine - 1);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

// A signal that is ignored, as under nohup, stays ignored.
void CatchInterrupt(int signal) {
    if (std::signal(signal, ClearAndDie) == SIG_IGN) {
        std::signal(signal, SIG_IGN);
    }
}

} // namespace

bool OutputShowsColour() {
    const char* terminal = std::getenv("TERM");
    const char* refused = std::getenv("NO_COLOR");
    return isatty(StandardOutput) != 0 && terminal != nullptr &&
           std::strcmp(terminal, "dumb") != 0 && (refused == nullptr || *refused == '\0');
}

long ReadInput(char* bytes, std::size_t size) {
    long got = 0;
    do {
        got = static_cast<long>(read(StandardInput, bytes, static_cast<unsigned>(size)));
    } while (got < 0 && errno == EINTR);
    return got;
}

bool WriteOutput(std::string_view text) {
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() &&
           std::fflush(stdout) == 0;
}

void Complain(std::string_view message) {
    std::string line = "tessarin: ";
    line += message;
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void ShowProgressLine(std::string_view text) {
    if (isatty(StandardError) == 0) {
        return;
    }
    if (!progressShown) {
        progressShown = true;
        CatchInterrupt(SIGINT);
        CatchInterrupt(SIGTERM);
    }
    std::string line = "\r";
    line += text.substr(0, ProgressWidth);
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void ClearProgressLine() {
    if (progressShown) {
        progressShown = false;
        std::fwrite(EmptyLine, 1, sizeof EmptyLine - 1, stderr);
    }
}
