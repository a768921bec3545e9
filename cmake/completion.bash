# bash completion for twinleaf: its options, folders and files.
_twinleaf()
{
    local cur prev words cword split
    _init_completion || return
    local word
    for word in "${words[@]:1:cword-1}"; do
        if [[ $word == -- ]]; then # names follow, whatever they begin with
            _filedir
            return
        fi
    done
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '--help --version' -- "$cur")
        return
    fi
    _filedir
} && complete -F _twinleaf twinleaf
