// Editing the current game's payouts.
#ifndef TESSARIN_UI_PAYTABLE_EDITOR_H
#define TESSARIN_UI_PAYTABLE_EDITOR_H

// Modal over the main window, covering it. OK puts the values in play at once and into the store,
// where a value equal to its default leaves nothing; Cancel changes nothing. An empty field or one
// that is no number is a payout of 0; a number above 2,147,483,647 leaves its payout as it was.
void EditPaytable();

#endif
