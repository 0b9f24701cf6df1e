#!/bin/sh
# A signed distribution installed and removed under Wine. The sample package is built by the native
# hopack with a certificate made here and osslsigncode as the signing command, product files
# included. osslsigncode (told to trust that certificate) must accept every code file of the
# distribution, beside the data file and inside the members, and of the installed product; the
# silent installation and removal must end with 0, since the setup program's check of hounzip.exe
# and holang.dll skips what a signature adds.
#   signed_install.sh NATIVE_HOPACK WINE_RUN PACKAGE_STAGE PROGRAM_DIR   (77: skipped)
set -u
hopack=$1 wine_run=$2 stage=$3 program=$4
[ -x "$hopack" ] && [ -f "$stage/vistrel.toml" ] && command -v osslsigncode >/dev/null &&
    command -v openssl >/dev/null || { echo "skipped: needs $hopack, $stage/vistrel.toml, osslsigncode, openssl"; exit 77; }
# Inside the build tree: the bench's prefix reaches nothing of the host outside it.
work=$(mktemp -d "$PWD/signed.XXXXXX") && trap 'rm -rf "$work"' EXIT
status=0
fail() { echo "FAIL: $*"; status=1; }
verify() { osslsigncode verify -CAfile "$work/cert.pem" -in "$1" >"$work/verify.log" 2>&1 || { cat "$work/verify.log"; fail "$2 is not signed"; }; }

openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=hosetup-signed-install \
    -addext extendedKeyUsage=codeSigning -keyout "$work/key.pem" -out "$work/cert.pem" 2>/dev/null || exit 1
"$hopack" build "$stage/vistrel.toml" "$work/dist" --program "$program" --sign-product \
    --sign-command "osslsigncode sign -certs '$work/cert.pem' -key '$work/key.pem' -in \$f -out \$f.signed >/dev/null && mv \$f.signed \$f" ||
    { echo "hopack failed"; exit 1; }

# Every PE file and every packed .exe or .dll of the distribution.
checked=0
for file in "$work"/dist/*; do
    if name=$(unzip -Z1 "$file" 2>/dev/null); then
        case $name in *.exe|*.dll) ;; *) continue ;; esac
        unzip -p "$file" >"$work/unpacked"
        verify "$work/unpacked" "$name in $(basename "$file")"
    elif [ "$(head -c 2 "$file")" = MZ ]; then
        verify "$file" "$(basename "$file")"
    else
        continue
    fi
    checked=$((checked + 1))
done
# Three own files beside the data file, their three plain members, hovistrel.exe and hovistrellib.dll.
[ $checked -eq 8 ] || fail "$checked code files in the distribution, expected 8"

(cd "$work/dist" && "$wine_run" hosetup.exe -S) || fail "the installation ended with $?"
installed="${WINEPREFIX:-$(dirname "$wine_run")/../build/wineprefix}/drive_c/Program Files/Harwick-Orbel/Vistrel (64-bit)"
for name in hosetup.exe holang.dll hounzip.exe hovistrel.exe hovistrellib.dll; do
    verify "$installed/$name" "the installed $name"
done
(cd "$work/dist" && "$wine_run" hosetup.exe -X -S) || fail "the removal ended with $?"
[ ! -e "$installed/hovistrel.exe" ] || fail "the removal left hovistrel.exe"
exit $status
