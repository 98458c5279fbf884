// What a benchmark of a game is called.
#ifndef TESSARIN_BENCH_GAME_NAME_H
#define TESSARIN_BENCH_GAME_NAME_H

#include <string>

#include "core/game_tables.h"

// Its title in plain letters, of which titles are made.
inline std::string NameOf(std::int32_t id) {
    std::string name;
    for (const wchar_t* letter = gameTables[static_cast<std::size_t>(id)].title; *letter != 0;
         ++letter) {
        name += static_cast<char>(*letter);
    }
    return name;
}

#endif
