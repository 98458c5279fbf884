// One number that signs the whole engine: if any count, return or choice of the sample changes, it
// changes.
#ifndef TESSARIN_TESTS_STRATEGY_ENGINE_SIGNATURE_H
#define TESSARIN_TESTS_STRATEGY_ENGINE_SIGNATURE_H

#include <cstdint>

// Searches a fixed sample of hands in all six games at bets of 1 and 5 with the built-in payouts,
// and hashes every result table and choice.
std::uint64_t EngineSignature();

// What the proved engine signs with.
inline constexpr std::uint64_t ProvedSignature = 0x291d70622f9b6a7f;

#endif
