#compdef cwt
# Completion of cwt in zsh. cwt itself tells what can follow.
local program=${${(Q)words[1]}/#\~/$HOME} line word
local -a typed=("${(@Q)words[2,CURRENT-1]}" "${(Q)PREFIX}") offers
[[ $PREFIX == --*=* ]] && compset -P '*='

local result=1
for line in "${(@f)$($program complete "${typed[@]}" 2>/dev/null)}"; do
    word=${line%%$'\t'*}
    case $word in
        '') ;;
        :directories) _files -/ && result=0 ;;
        :files) _files && result=0 ;;
        :files*) _files -g "*.(${(j:|:)${(s: .:)word}[2,-1]})(-.)" && result=0 ;;
        *) offers+=("${word//:/\\:}:${line#*$'\t'}") ;;
    esac
done
(( $#offers )) && _describe cwt offers && result=0
return result
