# SPDX-License-Identifier: MIT
# Completion of qel for bash.

_qel()
{
    local cur prev words cword
    _init_completion -s || return

    case $prev in
        --snapshot)
            _filedir png
            return
            ;;
        --after | --samples | --interval | --set-delay | --set-history)
            return
            ;;
    esac

    local options='--snapshot --read --set-delay --set-history --quit --help --version' word
    for word in "${words[@]:1:cword-1}"; do
        case $word in
            --snapshot*) options='--after' ;;
            --read) options='--samples --interval --json' ;;
            --set-* | --quit) options='--set-delay --set-history --quit' ;;
            --help | --version) options= ;;
            *) continue ;;
        esac
        break
    done
    COMPREPLY=($(compgen -W "$options" -- "$cur"))
} &&
    complete -F _qel qel
