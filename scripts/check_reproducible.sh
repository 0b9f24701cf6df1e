#!/bin/sh
# The build is reproducible: the HEAD of this checkout, cloned into a second folder at another path
# and built there with scripts/build.sh, gives the same build/dist and build/dist-de, byte for
# byte, as this checkout's own build (made before, with the same command). Every file that differs
# or is missing on one side is named.
# Usage: check_reproducible.sh [WORK_DIR]   (the clone goes below WORK_DIR, by default a new
# temporary folder, removed afterwards)
set -u
cd "$(dirname "$0")/.."
root=$(pwd)
if [ $# -ge 1 ]; then work=$1; keep=1; else work=$(mktemp -d); keep=0; fi
clone=$work/second-checkout/at-another-path
[ -d build/dist ] && [ -d build/dist-de ] || { echo "FAIL: build this checkout first (sh scripts/build.sh)"; exit 1; }
[ -z "$(git status --porcelain --untracked-files=no)" ] ||
    echo "note: this checkout has changes that are not committed; the clone builds HEAD"

rm -rf "$clone"
mkdir -p "$(dirname "$clone")"
git clone -q --no-local "$root" "$clone" && git -C "$clone" checkout -q --detach "$(git rev-parse HEAD)" ||
    { echo "FAIL: cannot clone $root"; exit 1; }
sh "$clone/scripts/build.sh" >"$work/second-build.log" 2>&1 ||
    { tail -n 30 "$work/second-build.log"; echo "FAIL: the second checkout does not build"; exit 1; }

status=0
for dir in build/dist build/dist-de; do
    (cd "$root/$dir" && find . -type f | sort) >"$work/first.txt"
    (cd "$clone/$dir" && find . -type f | sort) >"$work/second.txt"
    comm -23 "$work/first.txt" "$work/second.txt" | sed "s|^\./|DIFFERS: $dir/|; s|\$| (only in this checkout)|"
    comm -13 "$work/first.txt" "$work/second.txt" | sed "s|^\./|DIFFERS: $dir/|; s|\$| (only in the clone)|"
    [ "$(comm -3 "$work/first.txt" "$work/second.txt" | wc -l)" -eq 0 ] || status=1
    files=0
    for name in $(comm -12 "$work/first.txt" "$work/second.txt"); do
        files=$((files + 1))
        cmp -s "$root/$dir/$name" "$clone/$dir/$name" || { echo "DIFFERS: $dir/${name#./}"; status=1; }
    done
    echo "$dir: $files files compared"
done
[ $keep -eq 1 ] || rm -rf "$work"
[ $status -eq 0 ] && echo "ok: the two builds are identical" || echo "FAIL: the builds differ"
exit $status
