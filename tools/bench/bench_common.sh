# Shared by the benchmark scripts, which source it after setting $here (the repository) and
# $build (the Windows build folder).

# Stops with a hint when one of the named files of the build's bin folder is missing.
require_programs() {
    bin=$build/bin
    for program in "$@"; do
        [ -f "$bin/$program" ] || { echo "missing $bin/$program: build the windows preset first" >&2; exit 2; }
    done
}

# An empty work folder ($work, absolute) with a fresh Wine prefix in it, so that no earlier
# installation turns the run into an update.
prepare_work() {
    work=$1
    rm -rf "$work"
    mkdir -p "$work"
    work=$(cd "$work" && pwd)
    WINEPREFIX=$work/wineprefix
    export WINEPREFIX
}

win() { printf 'Z:%s' "$1" | tr / '\\'; }
seconds_since() { awk -v a="$1" -v b="$(date +%s.%N)" 'BEGIN { printf "%.3f", b - a }'; }

hopack() {
    if [ -n "${HOPACK:-}" ]; then "$HOPACK" "$@"; return; fi
    if [ -x "$here/build/dist/hopack" ]; then "$here/build/dist/hopack" "$@"; return; fi
    for exe in "$build/dist/hopack.exe" "$bin/hopack.exe"; do
        if [ -f "$exe" ]; then
            # hopack.exe takes Windows paths: the description and the folders are passed as Z: paths.
            "$here/scripts/wine-run" "$exe" "$1" "$(win "$2")" "$(win "$3")" "$4" "$(win "$5")"
            return
        fi
    done
    echo "no hopack: build the native preset's hopack or set HOPACK" >&2
    exit 2
}
