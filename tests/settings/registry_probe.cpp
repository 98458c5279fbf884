#include <windows.h>

#include <cstdlib>

#include "tests/settings/store_probe.h"

namespace {

// A key of this process alone, under which everything the program stores is kept instead.
std::wstring OwnKeyPath() {
    return L"Tessarin CE tests " + std::to_wstring(GetCurrentProcessId());
}

HKEY ownKey = nullptr;

void DeleteOwnKey() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(ownKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, OwnKeyPath().c_str());
}

void RedirectOnce() {
    if (ownKey != nullptr) {
        return;
    }
    if (RegCreateKeyExW(HKEY_CURRENT_USER, OwnKeyPath().c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                        nullptr, &ownKey, nullptr) != ERROR_SUCCESS ||
        RegOverridePredefKey(HKEY_CURRENT_USER, ownKey) != ERROR_SUCCESS) {
        std::abort();
    }
    std::atexit(DeleteOwnKey);
}

DWORD RegistryType(RawType type) {
    switch (type) {
    case RawType::DoubleWord:
        return REG_DWORD;
    case RawType::Text:
        return REG_SZ;
    default:
        return REG_BINARY;
    }
}

RawType ProbedType(DWORD type) {
    switch (type) {
    case REG_DWORD:
        return RawType::DoubleWord;
    case REG_SZ:
        return RawType::Text;
    default:
        return RawType::Binary;
    }
}

} // namespace

void EmptyStore() {
    RedirectOnce();
    RegDeleteTreeW(ownKey, nullptr);
}

// RegSetValueExW mends a text without a zero if a zero happens to follow it in memory, and looks
// before it if it is short. Fixed neighbours keep the bytes as the test gave them.
void PutRaw(const std::wstring& key, const std::wstring& name, const RawValue& value) {
    std::vector<std::uint8_t> bytes = {0, 0};
    bytes.insert(bytes.end(), value.bytes.begin(), value.bytes.end());
    bytes.insert(bytes.end(), {0xFF, 0xFF});
    HKEY opened = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        &opened, nullptr) != ERROR_SUCCESS ||
        RegSetValueExW(opened, name.c_str(), 0, RegistryType(value.type), bytes.data() + 2,
                       static_cast<DWORD>(value.bytes.size())) != ERROR_SUCCESS) {
        std::abort();
    }
    RegCloseKey(opened);
}

std::optional<RawValue> FindRaw(const std::wstring& key, const std::wstring& name) {
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    DWORD type = REG_NONE;
    DWORD size = 0;
    std::optional<RawValue> found;
    if (RegQueryValueExW(opened, name.c_str(), nullptr, &type, nullptr, &size) == ERROR_SUCCESS) {
        found = RawValue{ProbedType(type), std::vector<std::uint8_t>(size)};
        RegQueryValueExW(opened, name.c_str(), nullptr, nullptr, found->bytes.data(), &size);
    }
    RegCloseKey(opened);
    return found;
}

// A part of a path may be 255 characters long at most.
std::wstring MakeRefusingKey() {
    return L"TessarCE\\" + std::wstring(300, L'k');
}
