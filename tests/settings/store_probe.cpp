#include "tests/settings/store_probe.h"

std::vector<std::uint8_t> TextBytes(std::wstring_view text) {
    std::vector<std::uint8_t> bytes;
    for (const wchar_t character : text) {
        const auto code = static_cast<std::uint32_t>(character);
        bytes.push_back(static_cast<std::uint8_t>(code & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(code >> 8 & 0xFF));
    }
    return bytes;
}
