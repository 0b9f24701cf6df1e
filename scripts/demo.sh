#!/bin/sh
# The main job: build everything, including the sample product's distribution; install it under
# Wine with hosetup.exe; report what the installation put on the machine; remove it again with the
# command its uninstall entry names; report what is left.
#
# On your display (DISPLAY set) the pages wait for your clicks. Without a display the demo runs
# under a virtual X server and goes through the pages itself, the way a person would, saving a
# screenshot of each page, and of the progress window while it works, in build/demo-shots/. The
# demo uses its own Wine prefix, build/demo-prefix, made afresh each time by scripts/wine-run,
# which keeps the prefix's user folders inside it and shows Wine nothing of the machine beyond
# this checkout.
set -e
cd "$(dirname "$0")/.."
root=$PWD

if [ "$1" != "--inner" ]; then
    sh scripts/build.sh
    if [ -z "$DISPLAY" ]; then
        exec xvfb-run -a -s "-screen 0 1280x1024x24" sh "$0" --inner --unattended
    fi
    exec sh "$0" --inner
fi
unattended=$([ "$2" = "--unattended" ] && echo 1 || echo 0)

export WINEPREFIX="$root/build/demo-prefix"
dist="$root/build/dist/vistrel-dist"
shots="$root/build/demo-shots"
driver="$root/build/windows/bin/hodriver.exe"
wine_run() { "$root/scripts/wine-run" "$@"; }
regquery() { wine_run reg query "$@" 2>/dev/null | tr -d '\r' | sed -n '/^ *$/d; /^reg: /d; s/^ *//p'; }
regvalue() { regquery "$1" /v "$2" | sed -n "s/^$2 *REG_[A-Z_]* *//p"; }
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Vistrel Professional 2022'

wineserver -k >/dev/null 2>&1 || true
rm -rf "$WINEPREFIX" "$shots"
mkdir -p "$shots"
# Every window of the demo opens inside one Wine virtual desktop, a 1024 x 768 "screen" with
# window frames, on your display or on the virtual X server.
wine_run reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Vistrel /f >/dev/null 2>&1
wine_run reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Vistrel /d 1024x768 /f >/dev/null 2>&1
# The glyphs of the window frames' buttons come from Wine's Marlett font.
cp /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/" 2>/dev/null || true

# Goes through the pages of a run the way a person would: for each named page, wait for it,
# save a screenshot, press its continue button. A name ending in "-progress" is the progress window
# (its bar is control 720): it is only photographed a moment after it shows, while the work goes on.
drive_pages() {
    for page in "$@"; do
        case $page in *-progress)
            if wine_run "$driver" wait-dialog 720 --timeout 120 >/dev/null; then
                sleep 2
                import -window root -crop 1024x768+0+0 +repage "$shots/$page.png"
                echo "  $page window: screenshot build/demo-shots/$page.png"
            fi
            continue ;;
        esac
        if ! wine_run "$driver" wait-dialog 570 --has 22 --timeout 120 >/dev/null; then
            echo "  (no $page page appeared)"
            return
        fi
        sleep 1
        import -window root -crop 1024x768+0+0 +repage "$shots/$page.png"
        echo "  $page page: screenshot build/demo-shots/$page.png"
        wine_run "$driver" click 570 --has 22 >/dev/null
        wine_run "$driver" wait-gone 570 --has 22 --timeout 30 >/dev/null || true
    done
}

# Runs a setup command line (a quoted Windows program path and its options) and sets $code to
# its exit code; the remaining arguments name the pages to go through when unattended.
run_setup() {
    command_line=$1
    shift
    pages="$*"
    eval "set -- $command_line"
    if [ "$unattended" = 1 ]; then
        wine_run "$@" &
        pid=$!
        drive_pages $pages
        set +e; wait "$pid"; code=$?; set -e
    else
        set +e; wine_run "$@"; code=$?; set -e
    fi
}

echo "== Installing the sample product from build/dist/vistrel-dist"
run_setup "\"$dist/hosetup.exe\"" install-welcome install-start install-progress install-finish
echo "hosetup.exe ended with exit code $code (0 success, 1 left at the first page, 2 failed)."
[ "$code" -eq 0 ] || exit "$code"

folder=$(regvalue 'HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths\hovistrel.exe' Path)
install=$(wine_run winepath -u "$folder" | tr -d '\r')
common=$(wine_run winepath -u 'C:\ProgramData\Harwick-Orbel\Vistrel (64-bit)' | tr -d '\r')
echo
echo "== Files in $folder"
(cd "$install" && find . -type f | sort | sed 's|^\./|  |')
echo "== The setup log: C:\\ProgramData\\Harwick-Orbel\\Vistrel (64-bit)\\hosetup.log ($(wc -l <"$common/hosetup.log") lines)"
echo "== The uninstall entry"
regquery "$uninstall_key" | sed 's/^/  /'
echo "== The application path and the drawing type"
regquery 'HKLM\Software\Microsoft\Windows\CurrentVersion\App Paths\hovistrel.exe' | sed 's/^/  /'
regquery 'HKCR\HOVISTREL\shell\open\command' | sed 's/^/  /'
echo "== Links"
find "$WINEPREFIX/drive_c" -iname '*.lnk' -ipath '*vistrel*' | sed "s|$WINEPREFIX/drive_c|  C:|"

echo
command=$(regvalue "$uninstall_key" UninstallString)
echo "== Removing with the uninstall entry's command: $command"
run_setup "$command" remove-welcome remove-start remove-progress remove-finish
echo "hosetup.exe ended with exit code $code."
echo
echo "== Left in $folder"
if [ -d "$install" ]; then (cd "$install" && find . | sort | sed '1d; s|^\./|  |'); else echo "  (the folder is gone)"; fi
echo "== Deleted at the next restart (PendingFileRenameOperations)"
regvalue 'HKLM\System\CurrentControlSet\Control\Session Manager' PendingFileRenameOperations |
    sed 's/\\0/\n/g' | sed '/^$/d; s/^\\??\\//; s/^/  /'
echo "== The uninstall entry after the removal"
if [ -n "$(regquery "$uninstall_key")" ]; then regquery "$uninstall_key"; else echo "  (gone)"; fi
echo "== Links after the removal"
find "$WINEPREFIX/drive_c" -iname '*.lnk' -ipath '*vistrel*' | sed "s|$WINEPREFIX/drive_c|  C:|"
exit "$code"
