"""What bash, zsh and fish offer at a Tab. Arguments: cwt, the folder of the shells' scripts.

Each shell loads its script and completes the same lines itself.
"""
import os
import pty
import re
import select
import shlex
import subprocess
import sys
import tempfile
import time
from pathlib import Path

# A line, what is offered for its last word, all or among others, and what is not.
ALL, AMONG = "all", "among"
CASES = [
    ("cwt ra", ALL, ["rate"], []),
    ("cwt ", AMONG, ["rate", "batch", "build", "sample"], ["complete", "first.json"]),
    ("cwt --", ALL, ["--help", "--version"], []),
    ("cwt help ra", ALL, ["rate"], []),
    ("cwt message 11", ALL, ["113", "114", "118", "119"], []),
    ("cwt rate --re", ALL, ["--record", "--request-code"], []),
    ("cwt rate --record --", AMONG, ["--data", "--set"], ["--record", "--json", "--explain"]),
    ("cwt build --new tariff --", AMONG, ["--help"], ["--fields", "--force"]),
    ("cwt batch rows.csv --to ", ALL, ["ndjson", "csv", "sqlite"], []),
    ("cwt batch rows.csv --to=s", ALL, ["sqlite"], []),
    ("cwt sample --size c", ALL, ["carrier"], []),
    ("cwt profiles --data data N", ALL, ["Northeast"], []),
    ("cwt profiles --data=data ", ALL, ["Default", "Northeast"], []),
    ("cwt profiles --data ~/data N", ALL, ["Northeast"], []),
    ("cwt profiles --data nowhere ", ALL, [], []),
    ("cwt rate --data 'two words' --set ", ALL, ["OTHER", "SAMPLE"], []),
    ("cwt inspect data --set ", ALL, ["SAMPLE"], []),
    ("cwt rate data/shipments/x.json --set ", ALL, ["SAMPLE"], []),
    ("cwt batch -odata/x.csv rows.csv --t", ALL, ["--timeout", "--to"], []),
    ("cwt batch rows.csv --pass a --pas", ALL, ["--pass"], []),
    ("cwt rate --request-code 7 f", ALL, ["first.json"], []),
    ("cwt batch ro", ALL, ["rows.csv"], []),
    ("cwt rate --data da", ALL, ["data/"], []),
    ("cwt check --data=da", ALL, ["data/"], []),
    ("cwt rate -- --", ALL, [], []),
    ("cwt nothing ", ALL, [], []),
]

BASH = r"""
. /usr/share/bash-completion/bash_completion
. "$1"/cwt.bash
while IFS= read -r line; do
    # As readline breaks words: at blanks outside of quotes, and around =.
    mapfile -t COMP_WORDS < <(grep -oE "('[^']*'|[^ =])+|=" <<<"$line")
    [[ $line == *[\ =] ]] && COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1)) COMP_LINE=$line COMP_POINT=${#line} COMPREPLY=()
    _cwt cwt 2>/dev/null
    printf '%s\n' "${COMPREPLY[@]}" '-- end'
done
"""

FISH = r"""
source $argv[1]/cwt.fish
while read -l line
    complete -C $line
    echo '-- end'
end
"""

# zsh completes in its line editor alone, where each match is told as it is added.
ZSH = r"""
PS1= ; unset zle_bracketed_paste; unsetopt prompt_cr prompt_sp beep
fpath=("$scripts" $fpath)
autoload -Uz compinit; compinit -u -D
zstyle ':completion:*' insert-tab false
zstyle ':completion:*' list-separator ''
bindkey '^I' complete-word
compadd() {
    local -a matches
    if [[ " ${@[1,(i)(-|--)]} " == *' -'[OAD]' '* ]]; then builtin compadd "$@"; return; fi
    builtin compadd -O matches "$@"
    (( $#matches )) && print -lr -- @${^matches}
    builtin compadd "$@"
}
tell_begin() { print -r -- '@-- begin'; compprefuncs=(tell_begin) }
tell_end() { print -r -- '@-- end'; compstate[insert]= compstate[list]= comppostfuncs=(tell_end) }
compprefuncs=(tell_begin) comppostfuncs=(tell_end)
print -r -- READY$((1))
"""


