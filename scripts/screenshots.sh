#!/bin/sh
# Remakes the pictures of the setup program's windows in docs/screenshots: every wizard page,
# the progress window, the alert box with one, two and three buttons and the replace query, at
# 96 and at 144 dpi, once with the English language module (docs/screenshots) and once with the
# German one (docs/screenshots/de).
#
# Each dpi gets its own Wine prefix (build/shots-96, build/shots-144) with the dpi set in its
# registry. hoshowcase.exe (tools/showcase) opens the windows one after another inside a Wine
# virtual desktop on a virtual X server, so they have real frames, and saves each one, cropped to
# the window, as <window>-<dpi>dpi.png. It takes its texts and dialog templates from the
# holang.dll beside it, as hosetup.exe does: the English one in the build's bin folder, the
# German one in a folder of its own (showcase-de in the build folder) beside a copy of it.
#
# HO_BUILD_DIR names another build folder of the Windows build (default build/windows), inside
# the checkout, where programs under Wine can reach it (see scripts/wine-run); the prefixes are
# then made inside it.
set -e
cd "$(dirname "$0")/.."
root=$PWD
out="$root/docs/screenshots"
windows="install-welcome install-start install-finish install-welcome-update install-start-update remove-welcome remove-start remove-finish
progress-install progress-remove alert-one-button alert-two-buttons alert-three-buttons replace-query"

if [ -n "$HO_BUILD_DIR" ]; then
    build=$HO_BUILD_DIR
    prefixes=$HO_BUILD_DIR
    [ -f "$build/CMakeCache.txt" ] ||
        cmake -S "$root" -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" \
              -DCMAKE_BUILD_TYPE=Release -DHO_DIST_DIR="$build/dist" -DHO_DIST_DE_DIR="$build/dist-de" >/dev/null
else
    sh scripts/deps.sh
    build="$root/build/windows"
    prefixes="$root/build"
    cmake --preset windows >/dev/null
fi
cmake --build "$build" --target hoshowcase hosetup holang_copy holang_de

# The German showcase: hoshowcase.exe beside the German holang.dll.
german_dll="$(sed -n 's/^HO_DIST_DE_DIR:[A-Z]*=//p' "$build/CMakeCache.txt")/holang.dll"
mkdir -p "$build/showcase-de" "$out/de"
cp "$build/bin/hoshowcase.exe" "$german_dll" "$build/showcase-de/"

# The caption buttons are letters of the Marlett font, which comes with Wine's own fonts; without
# it the close box shows an "r". This Wine does not look in the package's folder, so the script
# puts the font into each prefix's font folder.
if ! dpkg-query -W -f='${Status}' fonts-wine 2>/dev/null | grep -q "install ok installed"; then
    if [ "$(id -u)" -ne 0 ]; then sudo=sudo; else sudo=; fi
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends fonts-wine >/dev/null
fi

status=0
for dpi in 96 144; do
    export WINEPREFIX="$prefixes/shots-$dpi"
    echo "== $dpi dpi (prefix $WINEPREFIX)"
    # scripts/wine-run makes the prefix on first use; reg.exe then sets the dpi. Wine reads the
    # user's value first and the machine's font profile after it, so both are set.
    "$root/scripts/wine-run" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
    "$root/scripts/wine-run" reg add 'HKLM\System\CurrentControlSet\Hardware Profiles\Current\Software\Fonts' \
        /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
    fonts="$WINEPREFIX/drive_c/windows/Fonts"
    [ -f "$fonts/marlett.ttf" ] || cp /usr/share/wine/fonts/marlett.ttf "$fonts/"
    wineserver -w

    # The pictures are written into the prefix's C:\shots first, so that a failed run leaves the
    # committed ones alone.
    for language in en de; do
        case $language in
            en) showcase="$build/bin/hoshowcase.exe" folder="$out" ;;
            de) showcase="$build/showcase-de/hoshowcase.exe" folder="$out/de" ;;
        esac
        echo "-- language $language"
        shots="$WINEPREFIX/drive_c/shots"
        rm -rf "$shots"
        mkdir -p "$shots"
        xvfb-run -a -s "-screen 0 1280x1024x24" sh -c '
            "$1" explorer /desktop=shots,1280x1024 "$2" "$3"
            wineserver -k' sh "$root/scripts/wine-run" "$showcase" 'C:\shots' >"$shots/run.log" 2>&1 || true
        cat "$shots/run.log" | grep -v '^[0-9a-f]*:\(err\|fixme\|warn\)' || true

        for window in $windows; do
            picture="$shots/$window-${dpi}dpi.png"
            if [ -s "$picture" ]; then
                cp "$picture" "$folder/"
            else
                echo "missing: $language $window-${dpi}dpi.png (is the prefix's dpi $dpi?)"
                status=1
            fi
        done
    done
done
[ "$status" -eq 0 ] && echo "All pictures are in docs/screenshots (German ones in docs/screenshots/de)."
exit "$status"
