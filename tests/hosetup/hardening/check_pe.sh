#!/bin/sh
# The code-generation hardening of the shipped files, read from their PE headers with the cross
# toolchain's objdump: address-space randomisation with high-entropy addresses, no code from data
# pages, Terminal Server awareness for the GUI programs, and the stack protector linked into the
# programs (its failure routine from libssp carries "stack smashing detected", which stays in a
# stripped file). A language module has no function the protector guards, so for the modules the
# compile commands tell: every source under src/ is compiled optimised, with the stack protector
# and with _FORTIFY_SOURCE=2. No link time in the header or the export table either: the build is
# reproducible.
# Usage: check_pe.sh OBJDUMP COMPILE_COMMANDS KIND FILE [KIND FILE]...   KIND: gui, console or dll
objdump=$1 commands=$2
shift 2
status=0
file=$commands
fail() { echo "FAIL: $file: $*"; status=1; }
shipped=' -c [^ ]*/src/\(hosetup\|holang\|hounzip\|hopack\|format\)/'
[ "$(grep -c -- "$shipped" "$commands")" -gt 20 ] || fail "the sources under src/ are missing"
for flag in -fstack-protector-strong -D_FORTIFY_SOURCE=2 -O; do
    grep '"command": ' "$commands" | grep -- "$shipped" | grep -v -- " $flag" | sed 's/.* -c \([^ "]*\).*/\1/' |
        while read -r source; do echo "FAIL: $source: compiled without $flag"; done | grep . && status=1
done
while [ $# -ge 2 ]; do
    kind=$1 file=$2
    shift 2
    headers=$("$objdump" -p "$file") || { fail "no PE headers read"; continue; }
    flags="DYNAMIC_BASE HIGH_ENTROPY_VA NX_COMPAT"
    [ "$kind" = gui ] && flags="$flags TERMINAL_SERVICE_AWARE"
    for flag in $flags; do
        printf '%s\n' "$headers" | grep -qw "$flag" || fail "no $flag"
    done
    [ "$kind" = dll ] || grep -q "stack smashing detected" "$file" || fail "no stack protector linked in"
    stamp=$(printf '%s\n' "$headers" | sed -n 's/^Time\/Date[[:space:]]*\([A-Z][a-z][a-z] .*\)/\1/p')
    case "$stamp" in *" 1970") ;; *) fail "link time in the header: $stamp" ;; esac
    printf '%s\n' "$headers" | grep -q "^Time/Date stamp[[:space:]]*[1-9a-f]" && fail "link time in the export table"
    [ $status -ne 0 ] || echo "ok: $file ($kind)"
done
exit $status
