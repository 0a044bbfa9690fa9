#!/usr/bin/env bash
# Installs what building and testing needs and this machine lacks. More packages may be named.
set -euo pipefail

packages=(g++ cmake ninja-build python3 libsqlite3-dev libcli11-dev nlohmann-json3-dev
          libgtest-dev libgmock-dev libbenchmark-dev "$@")

if ! command -v dpkg-query > /dev/null; then
  echo "This is not a Debian system; please make sure that it has: ${packages[*]}" >&2
  exit 0
fi

missing=()
for package in "${packages[@]}"; do
  state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2> /dev/null || true)
  [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo > /dev/null || {
    echo "Missing packages: ${missing[*]}. Install them as root, or install sudo." >&2
    exit 1
  }
  as_root=(sudo)
fi
echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" > /dev/null
