#!/bin/sh
# Lists the sample distribution with hopack and checks that it reads back cleanly and holds a
# record of every directory identifier the sample is meant to exercise, each of the right kind.
#   check_distribution.sh DIST_DIR HOPACK...
set -u
dist=$1
shift
listing=$("$@" list "$dist" 2>&1 | tr -d '\r')
status=$?
printf '%s\n' "$listing"
fail=0
[ $status -eq 0 ] || { echo "FAIL: hopack list exited with $status"; fail=1; }
# Files rows: Index, Id, Kind, ...
ids=$(printf '%s\n' "$listing" | awk '/^Files$/{f=1;next} /^Shortcuts$/{f=0} f && $1 ~ /^[0-9]+$/ {print $2 ":" $3}')
for id in 0 1 2 10 11 12 20 21 22 23 24 25 26 27 30 31 32 33 34 40 41 42 43 44 50 51 52 \
          60 61 62 63 64 70 71 72 73 74 100 101 102 200 201 202 203 204 210 211 212 \
          300 301 302 303 304 400 401 402 500 501 502; do
    case $id in
        0|1) kind=plain ;;
        *2) kind=delete ;;
        *3) kind=backup ;;
        *4) kind=replace-silently ;;
        *) kind=packed ;;
    esac
    printf '%s\n' "$ids" | grep -qx "$id:$kind" || { echo "FAIL: no $kind record with identifier $id"; fail=1; }
done
shortcuts=$(printf '%s\n' "$listing" | awk '/^Shortcuts$/{f=1;next} f && $1 ~ /^[0-9]+$/' | wc -l)
[ "$shortcuts" -eq 3 ] || { echo "FAIL: $shortcuts shortcuts, expected 3"; fail=1; }
printf '%s\n' "$listing" | grep -q '^Product name   Vistrel 2022$' || { echo "FAIL: product name"; fail=1; }
exit $fail
