# Completion of cwt in fish. cwt itself tells what can follow.
function __cwt_complete
    set -l words (commandline -opc)
    set -l token (commandline -ct)
    set -l name (string match -r -- '^--[^=]*=' $token)
    set -l value (string replace -- "$name" '' $token)
    for offer in ($words[1] complete $words[2..] "$token" 2>/dev/null)
        switch $offer
            case :directories
                __fish_complete_directories "$value" ''
            case :files
                __fish_complete_path "$value" 2>/dev/null
            case ':files *'
                set -l endings (string join '|' -- (string split ' .' -- $offer)[2..])
                __fish_complete_path "$value" 2>/dev/null | string match -r -- "^.*(?:/|\\.(?:$endings))(?:\t.*)?\$"
            case '*'
                echo $offer
        end
    end | string replace -r '^' -- "$name"
end

complete -c cwt -f -a '(__cwt_complete)'
