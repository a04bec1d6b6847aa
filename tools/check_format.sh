#!/bin/bash
# Is every source formatted as .clang-format says? Lists those that aren't.
set -uo pipefail
cd "$(dirname "$0")/.." || exit 2

if ! command -v clang-format >/dev/null; then
  echo "check_format: clang-format is missing (Debian package clang-format)" >&2
  exit 2
fi
if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
  # Files deleted but not yet committed are still listed by git.
  list() { git ls-files -z -- 'SRC/*.h' 'SRC/*.cpp' 'tests/*.h' 'tests/*.cpp' 'bench/*.h' 'bench/*.cpp' |
    while IFS= read -r -d '' file; do [[ -f $file ]] && printf '%s\0' "$file"; done; }
else
  list() { find SRC tests bench -type f \( -name '*.h' -o -name '*.cpp' \) -print0; }
fi

# shellcheck disable=SC2016
bad=$(list | xargs -0 -r -P2 -n8 bash -c '
  for file; do clang-format --dry-run --Werror "$file" >/dev/null 2>&1 || echo "$file"; done' _ | sort)
if [[ -n $bad ]]; then
  echo "Not formatted (clang-format -i FILE mends it):"
  echo "$bad"
  exit 1
fi
echo "check_format: all in order"
