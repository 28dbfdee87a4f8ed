# bash completion for vcckit: the tool itself says what fits at a place.
_vcckit()
{
    local current=${COMP_WORDS[COMP_CWORD]} line file endings=
    COMPREPLY=()
    while IFS= read -r line; do
        case $line in
        :folders)
            compopt -o filenames 2>/dev/null
            mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -d -- "$current")
            ;;
        :files*)
            # Folders always: the file may lie in one. Letter case does not matter, as to vcckit.
            compopt -o filenames 2>/dev/null
            endings=${line#:files} endings=${endings# }
            while IFS= read -r file; do
                [[ -d $file || -z $endings || ${file,,} =~ \.(${endings// /|})$ ]] && COMPREPLY+=("$file")
            done < <(compgen -f -- "$current")
            ;;
        *) line=${line%%$'\t'*}; [[ $line == "$current"* ]] && COMPREPLY+=("$line") ;;
        esac
    done < <("${COMP_WORDS[0]/#\~\//$HOME/}" __complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
}
complete -F _vcckit vcckit
