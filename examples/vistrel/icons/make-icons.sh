#!/bin/sh
# Renders the sample product's icons from their SVG sources, each into one .ico with the sizes
# 16, 24, 32, 48 and 256:
#   vistrel.svg -> vistrel.ico  (the program, and index 0 of hovistrellib.dll)
#   drawing.svg -> drawing.ico  (the .HOD drawing type, index 1)
#   library.svg -> library.ico  (the .HOL library type, index 2)
# The rendered files are kept in the repository, so a build needs no image tools; run this after
# changing an SVG. Needs rsvg-convert (Debian: librsvg2-bin) and ImageMagick's convert.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for icon in vistrel drawing library; do
    set --
    for size in 16 24 32 48 256; do
        rsvg-convert --width $size --height $size "$here/$icon.svg" -o "$work/$icon-$size.png"
        set -- "$@" "$work/$icon-$size.png"
    done
    convert "$@" -strip "$here/$icon.ico"
done

identify "$here/vistrel.ico" "$here/drawing.ico" "$here/library.ico"
