#include "tests/window/system_view.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace {

constexpr wchar_t Processes[] = L"Z:\\proc\\";
constexpr double TicksASecond = 100;
constexpr int FieldsBeforeTimes = 11; // of a process's stat, after its name

std::string ReadFile(const std::wstring& path) {
    std::string text;
    std::FILE* file = _wfopen(path.c_str(), L"rb");
    if (file != nullptr) {
        for (int letter = std::fgetc(file); letter != EOF; letter = std::fgetc(file)) {
            text += static_cast<char>(letter);
        }
        std::fclose(file);
    }
    return text;
}

std::vector<std::wstring> NamesIn(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            if (found.cFileName[0] != L'.') {
                names.emplace_back(found.cFileName);
            }
        } while (FindNextFileW(search, &found));
        FindClose(search);
    }
    return names;
}

// The system keeps a command line as its words, each with a zero behind it, and under Wine with
// more zeros at its end. The folder of the program stands before its name; it may have letters that
// the system writes in its own way.
std::string InCommandLine(const std::vector<std::wstring>& words) {
    std::string text = "\\";
    for (const std::wstring& word : words) {
        for (const wchar_t letter : word) {
            text += static_cast<char>(letter);
        }
        text += '\0';
    }
    return text;
}

} // namespace

SystemView::SystemView(const std::vector<std::wstring>& words) {
    const std::string name = InCommandLine(words);
    for (const std::wstring& process : NamesIn(Processes)) {
        const std::wstring candidate = Processes + process + L"\\";
        if (ReadFile(candidate + L"cmdline").find(name) != std::string::npos) {
            folder = candidate;
        }
    }
}

bool SystemView::Exists() {
    return GetFileAttributesW(Processes) != INVALID_FILE_ATTRIBUTES;
}

double SystemView::ProcessorSeconds() const {
    const std::string stat = ReadFile(folder + L"stat");
    const std::size_t name = stat.rfind(") ");
    if (!Found() || name == std::string::npos) {
        return 0;
    }
    std::istringstream fields(stat.substr(name + 2));
    std::string skipped;
    for (int i = 0; i < FieldsBeforeTimes; ++i) {
        fields >> skipped;
    }
    double user = 0;
    double kernel = 0;
    fields >> user >> kernel;
    return (user + kernel) / TicksASecond;
}

double SystemView::WaitedForProcessor() const {
    if (!Found()) {
        return 0;
    }
    double waited = 0;
    const std::wstring threads = folder + L"task\\";
    for (const std::wstring& thread : NamesIn(threads)) {
        std::istringstream fields(ReadFile(threads + thread + L"\\schedstat"));
        double ran = 0;
        double stood = 0; // nanoseconds
        fields >> ran >> stood;
        waited += stood * 1e-6;
    }
    return waited;
}

long long SystemView::PrivateBytes() const {
    constexpr char Label[] = "Private_Dirty:";
    const std::string text = ReadFile(folder + L"smaps_rollup");
    const std::size_t at = text.find(Label);
    if (!Found() || at == std::string::npos) {
        return -1;
    }
    return std::atoll(text.c_str() + at + sizeof Label - 1) * 1024; // it stands in kB
}
