#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <ostream>

#include "tests/window/harness.h"

// The dialogs as the program brings them, before any code has touched them: titles, sizes, fonts
// and every control with its text, its place in dialog units and its alignment.

namespace {

enum class Kind { Button, DefaultButton, Left, Centred, Right, List, Other };

struct TemplateControl {
    int id; // -1 for a text that nothing refers to
    Kind kind;
    std::wstring text;
    std::array<int, 4> place; // x, y, width, height
    bool bordered = false;
    bool operator==(const TemplateControl&) const = default;
};

std::ostream& operator<<(std::ostream& out, const TemplateControl& control) {
    out << control.id << " kind " << static_cast<int>(control.kind) << " \""
        << std::string(control.text.begin(), control.text.end()) << "\" at";
    for (const int unit : control.place) {
        out << ' ' << unit;
    }
    return out << (control.bordered ? " bordered" : "");
}

struct Template {
    std::wstring title;
    int width;
    int height;
    int fontPoints;
    std::wstring fontFace;
    std::vector<TemplateControl> controls;
};

// Reads a template's bytes in turn.
struct Reader {
    const char* start;
    std::size_t at = 0;

    template <typename Number>
    Number Take() {
        Number number{};
        std::memcpy(&number, start + at, sizeof number);
        at += sizeof number;
        return number;
    }
    int TakeUnit() { return Take<std::int16_t>(); }

