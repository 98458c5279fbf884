# shellcheck shell=bash
# Wine prefixes and virtual displays of our own, for scripts to source. Nothing here touches a
# prefix or a display that somebody else made.

export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="

# Whether the key of HKEY_LOCAL_MACHINE\Software\Classes has a default value, by the file of the
# prefix's registry, where backslashes are doubled and the default value comes first.
class_has_value() {
    grep -F -A 3 "[Software\\\\Classes\\\\${1//\\/\\\\}]" "$WINEPREFIX/system.reg" 2>/dev/null |
        grep -q '^@='
}

# Has pages opened by the system's own browser, where nothing else is chosen for them: Wine leaves
# that to mshtml, which is not here. Under HKEY_CURRENT_USER it would not be looked at.
open_pages_in_browser() {
    local classes='HKEY_LOCAL_MACHINE\Software\Classes' values=
    class_has_value .html ||
        values+="[$classes\.html]"$'\n@="htmlfile"\n\n'
    class_has_value 'htmlfile\shell\open\command' ||
        values+="[$classes\htmlfile\shell\open\command]"$'\n@="winebrowser \\"%1\\""\n\n'
    [ -n "$values" ] || return 0
    # What starts without a display must not stay for those that have one; a game that runs does.
    env -u DISPLAY -u WAYLAND_DISPLAY wine regedit /S - <<<$'REGEDIT4\n\n'"$values" \
        >/dev/null 2>&1 || true
    timeout 10 wineserver -w || true
}

# Makes the prefix that WINEPREFIX names, unless it is made already. Several may ask at once: the
# first makes it and the others wait.
make_prefix() {
    local made=$WINEPREFIX/.made
    [ -f "$made" ] && return
    mkdir -p "$WINEPREFIX"
    (
        flock 8
        [ -f "$made" ] && exit
        # The server must not inherit the lock, or it would keep it.
        env -u DISPLAY -u WAYLAND_DISPLAY wineboot -i >/dev/null 2>&1 8>&-
        wineserver -w 8>&-
        open_pages_in_browser 8>&-
        touch "$made"
    ) 8>"$WINEPREFIX/.lock"
}

# Makes the prefix that WINEPREFIX names after the one given, which it makes first and which nothing
# runs in. Its registry is its own, the system's files are shared: a second costs a moment.
make_prefix_like() {
    local made=$WINEPREFIX/.made first=$1
    [ -f "$made" ] && return
    # Fonts are not looked for yet: what the first had found, the second would keep unseen.
    printf '<fontconfig/>\n' >"$first.fonts"
    FONTCONFIG_FILE=$first.fonts WINEPREFIX=$first make_prefix
    mkdir -p "$WINEPREFIX"
    (
        flock 8
        [ -f "$made" ] && exit
        cp -a "$first"/*.reg "$first"/.update-timestamp "$first"/dosdevices "$WINEPREFIX"
        ln -sfn "$first/drive_c" "$WINEPREFIX/drive_c"
        touch "$made"
    ) 8>"$WINEPREFIX/.lock"
}

# Starts a virtual display on a free number, which the server picks itself, and sets DISPLAY and
# displayPid. Takes the screen's size as WIDTHxHEIGHT.
start_display() {
    local folder number
    folder=$(mktemp -d)
    mkfifo "$folder/number"
    Xvfb -displayfd 7 -screen 0 "${1}x24" -nolisten tcp 7>"$folder/number" >/dev/null 2>&1 &
    displayPid=$!
    if ! read -r -t 20 number <"$folder/number"; then
        echo "The virtual display (Xvfb) does not start." >&2
        rm -r "$folder"
        return 1
    fi
    rm -r "$folder"
    unset WAYLAND_DISPLAY
    export DISPLAY=:$number
}

stop_display() {
    [ -n "${displayPid:-}" ] || return 0
    kill "$displayPid" 2>/dev/null || true
    wait "$displayPid" 2>/dev/null || true
}
