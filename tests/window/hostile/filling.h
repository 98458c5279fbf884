// The program's key filled by chance, and what the program is to make of it.
#ifndef TESSARIN_TESTS_WINDOW_HOSTILE_FILLING_H
#define TESSARIN_TESTS_WINDOW_HOSTILE_FILLING_H

#include <random>

#include "tests/window/hostile/stored_tree.h"

// Puts values of any type, length and content under the names that the program reads, under names
// close to them and under names of any kind, in the program's key, in those of the paytables and
// in that of the analysis which the rest of the filling leads to.
void FillSettings(std::mt19937& random);

// What a tree means, by the rules of the settings: four bytes are a number whatever their type,
// eight a double; anything else, and a number out of its range, is the default.
void Understand(const StoredTree& tree, Table& table, SessionStats& stats);

// A text as the analysis shows it: of the text type and at most 260 bytes, up to its zero, 129
// characters at most; otherwise empty.
std::wstring TextOf(const StoredValue* value);

#endif
