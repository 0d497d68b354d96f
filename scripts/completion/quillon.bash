# Completion of quillon for bash: operations, then specifications and the folders on the way to them.

_quillon() {
    local word=${COMP_WORDS[COMP_CWORD]} path
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        mapfile -t COMPREPLY < <(compgen -W 'info -v -changes' -- "$word")
    elif [ "$COMP_CWORD" -eq 2 ] && [ "${COMP_WORDS[1]}" = info ]; then
        compopt -o filenames 2>/dev/null
        while IFS= read -r path; do
            if [ -d "$path" ]; then
                COMPREPLY+=("$path")
            else
                # A compressed specification goes by its plain name.
                case $path in
                    *.zvx) COMPREPLY+=("$path") ;;
                    *.zvx.gz | *.zvx.Z) COMPREPLY+=("${path%.*}") ;;
                esac
            fi
        done < <(compgen -f -- "$word")
    fi
}

complete -F _quillon quillon
