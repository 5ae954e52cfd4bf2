# Completion of vantry. In ~/.bashrc: eval "$(vantry completion bash)"
_vantry() {
    local rest=${COMP_LINE:0:COMP_POINT} cur= head= kind= blanks word line at
    local -a words=() given=()
    # Bash takes words apart at its breaks, such as "=" and ":"; what touches is one word here.
    for ((at = 0; at <= COMP_CWORD; at++)); do
        blanks=${rest%%[![:blank:]]*}
        rest=${rest#"$blanks"}
        word=${COMP_WORDS[at]}
        ((at == COMP_CWORD)) && word=$rest
        rest=${rest#"$word"}
        if [[ $at -gt 0 && -z $blanks ]]; then
            words[-1]+=$word
        else
            words+=("$word")
        fi
    done
    for word in "${words[@]:1}"; do
        [[ $word == \~/* ]] && word=$HOME/${word:2}
        word=${word#[\"\']}
        word=${word%[\"\']}
        given+=("${word//\\/}")
    done
    cur=${words[-1]}
    # What comes after the last break is replaced, with the break if it is "@"; within quotes there is none.
    local breaks=${COMP_WORDBREAKS//[!=:@]/}
    [[ -n $breaks && $cur != [\"\']* ]] && head=${cur%"${cur##*[$breaks]}"}
    head=${head%@}
    head=${head//\\/}
    COMPREPLY=()
    while IFS= read -r line; do
        if [[ -z $kind ]]; then
            kind=$line
        elif [[ $cur == [\"\']* || $kind == files* ]]; then
            COMPREPLY+=("${line#"$head"}")
        else
            COMPREPLY+=("$(printf %q "${line#"$head"}")")
        fi
    done < <(vantry complete -- "${given[@]}" </dev/null 2>/dev/null)
    if [[ $kind == files* ]]; then
        compopt -o filenames
        local before=${kind#files}
        before=${before# }
        while IFS= read -r line; do
            line=$before$line
            COMPREPLY+=("${line#"$head"}")
        done < <(compgen -f -- "${given[-1]#"$before"}")
    fi
    [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *[.:=] ]] && compopt -o nospace
    return 0
}
complete -F _vantry vantry
