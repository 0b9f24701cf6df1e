#!/bin/sh
# Measures what one start of hounzip.exe costs under Wine, against a GUI program that does nothing.
#
#   tools/bench/hounzip_bench.sh [BUILD_DIR] [COUNT]
#
# BUILD_DIR (default build/windows) must hold bin/hounzip.exe, bin/hzlaunch.exe and bin/nothing.exe (targets
# hounzip_copy, hzlaunch, hzlaunch_nothing). Both programs are started COUNT times (default 50, interleaved) by hzlaunch.exe
# with CreateProcessA and WaitForSingleObject, as the installer starts the unpacker, so the figures are Wine's
# process start plus the program's own work, not the shell's. hounzip unpacks a small deflated member each time
# (replacing the file of the run before). Prints figures only; it is not a test.
set -eu
here=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "${1:-$here/build/windows}" && pwd)
count=${2:-50}
. "$here/tools/bench/bench_common.sh"
require_programs hounzip.exe hzlaunch.exe nothing.exe
: "${WINEPREFIX:=$build/wineprefix}"
export WINEPREFIX

# The work folder lies in the build folder, where the programs under Wine can reach it.
work=$(mktemp -d "$build/hounzip_bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/target"
python3 - "$work/_000010_" <<'PY'
import sys, zipfile
with zipfile.ZipFile(sys.argv[1], "w", zipfile.ZIP_DEFLATED) as z:
    z.writestr("member.txt", b"a small member of a Vistrel package\r\n" * 200)
PY
# The installer's own command line: archive name with "." appended, folder with a trailing backslash, empty
# options (two blanks before -n).
printf '"%s" "%s." "%s\\"  -n -q\r\n"%s"\r\n' "$(win "$bin/hounzip.exe")" "$(win "$work/_000010_")" \
    "$(win "$work/target")" "$(win "$bin/nothing.exe")" > "$work/commands.txt"

# One warm-up round so that the wineserver and the prefix are up before measuring.
"$here/scripts/wine-run" "$bin/hzlaunch.exe" "$(win "$work/commands.txt")" 1 > /dev/null
"$here/scripts/wine-run" "$bin/hzlaunch.exe" "$(win "$work/commands.txt")" "$count" > "$work/result.txt"
[ -s "$work/target/member.txt" ] || { echo "hounzip wrote nothing" >&2; exit 1; }
awk -v n="$count" '
    NR == 1 { code1 = $1; mean1 = $2; median1 = $3 }
    NR == 2 { code2 = $1; mean2 = $2; median2 = $3 }
    END {
        printf "starts per program:  %d, interleaved\n", n
        printf "                               mean   median  (ms per start)\n"
        printf "hounzip.exe (small member): %7.2f  %7.2f  exit code %s\n", mean1, median1, code1
        printf "nothing.exe (empty GUI):    %7.2f  %7.2f  exit code %s\n", mean2, median2, code2
        printf "hounzip.exe own cost:       %7.2f  %7.2f  per member\n", mean1 - mean2, median1 - median2
    }' "$work/result.txt"
