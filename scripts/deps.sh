#!/bin/sh
# Installs what building and testing need on Debian 12, and nothing when it is all there already.
set -e
packages="cmake ninja-build g++ g++-mingw-w64-x86-64 libz-mingw-w64-dev zlib1g-dev googletest
  wine wine64 fonts-wine xvfb xauth xdotool imagemagick fp-utils zip unzip python3 libtomlplusplus-dev nlohmann-json3-dev
  osslsigncode openssl"
missing=""
for package in $packages; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing="$missing $package"
done
[ -z "$missing" ] && exit 0
echo "Installing:$missing"
if [ "$(id -u)" -ne 0 ]; then sudo=sudo; else sudo=; fi
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends $missing >/dev/null
