// Stands in for a viewer of the help: writes what it was asked to show to the file that the
// environment names. Its command line on the first line, the file that opens on the second.
#include <windows.h>

#include <string>

namespace {

// The file that a viewer would find under the name, from the folder it was started in.
std::wstring FileThatOpens(const std::wstring& name) {
    wchar_t path[MAX_PATH] = L"";
    const HANDLE file = CreateFileW(name.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
        GetFullPathNameW(name.c_str(), MAX_PATH, path, nullptr);
    }
    return path;
}

void WriteDown(const std::wstring& text) {
    wchar_t name[MAX_PATH];
    if (GetEnvironmentVariableW(L"TESSARIN_HELP_SEEN", name, MAX_PATH) == 0) {
        return;
    }
    const std::wstring partial = std::wstring(name) + L".partial";
    const HANDLE file = CreateFileW(partial.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)), &written,
              nullptr);
    CloseHandle(file);
    MoveFileExW(partial.c_str(), name, MOVEFILE_REPLACE_EXISTING);
}

} // namespace

// A help viewer's whole command line is the file's name; a browser's ends in it, between quotes.
int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    const std::wstring line = GetCommandLineW();
    std::wstring file = FileThatOpens(line);
    const std::size_t last = line.rfind(L'"');
    if (file.empty() && last != std::wstring::npos && last > 0) {
        const std::size_t first = line.rfind(L'"', last - 1) + 1;
        file = FileThatOpens(line.substr(first, last - first));
    }
    WriteDown(line + L"\n" + file);
    return 0;
}
