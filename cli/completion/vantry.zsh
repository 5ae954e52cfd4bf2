#compdef vantry
# Completion of vantry. In ~/.zshrc, after compinit: eval "$(vantry completion zsh)"
_vantry() {
    local -a lines groups
    lines=("${(@f)$(vantry complete -- "${(@Q)words[2,CURRENT]}" </dev/null 2>/dev/null)}")
    local kind=$lines[1]
    shift lines
    groups=("${(@M)lines:#*.}")
    lines=("${(@)lines:#*.}")
    [[ -n $groups ]] && compadd -S '' -- "${(@)groups:#}"
    [[ -n $lines ]] && compadd -- "${(@)lines:#}"
    [[ $kind == files\ * ]] && compset -P "${(b)kind#files }"
    [[ $kind == files* ]] && _files
}
if [[ $funcstack[1] == _vantry ]]; then
    _vantry "$@"
else
    compdef _vantry vantry
fi
