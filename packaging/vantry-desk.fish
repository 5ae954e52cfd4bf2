# Completion of vantry-desk: its options, as --help lists them, and files.
function __vantry_desk_options
    vantry-desk --language en --help 2>/dev/null | string match -ar -- '--[a-z-]+' | sort -u
end
function __vantry_desk_follows
    string match -qr -- $argv[1] (commandline -opc)[-1]
end
complete -c vantry-desk -n 'string match -q -- "-*" (commandline -ct)' -f -a '(__vantry_desk_options)'
complete -c vantry-desk -n '__vantry_desk_follows "^--(shared-)?plugin-dir\$"' -f -a '(__fish_complete_directories (commandline -ct))'
complete -c vantry-desk -n '__vantry_desk_follows "^--language\$"' -f -a 'de en'
