#!/usr/bin/env bash
# Installs what the build needs and is missing. Quick when nothing is.
# Usage: tools/setup.sh [extra packages ...]
set -euo pipefail

packages=(
  g++ cmake ninja-build ccache
  qt6-base-dev qt6-svg-dev qt6-translations-l10n libxcb1-dev
  libsqlite3-dev libsqlitecpp-dev libsimpleini-dev libxxhash-dev pkgconf mdbtools-dev
  fonts-dejavu-core
  "$@"
)

missing=()
for package in "${packages[@]}"; do
  if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
    missing+=("$package")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -q
"${as_root[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
