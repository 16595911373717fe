# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# Completion of bgpdt for fish, in a folder of $fish_complete_path. The tool itself tells what may stand where.

function __bgpdt_candidates
    set -l token (commandline -ct)
    set -l words (commandline -opc) $token
    set -l candidates ($words[1] complete --descriptions -- $words[2..-1] 2>/dev/null)
    if test "$candidates" = :file
        # A file's name may stand behind an option's, "--names=FILE".
        set -l option (string match -r -- '^(?:--[a-z-]+=)?' "$token")
        set -l path (string replace -- "$option" '' "$token")
        string join \n -- $option(complete -C "'' $path")
    else
        string join \n -- $candidates
    end
end

complete -c bgpdt -f -a '(__bgpdt_candidates)'
