#!/usr/bin/env python3
"""Makes the man pages and the completion for bash from what `kestrel help` says of the commands.

Usage: documents.py KESTREL CHANGELOG FOLDER
    KESTREL    the program, built
    CHANGELOG  its first heading has the version and the day: "## 1.0.0 (2026-11-23)"
    FOLDER     gets man1/*.1 and the completion, `kestrel`
"""
import os
import re
import subprocess
import sys
from pathlib import Path

FILES = """.SH FILES
.TP
.I ~/.config/kestrel/settings.json
The settings of the desktop program.
.TP
.IB LIBRARY .backup
The library as it was before the last session; beside it
.BR .backup.change " and " .backup.deletion
as it was before values were replaced and data sets deleted.
"""


def ask(program, *words):
    answer = subprocess.run([program, "help", *words], capture_output=True, text=True, check=True,
                            env={**os.environ, "LC_ALL": "C.UTF-8"})
    return answer.stdout.splitlines()


def roff(text):
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq")
    return re.sub(r"^\.", r"\\&.", text)


class Command:
    def __init__(self, program, name, purpose):
        self.name, self.purpose = name, purpose
        lines = ask(program, name)
        end = lines.index(purpose + ".")
        self.usage = " ".join(line.strip() for line in lines[:end])
        self.details = [line for line in lines[end + 1:] if not line.startswith("  ")]
        self.options = []
        for line in lines[end + 1:]:
            if line.startswith("  --"):
                # An option too long for its column has its text a single blank behind.
                option, text = re.match(r"(--\S+(?: \S+(?= ))?(?=  )|--\S+ \S+)(.*)", line.strip()).groups()
                self.options.append([option, text.strip()])
            elif line.startswith("  "):
                self.options[-1][1] = f"{self.options[-1][1]} {line.strip()}".strip()

    def choices(self, option):
        found = re.search(rf"{re.escape(option)} ([a-z]+(?:\|[a-z]+)+)", self.usage)
        return found.group(1).split("|") if found else []


def title(name, version, day):
    return f'.TH {name.upper()} 1 "{day}" "Kestrel {version}" "Kestrel"\n.nh\n.ad l\n'


def page_of(command, version, day, status):
    page = title("kestrel\\-" + command.name, version, day)
    page += f".SH NAME\nkestrel\\-{command.name} \\- {roff(command.purpose)}\n"
    usage = re.sub(r"(--\w+) ([^\s\]]+)", r"\1\0\2", command.usage)  # an option and its value stay together
    page += ".SH SYNOPSIS\n.B " + roff(usage).replace("\0", "\\ ") + "\n"
    if command.details:
        page += ".SH DESCRIPTION\n" + "".join(roff(line) + "\n" for line in command.details)
    if command.options:
        page += ".SH OPTIONS\n"
        for option, text in command.options:
            page += f".TP\n.B {roff(option)}\n{roff(text)}\n"
    return page + f'.SH "EXIT STATUS"\n{status}.SH "SEE ALSO"\n.BR kestrel (1)\n'


def main_page(commands, start, version, day, status):
    page = title("kestrel", version, day)
    page += ".SH NAME\nkestrel \\- statistical process control for measured characteristics\n"
    page += ".SH SYNOPSIS\n.B kestrel\n.RI [ FILE ]\n.br\n.B kestrel\n.IR COMMAND \" [\" WORD ...]\n"
    page += ".SH DESCRIPTION\nWithout a command: " + roff(start) + ", on the library\n.I FILE\nor on the last one.\n"
    page += "The commands serve scripts and nightly jobs and need no display.\n.SH COMMANDS\n"
    for command in commands:
        page += f".TP\n.BR kestrel\\-{command.name} (1)\n{roff(command.purpose)}\n"
    page += f'.SH "EXIT STATUS"\n{status}' + FILES
    pages = ", ".join(f"kestrel\\-{command.name} (1)" for command in commands[:1])
    return page + f'.SH "SEE ALSO"\n.BR {pages}\nand the manual in the program (F1).\n'


def completion(commands):
    cases = ""
    for command in commands:
        options = " ".join(option.split()[0] for option, _ in command.options)
        cases += f"    {command.name}) options='{options}' ;;\n"
    values = ""
    for command in commands:
        for option, _ in command.options:
            if words := command.choices(option.split()[0]):
                values += f"    {command.name}:{option.split()[0]}) values='{' '.join(words)}' ;;\n"
    names = " ".join(command.name for command in commands)
    return f"""# Completion of the command line of Kestrel, for bash.
_kestrel() {{
  local word=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}} options= values=
  if ((COMP_CWORD == 1)); then
    mapfile -t COMPREPLY < <(compgen -W '{names} help --version' -- "$word"; compgen -f -- "$word")
    return
  fi
  case ${{COMP_WORDS[1]}} in
    help) values='{names}' ;;
{cases}  esac
  case ${{COMP_WORDS[1]}}:$before in
{values}  esac
  if [[ -n $values ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$values" -- "$word")
  elif [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
  else
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}}
complete -o filenames -F _kestrel kestrel
"""


def main():
    program, changelog, folder = sys.argv[1], Path(sys.argv[2]), Path(sys.argv[3])
    heading = re.search(r"^## (\S+) \((\d{4}-\d\d-\d\d)\)", changelog.read_text(), re.M)
    if not heading:
        sys.exit(f"{changelog}: no heading like \"## 1.0.0 (2026-11-23)\"")
    version, day = heading.groups()
    overview = ask(program)
    listed = [re.match(r"  kestrel (\S+) +(.*)", line) for line in overview]
    listed = [match.groups() for match in listed if match]
    commands = [Command(program, name, purpose) for name, purpose in listed if not name.startswith("[")]
    start = next(purpose for name, purpose in listed if name.startswith("["))
    status = " ".join(overview[[line.startswith("Exit status:") for line in overview].index(True):])
    status = roff(status.removeprefix("Exit status: ")) + "\n"
    (folder / "man1").mkdir(parents=True, exist_ok=True)
    (folder / "man1/kestrel.1").write_text(main_page(commands, start, version, day, status))
    for command in commands:
        (folder / f"man1/kestrel-{command.name}.1").write_text(page_of(command, version, day, status))
    (folder / "kestrel").write_text(completion(commands))


main()
