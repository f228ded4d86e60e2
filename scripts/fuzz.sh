#!/usr/bin/env bash
# Builds the fuzz targets with clang's libFuzzer, AddressSanitizer and
# UndefinedBehaviorSanitizer in build-fuzz/ (or $TOLVANE_FUZZ_BUILD_DIR), then runs each
# target for SECONDS (default 60) on its corpus in fuzz/corpus/<target>/ with the figure
# dictionary. The checked-in corpus is only read: inputs that add coverage go to
# build-fuzz/corpus/<target>/, a fault's input to build-fuzz/findings/<target>/.
# Usage: scripts/fuzz.sh [SECONDS] [TARGET...]
# Exit status: 0 when no target found a fault, 1 when one did, 77 when clang cannot
# link libFuzzer here.
set -euo pipefail
ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
SECONDS_EACH="${1:-60}"
shift || true
BUILD="${TOLVANE_FUZZ_BUILD_DIR:-$ROOT/build-fuzz}"
TARGETS=("$@")
if [ ${#TARGETS[@]} -eq 0 ]; then
  TARGETS=(line_reader figure_scan run_time_number list_scans channel_viewer bracket_checker
           workspace_open script_line)
fi

# clang must be there and link a libFuzzer program with both sanitizers.
probe="$(mktemp -d)"
trap 'rm -rf "$probe"' EXIT
printf '%s\n' '#include <cstddef>' '#include <cstdint>' \
  'extern "C" int LLVMFuzzerTestOneInput(const uint8_t*, size_t) { return 0; }' > "$probe/probe.cpp"
if ! command -v clang++ > /dev/null ||
   ! clang++ -fsanitize=fuzzer,address,undefined "$probe/probe.cpp" -o "$probe/probe" 2> /dev/null; then
  echo "fuzz.sh: clang++ with -fsanitize=fuzzer is not available here; nothing fuzzed"
  exit 77
fi

export CCACHE_BASEDIR="$ROOT" CCACHE_NOHASHDIR=1
LAUNCHER=()
if command -v ccache > /dev/null; then LAUNCHER=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
cmake -S "$ROOT" -B "$BUILD" -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -gline-tables-only" "${LAUNCHER[@]}" \
  -DTOLVANE_LIBFUZZER=ON -DTOLVANE_GUI=OFF -DTOLVANE_TESTS=OFF -DTOLVANE_BENCH=OFF \
  > "$BUILD.configure.log" 2>&1 || { cat "$BUILD.configure.log"; exit 1; }
cmake --build "$BUILD" --target $(printf 'fuzz_%s ' "${TARGETS[@]}") -j"${TOLVANE_FUZZ_JOBS:-$(nproc)}"

export ASAN_OPTIONS="${ASAN_OPTIONS:-abort_on_error=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1}"
status=0
summary=()
for t in "${TARGETS[@]}"; do
  corpus="$BUILD/corpus/$t"
  findings="$BUILD/findings/$t"
  log="$BUILD/logs/$t.log"
  mkdir -p "$corpus" "$findings" "$(dirname "$log")"
  echo "== fuzz_$t for ${SECONDS_EACH}s"
  if "$BUILD/fuzz/fuzz_$t" -max_total_time="$SECONDS_EACH" -timeout=20 -rss_limit_mb=2048 \
       -dict="$ROOT/fuzz/figure.dict" -artifact_prefix="$findings/" -print_final_stats=1 \
       "$corpus" "$ROOT/fuzz/corpus/$t" > "$log" 2>&1; then
    result="ok"
  else
    result="FAULT (see $log and $findings/)"
    status=1
    tail -n 40 "$log"
  fi
  # The last status line: executions, coverage (cov) and features (ft) at the end.
  last="$(grep -E '^#[0-9]+' "$log" | tail -n 1 || true)"
  rate="$(grep -E '^stat::average_exec_per_sec' "$log" | awk '{print $2}' || true)"
  summary+=("$(printf '%-16s %s  exec/s %s  %s' "$t" "$(echo "$last" | awk '{print $1, $3, $4, $5, $6}')" \
    "${rate:-?}" "$result")")
done
echo "== fuzz summary (${SECONDS_EACH}s per target)"
printf '%s\n' "${summary[@]}"
exit "$status"
