# shellcheck shell=bash
# The Debian packages that building, playing and testing need, and their installation, for scripts
# to source: install_needs "${buildNeeds[@]}" "${wineNeeds[@]}". A need a|b is served by either; the
# first that is on offer is taken.

# shellcheck disable=SC2034 # they are for those who source this
{
    # Configuring looks for what the tests and the command line are built with, too; the package is
    # packed by Python.
    buildNeeds=(
        cmake ninja-build g++-mingw-w64-x86-64-posix googletest libcli11-dev nlohmann-json3-dev
        python3
    )
    # The program's texts are drawn with the fonts.
    wineNeeds=("wine64|wine" wine fonts-wine fonts-liberation)
    # A virtual display, keys for it, and pictures of it.
    displayNeeds=(xvfb xdotool imagemagick)
    testNeeds=(
        g++ clang libgtest-dev libgmock-dev libbenchmark-dev sox libasound2-plugins
    )
    # The tests are configured with the fuzz targets.
    fuzzNeeds=(
        cmake ninja-build clang "libclang-rt-dev|libclang-rt-14-dev" libgtest-dev libgmock-dev
        libcli11-dev nlohmann-json3-dev
    )
}

# The packages among the arguments that are not installed, in `missing`.
find_missing() {
    local need name
    local -A installed
    while read -r name; do
        installed[$name]=1
    done < <(dpkg-query -W -f '${Package} ${db:Status-Status}\n' 2>/dev/null |
        sed -n 's/ installed$//p')
    missing=()
    for need in "$@"; do
        local found=
        for name in ${need//|/ }; do
            [ -n "${installed[$name]:-}" ] && found=1
        done
        [ -n "$found" ] || missing+=("$need")
    done
}

# The first of the alternatives a|b that the package lists offer; the first if they offer none, so
# that apt-get says what is wrong.
first_offered() {
    local name
    for name in ${1//|/ }; do
        if apt-cache policy "$name" 2>/dev/null | grep -q 'Candidate: [^(]'; then
            echo "$name"
            return
        fi
    done
    echo "${1%%|*}"
}

# Installs what is missing among the packages named; says nothing when nothing is.
install_needs() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        echo "This system has no apt. Please install, under the names they have here:" >&2
        printf '  %s\n' "${@//|/ or }" >&2
        exit 1
    fi
    find_missing "$@"
    [ ${#missing[@]} -gt 0 ] || return 0

    local asRoot=()
    if [ "$(id -u)" != 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing, and there is no sudo to install them with:" >&2
            printf '  %s\n' "${missing[@]}" >&2
            exit 1
        fi
        asRoot=(sudo)
    fi
    echo "Installing what is missing: ${missing[*]}"
    local need names=() log
    log=$(mktemp)
    if ! {
        "${asRoot[@]}" apt-get update -qq &&
            for need in "${missing[@]}"; do
                names+=("$(first_offered "$need")")
            done &&
            "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive \
                apt-get install -y -qq --no-install-recommends "${names[@]}"
    } >"$log" 2>&1; then
        cat "$log" >&2
        rm "$log"
        exit 1
    fi
    rm "$log"
}

# The presets need CMake 3.25.
check_cmake() {
    local version
    version=$(cmake --version | sed -n '1s/[^0-9]*//p')
    if [ "$(printf '%s\n' 3.25 "$version" | sort -V | head -n 1)" != 3.25 ]; then
        echo "CMake $version is here; 3.25 or later is needed (Debian 12, Ubuntu 24.04)." >&2
        exit 1
    fi
}
