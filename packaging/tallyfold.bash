# Completion of tallyfold for bash.

_tallyfold()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    if [[ $word == = ]]; then # the shell takes "--language=en-US" for three words
        word=
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    if [[ $before == --language ]]; then
        mapfile -t COMPREPLY < <(compgen -W "zh-CN en-US id-ID vi-VN" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -W "$(tallyfold --help 2> /dev/null | grep -oE -- '^ +(-[a-z],)?--[a-z-]+' | grep -oE -- '--[a-z-]+')" -- "$word")
    fi
}

complete -F _tallyfold tallyfold
