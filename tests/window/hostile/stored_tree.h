// All that is stored under the program's key, of whatever type and name.
#ifndef TESSARIN_TESTS_WINDOW_HOSTILE_STORED_TREE_H
#define TESSARIN_TESTS_WINDOW_HOSTILE_STORED_TREE_H

#include <windows.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/table.h"
#include "training/session_stats.h"

struct StoredValue {
    DWORD type;
    std::vector<std::uint8_t> bytes;
    bool operator==(const StoredValue&) const = default;
};

StoredValue NumberValue(std::int32_t number);
StoredValue RealValue(double number);

// The names of the registry, which takes A and a for the same.
std::wstring FoldedName(const std::wstring& name);

// By path below the program's key (its own is empty), then by name; both folded.
using StoredKey = std::map<std::wstring, StoredValue>;
using StoredTree = std::map<std::wstring, StoredKey>;

StoredTree ReadTree();

// Whether the system takes the value.
bool PutValue(const std::wstring& path, const std::wstring& name, const StoredValue& value);
bool PutKey(const std::wstring& path);

// Null if there is none.
const StoredValue* FindValue(const StoredTree& tree, const std::wstring& path,
                             const std::wstring& name);

// What the program writes at its end, in the order in which it does.
using OwnValues = std::vector<std::pair<std::wstring, StoredValue>>;
OwnValues ValuesOf(const Table& table, const SessionStats& stats);

// The five of the window's place, written after them; any number may be in them.
inline constexpr const wchar_t* PlaceNames[] = {L"WindowLeft", L"WindowTop", L"WindowWidth",
                                                L"WindowHeight", L"WindowMaximised"};

// The path of a game's paytable of one or five coins, and a row's name there.
std::wstring PaytablePath(const GameDescriptor& game, bool fiveCoins);

// What is in one tree and not, or not the same, in the other, keys without values left out; empty
// if there is nothing.
std::string DifferencesOf(const StoredTree& before, const StoredTree& after);

// For messages of failure; what is not ASCII becomes a question mark.
std::string Readable(const std::wstring& text);
std::string Readable(const StoredValue& value);

#endif
