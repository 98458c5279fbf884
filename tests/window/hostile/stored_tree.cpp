#include "tests/window/hostile/stored_tree.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr wchar_t ProgramKey[] = L"TessarCE";
constexpr DWORD LongestName = 16384;

std::wstring FullPath(const std::wstring& path) {
    return path.empty() ? ProgramKey : ProgramKey + (L"\\" + path);
}

StoredKey ReadValues(HKEY key) {
    StoredKey values;
    std::vector<wchar_t> name(LongestName);
    for (DWORD index = 0;; ++index) {
        DWORD nameLength = LongestName;
        DWORD type = 0;
        DWORD size = 0;
        if (RegEnumValueW(key, index, name.data(), &nameLength, nullptr, &type, nullptr, &size) !=
            ERROR_SUCCESS) {
            return values;
        }
        StoredValue value = {type, std::vector<std::uint8_t>(size)};
        nameLength = LongestName;
        RegEnumValueW(key, index, name.data(), &nameLength, nullptr, &type, value.bytes.data(),
                      &size);
        values[FoldedName({name.data(), nameLength})] = value;
    }
}

void ReadKey(const std::wstring& path, StoredTree& tree) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, FullPath(path).c_str(), 0, KEY_READ, &key) !=
        ERROR_SUCCESS) {
        return;
    }
    tree[FoldedName(path)] = ReadValues(key);
    wchar_t name[256];
    for (DWORD index = 0;; ++index) {
        DWORD length = 256;
        if (RegEnumKeyExW(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS) {
            break;
        }
        ReadKey(path.empty() ? name : path + L"\\" + name, tree);
    }
    RegCloseKey(key);
}

template <typename Number>
StoredValue ValueOf(DWORD type, Number number) {
    StoredValue value = {type, std::vector<std::uint8_t>(sizeof number)};
    std::memcpy(value.bytes.data(), &number, sizeof number);
    return value;
}

} // namespace

StoredValue NumberValue(std::int32_t number) {
    return ValueOf(REG_DWORD, number);
}

StoredValue RealValue(double number) {
    return ValueOf(REG_BINARY, number);
}

std::wstring FoldedName(const std::wstring& name) {
    std::wstring folded = name;
    for (wchar_t& letter : folded) {
        if (letter >= L'A' && letter <= L'Z') {
            letter = static_cast<wchar_t>(letter - L'A' + L'a');
        }
    }
    return folded;
}

StoredTree ReadTree() {
    StoredTree tree;
    ReadKey(L"", tree);
    return tree;
}

// The system adds a text's terminator if it finds one just behind the bytes, so there is none.
bool PutValue(const std::wstring& path, const std::wstring& name, const StoredValue& value) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, FullPath(path).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                        nullptr, &key, nullptr) != ERROR_SUCCESS) {
        return false;
    }
    std::vector<std::uint8_t> bytes = value.bytes;
    bytes.resize(bytes.size() + 8, 0xFF);
    const LSTATUS status = RegSetValueExW(key, name.c_str(), 0, value.type, bytes.data(),
                                          static_cast<DWORD>(value.bytes.size()));
    RegCloseKey(key);
    return status == ERROR_SUCCESS;
}

bool PutKey(const std::wstring& path) {
    HKEY key = nullptr;
    const LSTATUS status = RegCreateKeyExW(HKEY_CURRENT_USER, FullPath(path).c_str(), 0, nullptr, 0,
                                           KEY_ALL_ACCESS, nullptr, &key, nullptr);
    RegCloseKey(key);
    return status == ERROR_SUCCESS;
}

const StoredValue* FindValue(const StoredTree& tree, const std::wstring& path,
                             const std::wstring& name) {
    const auto key = tree.find(FoldedName(path));
    if (key == tree.end()) {
        return nullptr;
    }
    const auto value = key->second.find(FoldedName(name));
    return value == key->second.end() ? nullptr : &value->second;
}

OwnValues ValuesOf(const Table& table, const SessionStats& stats) {
    return {
        {L"CoinsIn", NumberValue(stats.coinsIn)},
        {L"CoinsOut", NumberValue(stats.coinsOut)},
        {L"Hands", NumberValue(stats.hands)},
        {L"Errors0", NumberValue(stats.minorErrors)},
        {L"Errors1", NumberValue(stats.moderateErrors)},
        {L"Errors2", NumberValue(stats.majorErrors)},
        {L"Returns0", RealValue(stats.bestReturn)},
        {L"Returns1", RealValue(stats.yourReturn)},
        {L"NoDraw", NumberValue(table.noDraw ? 1 : 0)},
        {L"Speed", NumberValue(table.dealSpeed)},
        {L"Sound", NumberValue(table.sound ? 1 : 0)},
        {L"Credits", NumberValue(table.credits)},
        {L"DefBuy", NumberValue(table.defaultPurchase)},
        {L"Lastbet", NumberValue(table.bet)},
        {L"Lastgame", NumberValue(table.game.id)},
    };
}

std::wstring PaytablePath(const GameDescriptor& game, bool fiveCoins) {
    return std::wstring(game.title) + (fiveCoins ? L"\\5" : L"\\1");
}

std::string DifferencesOf(const StoredTree& before, const StoredTree& after) {
    std::string differences;
    const auto compare = [&](const StoredTree& tree, const StoredTree& other, const char* which) {
        for (const auto& [path, key] : tree) {
            for (const auto& [name, value] : key) {
                const StoredValue* found = FindValue(other, path, name);
                if (found == nullptr || *found != value) {
                    differences += std::string(which) + " " + Readable(path) + " " +
                                   Readable(name) + ": " + Readable(value) + "\n";
                }
            }
        }
    };
    compare(before, after, "before:");
    compare(after, before, "after:");
    return differences;
}

std::string Readable(const std::wstring& text) {
    std::string readable;
    for (const wchar_t letter : text.substr(0, 60)) {
        readable += letter >= L' ' && letter <= L'~' ? static_cast<char>(letter) : '?';
    }
    return readable;
}

std::string Readable(const StoredValue& value) {
    std::string readable =
        "type " + std::to_string(value.type) + ", " + std::to_string(value.bytes.size()) + " bytes";
    for (std::size_t i = 0; i < value.bytes.size() && i < 16; ++i) {
        char byte[8];
        std::snprintf(byte, sizeof byte, " %02X", value.bytes[i]);
        readable += byte;
    }
    return readable;
}
