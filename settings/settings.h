// The settings store: six accessors over the current user's registry key, or over memory where
// there is no registry.
//
// Key paths are below the root, parts divided by backslashes; value names may be any text. No
// handle is kept between calls; threads may call side by side. Reads never create anything and
// never fail: they fall back. Writes create missing keys; a write that fails is silent and changes
// nothing.
#ifndef TESSARIN_SETTINGS_SETTINGS_H
#define TESSARIN_SETTINGS_SETTINGS_H

#include <cstddef>
#include <cstdint>

// The branch of the store; the program keeps everything under the current user.
enum class SettingsRoot { CurrentUser };

// The program's own key. Paytables and analysis results stand in sub-keys of it.
inline constexpr wchar_t SettingsKey[] = L"TessarCE";

// Texts are read into 260 bytes of 16-bit characters: 129 of them and the terminating zero.
inline constexpr std::size_t SettingTextSize = 130;
using SettingText = wchar_t[SettingTextSize];

// The stored four bytes whatever their type; the fallback if the key cannot be opened for reading
// and writing, the value is missing, or its length is not four bytes.
std::int32_t ReadInteger(SettingsRoot root, const wchar_t* key, const wchar_t* name,
                         std::int32_t fallback);

// The same with the eight bytes of a double.
double ReadDouble(SettingsRoot root, const wchar_t* key, const wchar_t* name, double fallback);

// The stored text, always terminated; empty if it is missing, not a text, or too long for the
// buffer. Returns 1.
std::int32_t ReadString(SettingsRoot root, const wchar_t* key, const wchar_t* name,
                        SettingText& text);

// Each writes the value, or removes it when `remove` is not 0.
void WriteInteger(SettingsRoot root, const wchar_t* key, const wchar_t* name, std::int32_t value,
                  std::int32_t remove);
void WriteDouble(SettingsRoot root, const wchar_t* key, const wchar_t* name, double value,
                 std::int32_t remove);
void WriteString(SettingsRoot root, const wchar_t* key, const wchar_t* name, const wchar_t* text,
                 std::int32_t remove);

#endif
