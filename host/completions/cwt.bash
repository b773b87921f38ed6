# Completion of cwt in bash, by bash-completion. cwt itself tells what can follow.
_cwt() {
    # shellcheck disable=SC2034
    local cur prev words cword
    _init_completion -n =: || return

    # As the words will reach cwt: without quotes.
    local word offer endings
    local -a typed=()
    for word in "${words[@]:1:cword}"; do
        word=${word//\\/}
        typed+=("${word//[\"\']/}")
    done
    local value=${typed[-1]}
    if [[ $cur == --*=* ]]; then
        value=${value#*=}
        cur=${cur#*=}
    fi

    while IFS=$'\t' read -r offer _; do
        case $offer in
        :directories) _filedir -d ;;
        :files)
            _filedir
            ;;
        :files*)
            endings=${offer#:files .}
            _filedir "@(${endings// ./|})"
            ;;
        "$value"*)
            # Within quotes no sign is offered that the shell would read there.
            if [[ $cur != [\"\']* ]]; then
                printf -v offer %q "$offer"
            elif [[ $offer == *[\"\'\\\$\`!]* ]]; then
                continue
            fi
            COMPREPLY+=("$offer")
            ;;
        esac
    done < <("${1/#\~/$HOME}" complete "${typed[@]}" 2>/dev/null)
    __ltrim_colon_completions "$cur"
} && complete -F _cwt cwt
