#include "training/dialog_text.h"

#include <cwchar>

namespace {

// The largest double has 309 digits before the point.
constexpr std::size_t NumberSize = 400;

} // namespace

std::wstring FormatInteger(const wchar_t* format, std::int32_t value) {
    wchar_t text[NumberSize] = L"";
    std::swprintf(text, NumberSize, format, value);
    return text;
}

std::wstring FormatReal(const wchar_t* format, double value) {
    wchar_t text[NumberSize] = L"";
    std::swprintf(text, NumberSize, format, value);
    return text;
}
