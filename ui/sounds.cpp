#include "ui/sounds.h"

#include <windows.h>

#include <mmsystem.h>

#include "ui/program.h"
#include "ui/shell.h"

namespace {

// Never the system's own sound in place of a missing file.
void Play(const wchar_t* name, UINT mode) {
    if (!program.table.sound) {
        return;
    }
    wchar_t path[MAX_PATH];
    ShellProgramFile(name, path);
    sndPlaySoundW(path, SND_FILENAME | SND_ASYNC | SND_NODEFAULT | mode);
}

} // namespace

void PlayCardSound() {
    Play(L"QMT_VR_Wave1", 0);
}

void StartCountSound() {
    Play(L"QMT_VR_Wave2", SND_LOOP);
}

// Whether or not sound is on by now: it may have been when the loop was started.
void StopCountSound() {
    sndPlaySoundW(nullptr, 0);
}

void PlayPatHandSound() {
    Play(L"QMT_VR_Wave3", 0);
}
