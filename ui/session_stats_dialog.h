// The running totals, and their reset.
#ifndef TESSARIN_UI_SESSION_STATS_DIALOG_H
#define TESSARIN_UI_SESSION_STATS_DIALOG_H

// Modal over the main window. A reset takes effect at once in memory; the store gets it when the
// program ends.
void ShowSessionStats();

#endif
