#!/bin/sh
# Measures the copy step of a silent installation under Wine, against cp -r of the same files.
#
#   tools/bench/install_bench.sh [BUILD_DIR]
#
# BUILD_DIR (default build/windows) must hold bin/hosetup.exe, bin/holang.dll, bin/hounzip.exe and
# bin/hosetup.chm (targets hosetup, holang_copy, hounzip_copy, hosetup_chm). The package is built with
# the native hopack ($HOPACK, else build/dist/hopack of the native preset), or with BUILD_DIR's
# hopack.exe under Wine when there is none. Generated data lies in $BENCH_WORK (default
# BUILD_DIR/bench-install) and is deleted at the end; the figures are printed and kept in
# BENCH_WORK/result.txt. Needs about 1.3 GB of disk. Prints figures only; it is not a test.
#
# The package: 3,000 files of about 400 MB, most of them small (0.5-96 KB), 60 of 1-6 MB and 8
# large ones making up the rest; text-like, binary with runs of zeros, and incompressible content.
# 300 of them (two large) lie in directory 0/1 and are copied plainly; the others lie in seven
# folders below the installation folder and are unpacked one by one by hounzip.exe, as in a real
# package. The plain files come first in the package, so the two kinds can be timed apart.
#
# How the copy step is timed: the setup log's banners carry whole seconds only, and the wall time of
# the run holds Wine's start, the pacing of the other stages (a fixed 6.09 s of Sleep calls in the
# installation sequence: 20 + 61 steps of 50 ms before the copy step, 51 of 40 ms after it) and the
# registry and shortcut steps. So the script watches the progress itself: the log is written with
# plain WriteFile calls, which Wine passes straight to the Linux file, and the setup program appends
# each file's target path right after that file is in place. A poller reads the growing log every
# 5 ms and stamps every new line. The copy step runs from the "Copying files" banner to the last
# line the step writes (the files the product makes later, logged after the loop), so its time is
# exact to about 5 ms plus the poller's own lag. The wall time minus the pacing sleeps is printed as
# a cross-check. cp -r runs once on the same disk after the files were read (hopack has just read
# them, so they are in the page cache, as the package members are for the installer); neither side
# syncs, so both figures are "into the page cache" (coreutils' cp copies in the kernel with
# copy_file_range, the fastest a Linux copy gets).
set -eu
here=$(cd "$(dirname "$0")/../.." && pwd)
build=$(cd "${1:-$here/build/windows}" && pwd)
# Under no display, start again inside a virtual one.
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 1280x1024x24" "$0" "$build"
fi
. "$here/tools/bench/bench_common.sh"
require_programs hosetup.exe holang.dll hounzip.exe hosetup.chm
prepare_work "${BENCH_WORK:-$build/bench-install}"
trap 'rm -rf "$work/source" "$work/dist" "$work/program" "$work/cp-target" "$work/wineprefix"' EXIT

echo "generating the package's files in $work/source ..."
python3 - "$here/tools/bench" "$work" <<'PY'
import os, random, sys
sys.path.insert(0, sys.argv[1])
from bench_package import FOLDERS, Content, file_name
work = sys.argv[2]
rng = random.Random(20240517)
content = Content(rng)

sizes = [("small", content.small_size()) for _ in range(2932)]
sizes += [("medium", int(1_000_000 * 6 ** rng.random())) for _ in range(60)]
rest = 400 * 1000 * 1000 - sum(s for _, s in sizes)
weights = [rng.uniform(0.6, 1.4) for _ in range(8)]
sizes += [("large", int(rest * w / sum(weights))) for w in weights]
rng.shuffle(sizes)
# The plain files: 298 of the others and two large ones; they come first.
large = [i for i, (c, _) in enumerate(sizes) if c == "large"]
others = [i for i, (c, _) in enumerate(sizes) if c != "large"]
plain = set(large[:2] + others[:298])
order = sorted(plain) + [i for i in range(len(sizes)) if i not in plain]

toml = ['[product]', 'name = "Vistrel Bench"', 'label = "Vistrel Bench 2024"',
        'compile_date = "2024-05-17"', '']
plain_bytes = packed_bytes = 0
ordered_sizes = []
for n, i in enumerate(order):
    size_class, size = sizes[i]
    ordered_sizes.append(size)
    kind = content.kind()
    if i in plain:
        directory, sub = rng.choice([0, 1]), ""
        plain_bytes += size
    else:
        directory, place = rng.choice(FOLDERS)
        sub = f"{place}Set{rng.randint(1, 12):02d}"
        packed_bytes += size
    rel = "files/" + file_name(n, kind)
    path = os.path.join(work, "source", rel)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        f.write(content.make(kind, size))
    toml += ['[[file]]', f'source = "{rel}"', f'directory = {directory}']
    if sub:
        toml.append('subfolder = "' + sub.replace("\\", "\\\\") + '"')
    toml.append('')
with open(os.path.join(work, "source", "bench.toml"), "w") as f:
    f.write("\n".join(toml))
with open(os.path.join(work, "plan.txt"), "w") as f:
    f.write(f"{len(plain)} {plain_bytes} {len(order) - len(plain)} {packed_bytes}\n")
    f.write(" ".join(map(str, ordered_sizes)) + "\n")
PY
{ read -r plain_files plain_bytes packed_files packed_bytes; read -r sizes; } < "$work/plan.txt"

