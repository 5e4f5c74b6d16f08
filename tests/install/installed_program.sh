#!/usr/bin/env bash
# Installs the build into a temporary prefix, makes the installed program folder read-only
# and starts the installed headless program twice for a user whose data folder is
# temporary: the first start copies the sample catalogue into the user's folder and walks
# it there, the second works on that same copy; the installed folder stays untouched. Then
# the installed desktop program starts under a virtual display on that copy.
# Run as root, the program runs as the user nobody, for whom the folder is read-only.
# Usage: installed_program.sh <cmake> <build folder> <1 when the desktop program is built>
set -uo pipefail
cmake=$1
build=$2
desktop=$3
base=/dev/shm
[ -d "$base" ] && [ -w "$base" ] || base=${TMPDIR:-/tmp}
work=$(mktemp -d "$base/install.XXXXXX")
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT
chmod 755 "$work"
prefix=$work/prefix
folder=$prefix/lib/catalogue-manager
failures=0

fail() {
    echo "FAIL $1"
    failures=$((failures + 1))
}
check() {
    if [ -e "$2" ]; then echo "ok   $1"; else fail "$1 ($2 missing)"; fi
}

"$cmake" --install "$build" --prefix "$prefix" >"$work/install.log" 2>&1 ||
    { cat "$work/install.log"; fail "cmake --install"; exit 1; }

check "the headless program" "$prefix/bin/catalogue-manager-headless"
check "the sample catalogue" "$folder/tandrel2004.mde"
check "the help pages" "$folder/Help/intro0.htm"
check "the page template" "$folder/Pages/STNDRDTPLT.dat"
check "the reports" "$folder/reports/all.rpt"
check "the tips" "$folder/TIPOFDAY.TXT"
if [ "$desktop" = 1 ]; then
    check "the desktop program" "$prefix/bin/catalogue-manager"
    check "the icon" "$prefix/share/icons/hicolor/scalable/apps/catalogue-manager.svg"
    entry=$prefix/share/applications/catalogue-manager.desktop
    check "the menu entry" "$entry"
    exec_line=$(grep '^Exec=' "$entry")
    if [ "$exec_line" = "Exec=$prefix/bin/catalogue-manager" ]; then
        echo "ok   the menu entry starts $prefix/bin/catalogue-manager"
    else
        fail "the menu entry's $exec_line"
    fi
    if command -v desktop-file-validate >/dev/null; then
        desktop-file-validate "$entry" || fail "desktop-file-validate"
    fi
fi

chmod -R a-w "$folder"
home=$work/home
mkdir -p "$home"
as_user=()
if [ "$(id -u)" = 0 ]; then
    chown nobody "$home"
    as_user=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
fi
data_home=$home/.local/share
user_folder=$data_home/catalogue-manager

start() {
    env -i PATH="$PATH" HOME="$home" XDG_DATA_HOME="$data_home" "${as_user[@]}" \
        "$prefix/bin/catalogue-manager-headless" >"$work/out" 2>&1
    local status=$?
    cat "$work/out"
    [ "$status" -eq 0 ] || fail "the installed program ended with status $status"
    grep -qxF "Catalogue: $user_folder/tandrel2004.mde" "$work/out" ||
        fail "the catalogue in use is not the user's copy"
    local walked
    walked=$(grep -c "page.htm written" "$work/out")
    [ "$walked" -gt 0 ] || fail "no product was shown"
    grep -q "MISSING" "$work/out" && fail "an item page was not written"
    check "the item page in the user's folder" "$user_folder/page.htm"
}

start
check "the user's copy of the catalogue" "$user_folder/tandrel2004.mde"
check "the user's copy of the help pages" "$user_folder/Help/intro0.htm"
[ -e "$user_folder/catalogue-headless" ] && fail "the executables were copied"
[ -e "$folder/page.htm" ] && fail "the program wrote into the installed folder"

# The second start takes the same copy: a file of the user's is still there.
echo kept >"$user_folder/mine.txt"
start
[ "$(cat "$user_folder/mine.txt" 2>/dev/null)" = kept ] || fail "the user's copy was made again"

# The installed desktop program under a virtual display that any user may draw on: its
# window shows the user's copy of the catalogue and the first product's page is written.
if [ "$desktop" = 1 ] && command -v xvfb-run >/dev/null && command -v xwininfo >/dev/null; then
    rm -f "$user_folder/page.htm"
    xvfb-run -a -s "-ac -screen 0 1280x1024x24" bash -c '
        home=$1 data_home=$2 prefix=$3 out=$4
        shift 4
        env -i PATH="$PATH" HOME="$home" XDG_DATA_HOME="$data_home" DISPLAY="$DISPLAY" \
            QTWEBENGINE_DISABLE_SANDBOX=1 "$@" "$prefix/bin/catalogue-manager" >"$out" 2>&1 &
        program=$!
        catalogue=$data_home/catalogue-manager/tandrel2004.mde
        for _ in $(seq 600); do
            if xwininfo -root -tree 2>/dev/null | grep -qF "\"$catalogue\"" &&
                [ -e "$data_home/catalogue-manager/page.htm" ]; then
                kill "$program"
                exit 0
            fi
            kill -0 "$program" 2>/dev/null || exit 2
            sleep 0.1
        done
        kill "$program"
        exit 1' _ "$home" "$data_home" "$prefix" "$work/desktop.out" "${as_user[@]}"
    case $? in
        0) echo "ok   the desktop program shows the user's catalogue in its window" ;;
        2) cat "$work/desktop.out"; fail "the installed desktop program ended by itself" ;;
        *) cat "$work/desktop.out"; fail "no window showed the user's catalogue within a minute" ;;
    esac
fi

[ "$failures" -eq 0 ] && echo "installed program: every check passed"
exit $((failures > 0))
