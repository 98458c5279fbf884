// Numbers of resources, controls and commands; shared with the resource script.
#ifndef TESSARIN_UI_RESOURCE_H
#define TESSARIN_UI_RESOURCE_H

// Strings.
#define IDS_CLASS_NAME 200
#define IDS_TITLE 201

// Pictures at scale 1; at scale s each stands at PICTURE_SCALE_STEP * (s - 1) more.
#define IDB_LARGE_PIPS 101
#define IDB_SMALL_PIPS 102
#define IDB_PICTURES 103
#define IDB_RANKS 104
#define IDB_JOKER 105
#define IDB_WILD_DEUCE 106
#define IDB_CARD_BACK 113
#define PICTURE_SCALE_STEP 1000

#define IDI_PROGRAM 114

// Dialogs.
#define IDD_NEED_MONEY 116
#define IDD_HAND_ANALYSIS 118
#define IDD_WHOLE_SCREEN 200
#define IDD_STATISTICAL_ERROR 201
#define IDD_SESSION_STATS 4000
#define IDD_GAME_ANALYSIS 5001

// Commands of the main window; the first four and the status line are child controls as well.
#define IDC_DEAL_DRAW 20
#define IDC_BET_ONE 40
#define IDC_GAMES 50
#define IDC_MENU 90
#define IDC_STATUS 99
#define IDM_EXIT 60
#define IDM_HELP 70
#define IDM_HAND_ANALYSIS 80
#define IDM_GAME_ANALYSIS 100
#define IDM_NO_TRAINING 200
#define IDM_WARN 201
#define IDM_AUTOHOLD 202
#define IDM_NO_DRAW 300
#define IDM_USE_SOUND 310
#define IDM_RESET_CREDITS 320
#define IDM_CHANGE_PAYTABLE 400
#define IDM_DEAL_SPEED 500
#define IDM_SLOW 501
#define IDM_MEDIUM 502
#define IDM_FAST 504
#define IDM_SESSION_STATS 600
#define IDM_HAND_DETAILS 800
#define IDM_CLOSE 1000
#define IDM_FIRST_GAME 10000
#define IDM_LAST_GAME 10006

// Need Money.
#define IDC_PURCHASE 1006

// Statistical Error!; the texts' numbers stand in training/play_grading.h.
#define IDC_ANSWER_YES 1
#define IDC_ANSWER_NO 2
#define IDC_GRADING_DETAILS 2100

// Hand details.
#define IDC_DETAILS_LIST 2000

// Current Session Analysis; the fields' numbers stand in training/session_stats.h.
#define IDC_RESET_STATS 4001

// Tessarin Game Analysis.
#define IDC_ANALYSIS_LIST 1000
#define IDC_ANALYSIS_TOTAL 5002
#define IDC_RUN_ANALYSIS 5003

// Paytable editor: one field a row from each of these on.
#define IDC_FIRST_ONE_COIN 2000
#define IDC_FIRST_FIVE_COINS 3000
#define IDC_DEFAULTS 4000

// Hand analysis.
#define IDC_INFO 3000
#define IDC_FIRST_CARD 8000
#define IDC_FIRST_SLOT 9000

#endif
