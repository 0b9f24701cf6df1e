#!/bin/sh
# The silent removal's time against the length of a padded setup log. A standard user can append
# lines to the log (it lies below ProgramData); here the log of a real installation gets N copies
# of one folder line that names a folder a drawing of the user's keeps, the costliest line for
# the folder passes. The removal must grow with the log's length, never with its square.
#   sh tools/bench/padded_log_bench.sh [build folder] [counts...]
set -e
here=$(cd "$(dirname "$0")/../.." && pwd)
build=${1:-$here/build/windows}
shift 2>/dev/null || true
counts=${*:-0 800 3200}
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 1280x1024x24" sh "$0" "$build" $counts
fi
. "$here/tools/bench/bench_common.sh"
require_programs hosetup.exe holang.dll hounzip.exe
dist=$here/build/dist/vistrel-dist
[ -f "$dist/hosetup.exe" ] || { echo "missing $dist: build first" >&2; exit 2; }
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Vistrel Professional 2022'
wine_run() { "$here/scripts/wine-run" "$@"; }

trap 'wineserver -k 2>/dev/null || true' EXIT
printf '%8s %10s %10s\n' "lines" "log KB" "seconds"
for count in $counts; do
    prepare_work "$here/build/bench/padded-log"
    wine_run "$dist/hosetup.exe" -S
    common=$(wine_run winepath -u 'C:\ProgramData\Harwick-Orbel\Vistrel (64-bit)' | tr -d '\r')
    drawings='C:\users\Public\Documents\Harwick-Orbel\Vistrel (64-bit)\Drawings\'
    drawings_unix=$(wine_run winepath -u "$drawings" | tr -d '\r')
    mkdir -p "$drawings_unix" && echo mine >"$drawings_unix/mine.hod"
    awk -v n="$count" -v line="#$drawings" 'BEGIN { for (i = 0; i < n; i++) printf "%s\r\n", line }' \
        >>"$common/hosetup.log"
    size=$(($(wc -c <"$common/hosetup.log") / 1024))
    command=$(wine_run reg query "$uninstall_key" /v QuietUninstallString | tr -d '\r' |
              sed -n 's/^ *QuietUninstallString *REG_SZ *//p')
    start=$(date +%s.%N)
    eval "wine_run $command"
    printf '%8s %10s %10s\n' "$count" "$size" "$(seconds_since "$start")"
    wineserver -k 2>/dev/null || true
done
rm -rf "$here/build/bench/padded-log"