    // A text, or 0xFFFF and a number, which is told as "#number".
    std::wstring TakeTextOrNumber() {
        std::wstring text;
        std::uint16_t letter = Take<std::uint16_t>();
        if (letter == 0xFFFF) {
            return L"#" + std::to_wstring(Take<std::uint16_t>());
        }
        for (; letter != 0; letter = Take<std::uint16_t>()) {
            text += static_cast<wchar_t>(letter);
        }
        return text;
    }
    void Align() { at = (at + 3) / 4 * 4; }
};

Kind KindOf(const std::wstring& windowClass, std::uint32_t style) {
    constexpr Kind statics[] = {Kind::Left, Kind::Centred, Kind::Right};
    if (windowClass == L"#128" && (style & BS_TYPEMASK) <= BS_DEFPUSHBUTTON) {
        return (style & BS_TYPEMASK) == BS_DEFPUSHBUTTON ? Kind::DefaultButton : Kind::Button;
    }
    if (windowClass == L"#130" && (style & SS_TYPEMASK) <= SS_RIGHT) {
        return statics[style & SS_TYPEMASK];
    }
    return lstrcmpiW(windowClass.c_str(), L"SysListView32") == 0 ? Kind::List : Kind::Other;
}

TemplateControl TakeControl(Reader& reader) {
    reader.Align();
    const auto style = reader.Take<std::uint32_t>();
    reader.Take<std::uint32_t>(); // extended style
    TemplateControl control{};
    for (int& unit : control.place) {
        unit = reader.TakeUnit();
    }
    control.id = reader.TakeUnit();
    control.kind = KindOf(reader.TakeTextOrNumber(), style);
    control.text = reader.TakeTextOrNumber();
    control.bordered = (style & WS_BORDER) != 0;
    reader.at += reader.Take<std::uint16_t>(); // data for the control
    return control;
}

Template ReadTemplate(int id) {
    const HMODULE file = LoadLibraryExW((ProgramFolder() + L"tessarin-ce.exe").c_str(), nullptr,
                                        LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC resource =
        FindResourceW(file, MAKEINTRESOURCEW(id), reinterpret_cast<LPCWSTR>(RT_DIALOG));
    EXPECT_NE(resource, nullptr) << id;
    Reader reader{static_cast<const char*>(LockResource(LoadResource(file, resource)))};
    Template read{};
    const auto style = reader.Take<std::uint32_t>();
    EXPECT_NE(style, 0xFFFF0001U) << "an extended template";
    EXPECT_NE(style & DS_SETFONT, 0U);
    reader.Take<std::uint32_t>(); // extended style
    const int controls = reader.TakeUnit();
    reader.TakeUnit(); // x
    reader.TakeUnit(); // y
    read.width = reader.TakeUnit();
    read.height = reader.TakeUnit();
    EXPECT_EQ(reader.TakeTextOrNumber(), L"") << "a menu";
    EXPECT_EQ(reader.TakeTextOrNumber(), L"") << "a window class";
    read.title = reader.TakeTextOrNumber();
    read.fontPoints = reader.TakeUnit();
    read.fontFace = reader.TakeTextOrNumber();
    for (int i = 0; i < controls; ++i) {
        read.controls.push_back(TakeControl(reader));
    }
    FreeLibrary(file);
    return read;
}

void ExpectFrame(const Template& read, const wchar_t* title, int width, int height) {
    EXPECT_EQ(read.title, title);
    EXPECT_EQ(read.width, width);
    EXPECT_EQ(read.height, height);
    EXPECT_EQ(read.fontPoints, 8);
    EXPECT_EQ(read.fontFace, L"MS Sans Serif");
}

// Of some the place is free; what is compared there has none.
TemplateControl Unplaced(TemplateControl control) {
    control.place = {};
    return control;
}

} // namespace

TEST(Templates, StatisticalErrorIsAsDesigned) {
    const Template read = ReadTemplate(201);
    ExpectFrame(read, L"Statistical Error!", 159, 85);
    const std::vector<TemplateControl> expected = {
        {2, Kind::DefaultButton, L"&No", {111, 7, 46, 14}},
        {1, Kind::Button, L"&Yes", {111, 24, 45, 14}},
        {2100, Kind::Button, L"Details...", {111, 43, 45, 14}},
        {2101, Kind::Centred, L"", {6, 7, 95, 17}},
        {2104, Kind::Centred, L"", {6, 27, 95, 13}},
        {-1, Kind::Left, L"Best Play Return:", {5, 42, 66, 8}},
        {2102, Kind::Right, L"", {68, 43, 33, 8}},
        {-1, Kind::Left, L"Your Play Return:", {3, 52, 68, 8}},
        {2103, Kind::Right, L"", {68, 53, 34, 8}},
        {-1, Kind::Centred, L"Play It Anyway?", {6, 67, 150, 9}},
    };
    EXPECT_EQ(read.controls, expected);
}

TEST(Templates, GameAnalysisIsAsDesigned) {
    const Template read = ReadTemplate(5001);
    ExpectFrame(read, L"Tessarin Game Analysis", 158, 154);
    const std::vector<TemplateControl> expected = {
        {1000, Kind::List, L"", {2, 2, 155, 120}, true},
        {1, Kind::DefaultButton, L"&Close", {103, 137, 51, 13}},
        {5003, Kind::Button, L"Run Analysis", {103, 123, 51, 13}},
        {5002, Kind::Centred, L"", {11, 136, 80, 14}, true},
        {-1, Kind::Centred, L"Game Total Return", {13, 126, 73, 9}},
    };
    EXPECT_EQ(read.controls, expected);
}

TEST(Templates, SessionAnalysisHasItsLabelsFieldsAndButtons) {
    const Template read = ReadTemplate(4000);
    ExpectFrame(read, L"Current Session Analysis", 158, 167);
    std::vector<TemplateControl> expected = {
        {4019, Kind::Centred, L"YOU LOST:", {}},
        {1, Kind::DefaultButton, L"&OK", {}},
        {4001, Kind::Button, L"&Reset To Zero", {}},
    };
    for (const wchar_t* label :
         {L"Hands:", L"Cns In:", L"Won:", L"%:", L"Errors:", L"Minor:", L"Moderate:", L"Major:",
          L"Correct:", L"Best Return:", L"Your Return:", L"Return  %:", L"Cost, In Coins:"}) {
        expected.push_back({-1, Kind::Left, label, {}});
    }
    for (const int value :
         {4020, 4017, 4003, 4004, 4005, 4006, 4007, 4008, 4018, 4009, 4010, 4011, 4012, 4013}) {
        expected.push_back({value, Kind::Right, L"", {}});
    }
    EXPECT_EQ(read.controls.size(), expected.size());
    for (const TemplateControl& control : expected) {
        EXPECT_EQ(
            std::count_if(read.controls.begin(), read.controls.end(),
                          [&](const TemplateControl& seen) { return Unplaced(seen) == control; }),
            1)
            << control;
    }
}

TEST(Templates, WholeScreenHasOneButtonAndNoTitle) {
    const Template read = ReadTemplate(200);
    ExpectFrame(read, L"", 305, 190);
    ASSERT_EQ(read.controls.size(), 1U);
    EXPECT_EQ(Unplaced(read.controls[0]), (TemplateControl{1, Kind::DefaultButton, L"&Close", {}}));
}

TEST(Templates, HandAnalysisBringsItsCancelButton) {
    const Template read = ReadTemplate(118);
    ASSERT_EQ(read.controls.size(), 1U);
    EXPECT_EQ(read.controls[0].id, 2);
    EXPECT_EQ(read.controls[0].kind, Kind::Button);
}
