#!/bin/bash
# Feed every format that is read with a million malformed inputs, under AddressSanitizer and
# UndefinedBehaviorSanitizer, one format after the other.
#   tools/fuzz.sh [--runs N] [--seconds S] [--seed S] [target...]
# Builds what it needs into build/fuzz. What ends a target is told, and its input is left as
# build/fuzz/found/TARGET-SEED; "morentis_fuzz TARGET --input FILE" takes it again.
set -uo pipefail
cd -P "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1

runs=1000000 seconds=1000000000 seed=1 targets=()
while (($#)); do
  case $1 in
    --runs) runs=$2; shift ;;
    --seconds) seconds=$2; shift ;;
    --seed) seed=$2; shift ;;
    -*) sed -n '2,6p' "$0"; exit 2 ;;
    *) targets+=("$1") ;;
  esac
  shift
done

fuzz=build/fuzz/tests/fuzz/morentis_fuzz
cmake --preset fuzz >/dev/null && cmake --build --preset fuzz || exit 1
((${#targets[@]})) || targets=($($fuzz 2>&1 | sed -n 's/^targets://p'))
mkdir -p build/fuzz/found
# What can't be had is told by an error, as without the sanitizer: libhdf5 believes any size that a file tells.
export ASAN_OPTIONS=hard_rss_limit_mb=6000:detect_leaks=1:allocator_may_return_null=1:$(printenv ASAN_OPTIONS)
export UBSAN_OPTIONS=print_stacktrace=1 LSAN_OPTIONS=suppressions=tests/lsan.supp:print_suppressions=0
broken=0
for target in "${targets[@]}"; do
  found=build/fuzz/found/$target-$seed
  # Readers tell what is wrong with their files, a million times.
  $fuzz "$target" --runs "$runs" --seconds "$seconds" --seed "$seed" --keep "$found" 2>&1 | tail -c 20000 >"$found.log"
  status=${PIPESTATUS[0]}
  if ((status == 0)); then
    tail -n 1 "$found.log"
    rm "$found" "$found.log"
  else
    printf '%s: ENDED with status %d; its input is %s, its words are in %s.log\n' "$target" "$status" "$found" "$found"
    broken=1
  fi
done
exit $broken
