#include <windows.h>

#include <algorithm>
#include <cwchar>

#include "settings/settings.h"

namespace {

HKEY RootKey(SettingsRoot) {
    return HKEY_CURRENT_USER;
}

struct OpenKey {
    HKEY handle = nullptr;
    explicit operator bool() const { return handle != nullptr; }
    OpenKey() = default;
    ~OpenKey() {
        if (handle != nullptr) {
            RegCloseKey(handle);
        }
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
};

void OpenExisting(OpenKey& key, SettingsRoot root, const wchar_t* path) {
    if (RegOpenKeyExW(RootKey(root), path, 0, KEY_ALL_ACCESS, &key.handle) != ERROR_SUCCESS) {
        key.handle = nullptr;
    }
}

void OpenOrCreate(OpenKey& key, SettingsRoot root, const wchar_t* path) {
    wchar_t noClass[] = L"";
    DWORD disposition = 0;
    if (RegCreateKeyExW(RootKey(root), path, 0, noClass, 0, KEY_ALL_ACCESS, nullptr, &key.handle,
                        &disposition) != ERROR_SUCCESS) {
        key.handle = nullptr;
    }
}

// A value of another length than the number's is no such number.
bool ReadBytes(SettingsRoot root, const wchar_t* path, const wchar_t* name, void* bytes,
               DWORD size) {
    OpenKey key;
    OpenExisting(key, root, path);
    if (!key) {
        return false;
    }
    DWORD stored = size;
    return RegQueryValueExW(key.handle, name, nullptr, nullptr, static_cast<BYTE*>(bytes),
                            &stored) == ERROR_SUCCESS &&
           stored == size;
}

void Write(SettingsRoot root, const wchar_t* path, const wchar_t* name, DWORD type,
           const void* bytes, DWORD size, std::int32_t remove) {
    OpenKey key;
    OpenOrCreate(key, root, path);
    if (!key) {
        return;
    }
    if (remove != 0) {
        RegDeleteValueW(key.handle, name);
    } else {
        RegSetValueExW(key.handle, name, 0, type, static_cast<const BYTE*>(bytes), size);
    }
}

} // namespace

// The number is read into a place of its own, so that a value that is there but of the wrong
// length leaves nothing of itself behind.
std::int32_t ReadInteger(SettingsRoot root, const wchar_t* key, const wchar_t* name,
                         std::int32_t fallback) {
    std::int32_t value = 0;
    return ReadBytes(root, key, name, &value, sizeof value) ? value : fallback;
}

double ReadDouble(SettingsRoot root, const wchar_t* key, const wchar_t* name, double fallback) {
    double value = 0.0;
    return ReadBytes(root, key, name, &value, sizeof value) ? value : fallback;
}

std::int32_t ReadString(SettingsRoot root, const wchar_t* path, const wchar_t* name,
                        SettingText& text) {
    static_assert(sizeof(SettingText) == 260);
    text[0] = L'\0';
    OpenKey key;
    OpenExisting(key, root, path);
    if (!key) {
        return 1;
    }
    SettingText stored = {};
    DWORD type = REG_NONE;
    DWORD size = sizeof stored;
    if (RegQueryValueExW(key.handle, name, nullptr, &type, reinterpret_cast<BYTE*>(stored),
                         &size) != ERROR_SUCCESS ||
        type != REG_SZ) {
        return 1;
    }
    // A text may be stored without its zero, or with half a character at its end.
    stored[std::min<std::size_t>(size / sizeof(wchar_t), SettingTextSize - 1)] = L'\0';
    std::wcscpy(text, stored);
    return 1;
}

void WriteInteger(SettingsRoot root, const wchar_t* key, const wchar_t* name, std::int32_t value,
                  std::int32_t remove) {
    Write(root, key, name, REG_DWORD, &value, sizeof value, remove);
}

void WriteDouble(SettingsRoot root, const wchar_t* key, const wchar_t* name, double value,
                 std::int32_t remove) {
    Write(root, key, name, REG_BINARY, &value, sizeof value, remove);
}

void WriteString(SettingsRoot root, const wchar_t* key, const wchar_t* name, const wchar_t* text,
                 std::int32_t remove) {
    const DWORD size = static_cast<DWORD>((std::wcslen(text) + 1) * sizeof(wchar_t));
    Write(root, key, name, REG_SZ, text, size, remove);
}
