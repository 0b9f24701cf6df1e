#!/bin/sh
# hosetup.exe runs elevated, often from a Downloads folder where anyone's DLLs land: it may
# import only KnownDLLs and comctl32 (bound through the manifest); others (netapi32, gdiplus,
# compiler runtimes, zlib) come from the system folder at run time or are linked statically. Its
# language module is loaded at run time after a check, never imported: the loader would run its
# code first. hounzip.exe, which it starts, the same.
# Usage: check_imports.sh OBJDUMP PROGRAM
allowed=" advapi32.dll comctl32.dll gdi32.dll kernel32.dll msvcrt.dll ole32.dll shell32.dll user32.dll "
names=$("$1" -p "$2" | sed -n 's/^[[:space:]]*DLL Name: //p' | tr 'A-Z' 'a-z')
[ -n "$names" ] || { echo "no import table read from $2"; exit 1; }
status=0
for name in $names; do
    case "$allowed" in
        *" $name "*) echo "ok: $name" ;;
        *) echo "not allowed: $name"; status=1 ;;
    esac
done
exit $status
