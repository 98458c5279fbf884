#include "cli/text_table.h"

#include <algorithm>

namespace {

constexpr std::string_view Gap = "  ";

std::vector<std::string> WordsOf(std::string_view text) {
    std::vector<std::string> words;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        words.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

std::vector<std::string> BreakHeader(const std::string& header, std::size_t width) {
    std::vector<std::string> lines;
    for (const std::string& word : WordsOf(header)) {
        if (!lines.empty() && lines.back().size() + 1 + word.size() <= width) {
            lines.back() += " " + word;
        } else {
            lines.push_back(word);
        }
    }
    return lines;
}

// As wide as the widest cell, and wide enough for the header in its lines.
std::size_t ColumnWidth(const TextTable& table, std::size_t column) {
    std::size_t width = 0;
    for (const std::string& word : WordsOf(table.columns[column].header)) {
        width = std::max(width, word.size());
    }
    for (const std::vector<TableCell>& row : table.rows) {
        width = std::max(width, row[column].text.size());
    }
    while (BreakHeader(table.columns[column].header, width).size() > table.headerLines) {
        ++width;
    }
    return width;
}

void AppendCell(std::string& line, const TableColumn& column, std::size_t width,
                const TableCell& cell, bool colour) {
    const std::string padding(width - cell.text.size(), ' ');
    const std::string text = StyledText(cell.text, cell.style, colour);
    line += column.leftAligned ? text + padding : padding + text;
}

void AppendLine(std::string& out, const TextTable& table, const std::vector<std::size_t>& widths,
                const std::vector<TableCell>& cells, bool colour) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += i == 0 ? "" : Gap;
        AppendCell(line, table.columns[i], widths[i], cells[i], colour);
    }
    out.append(line, 0, line.find_last_not_of(' ') + 1);
    out += '\n';
}

// Broken headers stand on the table: their last lines are level.
void AppendHeaders(std::string& out, const TextTable& table, const std::vector<std::size_t>& widths,
                   bool colour) {
    std::vector<std::vector<std::string>> headers;
    std::size_t height = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        headers.push_back(BreakHeader(table.columns[i].header, widths[i]));
        height = std::max(height, headers.back().size());
    }
    for (std::size_t line = 0; line < height; ++line) {
        std::vector<TableCell> cells;
        for (const std::vector<std::string>& header : headers) {
            const std::size_t above = height - header.size();
            cells.push_back({line < above ? "" : header[line - above], CellStyle::Bold});
        }
        AppendLine(out, table, widths, cells, colour);
    }
}

} // namespace

std::string StyledText(std::string_view text, CellStyle style, bool colour) {
    if (!colour || style == CellStyle::Plain || text.empty()) {
        return std::string(text);
    }
    const char* start = style == CellStyle::Faint  ? "\x1b[2m"
                        : style == CellStyle::Bold ? "\x1b[1m"
                                                   : "\x1b[1;32m";
    return start + std::string(text) + "\x1b[0m";
}

std::string FormatTable(const TextTable& table, bool colour) {
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        widths.push_back(ColumnWidth(table, i));
    }
    std::string out;
    AppendHeaders(out, table, widths, colour);
    for (const std::vector<TableCell>& row : table.rows) {
        AppendLine(out, table, widths, row, colour);
    }
    return out;
}

std::string NarrowText(std::wstring_view text) {
    std::string narrow;
    for (const wchar_t c : text) {
        narrow.push_back(static_cast<char>(c));
    }
    return narrow;
}
