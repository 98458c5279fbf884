#include "settings/memory_settings.h"

#include <cstring>
#include <cwctype>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

#include "settings/settings.h"

namespace {

using SettingName = std::pair<std::wstring, std::wstring>; // key path, value name

// Capitals and small letters are the same in a name, as they are in the registry.
std::wstring Folded(const std::wstring& name) {
    std::wstring folded;
    for (const wchar_t letter : name) {
        folded.push_back(static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(letter))));
    }
    return folded;
}

SettingName NameOf(const std::wstring& key, const std::wstring& name) {
    return {Folded(key), Folded(name)};
}

// Threads may use the accessors side by side, as they may use the registry.
std::mutex storeMutex;
std::map<SettingName, StoredSetting> store;
bool refuseWriting = false;

std::optional<StoredSetting> OpenValue(const wchar_t* key, const wchar_t* name) {
    const std::lock_guard guard(storeMutex);
    const auto found = store.find(NameOf(key, name));
    if (refuseWriting || found == store.end()) {
        return std::nullopt;
    }
    return found->second;
}

template <typename Number>
Number ReadNumber(const wchar_t* key, const wchar_t* name, Number fallback) {
    const std::optional<StoredSetting> setting = OpenValue(key, name);
    if (!setting || setting->bytes.size() != sizeof(Number)) {
        return fallback;
    }
    Number value;
    std::memcpy(&value, setting->bytes.data(), sizeof value);
    return value;
}

void Write(const wchar_t* key, const wchar_t* name, SettingType type, const void* bytes,
           std::size_t size, std::int32_t remove) {
    const std::lock_guard guard(storeMutex);
    if (refuseWriting) {
        return;
    }
    if (remove != 0) {
        store.erase(NameOf(key, name));
        return;
    }
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    store[NameOf(key, name)] = {type, {first, first + size}};
}

} // namespace

void ClearMemorySettings() {
    store.clear();
    refuseWriting = false;
}

void SetMemorySettingsReadOnly(bool readOnly) {
    refuseWriting = readOnly;
}

void PutMemorySetting(const std::wstring& key, const std::wstring& name, StoredSetting setting) {
    store[NameOf(key, name)] = std::move(setting);
}

const StoredSetting* FindMemorySetting(const std::wstring& key, const std::wstring& name) {
    const auto found = store.find(NameOf(key, name));
    return found == store.end() ? nullptr : &found->second;
}

std::int32_t ReadInteger(SettingsRoot, const wchar_t* key, const wchar_t* name,
                         std::int32_t fallback) {
    return ReadNumber(key, name, fallback);
}

double ReadDouble(SettingsRoot, const wchar_t* key, const wchar_t* name, double fallback) {
    return ReadNumber(key, name, fallback);
}

std::int32_t ReadString(SettingsRoot, const wchar_t* key, const wchar_t* name, SettingText& text) {
    text[0] = L'\0';
    const std::optional<StoredSetting> setting = OpenValue(key, name);
    constexpr std::size_t charSize = sizeof(char16_t);
    if (!setting || setting->type != SettingType::Text ||
        setting->bytes.size() > SettingTextSize * charSize) {
        return 1;
    }
    const std::size_t length = setting->bytes.size() / charSize;
    std::size_t i = 0;
    for (; i < length && i + 1 < SettingTextSize; ++i) {
        char16_t character;
        std::memcpy(&character, setting->bytes.data() + i * charSize, charSize);
        if (character == u'\0') {
            break;
        }
        text[i] = static_cast<wchar_t>(character);
    }
    text[i] = L'\0';
    return 1;
}

void WriteInteger(SettingsRoot, const wchar_t* key, const wchar_t* name, std::int32_t value,
                  std::int32_t remove) {
    Write(key, name, SettingType::DoubleWord, &value, sizeof value, remove);
}

void WriteDouble(SettingsRoot, const wchar_t* key, const wchar_t* name, double value,
                 std::int32_t remove) {
    Write(key, name, SettingType::Binary, &value, sizeof value, remove);
}

void WriteString(SettingsRoot, const wchar_t* key, const wchar_t* name, const wchar_t* text,
                 std::int32_t remove) {
    std::u16string stored;
    for (; *text != L'\0'; ++text) {
        stored.push_back(static_cast<char16_t>(*text));
    }
    const std::size_t size = (stored.size() + 1) * sizeof(char16_t);
    Write(key, name, SettingType::Text, stored.c_str(), size, remove);
}
