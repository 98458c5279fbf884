#include "tests/window/sound_device.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// The sound library under Wine reads its devices from the file that this variable named when the
// test was begun; the test writes that file.
constexpr wchar_t ConfigurationVariable[] = L"ALSA_CONFIG_PATH";

std::wstring ConfigurationFile() {
    wchar_t path[MAX_PATH] = {};
    GetEnvironmentVariableW(ConfigurationVariable, path, MAX_PATH);
    return path;
}

// As the system under Wine names it, and as Windows does.
std::wstring RecordingFolder() {
    return ConfigurationFile() + L".recordings";
}
std::wstring OnDrive(const std::wstring& path) {
    return L"Z:" + path;
}

void UseConfiguration(const std::wstring& text) {
    if (!CanChooseSoundDevice()) {
        return;
    }
    std::FILE* file = _wfopen(OnDrive(ConfigurationFile()).c_str(), L"wb");
    for (const wchar_t letter : text) {
        std::fputc(static_cast<char>(letter), file);
    }
    std::fclose(file);
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Wine\\Drivers", L"Audio", REG_SZ, L"alsa",
                    sizeof L"alsa");
}

std::vector<std::wstring> RecordingFiles() {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found;
    const std::wstring folder = OnDrive(RecordingFolder()) + L"/";
    const HANDLE search = FindFirstFileW((folder + L"*.raw").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            names.push_back(folder + found.cFileName);
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

bool CanChooseSoundDevice() {
    return !ConfigurationFile().empty();
}

void UseSilentDevice() {
    UseConfiguration(L"pcm.!default { type null }\nctl.!default { type null }\n");
}

void UseNoDevice() {
    UseConfiguration(L"# no device\n");
}

// Every opening of the device begins a file of its own, named by the time.
void UseRecordingDevice() {
    CreateDirectoryW(OnDrive(RecordingFolder()).c_str(), nullptr);
    for (const std::wstring& path : RecordingFiles()) {
        DeleteFileW(path.c_str());
    }
    UseConfiguration(L"pcm.!default {\n"
                     L"  type plug\n"
                     L"  slave {\n"
                     L"    pcm {\n"
                     L"      type file\n"
                     L"      slave.pcm { type null }\n"
                     L"      file \"|cat > '" +
                     RecordingFolder() +
                     L"'/$(date +%%s%%N).raw\"\n"
                     L"      format raw\n"
                     L"    }\n"
                     L"    format S16_LE\n"
                     L"    rate 44100\n"
                     L"    channels 1\n"
                     L"  }\n"
                     L"}\n"
                     L"ctl.!default { type null }\n");
}

std::vector<Recording> Recordings() {
    std::vector<Recording> recordings;
    for (const std::wstring& path : RecordingFiles()) {
        const Recording recording = ReadRecording(path);
        if (!recording.empty()) {
            recordings.push_back(recording);
        }
    }
    return recordings;
}
