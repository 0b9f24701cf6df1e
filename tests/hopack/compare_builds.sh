#!/bin/sh
# Builds one package with the native hopack and with hopack.exe under Wine and requires the two
# distribution folders (and their listings) to be identical byte for byte: both builds come from one
# source and must not differ in what they write.
# usage: compare_builds.sh NATIVE_HOPACK WINDOWS_HOPACK_EXE WINE_RUN_SCRIPT
# Exit 77 (skipped) when one of the two programs or Wine is not there.
native=$1
windows=$2
winerun=$3
[ -x "$native" ] || { echo "skipped: no native hopack at $native"; exit 77; }
[ -f "$windows" ] || { echo "skipped: no hopack.exe at $windows"; exit 77; }
command -v wine >/dev/null 2>&1 || { echo "skipped: wine is not installed"; exit 77; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
mkdir -p pkg/bin pkg/lib pkg/empty prog
for f in hosetup.exe holang.dll hounzip.exe hosetup.chm; do echo "program file $f" > "prog/$f"; done
seq 1 40000 > pkg/bin/hovistrel.exe
head -c 200000 /dev/urandom > pkg/bin/random.bin
: > pkg/empty/empty.txt
seq 1 500 | sed 's/^/line /' > pkg/lib/standard.hol
cat > pkg/package.toml <<'TOML'
[product]
name = "Harwick-Orbel\\Vistrel 6"
label = "Vistrel 6.2 Test"
compile_date = "2024-05-17"

[[file]]
source = "bin/hovistrel.exe"
directory = 10

[[file]]
source = "bin/random.bin"
directory = 1
name = "plain.bin"

[[file]]
source = "bin/random.bin"
directory = 24

[[file]]
source = "empty/empty.txt"
directory = 70
subfolder = "Docs\\Empty"

[[file]]
source = "lib/standard.hol"
directory = 300
subfolder = "Standard"

[[file]]
directory = 12
name = "hoold.dll"

[[file]]
directory = 303
subfolder = "Standard"
name = "standard.hol"

[[shortcut]]
target = "hovistrel.exe"
name = "Vistrel 6"

[[shortcut]]
target = 0
icon_directory = 10
icon = "hovistrel.exe"
name = "Vistrel 6 (safe mode)"
arguments = "-safe"
TOML

"$native" build pkg/package.toml out-native --program prog || { echo "native hopack failed"; exit 1; }
"$winerun" "$windows" build pkg/package.toml out-windows --program prog || { echo "hopack.exe failed"; exit 1; }
diff -r out-native out-windows || { echo "the distributions differ"; exit 1; }
"$native" list out-native | tail -n +2 > list-native.txt || { echo "native list failed"; exit 1; }
"$winerun" "$windows" list out-native | tr -d '\r' | tail -n +2 > list-windows.txt || { echo "hopack.exe list failed"; exit 1; }
diff list-native.txt list-windows.txt || { echo "the listings differ"; exit 1; }
echo "identical: $(ls out-native | wc -l) files, $(wc -l < list-native.txt) listing lines"
