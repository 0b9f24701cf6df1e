#!/bin/sh
# Times hopack on a generated CAD-like tree on one thread and on one per processor, beside Info-ZIP's
# `zip -r` of the same tree (one archive; zip has no threads, so it is timed pinned to one core and
# free to use them all), and checks that both hopack runs made the same distribution.
#
#   tools/bench/hopack_bench.sh [FILES] [MEGABYTES] [RUNS]
#
# FILES (default 1500) small files of 0.5-96 KB, plus 40 of 1-6 MB and 6 large ones that fill the
# tree up to MEGABYTES (default 250) where the others leave room; text, binary and incompressible content 5:3:2, seeded, so
# every run packs the same tree. Each figure is the best of RUNS (default 3) runs after a warm-up
# run, with the processor time beside it, since other work on the machine stretches the wall
# time; the load average is printed with them. Uses the native hopack (build/dist/hopack) or
# $HOPACK. Prints figures only; it is not a test.
set -eu
here=$(cd "$(dirname "$0")/../.." && pwd)
files=${1:-1500}
megabytes=${2:-250}
runs=${3:-3}
hopack=${HOPACK:-$here/build/dist/hopack}
[ -x "$hopack" ] || { echo "no $hopack: build the native preset first or set HOPACK" >&2; exit 2; }
command -v zip >/dev/null || { echo "needs zip" >&2; exit 2; }
cores=$(nproc)
work=$(mktemp -d "${TMPDIR:-/tmp}/hopack_bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/program"
for own in hosetup.exe holang.dll hounzip.exe hosetup.chm; do echo "$own" >"$work/program/$own"; done

python3 - "$here/tools/bench" "$work/tree" "$files" "$megabytes" <<'PY'
import os, random, sys
sys.path.insert(0, sys.argv[1])
from bench_package import FOLDERS, Content, file_name
tree, count, megabytes = sys.argv[2], int(sys.argv[3]), int(sys.argv[4])
rng = random.Random(20240517)
content = Content(rng)
sizes = [content.small_size() for _ in range(count)]
sizes += [int(1_000_000 * 6 ** rng.random()) for _ in range(40)]
rest = max(megabytes * 1000 * 1000 - sum(sizes), 6)
weights = [rng.uniform(0.6, 1.4) for _ in range(6)]
sizes += [int(rest * w / sum(weights)) for w in weights]
rng.shuffle(sizes)
toml = ['[product]', 'name = "Vistrel Bench"', 'label = "Vistrel Bench 2024"', 'compile_date = "2024-05-17"', '']
for n, size in enumerate(sizes):
    kind = content.kind()
    directory, place = rng.choice(FOLDERS)
    sub = f"{place}Set{rng.randint(1, 12):02d}"
    rel = f"files/{sub.replace(chr(92), '/')}/{file_name(n, kind)}"
    os.makedirs(os.path.join(tree, os.path.dirname(rel)), exist_ok=True)
    with open(os.path.join(tree, rel), "wb") as f:
        f.write(content.make(kind, size))
    toml += ['[[file]]', f'source = "{rel}"', f'directory = {directory}',
             'subfolder = "' + sub.replace("\\", "\\\\") + '"', '']
with open(os.path.join(tree, "bench.toml"), "w") as f:
    f.write("\n".join(toml))
PY
count=$(find "$work/tree/files" -type f | wc -l)
size=$(du -sm "$work/tree/files" | cut -f1)
sync

# best CLEAN COMMAND: "WALL CPU" seconds of the run of COMMAND (a shell command) with the shortest
# wall time among $runs, each after CLEAN; a first run, untimed, fills the page cache.
best() {
    : >"$work/times"
    sh -c "$1; $2" >/dev/null
    for run in $(seq "$runs"); do
        sh -c "$1"
        /usr/bin/time -f "%e %U %S" -a -o "$work/times" sh -c "$2" >/dev/null
    done
    sort -n "$work/times" | awk 'NR == 1 { printf "%.2f %.2f", $1, $2 + $3 }'
}
# The command that runs one on core 0 (when taskset is there).
pinned() { command -v taskset >/dev/null && echo "taskset -c 0"; }
# hopack with JOBS threads into $work/OUT: pack OUT JOBS; one thread runs pinned to one core.
pack() {
    pin=; [ "$2" -eq 1 ] && pin=$(pinned)
    echo "$pin '$hopack' build '$work/tree/bench.toml' '$work/$1' --program '$work/program' --jobs $2"
}
# zip -r of the tree, pinned to one core when "pinned" is given.
zipall() {
    pin=; [ "${1:-}" = pinned ] && pin=$(pinned)
    echo "cd '$work/tree' && $pin zip -q -r '$work/tree.zip' files"
}

load=$(cut -d' ' -f1-3 /proc/loadavg)
hopack_one=$(best "rm -rf '$work/one'" "$(pack one 1)")
hopack_all=$(best "rm -rf '$work/all'" "$(pack all "$cores")")
diff -r "$work/one" "$work/all" >/dev/null || { echo "the one-thread and the $cores-thread distributions differ" >&2; exit 1; }
zip_one=$(best "rm -f '$work/tree.zip'" "$(zipall pinned)")
zip_all=$(best "rm -f '$work/tree.zip'" "$(zipall)")
packed=$(du -sm "$work/one" | cut -f1)
zipped=$(du -sm "$work/tree.zip" | cut -f1)

echo "hopack against zip -r: $count files, $size MB, $cores processors, load average before: $load"
printf '%-26s %16s %16s %9s\n' "seconds (wall / cpu)" "1 core" "$cores cores" "speed-up"
row() { echo "$2 $3" | awk -v name="$1" '{ printf "%-26s %7.2f / %6.2f %7.2f / %6.2f %8.2fx\n", name, $1, $2, $3, $4, $1 / $3 }'; }
row "hopack (one-file members)" "$hopack_one" "$hopack_all"
row "zip -r (one archive)" "$zip_one" "$zip_all"
echo "output: hopack $packed MB in $(ls "$work/one" | wc -l) files, zip $zipped MB; both hopack runs identical"
