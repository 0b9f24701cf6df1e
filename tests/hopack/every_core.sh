#!/bin/sh
# The sample package built by hopack on one thread, on one per processor and on more threads than
# the machine has processors (so that they take turns in every order): the distributions must be
# identical byte for byte, so a build stays reproducible on any machine.
#   every_core.sh HOPACK PACKAGE_STAGE PROGRAM_DIR   (77: skipped)
set -u
hopack=$1 stage=$2 program=$3
[ -x "$hopack" ] && [ -f "$stage/vistrel.toml" ] || { echo "skipped: needs $hopack and $stage/vistrel.toml"; exit 77; }
work=$(mktemp -d "$PWD/every_core.XXXXXX") && trap 'rm -rf "$work"' EXIT
"$hopack" build "$stage/vistrel.toml" "$work/one" --program "$program" --jobs 1 >/dev/null || exit 1
for jobs in "" "--jobs 16"; do
    rm -rf "$work/many"
    "$hopack" build "$stage/vistrel.toml" "$work/many" --program "$program" $jobs >/dev/null || exit 1
    diff -r "$work/one" "$work/many" || { echo "FAIL: one thread and ${jobs:-one per processor} differ"; exit 1; }
done
echo "identical: $(ls "$work/one" | wc -l) files"
