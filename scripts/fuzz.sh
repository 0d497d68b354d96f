#!/usr/bin/env bash
# Looks for inputs that break something: builds all targets of fuzz/ and runs one after the other, each for so many
# seconds. scripts/fuzz.sh [SECONDS] [TARGET...]
#
# What is found lies in build/fuzz/findings/<target>/; the corpus of each target grows in build/fuzz/corpus/<target>/.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

seconds=${1:-60}
build_dir=$source_dir/build/fuzz
row='%-14s %12s %8s %8s %10s\n'

need "${build_packages[@]}" "${test_packages[@]}" "${clang_packages[@]}"
configure fuzz QUILLON_FUZZ=ON
targets=("${@:2}")
if [ ${#targets[@]} -eq 0 ]; then
    mapfile -t targets < <(ninja -C "$build_dir" -t targets all | sed -n 's/^fuzz_\([a-z_]*\): phony$/\1/p' | grep -v '^test$')
fi
build fuzz write_seeds "${targets[@]/#/fuzz_}"
"$build_dir/fuzz/write_seeds" "$build_dir/seeds"

# The last number that libFuzzer gives behind a word in its log.
last_number() {
    grep -ao "$1 *[0-9]*" "$2" | tail -1 | grep -o '[0-9]*$' || echo -
}

result=0
# shellcheck disable=SC2059
printf "$row" target executions edges features findings
for target in "${targets[@]}"; do
    corpus=$build_dir/corpus/$target findings=$build_dir/findings/$target log=$build_dir/$target.log
    dictionary=$source_dir/fuzz/dictionaries/$target.dict
    mkdir -p "$corpus" "$findings"
    # Slow inputs are found by the targets themselves, which count the processor's time and not that of the day.
    arguments=("-max_total_time=$seconds" -max_len=20000 -timeout=60 -rss_limit_mb=4096 -malloc_limit_mb=1000000
        -report_slow_units=1000 -print_final_stats=1 "-artifact_prefix=$findings/")
    if [ -e "$dictionary" ]; then
        arguments+=("-dict=$dictionary")
    fi
    (cd "$findings" && "$build_dir/fuzz/fuzz_$target" "${arguments[@]}" "$corpus" "$build_dir/seeds/$target") \
        >"$log" 2>&1 </dev/null || result=1
    # shellcheck disable=SC2059
    printf "$row" "$target" "$(last_number 'stat::number_of_executed_units:' "$log")" "$(last_number cov: "$log")" \
        "$(last_number ft: "$log")" "$(find "$findings" -type f | wc -l)"
done
exit "$result"
