# bash completion for vcckit: commands, options, and what the options take.
_vcckit()
{
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=
    local commands="pack unpack check render show" options="--help -h" files=

    [ "$COMP_CWORD" -gt 1 ] && command=${COMP_WORDS[1]}
    case $command in
    pack) options+=" --output -o" files=toml ;;
    unpack) options+=" --output -o" files=slt ;;
    check) options+=" --json" files=/ ;;
    render) options+=" --screen --language --row --module --hover --depth --output -o" files=/ ;;
    show) files='slt|tgl|tw|buf|snd|eng|ger|hlp|cfg|pcx|wav|avi' ;;
    esac

    local values=
    case $command:$before in
    render:--screen) values="menu options help message" ;;
    render:--language) values="en de" ;;
    render:--depth) values="15 16 24 32" ;;
    render:--module) values="0 1 2 3" ;;
    render:--row) values="0 1 2 3 4 5 6 7 8 9 11" ;;
    render:--hover) COMPREPLY=(); return ;;
    pack:--output | pack:-o) files=/ options= ;;
    unpack:--output | unpack:-o) files=toml options= ;;
    render:--output | render:-o) files=png options= ;;
    *)
        if [ -z "$command" ]; then
            values="$commands $options"
        elif [[ $current == -* ]]; then
            values=$options
        fi
        ;;
    esac
    if [ -n "$values" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$values" -- "$current")
        return
    fi

    # Folders always: the file may lie in one. Letter case does not matter, as to vcckit.
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$current")
    [ "$files" = / ] && return
    local file
    while IFS= read -r file; do
        [[ -d $file ]] || [[ ! ${file,,} =~ \.($files)$ ]] || COMPREPLY+=("$file")
    done < <(compgen -f -- "$current")
}
complete -F _vcckit vcckit
