#!/bin/sh
# hosetup.exe must run on a bare Windows: its import table may name only the system's own DLLs
# and our language module. A runtime DLL of the compiler (libstdc++, libgcc, libwinpthread) or
# zlib showing up here means a static link was lost.
# Usage: check_imports.sh OBJDUMP hosetup.exe
objdump=$1
program=$2
allowed="advapi32.dll comctl32.dll gdi32.dll gdiplus.dll kernel32.dll msvcrt.dll netapi32.dll ole32.dll
shell32.dll user32.dll holang.dll"
names=$("$objdump" -p "$program" | sed -n 's/^[[:space:]]*DLL Name: //p' | tr 'A-Z' 'a-z')
[ -n "$names" ] || { echo "no import table read from $program"; exit 1; }
status=0
for name in $names; do
    case " $(echo $allowed) " in
        *" $name "*) echo "ok: $name" ;;
        *) echo "not allowed: $name"; status=1 ;;
    esac
done
echo "$names" | grep -qx "holang.dll" || { echo "holang.dll is not imported"; status=1; }
exit $status
