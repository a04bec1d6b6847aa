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

# A few files a process: starting it costs more than looking at a file does.
told=$(list | xargs -0 -r -P2 -n40 clang-format --dry-run --Werror --ferror-limit=1 2>&1)
status=$?
if ((status != 0)); then
  bad=$(sed -n 's/^\(.*\):[0-9]*:[0-9]*: error: code should be clang-formatted.*/\1/p' <<<"$told" | sort -u)
  if [[ -n $bad ]]; then
    echo "Not formatted (clang-format -i FILE mends it):"
    echo "$bad"
  else
    echo "$told"
  fi
  exit 1
fi
echo "check_format: all in order"
