#!/bin/sh
# Builds everything and runs every test: the Windows-side tests under Wine (with a virtual X
# server for the windows they open) and the native ones.
set -e
cd "$(dirname "$0")/.."
sh scripts/build.sh
export HO_WINE_UNMANAGED=1
status=0
xvfb-run -a -s "-screen 0 1280x1024x24" ctest --preset windows -j2 || status=1
ctest --preset native || status=1
exit $status
