#!/usr/bin/env bash
# Fails when a folder includes a header of a folder above it. The layers, lowest first:
#   core < expr < screen < io < app
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
    app) echo 4 ;;
    *) echo -1 ;;
    esac
}

found=$(mktemp)
trap 'rm -f "$found"' EXIT
for folder in core expr screen io; do
    for file in "$folder"/*.cpp "$folder"/*.h "$folder"/*.def; do
        [ -e "$file" ] || continue
        { grep -o '^#include "[a-z_]*/[^"]*"' "$file" || true; } | sed 's/^#include "//; s/"$//' | while read -r header; do
            if [ "$(rank "${header%%/*}")" -gt "$(rank "$folder")" ]; then
                echo "$file -> $header"
            fi
        done
    done
done | sort >"$found"

expected=$(grep -v '^#' scripts/layer-exceptions.txt | grep -v '^$' | sort)
status=0
new=$(comm -23 "$found" <(echo "$expected"))
if [ -n "$new" ]; then
    echo "Includes that point upwards (core < expr < screen < io < app):"
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
