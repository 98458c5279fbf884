// The three popup menus. Each is built when it opens, right-aligned at the button column.
#ifndef TESSARIN_UI_MENUS_H
#define TESSARIN_UI_MENUS_H

void OpenMainMenu();
void OpenDealSpeedMenu();

// Reads the six games, and with them their stored payouts, anew.
void OpenGamesMenu();

#endif
