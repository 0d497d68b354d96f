#!/usr/bin/env bash
# Counts the instructions that each reader takes for a byte of its file, by valgrind (package valgrind), over generated
# files of about the named sizes. What a file of one body takes is the cost of starting, and taken off. Unlike a time
# the numbers do not depend on the machine. Ends with 1 when those of a reader differ by more than 10 %.
#
#   scripts/instructions.sh [BYTES...]    10000 100000 1000000 when none are named

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

bench_dir=$source_dir/build/release/bench
limit=10 # percent
sizes=("$@")
if [ ${#sizes[@]} -eq 0 ]; then
    sizes=(10000 100000 1000000)
fi

# Reader, its kind for read_file, the file of the generated family, and the definition that it is read with.
readers=(
    'specification;specification;long.zvx;'
    'problem definition;problem-definition;family.probdef;'
    'model;model;family.model;family.probdef'
    'limits;limits;family.limits;'
    'older limits;limits;family.older_limits;'
    'scale definition;scale-definition;family.scaledef;family.probdef'
    'measured data;measured-data;family.measured;'
)

need "${build_packages[@]}" valgrind:valgrind
if [ ! -e "$source_dir/build/release/build.ninja" ]; then
    configure release QUILLON_BUILD_TESTS=OFF QUILLON_BUILD_EXAMPLES=OFF QUILLON_BUILD_BENCH=ON
else
    configure release QUILLON_BUILD_BENCH=ON
fi
build release read_file generate_family

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# family BODIES: its directory, made when it is not there yet.
family() {
    local directory=$scratch/$1
    if [ ! -d "$directory" ]; then
        "$bench_dir/generate_family" "$1" "$directory" chain further
    fi
    printf '%s\n' "$directory"
}

bytes_of() {
    stat -c %s "$1"
}

# instructions KIND DIRECTORY FILE [DEFINITION]: those between the call of the reader and its return.
instructions() {
    local kind=$1 directory=$2 files=() name log
    shift 2
    for name in "$@"; do
        files+=("$directory/$name")
    done
    log=$(valgrind --tool=callgrind --callgrind-out-file=/dev/null --toggle-collect='readWanted*' \
        "$bench_dir/read_file" "$kind" "${files[@]}" 2>&1) || { say "$log"; return 1; }
    sed -n 's/^.*Collected *: *\([0-9][0-9]*\)$/\1/p' <<<"$log"
}

# measure KIND FILE [DEFINITION]: the bytes and the instructions for a byte at each size, and the deviation in percent.
measure() {
    local kind=$1 file=$2 first thousand size bodies directory bytes count start start_bytes rows=
    first=$(family 1)
    start=$(instructions "$kind" "$first" "${@:2}")
    start_bytes=$(bytes_of "$first/$file")
    thousand=$(bytes_of "$(family 1000)/$file")
    for size in "${sizes[@]}"; do
        bodies=$((size * 1000 / thousand))
        directory=$(family $((bodies > 2 ? bodies : 2)))
        bytes=$(bytes_of "$directory/$file")
        count=$(instructions "$kind" "$directory" "${@:2}")
        rows+="$bytes $((bytes - start_bytes)) $((count - start))"$'\n'
    done
    awk '
        { share = $3 / $2; printf "%10d %7.1f", $1, share }
        NR == 1 || share < least { least = share }
        NR == 1 || share > greatest { greatest = share }
        END { deviation = least > 0 ? (greatest / least - 1) * 100 : 999; printf " %8.1f %%\n", deviation }
    ' <<<"${rows%$'\n'}"
}

printf '%-20s' Reader
for size in "${sizes[@]}"; do
    printf '%10s %7s' bytes /byte
done
printf ' %10s\n' deviation

result=0
for entry in "${readers[@]}"; do
    IFS=';' read -r reader kind file definition <<<"$entry"
    row=$(measure "$kind" "$file" ${definition:+"$definition"})
    printf '%-20s%s\n' "$reader" "$row"
    if awk -v limit=$limit '{ exit $(NF - 1) <= limit }' <<<"$row"; then
        result=1
    fi
done
exit $result
