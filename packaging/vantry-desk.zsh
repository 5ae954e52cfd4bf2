#compdef vantry-desk
# Completion of vantry-desk: its options, as --help lists them, and files.
local -a options
options=(${(u)${(f)"$(vantry-desk --language en --help 2>/dev/null | grep -oE -e '--[a-z-]+')"}})
if [[ $words[CURRENT-1] == --*plugin-dir ]]; then
    _files -/
elif [[ $words[CURRENT-1] == --language ]]; then
    compadd -- de en
elif [[ $words[CURRENT] == -* ]]; then
    compadd -- $options
else
    _files
fi
