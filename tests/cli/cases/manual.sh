# The manual page and the completion for bash know every option.
share=$(dirname "$cli")/../share
page=$share/man/man1/tavrin-cli.1
for command in '' batch; do
    "$cli" $command --help | grep -oE '^ +(-.,)?--[a-z-]+' | grep -oE -e '--.*' >options
    echo "${command:-tavrin-cli} has many options: $(($(wc -l <options) > 5))"
    while read -r option; do
        grep -qF -- "\\fB${option//-/\\-}\\fR" "$page" || echo "$option is missing"
    done <options
done
grep '^\.S[HS]' "$page"
grep "^[.']" "$page" | grep -vE '^\.(TH|SH|SS|TP|nf|fi|br)( |$)' || echo "no text is taken for a command"

image clash 'two words.exr'
ln -s "$cli" tavrin-cli
export HOME=$PWD completion=$share/bash-completion/completions/tavrin-cli
bash -u <<'BASH'
source "$completion"
# Works only within the shell's own completion.
compopt() {
    echo "compopt $*"
}
complete_words() {
    COMP_WORDS=(./tavrin-cli "$@")
    COMP_CWORD=$#
    printf '%s>\n' "$*"
    _tavrin_cli
    [[ ${#COMPREPLY[@]} == 0 ]] || printf '    [%s]\n' "${COMPREPLY[@]}"
}
complete_words ''
complete_words b
complete_words --list
complete_words --no
complete_words --output ''
complete_words --denoise ''
complete_words --denoise = n
complete_words --progress = 
complete_words --threads ''
complete_words --preset A
complete_words --preset 'Black\ a'
complete_words --preset '"Black a'
complete_words --set bloomI
complete_words --set bloomGlareEnabled =
complete_words --set = denoiseMode = N
complete_words --set bloomIntensity = 1
complete_words --format-option ''
complete_words --format-option bitdepth = 1
complete_words --format-option = compression = z
complete_words --output = a = b
complete_words -o 'two\ words.exr' --element ''
complete_words 'two\ words.exr' --element ''
complete_words "~/'two words.exr'" --element '"a/'
complete_words batch ''
complete_words batch jobs.json -
complete_words batch --progress ''
complete -p tavrin-cli
BASH
