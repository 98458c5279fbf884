// The offer of more credits when they do not cover the bet.
#ifndef TESSARIN_UI_NEED_MONEY_DIALOG_H
#define TESSARIN_UI_NEED_MONEY_DIALOG_H

// Modal over the main window, or over the dialog that is open before it. OK buys the amount as it
// was typed, whatever it is; Cancel changes nothing.
void AskForMoney();

#endif
