# Completion of tallyfold-service for bash. What can be written comes from the program's own help.

_tallyfold_service()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} each
    local -a said=()
    COMPREPLY=()
    if [[ $word == = ]]; then # the shell takes "--database=books" for three words
        word=
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $before in
    --demo) mapfile -t COMPREPLY < <(compgen -W "shared private off" -- "$word") && return ;;
    --locale) mapfile -t COMPREPLY < <(compgen -W "zh-CN en-US id-ID vi-VN" -- "$word") && return ;;
    --registration) mapfile -t COMPREPLY < <(compgen -W "review open closed" -- "$word") && return ;;
    --database | --files | --config | --to | --from | --smtp-password-file | --smtp-ca | --tls-certificate | --tls-key | --mail-spool)
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
        ;;
    esac
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do # the commands so far
        [[ $each == [a-z]* && $each != */* && $each != *.* ]] && said+=("$each")
    done
    mapfile -t COMPREPLY < <(compgen -W "$(tallyfold-service "${said[@]}" --help 2> /dev/null |
        sed -nE 's/^  (-[a-z],)?(--[a-z-]+)(,(--[a-z-]+))?.*/\2 \4/p; /^Subcommands:/,$ s/^  ([a-z][a-z-]*) .*/\1/p')" -- "$word")
}

complete -F _tallyfold_service tallyfold-service
