// The store where there is no registry: values in memory, gone with the process. Besides the
// accessors of settings.h it lets a test look at the values and spoil them.
#ifndef TESSARIN_SETTINGS_MEMORY_SETTINGS_H
#define TESSARIN_SETTINGS_MEMORY_SETTINGS_H

#include <cstdint>
#include <string>
#include <vector>

// The types a registry value has.
enum class SettingType { Binary, DoubleWord, Text };

struct StoredSetting {
    SettingType type;
    std::vector<std::uint8_t> bytes; // texts as 16-bit characters with their terminating zero
};

// Empties the store and makes it writable.
void ClearMemorySettings();

// While on, no key can be opened for writing: writes change nothing and reads, which open their
// key for both, fall back.
void SetMemorySettingsReadOnly(bool readOnly);

void PutMemorySetting(const std::wstring& key, const std::wstring& name, StoredSetting setting);

// Null if there is none. Valid until the next change of the store.
const StoredSetting* FindMemorySetting(const std::wstring& key, const std::wstring& name);

#endif
