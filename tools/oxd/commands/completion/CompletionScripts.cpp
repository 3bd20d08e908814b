#include "oxd/commands/completion/CompletionScripts.h"

namespace oxd {

namespace {

// Words come as they stand, with what quotes them; candidates have to be quoted.
constexpr std::string_view bash = R"shell(# Completion of oxd for bash
_oxd() {
    local word
    local -a words=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD}"; do
        words+=("${word//[\\\"\']/}")
    done
    COMPREPLY=()
    while IFS=$'\t' read -r word _; do
        COMPREPLY+=("$(printf '%q' "$word")")
    done < <("${COMP_WORDS[0]}" complete -- "${words[@]}" 2>/dev/null)
}
complete -o bashdefault -o default -F _oxd oxd
)shell";

constexpr std::string_view zsh = R"shell(#compdef oxd
# Completion of oxd for zsh
_oxd() {
    local line
    local -a found
    for line in "${(@f)$("$words[1]" complete -- "${(@Q)words[2,CURRENT]}" 2>/dev/null)}"; do
        [[ -n $line ]] && found+=("${${line%%$'\t'*}//:/\\:}:${line#*$'\t'}")
    done
    if (($#found)); then
        _describe oxd found
    else
        _files
    fi
}
if [[ $funcstack[1] == _oxd ]]; then
    _oxd "$@"
else
    compdef _oxd oxd
fi
)shell";

constexpr std::string_view fish = R"shell(# Completion of oxd for fish
function __oxd_candidates
    set --local words (commandline --tokenize --cut-at-cursor --current-process)
    set --local word (commandline --cut-at-cursor --current-token)
    oxd complete -- $words[2..] "$word" 2>/dev/null
end
complete --command oxd --arguments '(__oxd_candidates)'
)shell";

} // namespace

const std::array<CompletionScript, 3> completionScripts{{{"bash", "source <(oxd completion bash)", bash},
                                                         {"zsh", "source <(oxd completion zsh), behind compinit", zsh},
                                                         {"fish", "oxd completion fish | source", fish}}};

} // namespace oxd
