# The program itself knows what may stand there.
function __heedbanner_candidates
    set -l words (commandline -opc) (commandline -ct)
    $words[1] --complete $words[2..-1] 2>/dev/null
end
# Where it has nothing to offer, files are meant.
function __heedbanner_offers
    test (count (__heedbanner_candidates)) -gt 0
end
complete -c heedbanner -n __heedbanner_offers -f -a '(__heedbanner_candidates)'
