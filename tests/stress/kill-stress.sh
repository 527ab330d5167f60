#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The image plugin authors
# SPDX-License-Identifier: BSD-3-Clause
# Kills the settings window's file work many times at random moments of opening, saving, Cancel
# and OK (a second window dying while settling the first one's leftovers included), and counts
# what the next openings found. The suite runs a fixed slice of this; run the long one by hand
# after changing the backup, the recovery or the file operations.
#
#   tests/stress/kill-stress.sh [ROUNDS]        ROUNDS defaults to 1000
#
# BUILD_DIR (default: build) is configured and built when needed, with JOBS parallel jobs.
# KILL_SEED fixes the first round's seed (rounds use KILL_SEED, KILL_SEED+1, ...), KILL_FILES the
# number of files a workspace gets (default 160, about 10 MB). Each failing round is printed with
# its seed and what its driver printed before the kill; the last line is the count of rounds
# that left a damaged, incomplete or outside-changed workspace, or orphans.
set -euo pipefail

rounds="${1:-1000}"
case "$rounds" in
    ''|*[!0-9]*) echo "usage: $0 [ROUNDS]" >&2; exit 2 ;;
esac
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
build="${BUILD_DIR:-$root/build}"
jobs="${JOBS:-$(nproc)}"

if [ ! -f "$build/build.ninja" ]; then
    cmake -S "$root" -B "$build" -G Ninja >/dev/null
fi
ninja -C "$build" -j "$jobs" backupdriver tst_killrecovery >/dev/null

# Only the rounds' own lines: QtTest's frame and the per-round notes stay out of the way.
set +e
# A long run is one test function: QtTest's five-minute limit for one is lifted.
KILL_ROUNDS="$rounds" QTEST_FUNCTION_TIMEOUT=86400000 QT_QPA_PLATFORM=offscreen \
    "$build/tests/stress/tst_killrecovery" randomRounds 2>&1 |
    grep --line-buffered -Ev '^(\*\*\*\*\*\*\*\*\*|Config:|PASS|FAIL!|SKIP|QINFO|QWARN|QDEBUG|Totals|   Loc:)'
status="${PIPESTATUS[0]}"
set -e
exit "$status"
