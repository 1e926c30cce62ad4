#!/usr/bin/env bash
# Checks a built package as a user would meet it: its control fields, its
# files, and lantern running from it in a scratch root, from another folder.
#
#   tests/package/check_package.sh qrlantern_<version>_<arch>.deb
set -euo pipefail

package="$(realpath "$1")"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT

fail() {
  echo "check_package: $*" >&2
  exit 1
}

field() {
  dpkg-deb --field "$package" "$1"
}

# The runtime libraries come from dpkg-shlibdeps; xvfb is what a machine
# without a display needs for windows and the browser.
depends="$(field Depends)"
for library in libwebkit2gtk-4.1-0 liblua5.4-0 libedit2 libstdc++6; do
  [[ "$depends" == *"$library"* ]] || fail "Depends lacks $library: $depends"
done
[[ "$(field Recommends)" == *xvfb* ]] || fail "Recommends lacks xvfb"
[[ "$(basename "$package")" =~ ^qrlantern_[0-9.]+_[a-z0-9]+\.deb$ ]] || fail "odd file name $package"

dpkg-deb --extract "$package" "$scratch/root"
prefix="$scratch/root/usr"
for file in bin/lantern lib/qrlantern/qrlantern.so share/man/man1/lantern.1.gz \
            share/doc/qrlantern/copyright share/doc/qrlantern/functions.md \
            share/doc/qrlantern/examples/links.lua share/doc/qrlantern/examples/pages/sample.html; do
  [[ -e "$prefix/$file" || -e "$prefix/${file%.gz}" ]] || fail "the package has no $file"
done
grep -q "MIT License" "$prefix/share/doc/qrlantern/copyright" || fail "copyright is not the license"

mkdir "$scratch/elsewhere"
cd "$scratch/elsewhere"
version="$("$prefix/bin/lantern" --version)"
[[ "$version" == *"$prefix/lib/qrlantern/qrlantern.so: version 44001"* ]] ||
  fail "the installed lantern does not find its own module: $version"
links="$("$prefix/bin/lantern" "$prefix/share/doc/qrlantern/examples/links.lua")"
[[ "$links" == *"Lua 5.4 -> https://www.lua.org/manual/5.4/"* ]] ||
  fail "the installed example gave: $links"
echo "check_package: $(basename "$package") installs and runs"
