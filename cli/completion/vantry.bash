# Completion of vantry. In ~/.bashrc: eval "$(vantry completion bash)"
_vantry() {
    local cur words cword word line kind=
    if declare -F _get_comp_words_by_ref >/dev/null; then
        _get_comp_words_by_ref -n =: cur words cword
    else
        words=("${COMP_WORDS[@]}") cword=$COMP_CWORD cur=${COMP_WORDS[COMP_CWORD]}
    fi
    local -a given=()
    for word in "${words[@]:1:cword}"; do
        [[ $word == \~/* ]] && word=$HOME/${word:2}
        word=${word#[\"\']}
        word=${word%[\"\']}
        given+=("${word//\\/}")
    done
    COMPREPLY=()
    while IFS= read -r line; do
        if [[ -z $kind ]]; then
            kind=$line
        elif [[ $cur == [\"\']* ]]; then
            COMPREPLY+=("$line")
        else
            COMPREPLY+=("$(printf %q "$line")")
        fi
    done < <(vantry complete -- "${given[@]}" 2>/dev/null)
    if [[ $kind == files ]]; then
        compopt -o filenames
        while IFS= read -r line; do
            COMPREPLY+=("$line")
        done < <(compgen -f -- "$cur")
    fi
    [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *. ]] && compopt -o nospace
    declare -F __ltrim_colon_completions >/dev/null && __ltrim_colon_completions "$cur"
    return 0
}
complete -F _vantry vantry
