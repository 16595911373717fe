# SPDX-License-Identifier: Apache-2.0
# Completion of bgpdt for fish, in a folder of $fish_complete_path. The tool itself tells what may stand where.

function __bgpdt_candidates
    set -l words (commandline -opc) (commandline -ct)
    set -l candidates ($words[1] complete --descriptions -- $words[2..-1] 2>/dev/null)
    if test "$candidates" = :file
        __fish_complete_path (commandline -ct)
    else
        string join \n -- $candidates
    end
end

complete -c bgpdt -f -a '(__bgpdt_candidates)'
