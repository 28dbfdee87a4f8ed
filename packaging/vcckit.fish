# fish completion for vcckit: the tool itself says what fits at a place.
function __vcckit_offered
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    for line in ($words[1] __complete $words[2..] "$current" 2>/dev/null)
        switch $line
            case :folders
                __fish_complete_directories $current
            case ':files*'
                # Folders always: the file may lie in one. Letter case does not matter, as to vcckit.
                set -l endings (string split -n ' ' -- (string replace -r '^:files ?' '' -- $line))
                set -l pattern '.'
                if test -n "$endings"
                    set pattern '(?:/|\\.(?:'(string join '|' $endings)'))$'
                end
                complete -C "'' $current" | string replace -r '\t.*' '' | string match -rei -- $pattern
            case '*'
                echo $line
        end
    end
end
complete -c vcckit -f -a '(__vcckit_offered)'
