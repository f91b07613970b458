# Completion of tallyfold-cli for bash.

_tallyfold_cli()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]} options
    COMPREPLY=()
    if [[ $word == = ]]; then # the shell takes "--format=json" for three words
        word=
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $before in
    --format) mapfile -t COMPREPLY < <(compgen -W "text csv json" -- "$word") && return ;;
    --locale) mapfile -t COMPREPLY < <(compgen -W "zh en id vi" -- "$word") && return ;;
    --by) mapfile -t COMPREPLY < <(compgen -W "day week month quarter year total" -- "$word") && return ;;
    --snapshot | --out) compopt -o filenames && mapfile -t COMPREPLY < <(compgen -f -- "$word") && return ;;
    --kind)
        mapfile -t COMPREPLY < <(compgen -W "income expense transfer exchange refund reversal opening capital dividend" -- "$word")
        return
        ;;
    --currency | --from | --to | --account | --total | --share) return ;;
    esac
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W "balances report export import-plan template allocate --help --version" -- "$word")
        return
    fi
    case $command in
    balances) options="--snapshot --format --locale --help" ;;
    report) options="--snapshot --currency --from --to --by --account --format --locale --help" ;;
    import-plan) options="--snapshot --today --format --locale --help" ;;
    template) options="--out --locale --help" ;;
    allocate) options="--snapshot --total --currency --share --format --locale --help" ;;
    export)
        if ((COMP_CWORD == 2)); then
            mapfile -t COMPREPLY < <(compgen -W "ledger capital dividends" -- "$word")
            return
        fi
        options="--snapshot --out --locale --help"
        [[ ${COMP_WORDS[2]} == ledger ]] && options+=" --from --to --account --currency --kind --receipt-index"
        ;;
    esac
    if [[ $command == import-plan && $word != -* ]]; then
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    fi
}
complete -F _tallyfold_cli tallyfold-cli
