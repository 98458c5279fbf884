// Composing any hand on a grid of the deck, and its best hold.
#ifndef TESSARIN_UI_HAND_ANALYSIS_DIALOG_H
#define TESSARIN_UI_HAND_ANALYSIS_DIALOG_H

// Modal over the main window, covering it. A composition left unfinished goes on at the next
// opening.
void ShowHandAnalysis();

#endif
