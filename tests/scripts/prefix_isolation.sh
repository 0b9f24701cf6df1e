#!/bin/sh
# The test bench stays inside its Wine prefix. In a fresh prefix made by scripts/wine-run the user's
# shell folders are real folders of the prefix and there is no drive Z:. A per-user silent
# installation of the sample distribution puts its links and documents into the prefix's Desktop
# and Documents; neither it nor the silent removal changes the host's home folder.
#   prefix_isolation.sh WINE_RUN DIST_DIR WORK_DIR
set -u
wine_run=$1 dist=$2 work=$3
status=0
fail() { echo "FAIL: $*"; status=1; }

# The host's user folders: the usual names, the XDG ones, and the home folder's own entries (a
# new prefix links a shell folder to the home folder itself when the named folder is missing).
listing() {
    find "$HOME" -mindepth 1 -maxdepth 1 ! -name '.*' -printf '%P %y\n' | sort
    { printf "$HOME/%s\n" Desktop Documents Downloads Music Pictures Videos Templates Public
      env | sed -n 's/^XDG_[A-Z]*_DIR=//p'
      sed -n 's/^XDG_[A-Z]*_DIR="\(.*\)"$/\1/p' "${XDG_CONFIG_HOME:-$HOME/.config}/user-dirs.dirs" 2>/dev/null |
          sed "s|^\$HOME|$HOME|"
    } | sort -u | while read -r folder; do
        [ "$folder" != "$HOME" ] && [ -d "$folder" ] && find "$folder" -printf '%p %y %s %T@\n' | sort
    done
}
same_home() {
    listing >"$work/home-$1.txt"
    cmp -s "$work/home-before.txt" "$work/home-$1.txt" ||
        { fail "the home folder changed $1"; diff "$work/home-before.txt" "$work/home-$1.txt"; }
}

rm -rf "$work"
mkdir -p "$work"
listing >"$work/home-before.txt"
WINEPREFIX=$work/wineprefix
export WINEPREFIX
"$wine_run" cmd /c exit 0
user=$(find "$WINEPREFIX/drive_c/users" -mindepth 1 -maxdepth 1 -type d ! -name Public | head -n 1)
for name in Desktop Documents Downloads Music Pictures Videos; do
    [ -d "$user/$name" ] && [ ! -L "$user/$name" ] || fail "$name is not a folder of the prefix"
done
[ ! -e "$WINEPREFIX/dosdevices/z:" ] && [ ! -L "$WINEPREFIX/dosdevices/z:" ] || fail "the prefix has a drive Z:"
"$wine_run" cmd /c 'dir Z:\ >nul 2>nul' && fail "Wine still finds a drive Z:"

"$wine_run" "$dist/hosetup.exe" -S -U
code=$?
[ "$code" -eq 0 ] || fail "the installation ended with exit code $code"
[ -n "$(find "$user/Desktop" -name '*.lnk')" ] || fail "no link on the prefix's desktop"
[ -n "$(find "$user/Documents" -type f)" ] || fail "no file in the prefix's documents"
same_home "by the installation"

key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Vistrel Professional 2022'
command=$("$wine_run" reg query "$key" /v UninstallString | tr -d '\r' | sed -n 's/^ *UninstallString *REG_SZ *//p')
if [ -n "$command" ]; then
    eval "set -- $command"
    "$wine_run" "$@" -S
    code=$?
    [ "$code" -eq 0 ] || fail "the removal ended with exit code $code"
else
    fail "no uninstall entry"
fi
[ -z "$(find "$user/Desktop" -name '*.lnk')" ] || fail "the removal left the desktop link"
same_home "by the removal"
wineserver -k
exit $status
