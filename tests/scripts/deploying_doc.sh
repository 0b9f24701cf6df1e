#!/bin/sh
# docs/deploying.md against the program. In a fresh Wine prefix the sample distribution is installed
# with each silent switch of the document's winget manifest and removed with the entry's
# QuietUninstallString from a batch file, as a deployment tool runs them; the manifest's product
# code, entry values and return codes, the removal command and the log's place must be what the
# program really writes and returns, and each code of the exit-code table is provoked once. The
# interactive case needs a display (xvfb-run).
#   deploying_doc.sh WINE_RUN DIST_DIR HODRIVER WORK_DIR DOCUMENT
set -u
wine_run=$1 dist=$2 driver=$3 work=$4 doc=$5
status=0
fail() { echo "FAIL: $*"; status=1; }
manifest=$work/manifest.yaml
# The first value of KEY in the manifest, without quotes.
value() { sed -n "s/^[ -]*$1: *\"\{0,1\}\([^\"]*\)\"\{0,1\} *\$/\1/p" "$manifest" | head -n 1; }
# The code the exit-code table gives for MEANING.
table() { sed -n '/^## Exit codes/,/^## [^E]/p' "$doc" | sed -n "s/^| *\([0-9][0-9]*\) *| *$1 *|.*/\1/p"; }
# check MEANING CODE WHAT: the program returned the table's code; a failure is no success code.
check() {
    [ "$2" = "$(table "$1")" ] || fail "$3: exit code $2, the table says '$(table "$1")' for $1"
    case " $success " in *" $2 "*) [ "$1" = Success ] || fail "$3: the manifest counts exit code $2 as success" ;; esac
}
# A run that should need nobody but waits for a person anyway is stopped (exit code 124).
unattended() { timeout 240 "$wine_run" "$@"; set -- $?; [ "$1" -ne 124 ] || wineserver -k; return "$1"; }
registry() { "$wine_run" reg query "$1" /v "$2" 2>/dev/null | tr -d '\r' | sed -n "s/^ *$2 *REG_SZ *//p"; }

rm -rf "$work"
mkdir -p "$work/damaged"
export WINEPREFIX="$work/wineprefix"
sed -n '/^```yaml$/,/^```$/p' "$doc" | sed '1d;$d' >"$manifest"
success="0 $(awk '/^InstallerSuccessCodes:/ { on = 1; next } on && $1 == "-" { print $2; next } { on = 0 }' "$manifest")"
codes=$(sed -n '/^## Exit codes/,/^## [^E]/p' "$doc" | sed -n 's/^| *\([0-9][0-9]*\) *|.*/\1/p' | sort -n | xargs)
returned=$( { echo $success; sed -n 's/^ *- InstallerReturnCode: *//p' "$manifest"; } | xargs -n 1 | sort -n | xargs)
[ -n "$codes" ] && [ "$codes" = "$returned" ] || fail "the table's codes ($codes) are not the manifest's ($returned)"
key="HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\$(value ProductCode)"
grep -qF "$key" "$doc" || fail "the document does not name the uninstall key $key"
log=$(sed -n '/^## The setup log/,/^## /p' "$doc" | grep -o 'C:\\ProgramData\\[^`]*\\hosetup\.log' | head -n 1)

unattended "$dist/hosetup.exe" -X -S
check Failure $? "a silent removal with nothing installed"
cp "$dist/hosetup.exe" "$dist/holang.dll" "$work/damaged/"
head -c 100 "$dist/_000000_" >"$work/damaged/_000000_"
unattended "$work/damaged/hosetup.exe" -S
check Failure $? "a distribution with a cut setup data file"
"$wine_run" "$dist/hosetup.exe" & pid=$!
# Cancel on the welcome page, then Yes to leave Setup.
{ "$wine_run" "$driver" click 2 --has 22 --timeout 120 && "$wine_run" "$driver" click 571 --has 720 --timeout 30; } \
    >/dev/null || { fail "no welcome page to leave"; wineserver -k; }
wait $pid
check "Left at the start" $? "Cancel and Yes on the welcome page"

awk '$1 == "Scope:" || $2 == "Scope:" { scope = $NF } $1 == "Silent:" { $1 = ""; print scope $0 }' "$manifest" >"$work/switches"
[ -s "$work/switches" ] || fail "the manifest has no silent switch"
while read -r scope switches <&3; do
    unattended "$dist/hosetup.exe" $switches
    check Success $? "the $scope installation with '$switches'"
    for name in DisplayName Publisher DisplayVersion; do
        [ "$(registry "$key" $name)" = "$(value $name)" ] ||
            fail "$scope: $name is '$(registry "$key" $name)', the manifest says '$(value $name)'"
    done
    [ -n "$log" ] && [ -f "$("$wine_run" winepath -u "$log" | tr -d '\r')" ] || fail "$scope: no log at '$log'"
    # winget finds a user-scope installation's entry under HKCU only.
    [ "$scope" != user ] || "$wine_run" reg query "HKCU${key#HKLM}" >/dev/null 2>&1 ||
        fail "user: the manifest promises a per-user entry, the program writes it under HKLM only"
    quiet=$(registry "$key" QuietUninstallString)
    grep -qF "\`$quiet\`" "$doc" || fail "the document does not give the removal command $quiet"
    printf '@echo off\r\n%s\r\nexit /b %%errorlevel%%\r\n' "$quiet" >"$work/remove.bat"
    unattended cmd /c "$("$wine_run" winepath -w "$work/remove.bat" | tr -d '\r')"
    check Success $? "the $scope removal with the QuietUninstallString"
    "$wine_run" reg query "$key" >/dev/null 2>&1 && fail "$scope: the uninstall entry is left after the removal"
done 3<"$work/switches"
wineserver -k
exit $status
