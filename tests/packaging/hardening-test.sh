#!/usr/bin/env bash
# hardening-test.sh FILE... : the made programs and libraries are hardened as cmake/Hardening.cmake asks for.
set -euo pipefail
fail() { echo "FAILED: $file: $*" >&2; exit 1; }
[ $# -gt 0 ] || { echo "usage: hardening-test.sh FILE..." >&2; exit 2; }

check_elf() {
    local header segments dynamic symbols
    header=$(readelf -hW "$file") segments=$(readelf -lW "$file") dynamic=$(readelf -dW "$file") symbols=$(readelf --dyn-syms -W "$file")
    grep -qE 'Type: +DYN' <<<"$header" && grep -qE 'FLAGS_1.*PIE|\(SONAME\)' <<<"$dynamic" || fail "is not position independent"
    grep -q GNU_RELRO <<<"$segments" && grep -qE 'FLAGS.*NOW' <<<"$dynamic" || fail "its relocated data stays writable"
    grep -E 'GNU_STACK' <<<"$segments" | grep -q 'RW ' || fail "its stack is executable"
    grep -q '__stack_chk_fail' <<<"$symbols" || fail "has no stack protector"
    grep -qE '__(mem|str|s?n?printf|read|longjmp)[a-z_]*_chk' <<<"$symbols" || fail "is not built with _FORTIFY_SOURCE"
    grep -q '__glibcxx_assert_fail' <<<"$symbols" || fail "is not built with _GLIBCXX_ASSERTIONS"
    if grep -q 'X86-64' <<<"$header"; then
        # The linker drops the note of it, since Debian's start-up code has none; the functions begin with a landing instruction.
        [ "$(objdump -d -j .text "$file" | grep -c endbr64)" -gt 1000 ] || fail "is not built with -fcf-protection"
    fi
}
check_pe() {
    local headers=$1 flag foreign
    for flag in DYNAMIC_BASE NX_COMPAT $(if grep -q 'pei-x86-64' <<<"$headers"; then echo HIGH_ENTROPY_VA; fi); do
        grep -q "^\s*$flag\$" <<<"$headers" || fail "lacks $flag"
    done
    # Of these Windows takes its own whatever lies beside the program, of COMCTL32 by the manifest; others are looked for there first.
    foreign=$(sed -nE 's/^\s*DLL Name: (\S+)/\1/p' <<<"$headers" |
        grep -ivxE '(advapi32|comctl32|comdlg32|gdi32|imm32|kernel32|msvcrt|ole32|oleaut32|shell32|shlwapi|user32)\.dll' | tr '\n' ' ' || true)
    [ -z "$foreign" ] || fail "loads $foreign from beside it"
    # What has no relocations stays where it is linked whatever the header says.
    grep -qE 'Entry 5 [0-9a-f]+ 0*[1-9a-f][0-9a-f]* Base Relocation' <<<"$headers" || fail "has no relocations"
}
for file; do
    if readelf -hW "$file" >/dev/null 2>&1; then
        check_elf
    else
        headers=$(x86_64-w64-mingw32-objdump -p "$file") || fail "is neither an ELF nor a PE file"
        check_pe "$headers"
    fi
done
echo "Hardened: $(for file; do basename "$file"; done | tr '\n' ' ')"
