# Completion of vantry-desk: its options, as --help lists them, and files.
_vantry_desk() {
    local current=${COMP_WORDS[COMP_CWORD]}
    compopt -o filenames
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(vantry-desk --language en --help | grep -oE -e '--[a-z-]+')" -- "$current")
    elif [[ ${COMP_WORDS[COMP_CWORD - 1]} == --language ]]; then
        mapfile -t COMPREPLY < <(compgen -W "de en" -- "$current")
    elif [[ ${COMP_WORDS[COMP_CWORD - 1]} == --*plugin-dir ]]; then
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _vantry_desk vantry-desk
