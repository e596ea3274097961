#!/usr/bin/env bash
# Installs the Debian packages the build needs, only when one is missing.
set -euo pipefail

packages=(cmake g++ make pkg-config libgtest-dev libgmock-dev libbenchmark-dev libpng-dev unifont
          qt6-base-dev qt6-multimedia-dev libx11-dev socat libhpdf-dev poppler-utils
          qt6-translations-l10n desktop-file-utils groff-base)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done

if ((${#missing[@]})); then
    echo "Installing: ${missing[*]}" >&2
    sudo_cmd=()
    if [[ $(id -u) -ne 0 ]]; then sudo_cmd=(sudo); fi
    "${sudo_cmd[@]}" apt-get update
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y --no-install-recommends "${missing[@]}"
fi
