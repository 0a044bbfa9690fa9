#!/usr/bin/env bash
# Reads every source with clang: its compiler warnings and the checks of .clang-tidy, all of them
# as errors. Other files than all may be named.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install-packages.sh clang clang-format clang-tidy pkg-config dpkg-dev file
cmake --preset debug > /dev/null
# Sources that the build makes are read by others.
cmake --build --preset debug --target orxdb_resources orxdb > /dev/null

sources=("$@")
[ ${#sources[@]} -gt 0 ] || mapfile -t sources < <(
  python3 -c 'import json, os
print(*sorted({os.path.relpath(entry["file"]) for entry in
               json.load(open("build/debug/compile_commands.json"))
               if "/build/" not in entry["file"]}), sep="\n")')
echo "clang-tidy: ${#sources[@]} sources"
printf '%s\0' "${sources[@]}" | xargs -0 -P "$(nproc)" -n 4 clang-tidy -p build/debug --quiet
