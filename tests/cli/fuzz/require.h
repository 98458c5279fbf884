// What the targets hold the command line to, beyond its doing no harm.
#ifndef TESSARIN_TESTS_CLI_FUZZ_REQUIRE_H
#define TESSARIN_TESTS_CLI_FUZZ_REQUIRE_H

#include <cstdio>
#include <cstdlib>
#include <string>

// Ends the run, so that the input at hand is kept, unless the rule holds.
inline void Require(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "Broken: %s\n", rule);
        std::abort();
    }
}

// A message is one line that a terminal shows as it stands.
inline void RequireMessage(const std::string& message) {
    constexpr std::size_t longest = 400;
    Require(!message.empty(), "what is refused has a message");
    Require(message.size() <= longest, "a message is short");
    for (const char c : message) {
        Require(c >= ' ' && c <= '~', "a message is one line of printable characters");
    }
}

#endif
