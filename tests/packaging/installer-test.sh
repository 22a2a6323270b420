#!/usr/bin/env bash
# installer-test.sh MSI: installs the 64-bit package in a new Wine prefix, uses what it installed, takes it away again and
# compares the registry and the folders with what was there before. Then the same with an interface that a job system has
# registered already.
set -euo pipefail
. "$(dirname "$(readlink -f "$0")")/installing.sh"

programs="$drive/Program Files"
interface='{5536B3D3-C530-11D3-B4D9-00609769E417}'
cp "$1" "$drive/dravik.msi"

classes() {
    wine reg export 'HKLM\Software\Classes' 'C:\classes.reg' /y >/dev/null
    # The installer's own lists stay, empty.
    tr -d '\0\r' <"$drive/classes.reg" | grep -avxE '(\[HKEY_LOCAL_MACHINE\\Software\\Classes\\Installer(\\(Features|Products|UpgradeCodes))?\])?'
    wine reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall' | tr -d '\r'
}
files() { (cd "$drive" && find 'Program Files' ProgramData users -not -path '*/Temp/*' | sort); }
install() { msi /i dravik || fail "msiexec /i ends with $?"; }
uninstall() { msi /x dravik || fail "msiexec /x ends with $?"; }
same() { diff "$scratch/$1.before" "$scratch/$1.after" >"$scratch/$1.diff" || { head -40 "$scratch/$1.diff" >&2; fail "$1 are not what they were"; }; }

# The script host enters itself when it is first used.
echo 'WScript.Echo "ready"' >"$drive/first.vbs"
wine cscript //nologo 'C:\first.vbs' >/dev/null
classes >"$scratch/classes.before"
files >"$scratch/files.before"
install
for file in DravikDlg.ocx DravikTrainer.exe DravikToolCheck.exe contract/DravikLib.idl contract/DravikLib.tlb docs/host-integrators-guide.html docs/images/reading.png library/dravik-0.dll library/dravik/dravik.h \
    docs/samples/learn-and-read.vbs; do
    [ -s "$programs/Dravik/$file" ] || fail "$file is not installed"
done
[ "$(default 'CLSID\{5F056630-CDF2-479E-9EC4-3A9E7A82A96A}\InprocServer32')" = 'C:\Program Files\Dravik\DravikDlg.ocx' ] || fail "the control's path"
[ "$(default 'TypeLib\{C3975B05-1E7B-44D3-8653-3DDB24C5FF4E}\1.0\0\win64')" = 'C:\Program Files\Dravik\DravikDlg.ocx\1' ] || fail "the type library's path"
[ "$(default "Interface\\$interface\\TypeLib")" = '{A7230994-BF7A-423D-B658-CCF37FD7E6A8}' ] || fail "the tool's interface"

cat >"$drive/uses.vbs" <<'VBS'
Dim control, tool
Set tool = CreateObject("Dravik.EmbeddedStep")
tool.JobsFolder = "C:\installer-test"
tool.CreateFont "first"
Set control = CreateObject("DravikDlgLib.DravikDlg")
Set control.Step = tool
WScript.Echo TypeName(tool) & " " & control.Step.ProgId & " " & control.FontTrainDate("none")
VBS
said=$(wine cscript //nologo 'C:\uses.vbs' | tr -d '\r')
[ "$said" = 'IEmbeddedStep Step.DravikTool.1 unknown' ] || fail "the script said: $said"
wine 'C:\Program Files\Dravik\DravikToolCheck.exe' Dravik.EmbeddedStep >"$scratch/check" || { cat "$scratch/check" >&2; fail "the contract check"; }
rm -rf "$drive/installer-test"

# A double click on a font file shows that font: the program keeps its name beside the fonts.
cat >"$drive/click.vbs" <<'VBS'
Set tool = CreateObject("Dravik.EmbeddedStep")
tool.CreateFont "clicked twice"
tool.SaveFont "clicked twice"
tool.CreateFont "other"
tool.SaveFont "other"
CreateObject("WScript.Shell").Run """C:\Tamlux\Jobs\Fonts\clicked twice.nnd"""
VBS
click() {
    wine cscript //nologo 'C:\click.vbs' >/dev/null
    for second in $(seq 60); do
        [ "$(cat "$drive/Tamlux/Jobs/selected_font.txt")" = other ] || break
        sleep 1
    done
    wine taskkill /f /im DravikTrainer.exe >/dev/null
}
# The program's window needs a display, and a server that has one from its start.
server -k
server -w
export root drive
xvfb-run -a bash -euc "$(declare -f wine click); click" || fail "the font cannot be opened"
server -k
server -w
shown=$(cat "$drive/Tamlux/Jobs/selected_font.txt")
[ "$shown" = 'clicked twice' ] || fail "the font opened is not shown, but $shown"
rm -rf "$drive/Tamlux/Jobs/Fonts" "$drive/Tamlux/Jobs"/*.*

uninstall
classes >"$scratch/classes.after"
files >"$scratch/files.after"
same classes
same files

wine reg add "HKLM\\Software\\Classes\\Interface\\$interface\\TypeLib" /ve /d '{AAAAAAAA-0000-0000-0000-000000000001}' /f >/dev/null
classes >"$scratch/classes.before"
install
[ "$(default "Interface\\$interface\\TypeLib")" = '{AAAAAAAA-0000-0000-0000-000000000001}' ] || fail "another library's interface was taken over"
[ "$(default 'Dravik.EmbeddedStep\CurVer')" = Dravik.EmbeddedStep.1 ] || fail "not installed beside another library's interface"
uninstall
classes >"$scratch/classes.after"
same classes
echo "Installed, used and taken away: $(basename "$1")"
