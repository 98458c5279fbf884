# shellcheck shell=bash
# One whole hand, played through the program's window on a virtual display with real keys, for
# scripts to source. Needs tools/wine.sh and WINEPREFIX.

# The id of the visible window with exactly this title; waits for it as many tenths of a second.
find_window() {
    local id tries
    for ((tries = 0; tries <= $2; ++tries)); do
        id=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1)
        [ -n "$id" ] && echo "$id" && return
        sleep 0.1
    done
    return 1
}

# Waits until the screen stands still, which is when the cards and the coins do.
wait_until_still() {
    local before="" now tries
    for ((tries = 0; tries < 60; ++tries)); do
        now=$(import -window root -depth 8 rgb:- | cksum)
        [ "$now" = "$before" ] && return
        before=$now
        sleep 0.5
    done
}

# Waits until a window is gone; Wine takes its time over it where there is no window manager.
wait_until_gone() {
    local tries
    for ((tries = 0; tries < 100; ++tries)); do
        xdotool search --onlyvisible --name "^$1\$" >/dev/null 2>&1 || return 0
        sleep 0.1
    done
}

# The count of hands that the program stored when it last ended.
stored_hands() {
    local hex
    hex=$(sed -n '/^\[TessarCE\]/,/^$/s/^"Hands"=dword:\([0-9a-f]*\).*/\1/p' \
        "$WINEPREFIX/user.reg" | head -n 1)
    echo $((16#${hex:-0}))
}

press() {
    xdotool windowfocus --sync "$1" 2>/dev/null || true
    xdotool key --delay 50 "${@:2}"
}

# Starts the program PROGRAM, deals, holds two cards, draws, stands by the hold if the trainer asks,
# and ends the program. Leaves a picture of the final hand; fails unless the program counted one
# hand more. The display it starts is the caller's to stop. Usage: play_one_hand PROGRAM PICTURE
play_one_hand() {
    local picture=$2 window dialog program before
    before=$(stored_hands)
    start_display 1280x1024
    wine "$1" >/dev/null 2>&1 &
    program=$!
    if ! window=$(find_window "Tessarin CE" 600); then
        echo "The program's window does not come up." >&2
        exit 1
    fi
    wait_until_still
    press "$window" Return
    if dialog=$(find_window "Need Money" 5); then
        press "$dialog" Return
        wait_until_gone "Need Money"
        wait_until_still
        press "$window" Return
    fi
    wait_until_still
    press "$window" 1 2
    wait_until_still
    press "$window" Return
    if dialog=$(find_window "Statistical Error!" 20); then
        press "$dialog" alt+y
        wait_until_gone "Statistical Error!"
    fi
    wait_until_still
    import -window "$window" "$picture"
    press "$window" x
    wait "$program" || true
    wineserver -w
    if [ "$(stored_hands)" -ne $((before + 1)) ]; then
        echo "The hand was not played to its end." >&2
        exit 1
    fi
}
