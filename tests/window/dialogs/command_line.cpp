#include "tests/window/dialogs/command_line.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "tests/window/harness.h"

namespace {

std::wstring ScratchPath() {
    wchar_t folder[MAX_PATH] = L"";
    wchar_t path[MAX_PATH] = L"";
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"ask", 0, path);
    return path;
}

void WriteFileOf(const std::wstring& path, const std::string& text) {
    std::FILE* file = _wfopen(path.c_str(), L"wb");
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
}

// Lines end in a line feed alone here.
std::string ReadFileOf(const std::wstring& path) {
    std::string text;
    std::FILE* file = _wfopen(path.c_str(), L"rb");
    for (int letter = std::fgetc(file); letter != EOF; letter = std::fgetc(file)) {
        if (letter != '\r') {
            text += static_cast<char>(letter);
        }
    }
    std::fclose(file);
    return text;
}

HANDLE OpenInherited(const std::wstring& path, DWORD access) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                       OPEN_EXISTING, 0, nullptr);
}

std::wstring Widened(const std::string& text) {
    return {text.begin(), text.end()};
}

} // namespace

std::string AskCommandLine(const std::wstring& arguments, const std::string& input) {
    const std::wstring question = ScratchPath();
    const std::wstring answer = ScratchPath();
    WriteFileOf(question, input);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = OpenInherited(question, GENERIC_READ);
    startup.hStdOutput = OpenInherited(answer, GENERIC_WRITE);
    startup.hStdError = startup.hStdOutput;
    std::wstring command = ProgramFolder() + L"tessarin.exe " + arguments;
    PROCESS_INFORMATION process = {};
    const BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                        nullptr, &startup, &process);
    EXPECT_TRUE(started) << "the command line does not start";
    if (started) {
        EXPECT_EQ(ExitCodeOf(process.hProcess, 4 * Patience), 0U);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    CloseHandle(startup.hStdInput);
    CloseHandle(startup.hStdOutput);
    const std::string text = ReadFileOf(answer);
    DeleteFileW(question.c_str());
    DeleteFileW(answer.c_str());
    return text;
}

// A title, an empty line and the headers; a line a row, its name and five words; an empty line and
// the total, which is the last word.
AnalysisTexts CommandLineAnalysis(GameId id, std::int32_t bet) {
    std::istringstream lines(
        AskCommandLine(L"game " + std::to_wstring(id) + L" --bet " + std::to_wstring(bet)));
    Paytable payouts{};
    GameDescriptor game{};
    DescribeGame(game, id, payouts);
    std::string line;
    for (int skipped = 0; skipped < 3; ++skipped) {
        std::getline(lines, line);
    }
    AnalysisTexts texts;
    for (std::int32_t row = 0; row <= game.rowCount && std::getline(lines, line); ++row) {
        const std::wstring name = row < game.rowCount ? game.rowNames[row] : L"NOTHING";
        EXPECT_EQ(Widened(line).rfind(name + L" ", 0), 0U) << line;
        std::istringstream words(line.substr(name.size()));
        std::string word[5];
        words >> word[0] >> word[1] >> word[2] >> word[3] >> word[4];
        texts.rows.push_back({name, Widened(word[0]), Widened(word[1]), Widened(word[2]),
                              Widened(word[3]), Widened(word[4])});
    }
    std::getline(lines, line);
    std::getline(lines, line);
    texts.gameReturn = Widened(line.substr(line.rfind(' ') + 1));
    return texts;
}

std::vector<CommandLineHand>
CommandLineHands(GameId id, std::int32_t bet,
                 const std::vector<std::array<CardRecord, HandSize>>& hands) {
    std::string input;
    for (const auto& hand : hands) {
        for (const CardRecord& card : hand) {
            input += std::to_string(card.code) + " ";
        }
        input += "\n";
    }
    std::istringstream lines(AskCommandLine(
        L"hand " + std::to_wstring(id) + L" --bet " + std::to_wstring(bet) + L" -", input));
    std::vector<CommandLineHand> answers;
    constexpr char bestName[] = "\"best\":";
    constexpr char returnName[] = "\"return\":";
    for (std::string line; std::getline(lines, line);) {
        CommandLineHand hand{};
        std::size_t at = line.find(bestName) + sizeof bestName - 1;
        hand.best = std::strtoul(line.c_str() + at, nullptr, 10);
        for (double& value : hand.returns) {
            at = line.find(returnName, at);
            EXPECT_NE(at, std::string::npos) << line;
            at += sizeof returnName - 1;
            value = std::strtod(line.c_str() + at, nullptr);
        }
        answers.push_back(hand);
    }
    EXPECT_EQ(answers.size(), hands.size());
    return answers;
}
