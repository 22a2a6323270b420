#!/usr/bin/env bash
# completion-test.sh PROGRAM SCRIPT: bash completes just what the program's help names, and files whose
# names have blanks.
set -euo pipefail
program=$(readlink -f "$1")
fail() { echo "FAILED: $*" >&2; exit 1; }
. "$2"
complete_words() { # sets COMPREPLY for the words given, the last one begun
    COMP_WORDS=(dravik-trainer "$@") COMP_CWORD=$#
    _dravik_trainer || true
}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
dravik-trainer() { "$program" "$@"; }
commands=$("$program" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
[ -n "$commands" ] || fail "the help names no commands"
for command in '' $commands; do
    helped=$("$program" $command --help | grep -oE '^  (-h,)?--[a-z-]+' | grep -oE -e '--[a-z-]+' | sort)
    complete_words $command --
    [ "$(printf '%s\n' "${COMPREPLY[@]}" | sort)" = "$helped" ] || fail "${command:-the program} has $helped, completed are ${COMPREPLY[*]}"
done
cd "$work"
touch 'part one.png'
complete_words read pa
[ "${COMPREPLY[*]}" = 'part one.png' ] && [ ${#COMPREPLY[@]} -eq 1 ] || fail "a file with a blank becomes ${COMPREPLY[*]}"
complete_words ''
for command in $commands; do
    [[ " ${COMPREPLY[*]} " == *" $command "* ]] || fail "$command is not completed"
done
complete_words read --theme l
[ "${COMPREPLY[*]}" = light ] || fail "light is completed as ${COMPREPLY[*]}"
echo "Completion: all options, commands and files"
