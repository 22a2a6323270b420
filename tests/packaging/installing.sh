# A Wine prefix of its own for a test that installs packages in it, which ends with the test. Sourced.
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
root=$(readlink -f "$here/../..")
scratch=$(mktemp -d)
"$root/tools/wine-prefix.sh" "$scratch/wine"
export WINEPREFIX=$scratch/wine DISPLAY=''
drive=$WINEPREFIX/drive_c
wine() { timeout 120 "$root/tools/wine.sh" "$@"; }
server() { "$(command -v wineserver || echo /usr/lib/wine/wineserver64)" "$1" 2>/dev/null || true; }
finish() { server -k; server -w; rm -rf "$scratch"; }
trap finish EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }
# No command fails in silence.
set -E
trap 'echo "FAILED: line $LINENO: $BASH_COMMAND" >&2' ERR
# msi /i|/x NAME : installs or takes away C:\NAME.msi.
msi() { wine msiexec "$1" "C:\\$2.msi" /qn; }
# The default value of a key of the classes, "" when there is none.
default() { wine reg query "HKLM\\Software\\Classes\\$1" /ve 2>/dev/null | tr -d '\r' | sed -nE 's/.*REG_SZ *//p'; }
