#!/bin/sh
# Measures how fast the setup program's window answers while hounzip.exe unpacks one 1 GiB member.
#
#   tools/bench/responsiveness_bench.sh [BUILD_DIR]
#
# BUILD_DIR (default build/windows) must hold bin/hosetup.exe, bin/holang.dll, bin/hounzip.exe,
# bin/hosetup.chm and bin/responsiveness_probe.exe (targets hosetup, holang_copy, hounzip_copy,
# hosetup_chm, responsiveness_probe). The package is built with the native hopack ($HOPACK, else
# build/dist/hopack of the native preset), or with BUILD_DIR's hopack.exe under Wine when there is none.
# Generated data (about 3 GB: the 1 GiB file, its packed member and the installed copy) lies in
# $BENCH_WORK (default BUILD_DIR/bench-responsiveness) and is deleted at the end; the figures are kept
# in BENCH_WORK/result.txt. Prints figures only; it is not a test.
#
# The member is 1 GiB of mixed content, in 1 MiB stretches: pseudo-random bytes (incompressible, 30%),
# zeros (15%), random bytes of a 16-letter alphabet (25%, coded as literals) and text-like records
# (30%), so that deflating and inflating it do real work. The installation
# runs silently in a fresh prefix; its main window and progress window exist all the same. The probe
# (responsiveness_probe.cpp) starts hosetup.exe -S, sends WM_NULL to the main window every 50 ms with
# SendMessageTimeout and times each answer; the answers while hounzip.exe runs are the figures, the
# ones before it (the pacing stages, whose loops sleep 50 ms between pumps) are shown for comparison.
set -eu
here=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "${1:-$here/build/windows}" && pwd)
# Under no display, start again inside a virtual one.
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 1280x1024x24" "$0" "$build"
fi
. "$here/tools/bench/bench_common.sh"
require_programs hosetup.exe holang.dll hounzip.exe hosetup.chm responsiveness_probe.exe
prepare_work "${BENCH_WORK:-$build/bench-responsiveness}"
trap 'rm -rf "$work/source" "$work/dist" "$work/program" "$work/wineprefix"' EXIT

echo "generating the 1 GiB member ..."
mkdir -p "$work/source"
python3 - "$work/source/drawings.dat" <<'PY'
import random, sys
rng = random.Random(20240517)
words = b"line arc circle layer block hatch dimension viewport polyline spline text style".split()
text = b"".join(b"%s %d %s=%.6f\r\n" % (rng.choice(words), rng.randint(0, 99999), rng.choice(words), rng.random())
                for _ in range(40000))
mib = 1 << 20
digits = bytes(0x30 + (i & 0x0F) for i in range(256))
with open(sys.argv[1], "wb") as f:
    for _ in range(1024):
        kind = rng.random()
        if kind < 0.3:
            f.write(rng.randbytes(mib))
        elif kind < 0.45:
            f.write(bytes(mib))
        elif kind < 0.7:      # measurements: few distinct bytes, no long repeats
            f.write(rng.randbytes(mib).translate(digits))
        else:
            start = rng.randrange(len(text) - mib)
            f.write(text[start:start + mib])
PY
cat > "$work/source/bench.toml" <<'EOF'
[product]
name = "Vistrel Bench"
label = "Vistrel Bench 2024"
compile_date = "2024-05-17"

[[file]]
source = "drawings.dat"
directory = 10
EOF

mkdir -p "$work/program"
for program in hosetup.exe holang.dll hounzip.exe hosetup.chm; do cp "$bin/$program" "$work/program/"; done
echo "building the package ..."
start=$(date +%s.%N)
hopack build "$work/source/bench.toml" "$work/dist" --program "$work/program" > "$work/hopack.txt"
hopack_s=$(seconds_since "$start")
# The setup program's own files come first in the distribution; the member is its largest file.
member_bytes=$(find "$work/dist" -type f -printf '%s\n' | sort -n | tail -1)
rm -f "$work/source/drawings.dat"

echo "preparing the prefix ..."
"$here/scripts/wine-run" cmd /c exit 0 > /dev/null
# Keep one wineserver up for the whole run (started once the prefix's first one has ended), so that
# the programs under test do not pay for its start.
wineserver -w
wineserver -p
echo "installing under the probe ..."
"$here/scripts/wine-run" "$bin/responsiveness_probe.exe" "$work/dist/hosetup.exe" -S | tr -d '\r' > "$work/probe.txt"
wineserver -k
installed=$(stat -c %s "$WINEPREFIX/drive_c/Program Files/Harwick-Orbel/Vistrel (64-bit)/drawings.dat" 2>/dev/null || echo 0)

awk -v hp="$hopack_s" -v mb="$member_bytes" -v inst="$installed" '
    { v[$1] = $2 }
    END {
        if (v["exit_code"] != 0 || inst != 1073741824) {
            printf "the installation failed: exit code %s, %d bytes installed\n", v["exit_code"], inst
            exit 1
        }
        printf "member: 1024.0 MiB, %.1f MiB packed; hopack build %.1f s\n", mb / 1048576, hp
        printf "hounzip.exe runs: %d, unpacking took %.2f s (%.0f MiB/s)\n\n", v["unpack_runs"], v["unpack_seconds"],
               1024 / v["unpack_seconds"]
        printf "WM_NULL every 50 ms         samples   median ms   p95 ms    max ms  over 10 s\n"
        printf "while hounzip.exe runs      %7d  %10.2f %8.2f %9.2f  %9d\n", v["samples"], v["median_ms"],
               v["p95_ms"], v["max_ms"], v["timeouts"]
        printf "before it (pacing stages)   %7d  %10.2f %8.2f %9.2f  %9d\n", v["before_samples"],
               v["before_median_ms"], v["before_p95_ms"], v["before_max_ms"], v["before_timeouts"]
    }' "$work/probe.txt" | tee "$work/result.txt"
