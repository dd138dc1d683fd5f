# Completion of quorlin-batch for bash.

# Prints the saved rules, one a line, of the settings file on the command line if there is one.
_quorlin_batch_rules() {
    local -a settings=()
    local index
    for ((index = 1; index + 1 < ${#COMP_WORDS[@]}; index++)); do
        if [[ ${COMP_WORDS[index]} == --settings ]]; then
            settings=(--settings "${COMP_WORDS[index + 1]}")
        fi
    done
    "${COMP_WORDS[0]}" --list-rules "${settings[@]}" 2>/dev/null | cut -f 1
}

# Offers the lines of WORDS that begin as CURRENT does, quoted for the shell.
_quorlin_batch_offer() { # CURRENT WORDS
    local word
    COMPREPLY=()
    while IFS= read -r word; do
        if [[ -n $word && $word == "$1"* ]]; then
            COMPREPLY+=("$(printf '%q' "$word")")
        fi
    done <<<"$2"
}

_quorlin_batch() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local options='--rule --position --region --after --tolerance --match --method
        --pages-without-text --dry-run --files-from --null --password-file --output --create --flat
        --name --existing --report --jobs --timeout --quiet --verbose --list-rules --list-items
        --page --json --save-rule --from --text --remove-rule --rename-rule --export-rules
        --import-rules --settings --tools --help --version'
    case $previous in
    --rule | --remove-rule | --rename-rule)
        _quorlin_batch_offer "$current" "$(_quorlin_batch_rules)"
        ;;
    --method)
        _quorlin_batch_offer "$current" $'1\n2\n3'
        ;;
    --pages-without-text)
        _quorlin_batch_offer "$current" $'join\nseparate\ndrop\nfail'
        ;;
    --existing)
        _quorlin_batch_offer "$current" $'replace\nskip\nfail'
        ;;
    --output | --tools)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        ;;
    --position | --region | --after | --tolerance | --match | --name | --jobs | --timeout | --page | \
        --save-rule | --text)
        COMPREPLY=()
        ;;
    *)
        if [[ $current == -* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
        else
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
        fi
        ;;
    esac
}

complete -F _quorlin_batch quorlin-batch
