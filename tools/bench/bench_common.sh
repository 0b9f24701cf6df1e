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

# The Windows name of a path, for command lines that programs read under Wine: scripts/wine-run
# shows them the checkout (or $HO_WINE_TREE) as drive T: and nothing outside it.
win() {
    tree=$(cd "${HO_WINE_TREE:-$here}" && pwd -P)
    path=$(cd "$(dirname "$1")" && pwd -P)/$(basename "$1")
    case $path in
        "$tree"/*) printf 'T:%s' "${path#"$tree"}" | tr / '\\' ;;
        *) echo "$1 lies outside $tree, where Wine cannot reach it" >&2; exit 2 ;;
    esac
}
seconds_since() { awk -v a="$1" -v b="$(date +%s.%N)" 'BEGIN { printf "%.3f", b - a }'; }

hopack() {
    if [ -n "${HOPACK:-}" ]; then "$HOPACK" "$@"; return; fi
    if [ -x "$here/build/dist/hopack" ]; then "$here/build/dist/hopack" "$@"; return; fi
    for exe in "$build/dist/hopack.exe" "$bin/hopack.exe"; do
        if [ -f "$exe" ]; then
            # hopack.exe opens the Unix paths of the description and the folders through drive T:.
            "$here/scripts/wine-run" "$exe" "$@"
            return
        fi
    done
    echo "no hopack: build the native preset's hopack or set HOPACK" >&2
    exit 2
}