def run_at_once(shell, script, scripts, lines):
    """What a shell that takes a line after the other offers for each."""
    answer = subprocess.run([*shell, script, *scripts], input="\n".join(lines) + "\n", text=True,
                            capture_output=True, check=True, timeout=120).stdout
    return [part.splitlines() for part in answer.split("-- end\n")[:-1]]


def complete_in_bash(scripts, lines):
    return run_at_once(["bash", "--norc", "-c"], BASH, ["bash", scripts], lines)


def complete_in_fish(scripts, lines):
    offers = run_at_once(["fish", "--no-config", "-c"], FISH, [scripts], lines)
    return [[offer.split("\t")[0] for offer in of_line] for of_line in offers]


def read_until(terminal, mark):
    text, end = "", time.monotonic() + 60
    while mark not in text:
        if not select.select([terminal], [], [], max(0, end - time.monotonic()))[0]:
            raise TimeoutError(f"zsh does not answer: {text}")
        text += os.read(terminal, 65536).decode()
    return text


def complete_in_zsh(scripts, lines):
    process, terminal = pty.fork()
    if process == 0:
        os.environ.update(TERM="dumb", scripts=scripts)
        os.execvp("zsh", ["zsh", "-f", "-i"])
    Path("setup.zsh").write_text(ZSH, encoding="utf-8")
    os.write(terminal, b". ./setup.zsh\n")
    read_until(terminal, "READY1")
    offers = []
    for line in lines:
        os.write(terminal, f"{line}\t".encode())
        answer = read_until(terminal, "@-- end").split("@-- begin")[1]
        offers.append([each.strip() for each in re.findall("@([^@\r\n]+)", answer)][:-1])
        os.write(terminal, b"\x15")
    os.write(terminal, b"exit\n")
    os.waitpid(process, 0)
    return offers


def plain(offers):
    """Without what a shell puts around an offer: quotes, an option's name, a folder's slash."""
    words = [shlex.split(offer) for offer in offers]
    return sorted({re.sub("^--[^=]*=", "", word[0]) for word in words if word})


def faults_of(shell, offers):
    for (line, how, wanted, unwanted), of_line in zip(CASES, offers, strict=True):
        found = [offer.rstrip("/") for offer in plain(of_line)]
        named = sorted(offer.rstrip("/") for offer in wanted)
        if how == ALL and found != named:
            yield f"{shell}: {line}: {found} and not {named}"
        for offer in named:
            if offer not in found:
                yield f"{shell}: {line}: no {offer}"
        for offer in unwanted:
            if offer in found:
                yield f"{shell}: {line}: {offer}"


def main(cwt, scripts):
    with tempfile.TemporaryDirectory() as folder:
        home = Path(folder)
        subprocess.run([cwt, "sample", home / "data"], check=True)
        (home / "two words").mkdir()
        for name in ("SAMPLE.SET", "OTHER.SET"):
            (home / "two words" / name).write_bytes(b"")
        for name in ("first.json", "rows.csv", "file.txt", "rough.txt"):
            (home / name).write_text("", encoding="utf-8")
        completions = home / "completions"
        completions.mkdir()
        for script, name in (("bash", "cwt.bash"), ("zsh", "_cwt"), ("fish", "cwt.fish")):
            (completions / name).symlink_to(Path(scripts, f"cwt.{script}").resolve())
        os.environ.update(HOME=folder, PATH=f"{Path(cwt).resolve().parent}:{os.environ['PATH']}",
                          XDG_CONFIG_HOME=f"{folder}/.config", LC_ALL="C.UTF-8")
        os.chdir(home)
        lines = [case[0] for case in CASES]
        faults = []
        for shell, complete in (("bash", complete_in_bash), ("zsh", complete_in_zsh),
                                ("fish", complete_in_fish)):
            faults += faults_of(shell, complete(str(completions), lines))
    print("\n".join(faults) or f"{len(CASES)} lines in three shells")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
