#!/bin/bash
# clang_format.sh ROOT: prints a line for each place that clang-format would set otherwise. 77 without clang-format.
set -uo pipefail
cd "$1" || exit 1
command -v clang-format >/dev/null || { echo "clang-format isn't installed"; exit 77; }
folders=()
for folder in src tests bench fuzz effects; do [ -d $folder ] && folders+=($folder); done
words=$(find "${folders[@]}" -type f \( -name '*.h' -o -name '*.cpp' \) -print0 |
  xargs -0 --no-run-if-empty clang-format --dry-run -Werror 2>&1)
result=$?
grep -E '^[^ ]+:[0-9]+:[0-9]+: ' <<<"$words"
if [ $result -ne 0 ] && ! grep -qE '^[^ ]+:[0-9]+:[0-9]+: ' <<<"$words"; then echo "$words"; fi
exit $result
