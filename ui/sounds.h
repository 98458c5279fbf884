// The three sounds. Each plays only while the sound option is on; without a sound device or the
// files the game is silent.
#ifndef TESSARIN_UI_SOUNDS_H
#define TESSARIN_UI_SOUNDS_H

void PlayCardSound();   // once
void StartCountSound(); // over and over, until stopped
void StopCountSound();
void PlayPatHandSound(); // once

#endif
