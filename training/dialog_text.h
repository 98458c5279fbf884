// Texts as the dialogs place them: formatted numbers, and a control's text with its colours.
#ifndef TESSARIN_TRAINING_DIALOG_TEXT_H
#define TESSARIN_TRAINING_DIALOG_TEXT_H

#include <cstdint>
#include <string>

// 0x00BBGGRR, as the platform's drawing calls take it.
using TextColour = std::uint32_t;

inline constexpr TextColour ColourBlack = 0x00000000;
inline constexpr TextColour ColourRed = 0x000000FF;
inline constexpr TextColour ColourMaroon = 0x00000080;
inline constexpr TextColour ColourGreen = 0x0000FF00;
inline constexpr TextColour ColourDarkGreen = 0x00008000;
inline constexpr TextColour ColourCyan = 0x00FFFF00;
inline constexpr TextColour ColourWhite = 0x00FFFFFF;

// What a text stands on; Dialog is the dialog's own ground, with its own text colour.
enum class TextGround { Dialog, Black, LightGrey, White };

// One control of a dialog. The colour means nothing on the Dialog ground.
struct DialogText {
    std::int32_t id;
    std::wstring text;
    TextColour colour;
    TextGround ground;
};

// One column of a report list.
struct ListColumn {
    std::wstring header;
    std::int32_t width; // in pixels at scale 1
};

// One number by a printf format that takes just that number. The same text on every platform; any
// double fits, a stored one that is no number too.
std::wstring FormatInteger(const wchar_t* format, std::int32_t value);
std::wstring FormatReal(const wchar_t* format, double value);

#endif
