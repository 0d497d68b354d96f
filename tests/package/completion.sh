# completion.sh SCRIPT FOLDER: completes command lines as bash would, with the installed script, in a folder of files.
set -u
source "$1"
rm -rf "$2"
mkdir -p "$2/figures.zvx" "$2/notes"
cd "$2"
touch walker.zvx walker.model 'a figure.zvx' packed.zvx.gz

# expect WORDS... RESULT: the last word is completed to the lines of RESULT, in any order.
expect() {
    COMP_WORDS=(quillon "${@:1:$#-1}")
    COMP_CWORD=$(($# - 1))
    COMPREPLY=()
    _quillon
    local found
    found=$(printf '%s\n' "${COMPREPLY[@]-}" | LC_ALL=C sort)
    if [ "$found" != "${!#}" ]; then
        printf 'quillon %s\nis completed to\n%s\nnot to\n%s\n' "${*:1:$#-1}" "$found" "${!#}" >&2
        exit 1
    fi
}

expect '' $'-changes\n-v\ninfo'
expect i info
expect info '' $'a figure.zvx\nfigures.zvx\nnotes\npacked.zvx\nwalker.zvx'
expect info walker walker.zvx
expect info x ''
expect info walker.zvx '' ''
