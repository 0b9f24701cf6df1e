#!/bin/sh
# Builds everything: the Windows programs (build/windows, shippables in build/dist) and the native
# package builder (build/native).
set -e
cd "$(dirname "$0")/.."
sh scripts/deps.sh
cmake --preset windows >/dev/null
cmake --build --preset windows
cmake --preset native >/dev/null
cmake --build --preset native
