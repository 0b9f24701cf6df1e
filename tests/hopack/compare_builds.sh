#!/bin/sh
# One package built by the native hopack and by hopack.exe under Wine: the distributions and listings
# must be identical byte for byte, with the own files and the product's .exe "signed" by a command
# that appends a marker: through /bin/sh natively (from a temporary folder whose path needs
# quoting) and through cmd in hopack.exe; the native build on one thread, hopack.exe on one per
# processor. usage: compare_builds.sh NATIVE_HOPACK HOPACK_EXE WINE_RUN (77: skipped)
native=$1 windows=$2 winerun=$3
[ -x "$native" ] && [ -f "$windows" ] && command -v wine >/dev/null 2>&1 ||
    { echo "skipped: needs $native, $windows and wine"; exit 77; }
# Inside the build tree, which Wine reaches as drive T:, so hopack.exe and cmd start in it.
work=$(mktemp -d "$PWD/compare.XXXXXX")
trap 'rm -rf "$work"' EXIT
cd "$work" && mkdir -p pkg/bin prog "tmp dir's" || exit 1
printf 'signature\r\n' > marker
for f in hosetup.exe holang.dll hounzip.exe hosetup.chm; do echo "program file $f" > "prog/$f"; done
seq 1 40000 > pkg/bin/hovistrel.exe
head -c 200000 /dev/urandom > pkg/bin/random.bin
: > pkg/empty.txt
cat > pkg/package.toml <<'TOML'
file = [{source = 'bin/hovistrel.exe', directory = 10}, {source = 'bin/random.bin', directory = 1, name = 'plain.bin'},
  {source = 'bin/random.bin', directory = 24}, {source = 'empty.txt', directory = 300, subfolder = 'Docs\Empty'},
  {directory = 12, name = 'hoold.dll'}, {directory = 303, subfolder = 'Standard', name = 'standard.hol'}]
shortcut = [{target = 'hovistrel.exe', name = 'Vistrel 6'},
  {target = 0, icon_directory = 10, icon = 'hovistrel.exe', name = 'Vistrel 6 (safe mode)', arguments = '-safe'}]
[product]
name = 'Vistrel 6'
label = "Vistrel 6.2 Caf\u00e9"
compile_date = 2024-05-17
TOML
TMPDIR="$work/tmp dir's" "$native" build pkg/package.toml out-native --program prog --sign-product --jobs 1 \
    --sign-command 'cat marker >> $f' || { echo "native hopack failed"; exit 1; }
"$winerun" "$windows" build pkg/package.toml out-windows --program prog --sign-product \
    --sign-command 'type marker >> $f' || { echo "hopack.exe failed"; exit 1; }
grep -q signature out-native/hosetup.exe || { echo "hosetup.exe was not signed"; exit 1; }
diff -r out-native out-windows || { echo "the distributions differ"; exit 1; }
"$native" list out-native | tail -n +2 > list-native.txt &&
    "$winerun" "$windows" list out-native | tr -d '\r' | tail -n +2 > list-windows.txt || { echo "list failed"; exit 1; }
diff list-native.txt list-windows.txt || { echo "the listings differ"; exit 1; }
echo "identical: $(ls out-native | wc -l) files, $(wc -l < list-native.txt) listing lines"
