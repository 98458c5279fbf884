// A test's own hand in the settings store: it empties it, puts values of any type and length into
// it and looks at what is there. One implementation a store. The registry's is redirected, for the
// life of the process, to a key made for it, so that no test meets anyone's settings.
#ifndef TESSARIN_TESTS_SETTINGS_STORE_PROBE_H
#define TESSARIN_TESTS_SETTINGS_STORE_PROBE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

enum class RawType { Binary, DoubleWord, Text };

struct RawValue {
    RawType type;
    std::vector<std::uint8_t> bytes; // texts as 16-bit characters, with whatever ends them

    bool operator==(const RawValue&) const = default;
};

// Nothing is stored, and everything can be opened.
void EmptyStore();

void PutRaw(const std::wstring& key, const std::wstring& name, const RawValue& value);
std::optional<RawValue> FindRaw(const std::wstring& key, const std::wstring& name);

// The path of a key that can be opened neither for reading nor for writing, until EmptyStore.
std::wstring MakeRefusingKey();

// 16-bit characters as bytes, as they stand: no zero is added.
std::vector<std::uint8_t> TextBytes(std::wstring_view text);

#endif
