// Aligned columns of text for people.
#ifndef TESSARIN_CLI_TEXT_TABLE_H
#define TESSARIN_CLI_TEXT_TABLE_H

#include <string>
#include <string_view>
#include <vector>

enum class CellStyle { Plain, Faint, Bold, Best };

struct TableCell {
    std::string text;
    CellStyle style = CellStyle::Plain;
};

struct TableColumn {
    std::string header; // broken at its blanks where the table allows more lines
    bool leftAligned = false;
};

// Each row has one cell a column.
struct TextTable {
    std::vector<TableColumn> columns;
    std::vector<std::vector<TableCell>> rows;
    std::size_t headerLines = 1; // at most
};

// Lines of equal columns, two blanks apart, no blanks at a line's end. Styles are escape sequences
// and are only written where colour is wanted.
std::string FormatTable(const TextTable& table, bool colour);

// The text in a style of its own.
std::string StyledText(std::string_view text, CellStyle style, bool colour);

// The program's wide texts are plain letters.
std::string NarrowText(std::wstring_view text);

#endif
