#!/bin/sh
# Renders the setup program's artwork from its SVG sources:
#   splash.svg -> splash.png (1160 x 800, twice the 96-dpi window size, the "ID_PNG_SPLASH" resource)
#   logo.svg   -> logo.ico   (16, 24, 32, 48, 64, 128 and 256 pixels, the "ID_ICO_LOGO" resource)
# The rendered files are kept in the repository, so a build needs no image tools; run this after
# changing an SVG. Needs rsvg-convert (Debian: librsvg2-bin) and ImageMagick's convert.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

rsvg-convert --width 1160 --height 800 "$here/splash.svg" -o "$work/splash.png"
# Drop the text chunks (dates) so that a re-render without changes gives identical bytes.
convert "$work/splash.png" -strip -define png:compression-level=9 "PNG24:$here/splash.png"

set --
for size in 16 24 32 48 64 128 256; do
    rsvg-convert --width $size --height $size "$here/logo.svg" -o "$work/logo-$size.png"
    set -- "$@" "$work/logo-$size.png"
done
convert "$@" -strip "$here/logo.ico"

identify "$here/splash.png" "$here/logo.ico"
