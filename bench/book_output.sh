#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# Book output benchmark: the description converted to JSON and the book script scrambled, each
# beside its reference on the same input, in one run:
#   - fast-xml-parser + JSON.stringify (installed from npm into bench/node_modules, only here);
#   - a bare RC4 loop in C++ over the same bytes.
# Goals: conversion at least 3 times the converter's throughput; scrambling at least half the
# bare loop's.
#   bench/book_output.sh [BUILD_DIR]     (default build/)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}

cmake --build "$build" --target bookoutput_bench rc4_reference >/dev/null
if [ ! -d bench/node_modules/fast-xml-parser ]; then
  (cd bench && npm install --no-audit --no-fund --silent)
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$build/bench/bookoutput_bench" generate "$work/description.xml" "$work/script.txt"

echo "date:    $(date -u '+%Y-%m-%d %H:%M UTC')"
echo "machine: $(nproc) cores, $(lscpu | sed -n 's/^Model name: *//p')"
echo "input:   description $(stat -c %s "$work/description.xml") bytes (50,000 items)," \
     "script $(stat -c %s "$work/script.txt") bytes"
echo

json=$("$build/bench/bookoutput_bench" json "$work/description.xml")
fxp=$(node bench/fxp_reference.js "$work/description.xml")
sizes=$("$build/bench/bookoutput_bench" json-sizes)
# The scrambler and the bare loop run interleaved in one process, both counting bytes.
scramble=$("$build/bench/bookoutput_bench" scramble "$work/script.txt")
printf '%s\n%s\n\n%s\n\n%s\n\n' "$json" "$fxp" "$sizes" "$scramble"

rate() { grep -F "$1" <<<"$2" | awk '{ for (i = 1; i < NF; ++i) if ($(i + 1) == "MB/s") print $i }'; }
ours_json=$(rate "text to JSON (ours)" "$json")
ref_json=$(rate "fast-xml-parser+stringify" "$fxp")
ours_scramble=$(rate "scramble (ours)" "$scramble")
ref_rc4=$(rate "bare RC4 loop (same run)" "$scramble")
awk -v a="$ours_json" -v b="$ref_json" -v c="$ours_scramble" -v d="$ref_rc4" 'BEGIN {
  printf "conversion: %.1f times the converter (goal: at least 3)  %s\n", a / b, (a / b >= 3 ? "met" : "MISSED")
  printf "scrambling: %.2f of the bare loop (goal: at least 0.5)  %s\n", c / d, (c / d >= 0.5 ? "met" : "MISSED")
}'
