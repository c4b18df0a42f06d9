#!/usr/bin/env bash
# Builds the fuzz targets with clang into build-fuzz/ and runs each one for a
# bounded time (FUZZ_SECONDS, 30 by default) from its corpus in fuzz/corpus/.
# New inputs found on the way stay in build-fuzz/; the committed corpus is
# only read. Exits non-zero when any target finds a crash, a leak or a hang,
# leaving the input that did it in build-fuzz/artifacts/.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${FUZZ_BUILD_DIR:-$top/build-fuzz}
seconds=${FUZZ_SECONDS:-30}
targets=(ini_reader section_split line_reader line_reader_l preprocesa_file
    neighbour_message echo_reply inet_addr net_helper_request scale_answer dump_answer)

cmake -S "$top" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
    -DFIRMCAST_FUZZ=ON -DFIRMCAST_GUI=OFF >/dev/null
cmake --build "$build" --target "${targets[@]/#/fuzz_}"

mkdir -p "$build/artifacts"
failed=()
for t in "${targets[@]}"; do
    work="$build/corpus/$t"
    mkdir -p "$work"
    echo "== fuzz_$t for ${seconds}s"
    if ! "$build/bin/fuzz_$t" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$build/artifacts/$t-" \
        "$work" "$top/fuzz/corpus/$t"; then
        failed+=("$t")
    fi
done

if [ ${#failed[@]} -ne 0 ]; then
    echo "fuzzing found problems in: ${failed[*]} (inputs in $build/artifacts/)" >&2
    exit 1
fi
echo "fuzzing found nothing"
