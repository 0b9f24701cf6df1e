#!/bin/sh
# The main job: build everything, including the sample product's distribution; install it under
# Wine with hosetup.exe; show what the installation put on the machine; remove it again with the
# command its uninstall entry names; show what is left.
#
# With a display (DISPLAY set) both runs show their pages and wait for you; without one they run
# silently (-S) under a virtual X server. The demo uses its own Wine prefix, build/demo-prefix.
set -e
cd "$(dirname "$0")/.."
sh scripts/build.sh
root=$PWD
export WINEPREFIX="$root/build/demo-prefix"
dist="$root/build/dist/vistrel-dist"

if [ -n "$DISPLAY" ]; then
    mode=""
    run() { "$root/scripts/wine-run" "$@"; }
else
    mode="-S"
    run() { xvfb-run -a -s "-screen 0 1280x1024x24" "$root/scripts/wine-run" "$@"; }
fi
regquery() { "$root/scripts/wine-run" reg query "$@" 2>/dev/null | tr -d '\r' | sed -n 's/^ *//p'; }
unixpath() { "$root/scripts/wine-run" winepath -u "$1" 2>/dev/null | tr -d '\r'; }
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Vistrel Professional 2022'

# A fresh prefix each time, so the demo always shows a first installation.
"$root/scripts/wine-run" wineserver -k >/dev/null 2>&1 || true
rm -rf "$WINEPREFIX"

echo "== Installing the sample product from $dist ${mode:+(silently)}"
set +e
run "$dist/hosetup.exe" $mode
code=$?
set -e
echo "hosetup.exe ended with exit code $code (0 success, 1 left at the first page, 2 failed)."
[ "$code" -eq 0 ] || exit "$code"

echo
echo "== The uninstall entry"
regquery "$uninstall_key"
folder=$(regquery 'HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths\hovistrel.exe' | sed -n 's/^Path *REG_SZ *//p')
install=$(unixpath "$folder")
echo
echo "== Installed in $folder"
(cd "$install" && find . -type f | sort | sed 's|^\./|  |')
echo
echo "== Links"
find "$WINEPREFIX/drive_c" -iname '*.lnk' -ipath '*vistrel*' | sed "s|$WINEPREFIX/drive_c|  C:|"

echo
command=$(regquery "$uninstall_key" | sed -n 's/^UninstallString *REG_SZ *//p')
echo "== Removing with: $command $mode"
set +e
eval run $(echo "$command" | sed 's/\\/\\\\/g') $mode
code=$?
set -e
echo "hosetup.exe ended with exit code $code."
echo
echo "== Left in $folder (deleted at the next restart)"
(cd "$install" 2>/dev/null && find . -type f | sort | sed 's|^\./|  |') || echo "  (the folder is gone)"
echo "== Pending restart operations"
regquery 'HKLM\System\CurrentControlSet\Control\Session Manager' /v PendingFileRenameOperations |
    sed -n 's/^PendingFileRenameOperations *REG_MULTI_SZ *//p' | sed 's/\\0\\0/\n/g; s/\\0/\n/g' | sed '/^$/d; s/^/  /'
echo "== The uninstall entry after the removal"
regquery "$uninstall_key" || true
[ -z "$(regquery "$uninstall_key")" ] && echo "  (gone)"
exit "$code"
