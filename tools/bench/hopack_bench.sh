#!/bin/sh
# Times hopack on a generated CAD-like tree on one thread and on one per processor, beside Info-ZIP's
# `zip -r` of the same tree (one archive; zip has no threads, so it is timed pinned to one core and
# free to use them all), and checks that both hopack runs made the same distribution.
#
#   tools/bench/hopack_bench.sh [FILES] [MEGABYTES]
#
# FILES (default 1500) small files of 0.5-96 KB, plus 40 of 1-6 MB and 6 large ones filling the
# tree up to MEGABYTES (default 200); text, binary and incompressible content 5:3:2, seeded, so
# every run packs the same tree. Uses the native hopack (build/dist/hopack) or $HOPACK. Prints
# figures only; it is not a test.
set -eu
here=$(cd "$(dirname "$0")/../.." && pwd)
files=${1:-1500}
megabytes=${2:-200}
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

# seconds COMMAND...: the wall-clock time of one run, after one warm-up run has filled the page cache.
seconds() {
    start=$(date +%s.%N)
    "$@" >/dev/null
    awk -v a="$start" -v b="$(date +%s.%N)" 'BEGIN { printf "%.2f", b - a }'
}
# pack OUT JOBS: one hopack build into $work/OUT.
pack() { rm -rf "${work:?}/$1"; "$hopack" build "$work/tree/bench.toml" "$work/$1" --program "$work/program" --jobs "$2"; }
# zipall [CORE]: zip -r of the tree, pinned to CORE when given (and taskset is there).
zipall() {
    rm -f "$work/tree.zip"
    set -- ${1:+$(command -v taskset >/dev/null && echo "taskset -c $1")}
    (cd "$work/tree" && "$@" zip -q -r "$work/tree.zip" files)
}

pack one 1 >/dev/null
hopack_one=$(seconds pack one 1)
hopack_all=$(seconds pack all "$cores")
diff -r "$work/one" "$work/all" >/dev/null || { echo "the one-thread and the $cores-thread distributions differ" >&2; exit 1; }
zip_one=$(seconds zipall 0)
zip_all=$(seconds zipall)
packed=$(du -sm "$work/one" | cut -f1)
zipped=$(du -sm "$work/tree.zip" | cut -f1)

echo "hopack against zip -r: $count files, $size MB ($(nproc) processors)"
printf '%-28s %10s %10s %9s\n' "" "1 core" "$cores cores" "speed-up"
awk -v a="$hopack_one" -v b="$hopack_all" 'BEGIN { printf "%-28s %9.2fs %9.2fs %8.2fx\n", "hopack (one-file members)", a, b, a / b }'
awk -v a="$zip_one" -v b="$zip_all" 'BEGIN { printf "%-28s %9.2fs %9.2fs %8.2fx\n", "zip -r (one archive)", a, b, a / b }'
echo "output: hopack $packed MB in $(ls "$work/one" | wc -l) files, zip $zipped MB; both hopack runs identical"
