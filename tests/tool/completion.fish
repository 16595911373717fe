# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
# completion.fish BGPDT COMPLETIONS: what fish offers behind the beginning of a command line, and what it says of it.
set -gx PATH (dirname $argv[1]) $PATH
set -g fish_complete_path $argv[2]
set -g tried 0
set -g failed 0

# expect LINE OFFER...: these and no others, a description behind a tab
function expect
    set -l offered (complete -C $argv[1] | sort)
    set -g tried (math $tried + 1)
    if test "$offered" != "$argv[2..-1]"
        echo "'$argv[1]' must offer" $argv[2..-1] "and offers" $offered
        set -g failed (math $failed + 1)
    end
end

set -l folder (mktemp -d)
cd $folder
touch 'file of lines.txt' script.lua
expect 'bgpdt expl' explain\t"The value's bytes, and what each field of them is"
expect 'bgpdt describe BOLRD ' RT\t"VPLS route distinguisher"
expect 'bgpdt convert VRFRD --as-format ' as-written dotted plain
expect 'bgpdt describe largec' LARGECOMMUNITY\t"large community"
expect 'bgpdt sort --uni' --unique\t"Of equal values the first alone"
expect 'bgpdt convert VRFRD --to js' json
expect 'bgpdt explain --color=al' --color=always
expect 'bgpdt convert VRFRD file\ of' 'file of lines.txt'
expect 'bgpdt lua scr' script.lua
expect 'bgpdt sort VRFRD --names=scr' --names=script.lua
cd /
rm -r $folder
test $failed -eq 0; and echo "$tried completions by fish"
exit $failed
