#!/usr/bin/env bash
# Checks a Windows release zip as a user meets it: unpacked into a scratch
# folder, its files, its CRLF texts, and, where a wine of its width runs,
# lantern.exe started from another folder: its version line (it must find the
# module beside itself) and an example.
#
#   tests/package/check_windows_zip.sh qrlantern-<version>-windows-<x86|x64>.zip
set -euo pipefail

ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
zip="$(realpath "$1")"
name="$(basename "$zip" .zip)"
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT

fail() {
  echo "check_windows_zip: $*" >&2
  exit 1
}

[[ "$name" =~ ^qrlantern-[0-9.]+-windows-(x86|x64)$ ]] || fail "odd file name $(basename "$zip")"
width="${BASH_REMATCH[1]}"

cmake -E chdir "$scratch" cmake -E tar xf "$zip"
top="$scratch/$name"
for file in qrlantern.dll lantern.exe README.txt LICENSE QORMLANG.enu docs/functions.html \
            docs/lantern.html docs/pages/shop.html examples/headings.lua examples/pages/sample.html; do
  [[ -f "$top/$file" ]] || fail "the zip has no $file"
done
for text in README.txt QORMLANG.enu; do
  [[ "$(grep -c $'\r$' "$top/$text")" == "$(wc -l <"$top/$text")" ]] || fail "$text has a line without CRLF"
done
grep -q '^X101=' "$top/QORMLANG.enu" || fail "QORMLANG.enu has no X101 entry"
grep -q 'id="TOC"' "$top/docs/functions.html" || fail "functions.html has no table of contents"
machine=$(objdump -f "$top/lantern.exe" | sed -n 's/.*file format //p')
case "$width:$machine" in
  x64:pei-x86-64 | x86:pei-i386) ;;
  *) fail "lantern.exe is $machine in the $width zip" ;;
esac

# The 64-bit programs run under wine64; the 32-bit ones under the 32-bit
# wine of scripts/wine32 where it works here.
wine=(wine)
if [[ "$width" == x86 ]]; then
  if ! "$ROOT/scripts/wine32" --works >/dev/null 2>&1; then
    echo "check_windows_zip: $(basename "$zip") unpacks; no 32-bit wine here to run lantern.exe"
    exit 0
  fi
  wine=("$ROOT/scripts/wine32")
fi
export WINEPREFIX="$scratch/wine" WINEDEBUG=-all WINEDLLOVERRIDES="winedbg.exe=d"
stop_wine() { wineserver -k 2>/dev/null || true; wineserver -w 2>/dev/null || true; rm -rf "$scratch"; }
trap stop_wine EXIT

mkdir "$scratch/elsewhere"
cd "$scratch/elsewhere"
version="$("${wine[@]}" "$top/lantern.exe" --version 2>&1)"
[[ "$version" == *"qrlantern.dll: version 44001"* ]] ||
  fail "lantern.exe does not find the module beside it: $version"
headings="$("${wine[@]}" "$top/lantern.exe" "Z:${top//\//\\}\\examples\\headings.lua" 2>&1)"
[[ "$headings" == *$'  Getting started\r\n    Reading a file'* || "$headings" == *$'  Getting started\n    Reading a file'* ]] ||
  fail "the example gave: $headings"
echo "check_windows_zip: $(basename "$zip") unpacks and runs"
