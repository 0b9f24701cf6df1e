#!/bin/sh
# A DLL planted beside the setup program in its distribution folder, under the name of a system
# DLL that is no KnownDLL, with Wine told to prefer such native copies as Windows does: it must
# never be loaded, and the silent installation and removal still end with 0.
# Usage: planted_dll.sh WINE_RUN DIST_FOLDER PLANTED_DLL
set -u
wine_run=$1 dist=$2 planted=$3
# Inside the build tree: the bench's prefix reaches nothing of the host outside it.
work=$(mktemp -d "$PWD/planted.XXXXXX") && trap 'rm -rf "$work"' EXIT
cp -r "$dist" "$work/dist"
for name in netapi32 gdiplus; do cp "$planted" "$work/dist/$name.dll"; done
export HO_WINE_DLL_OVERRIDES="netapi32,gdiplus=n,b"
status=0
(cd "$work/dist" && "$wine_run" hosetup.exe -S) || { echo "installation ended with $?"; status=1; }
(cd "$work/dist" && "$wine_run" hosetup.exe -X -S) || { echo "removal ended with $?"; status=1; }
for marker in "$work"/dist/*.loaded; do
    [ -e "$marker" ] && { echo "loaded: $marker"; status=1; }
done
exit $status
