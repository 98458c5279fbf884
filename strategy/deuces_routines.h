// One counting routine for each shape of held cards in Deuces Wild; D is a deuce, a b c d are
// natural ranks that differ. Each is a DeucesRoutine: it writes the whole record of the hold, and
// to its cleared rows by rank.
#ifndef TESSARIN_STRATEGY_DEUCES_ROUTINES_H
#define TESSARIN_STRATEGY_DEUCES_ROUTINES_H

#include "strategy/deuces_deck.h"

void CountDeucesDrawFive(DeucesDeckState& deck, std::int32_t hold);

void CountOneDeuce(DeucesDeckState& deck, std::int32_t hold);  // D
void CountOneSingle(DeucesDeckState& deck, std::int32_t hold); // a

void CountTwoDeuces(DeucesDeckState& deck, std::int32_t hold);      // D D
void CountDeuceAndSingle(DeucesDeckState& deck, std::int32_t hold); // D a
void CountPair(DeucesDeckState& deck, std::int32_t hold);           // a a
void CountTwoSingles(DeucesDeckState& deck, std::int32_t hold);     // a b

void CountThreeDeuces(DeucesDeckState& deck, std::int32_t hold);        // D D D
void CountTwoDeucesAndSingle(DeucesDeckState& deck, std::int32_t hold); // D D a
void CountDeuceAndPair(DeucesDeckState& deck, std::int32_t hold);       // D a a
void CountDeuceAndTwoSingles(DeucesDeckState& deck, std::int32_t hold); // D a b
void CountTrips(DeucesDeckState& deck, std::int32_t hold);              // a a a
void CountPairAndSingle(DeucesDeckState& deck, std::int32_t hold);      // a a b
void CountThreeSingles(DeucesDeckState& deck, std::int32_t hold);       // a b c

void CountFourDeuces(DeucesDeckState& deck, std::int32_t hold);           // D D D D
void CountThreeDeucesAndSingle(DeucesDeckState& deck, std::int32_t hold); // D D D a
void CountTwoDeucesAndPair(DeucesDeckState& deck, std::int32_t hold);     // D D a a
void CountTwoDeucesTwoSingles(DeucesDeckState& deck, std::int32_t hold);  // D D a b
void CountDeuceAndTrips(DeucesDeckState& deck, std::int32_t hold);        // D a a a
void CountDeucePairAndSingle(DeucesDeckState& deck, std::int32_t hold);   // D a a b
void CountDeuceAndThreeSingles(DeucesDeckState& deck, std::int32_t hold); // D a b c
void CountFourOfAKind(DeucesDeckState& deck, std::int32_t hold);          // a a a a
void CountTripsOrTwoPair(DeucesDeckState& deck, std::int32_t hold);       // a a a b, a a b b
void CountPairAndTwoSingles(DeucesDeckState& deck, std::int32_t hold);    // a a b c
void CountFourSingles(DeucesDeckState& deck, std::int32_t hold);          // a b c d

#endif
