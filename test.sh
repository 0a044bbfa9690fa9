#!/usr/bin/env bash
# Builds everything with sanitizers and runs all tests: those of the component first under a
# locale with decimal commas, then all of them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/install-packages.sh locales pkg-config dpkg-dev file
cmake --preset debug
cmake --build --preset debug

failed=0
locales=$PWD/build/locale
if [ -d "$locales/de_DE.UTF-8" ] ||
   { mkdir -p "$locales" && localedef -i de_DE -f UTF-8 "$locales/de_DE.UTF-8"; }; then
  echo "Component tests with decimal commas:"
  LOCPATH=$locales LC_ALL=de_DE.UTF-8 ctest --preset debug -L component --no-tests=error || failed=1
else
  echo "No locale with decimal commas can be made here; those runs are left out."
fi

echo "All tests:"
ctest --preset debug || failed=1
exit $failed
