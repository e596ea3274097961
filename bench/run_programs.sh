#!/usr/bin/env bash
# Times whole programs through the headless runner: bench/run_programs.sh [build-dir]
set -euo pipefail
build=${1:-build}
for program in "$(dirname "$0")"/programs/*.bas; do
    start=$(date +%s.%N)
    "$build/tessaly" --headless "$program" >/dev/null || true
    end=$(date +%s.%N)
    printf '%-40s %8.3f s\n' "$(basename "$program")" "$(echo "$end - $start" | bc)"
done
