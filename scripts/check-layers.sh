#!/usr/bin/env bash
# Fails when a file includes a header of a layer above its own. The layers, lowest first:
#   core (its base) < expr < screen < io < core's executor < app
# The executor drives every subsystem: the interpreter's assembly (core/interpreter.cpp), the run
# loop, the statement executor and line entry, the dispatch table and the core's statement handlers
# (core/stmt_*.cpp). Every header of core/ is the base: the other folders reach the executor only
# through the declarations there.
# scripts/layer-exceptions.txt lists the upward includes that are still to be removed; an include
# missing from it fails, and so does a line of it that no longer happens (the list only shrinks).
set -euo pipefail
cd "$(dirname "$0")/.."

rank() {
    case "$1" in
    core) echo 0 ;;
    expr) echo 1 ;;
    screen) echo 2 ;;
    io) echo 3 ;;
    executor) echo 4 ;;
    app) echo 5 ;;
    *) echo -1 ;;
    esac
}

# The layer of a file of core/, expr/, screen/ or io/.
layer_of() {
    case "$1" in
    core/interpreter.cpp | core/run_loop.cpp | core/executor.cpp | core/line_entry.cpp | \
        core/shell_commands.cpp | core/dispatch.cpp | core/stmt_*.cpp) echo executor ;;
    *) echo "${1%%/*}" ;;
    esac
}

found=$(mktemp)
trap 'rm -f "$found"' EXIT
for folder in core expr screen io; do
    for file in "$folder"/*.cpp "$folder"/*.h "$folder"/*.def; do
        [ -e "$file" ] || continue
        { grep -o '^#include "[a-z_]*/[^"]*"' "$file" || true; } | sed 's/^#include "//; s/"$//' | while read -r header; do
            if [ "$(rank "${header%%/*}")" -gt "$(rank "$(layer_of "$file")")" ]; then
                echo "$file -> $header"
            fi
        done
    done
done | sort >"$found"

expected=$({ grep -v -e '^#' -e '^$' scripts/layer-exceptions.txt || true; } | sort)
status=0
new=$(comm -23 "$found" <(echo "$expected"))
if [ -n "$new" ]; then
    echo "Includes that point upwards (core < expr < screen < io < executor < app):"
    echo "$new"
    status=1
fi
gone=$(comm -13 "$found" <(echo "$expected"))
if [ -n "$gone" ]; then
    echo "No longer included, take these lines out of scripts/layer-exceptions.txt:"
    echo "$gone"
    status=1
fi
exit $status
