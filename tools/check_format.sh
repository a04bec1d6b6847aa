#!/bin/bash
# Is every source formatted as .clang-format says? Lists those that aren't.
#   tools/check_format.sh [KNOWN]     KNOWN: keeps the sums of what was in order, which isn't looked at again
set -uo pipefail
known=$(realpath -m "${1:-/dev/null}")
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

# What was in order stays so under the same rules: lines "sum  file", the rules' own sum first.
rules=$( (clang-format --version && cat .clang-format) | sha256sum)
sums=$(list | xargs -0 -r sha256sum)
new=$sums
if [[ -f $known ]] && [[ $(head -n 1 "$known") == "$rules" ]]; then
  new=$(grep -vxFf <(tail -n +2 "$known") <<<"$sums")
fi

# A few files a process: starting it costs more than looking at a file does.
told=$([[ -z $new ]] || cut -c67- <<<"$new" | xargs -d '\n' -P2 -n40 clang-format --dry-run --Werror --ferror-limit=1 2>&1)
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
[[ ! -e $known || -f $known ]] && printf '%s\n%s\n' "$rules" "$sums" >"$known"
echo "check_format: all in order"
