# Completion of vantry. As ~/.config/fish/completions/vantry.fish
function __vantry_complete
    set -l words (commandline -opc)
    set -e words[1]
    set -l current (string unescape -- (commandline -ct))
    set -l lines (vantry complete -- $words "$current" </dev/null 2>/dev/null)
    set -l kind $lines[1]
    set -e lines[1]
    printf '%s\n' $lines
    test "$kind" = files; and __fish_complete_path "$current"
end
complete -c vantry -f -a '(__vantry_complete)'
