#compdef vcckit
# zsh completion for vcckit: the tool itself says what fits at a place.
local line
local -a offered
for line in "${(@f)$(${~words[1]} __complete "${(@)words[2,CURRENT]}" 2>/dev/null)}"; do
  case $line in
    :folders) _files -/ ;;
    :files) _files ;;
    :files*) _files -g "(#i)*.(${${line#:files }// /|})" ;; # folders always; letter case does not matter
    ?*) offered+=("${line/$'\t'/:}") ;;
  esac
done
(( $#offered )) && _describe vcckit offered
