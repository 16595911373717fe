# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Completion of bgpdt for bash, to be sourced. The tool itself tells what may stand where.

_bgpdt()
{
    local word words=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
        [ "$word" = "=" ] || words+=("$word") # bash makes words of "--option=value"
    done
    word=${COMP_WORDS[COMP_CWORD]}
    [ "$word" != "=" ] || words+=("")
    mapfile -t COMPREPLY < <("${1/#\~\//$HOME/}" complete -- "${words[@]}" 2>/dev/null)
    if [ "${COMPREPLY[*]}" = :file ]; then
        compopt -o filenames 2>/dev/null # outside of a completion there is nothing to set
        mapfile -t COMPREPLY < <(compgen -f -- "${word#=}")
    fi
}
complete -F _bgpdt bgpdt
