#!/usr/bin/env bash
# Runs each fuzz target for a bounded time on a scratch corpus seeded from
# fuzz/corpus/<target>/ and the XML of the tests and examples.
#
# usage: fuzz/run.sh <fuzz build dir> <seconds per target> <work dir> [target...]
# The corpus starts from the seeds each time, since libFuzzer replays the
# whole corpus before its time limit counts (FUZZ_KEEP_CORPUS=1 keeps it).
# Exit status 1 when any target found a crash, leak, timeout or sanitizer
# report; the reproducer is left in <work dir>/artifacts/ and its path printed.
set -uo pipefail

root="$(cd "$(dirname "$0")/.." && pwd)"
build="$1"
seconds="$2"
work="$3"
shift 3
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(xmlnode converter loader)

mkdir -p "$work/artifacts"
export QT_QPA_PLATFORM=offscreen
export QT_QPA_FONTDIR=/usr/share/fonts/truetype/dejavu
# A document may ask for a window of Qt's maximum size: Qt copes with a
# failed image allocation, so the allocator answers null instead of aborting.
export ASAN_OPTIONS=allocator_may_return_null=1:detect_leaks=1:detect_stack_use_after_return=0
export LSAN_OPTIONS="suppressions=$root/fuzz/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1

declare -A maxlen=([xmlnode]=4096 [converter]=256 [loader]=4096)
failed=0
for t in "${targets[@]}"; do
  exe="$build/fuzz/zkit-fuzz-$t"
  if [ ! -x "$exe" ]; then
    echo "fuzz: $exe missing" >&2
    failed=1
    continue
  fi
  corpus="$work/corpus-$t"
  [ "${FUZZ_KEEP_CORPUS:-0}" = 1 ] || rm -rf "$corpus"
  dict=()
  if [ "$t" = loader ]; then
    python3 "$root/fuzz/seed-corpus.py" "$t" "$root" "$corpus" "$work/$t.dict" >/dev/null
    dict=(-dict="$work/$t.dict")
  else
    python3 "$root/fuzz/seed-corpus.py" "$t" "$root" "$corpus" >/dev/null
  fi
  log="$work/$t.log"
  "$exe" "$corpus" "${dict[@]}" -max_total_time="$seconds" -rss_limit_mb=3072 -timeout=25 \
         -max_len="${maxlen[$t]}" -print_final_stats=1 -artifact_prefix="$work/artifacts/$t-" >"$log" 2>&1
  status=$?
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
  cov=$(grep -o 'cov: [0-9]*' "$log" | tail -1)
  if [ $status -ne 0 ]; then
    failed=1
    echo "fuzz $t: FAILED (status $status) after ${runs:-?} executions; log $log"
    grep -E 'ERROR:|runtime error:|SUMMARY:|Test unit written' "$log" | head -8
  else
    echo "fuzz $t: ${runs:-?} executions in ${seconds} s (${speed:-?}/s, $cov), corpus $(ls "$corpus" | wc -l) files"
  fi
done
exit $failed
