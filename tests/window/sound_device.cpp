#include "tests/window/sound_device.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using UnixFileName = char*(CDECL*)(const wchar_t*);

std::wstring RecordingFolder() {
    wchar_t path[MAX_PATH];
    GetTempPathW(MAX_PATH, path);
    const std::wstring folder = std::wstring(path) + L"tessarin-sounds\\";
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder;
}

// Null outside Wine, where the device cannot be chosen.
UnixFileName UnixNames() {
    return reinterpret_cast<UnixFileName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
}

std::string UnixName(const std::wstring& path) {
    char* name = UnixNames()(path.c_str());
    const std::string copy = name;
    HeapFree(GetProcessHeap(), 0, name);
    return copy;
}

void UseConfiguration(const std::string& text) {
    if (UnixNames() == nullptr) {
        return;
    }
    const std::wstring path = RecordingFolder() + L"device.conf";
    std::FILE* file = _wfopen(path.c_str(), L"wb");
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
    const std::string name = UnixName(path);
    SetEnvironmentVariableA("ALSA_CONFIG_PATH", name.c_str());
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Wine\\Drivers", L"Audio", REG_SZ, L"alsa",
                    sizeof L"alsa");
}

std::vector<std::wstring> RecordingFiles() {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((RecordingFolder() + L"*.raw").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            names.push_back(RecordingFolder() + found.cFileName);
        } while (FindNextFileW(search, &found));
        FindClose(search);
    }
    std::sort(names.begin(), names.end());
    return names;
}

Recording ReadRecording(const std::wstring& path) {
    Recording samples;
    std::FILE* file = _wfopen(path.c_str(), L"rb");
    std::int16_t sample = 0;
    while (file != nullptr && std::fread(&sample, sizeof sample, 1, file) == 1) {
        samples.push_back(sample);
    }
    if (file != nullptr) {
        std::fclose(file);
    }
    return samples;
}

} // namespace

void UseSilentDevice() {
    UseConfiguration("pcm.!default { type null }\nctl.!default { type null }\n");
}

void UseNoDevice() {
    UseConfiguration("# no device\n");
}

// Every opening of the device begins a file of its own, named by the time.
void UseRecordingDevice() {
    for (const std::wstring& path : RecordingFiles()) {
        DeleteFileW(path.c_str());
    }
    if (UnixNames() == nullptr) {
        return;
    }
    const std::string folder = UnixName(RecordingFolder());
    UseConfiguration("pcm.!default {\n"
                     "  type plug\n"
                     "  slave {\n"
                     "    pcm {\n"
                     "      type file\n"
                     "      slave.pcm { type null }\n"
                     "      file \"|cat > '" +
                     folder +
                     "'/$(date +%%s%%N).raw\"\n"
                     "      format raw\n"
                     "    }\n"
                     "    format S16_LE\n"
                     "    rate 44100\n"
                     "    channels 1\n"
                     "  }\n"
                     "}\n"
                     "ctl.!default { type null }\n");
}

std::vector<Recording> Recordings() {
    std::vector<Recording> recordings;
    for (const std::wstring& path : RecordingFiles()) {
        recordings.push_back(ReadRecording(path));
    }
    return recordings;
}
