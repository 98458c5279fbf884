# shellcheck shell=bash
# The entry in the desktop's menu, for scripts to source. It is one file that names the program and
# one picture a size, all under the user's data folder; nothing else there is touched.

iconSizes=(16 32 48 256)

# The user's data folder, in `dataFolder`.
find_data_folder() {
    # A relative XDG_DATA_HOME is to be taken for none.
    if [[ ${XDG_DATA_HOME:-} == /* ]]; then
        dataFolder=$XDG_DATA_HOME
    elif [[ ${HOME:-} == /* ]]; then
        dataFolder=$HOME/.local/share
    else
        echo "There is no home folder: neither HOME nor XDG_DATA_HOME names one." >&2
        exit 1
    fi
}

entry_file() {
    echo "$dataFolder/applications/tessarin-ce.desktop"
}

icon_file() {
    echo "$dataFolder/icons/hicolor/${1}x$1/apps/tessarin-ce.png"
}

# A text as the value of a key: the file reads \\ as a backslash.
entry_text() {
    printf '%s' "${1//\\/\\\\}"
}

# A path as the only word of a command line, which has quotes, escapes and % codes of its own.
command_word() {
    local word=${1//\\/\\\\}
    word=${word//\"/\\\"}
    word=${word//\$/\\\$}
    word=${word//\`/\\\`}
    printf '"%s"' "${word//%/%%}"
}

write_entry() {
    cat <<END
[Desktop Entry]
Type=Application
Version=1.0
Name=Tessarin CE
GenericName=Video Poker
Comment=Video poker with an exact strategy trainer
TryExec=$(entry_text "$1")
Exec=$(entry_text "$(command_word "$1")")
Icon=tessarin-ce
Terminal=false
StartupNotify=true
StartupWMClass=tessarin-ce.exe
Categories=Game;CardGame;
Keywords=cards;casino;strategy;trainer;
END
}

# The program that the entry starts; nothing if there is no entry.
entry_program() {
    local text
    text=$(sed -n 's/^TryExec=//p' "$(entry_file)" 2>/dev/null)
    printf '%s' "${text//\\\\/\\}"
}

# A menu looks for new icons where the theme's folder has a new date.
touch_theme() {
    touch -c "$dataFolder/icons/hicolor" 2>/dev/null || true
}

# Puts the entry that starts the given program, with the pictures ui/art/icon/SIZE.png, in place of
# one that is there.
install_entry() {
    local program=$1 size before
    if [[ $program == *[[:cntrl:]]* ]]; then
        echo "A menu entry cannot name this folder: there is a control character in its name." >&2
        return 1
    fi
    before=$(entry_program)
    for size in "${iconSizes[@]}"; do
        install -D -m 644 "ui/art/icon/$size.png" "$(icon_file "$size")" || return 1
    done
    mkdir -p "$dataFolder/applications" || return 1
    write_entry "$program" >"$(entry_file)" || return 1
    touch_theme
    if [ -n "$before" ] && [ "$before" != "$program" ]; then
        echo "The menu entry started $before until now."
    fi
    echo "Tessarin CE is in the menu, under Games: $(entry_file)."
    echo "The entry starts $program. If you move this folder, run ./play --install there."
}

# Removes the folders that install_entry may have made, but none with anything in it.
remove_empty_folders() {
    local size folders=()
    for size in "${iconSizes[@]}"; do
        folders+=("icons/hicolor/${size}x$size/apps" "icons/hicolor/${size}x$size")
    done
    folders+=(icons/hicolor icons applications)
    (cd "$dataFolder" && rmdir "${folders[@]}" 2>/dev/null) || true
}

# Removes what install_entry put, wherever it was run from.
uninstall_entry() {
    local files=() size file
    for size in "${iconSizes[@]}"; do
        files+=("$(icon_file "$size")")
    done
    files+=("$(entry_file)")
    local found=
    for file in "${files[@]}"; do
        if [ -e "$file" ] || [ -L "$file" ]; then
            found=1
            rm -f "$file" || return 1
        fi
    done
    if [ -z "$found" ]; then
        echo "There is no menu entry under $dataFolder."
        return
    fi
    remove_empty_folders
    touch_theme
    echo "The menu entry and its icons are removed."
}

# Says so if the menu names a program that is no longer there.
warn_of_stale_entry() {
    local program
    program=$(entry_program)
    if [ -n "$program" ] && [ ! -e "$program" ]; then
        echo "The menu entry starts $program, which is gone; ./play --install mends it."
    fi
}