mkdir -p "$work/program"
for program in hosetup.exe holang.dll hounzip.exe hosetup.chm; do cp "$bin/$program" "$work/program/"; done
echo "building the package ..."
start=$(date +%s.%N)
hopack build "$work/source/bench.toml" "$work/dist" --program "$work/program" > "$work/hopack.txt"
hopack_s=$(seconds_since "$start")
dist_bytes=$(du -sb "$work/dist" | cut -f1)

echo "cp -r of the source files ..."
rm -rf "$work/cp-target"
start=$(date +%s.%N)
cp -r "$work/source/files" "$work/cp-target"
cp_s=$(seconds_since "$start")
rm -rf "$work/cp-target"

echo "preparing the prefix ..."
"$here/scripts/wine-run" cmd /c exit 0 > /dev/null
# Keep one wineserver up for the whole run (started once the prefix's first one has ended), so that
# the programs under test do not pay for its start.
wineserver -w
wineserver -p
echo "installing ..."
python3 - "$here/tools/bench" "$work" "$here/scripts/wine-run" "$work/dist/hosetup.exe" "$WINEPREFIX" <<'PY' > "$work/timing.txt"
import os, sys
sys.path.insert(0, sys.argv[1])
from polled_install import PACKAGE_FILE, copy_step_bounds, run_polled
work, wine_run, setup, prefix = sys.argv[2:6]
code, wall, events = run_polled(wine_run, setup, prefix, os.path.join(work, "events.txt"))
copy_start, end = copy_step_bounds(events)
# The package's files (f0000.txt ...) come after the setup program's own five; the line before the
# first of them marks where the package's files begin.
package = [n for n, (t, line) in enumerate(events) if PACKAGE_FILE.search(line)]
own_end = events[package[0] - 1][0] if package else None
print(code, f"{wall:.3f}", copy_start, own_end, end)
print(" ".join(f"{events[n][0]:.3f}" for n in package))
PY
wineserver -k
{ read -r code wall copy_start own_end copy_end; read -r stamps; } < "$work/timing.txt"
[ "$code" = 0 ] || { echo "hosetup.exe -S failed with exit code $code" >&2; exit 1; }
[ "$copy_start" != None ] && [ "$copy_end" != None ] || { echo "the setup log shows no whole copy step" >&2; exit 1; }
installed=$(find "$WINEPREFIX/drive_c/Program Files/Harwick-Orbel/Vistrel (64-bit)" \
    "$WINEPREFIX/drive_c/users/Public/Documents/Harwick-Orbel/Vistrel (64-bit)" -type f -name 'f[0-9]*' | wc -l)

echo "$stamps" | awk -v s="$copy_start" -v o="$own_end" -v e="$copy_end" -v pf="$plain_files" \
    -v pb="$plain_bytes" -v kf="$packed_files" -v kb="$packed_bytes" -v cp="$cp_s" -v wall="$wall" \
    -v hp="$hopack_s" -v db="$dist_bytes" -v inst="$installed" -v sizes="$sizes" '
    function row(name, files, bytes, secs) {
        printf "%-30s %6d %9.1f %9.2f %10.0f %9.1f\n", name, files, bytes / 1e6, secs, files / secs, bytes / 1e6 / secs
    }
    {
        n = split($0, t, " ")
        if (n != pf + kf || inst != pf + kf) {
            printf "the log names %d files and %d are installed, the package has %d\n", n, inst, pf + kf
            exit 1
        }
        plain_s = t[pf] - o; packed_s = e - t[pf]
        split(sizes, size, " ")
        # Each file'"'"'s own time is the gap to the line before it; packed files split at 1 MB, to
        # tell the unpacker'"'"'s start apart from its throughput.
        for (i = pf + 1; i <= n; i++) {
            big = size[i] >= 1000000
            count[big]++; bytes[big] += size[i]; secs[big] += t[i] - t[i - 1]
        }
        printf "package: %d files, %.1f MB (%d plain, %.1f MB; %d packed, %.1f MB); distribution %.1f MB\n",
               pf + kf, (pb + kb) / 1e6, pf, pb / 1e6, kf, kb / 1e6, db / 1e6
        printf "hopack build (native): %.1f s\n\n", hp
        printf "%-30s %6s %9s %9s %10s %9s\n", "", "files", "MB", "seconds", "files/s", "MB/s"
        row("hosetup copy step", pf + kf, pb + kb, e - o)
        row("  plain files (CopyFileEx)", pf, pb, plain_s)
        row("  packed files (hounzip.exe)", kf, kb, packed_s)
        row("    packed, under 1 MB", count[0], bytes[0], secs[0])
        row("    packed, 1 MB and more", count[1], bytes[1], secs[1])
        row("cp -r, warm, same disk", pf + kf, pb + kb, cp)
        printf "\nper plain file %.1f ms, per packed file %.1f ms\n", plain_s * 1000 / pf, packed_s * 1000 / kf
        printf "copy step with the setup program'"'"'s own 5 files first: %.2f s (log polled every 5 ms)\n", e - s
        printf "whole run %.2f s wall; minus 6.09 s of pacing sleeps %.2f s\n", wall, wall - 6.09
    }' > "$work/result.txt" || { cat "$work/result.txt"; exit 1; }
cat "$work/result.txt"
