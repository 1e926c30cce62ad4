#!/usr/bin/env bash
# side_by_side.sh COUNT COMMAND [ARGS...]: runs COUNT copies of a command at
# once and fails when any of them fails. Faults that only show when the
# machine is busy (a thread of a library still running while it is unmapped)
# need company to show.
set -u
count=$1
shift
pids=()
for ((copy = 1; copy <= count; ++copy)); do
  "$@" >"${TMPDIR:-/tmp}/side-by-side-$$-$copy.log" 2>&1 &
  pids+=($!)
  # A moment apart, so that copies that look for a free X display each find
  # their own.
  sleep 1
done
failed=0
for ((copy = 1; copy <= count; ++copy)); do
  log="${TMPDIR:-/tmp}/side-by-side-$$-$copy.log"
  if ! wait "${pids[copy - 1]}"; then
    echo "copy $copy of $count failed:"
    tail -n 40 "$log"
    failed=1
  fi
  rm -f "$log"
done
exit "$failed"
