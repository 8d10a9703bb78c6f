#!/usr/bin/env python3
"""Writes the completions of bash, zsh and fish from the option tables that the programs print.

usage: scripts/completions.py BIN_FOLDER [OUT_FOLDER]     (default: completions/)
"""
import pathlib
import subprocess
import sys

# words that an option takes; what isn't here takes file names
WORDS = {
    "message": "none print error warn mess out1 out2 out3 out4 debug",
    "device": "d p q h m i w",
    "plot_type": "cf lcf ln dln ndln value none",
    "draw": "text data sum map none",
    "file_param": "use calc over app",
    "ingestor": "tyr whole split ldm none",
    "region": "us ne at se mw sp nw sw na eur world",
}
# and those that take neither
TEXTS = {
    "hour", "num_hour", "current", "level", "variable", "identifier", "title", "label", "geometry",
    "plot_scale", "con_interval", "con_base", "plot_format", "window_num", "stat_prior", "time",
    "plot_param", "parameter", "background", "plot_domain", "grid_domain",
}


def table(program):
    rows = subprocess.run([program, "--option-table"], check=True, capture_output=True, text=True)
    fields = [line.split("\t") for line in rows.stdout.splitlines()]
    always = [["df", "default", "value", "-df file", "Resource/defaults file name"],
              ["na", "name", "value", "-na name", "Program name"]]
    # a key that stands twice belongs to its first row
    seen = set()
    return [row for row in always + fields if not (row[0] in seen or seen.add(row[0]))]


def takes_text(resource):
    return resource in TEXTS or (resource.startswith("color_") and resource != "color_table")


def quoted(text):
    return "'" + text.replace("'", "'\\''") + "'"


def bash(name, rows):
    keys = " ".join(f"-{row[0]}" for row in rows) + " --help --version"
    lines = [f"# bash completion of {name}; made by scripts/completions.py", f"_{name}()", "{",
             "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}",
             "    case $before in"]
    for key, resource, kind, _, _ in rows:
        if kind == "flag":
            continue
        if resource in WORDS:
            lines.append(f"    -{key}) COMPREPLY=($(compgen -W {quoted(WORDS[resource])} -- \"$word\")); return ;;")
        elif takes_text(resource):
            lines.append(f"    -{key}) COMPREPLY=(); return ;;")
        else:
            lines.append(f"    -{key}) COMPREPLY=($(compgen -f -- \"$word\")); return ;;")
    lines += ["    esac", "    if [[ $word == -* ]]; then",
              f"        COMPREPLY=($(compgen -W {quoted(keys)} -- \"$word\"))", "    else",
              "        COMPREPLY=($(compgen -f -- \"$word\"))", "    fi", "}",
              f"complete -o filenames -F _{name} {name}"]
    return "\n".join(lines) + "\n"


def zsh_text(text):
    for sign in "[]:'":
        text = text.replace(sign, " " if sign == ":" else "" if sign == "'" else "\\" + sign)
    return text


def zsh(name, rows):
    lines = [f"#compdef {name}", "# made by scripts/completions.py", "_arguments \\"]
    for key, resource, kind, _, text in rows:
        if kind == "flag":
            action = ""
        elif resource in WORDS:
            action = f":{resource}:({WORDS[resource]})"
        elif takes_text(resource):
            action = f":{resource}:"
        else:
            action = f":{resource}:_files"
        lines.append(f"    '-{key}[{zsh_text(text)}]{action}' \\")
    lines += ["    '--help[Print the help]' \\", "    '--version[Print the version]' \\",
              "    '*:file:_files'"]
    return "\n".join(lines) + "\n"


def fish(name, rows):
    lines = [f"# fish completion of {name}; made by scripts/completions.py"]
    for key, resource, kind, _, text in rows:
        line = f"complete -c {name} -o {key} -d {quoted(text)}"
        if kind == "value":
            if resource in WORDS:
                line += f" -x -a {quoted(WORDS[resource])}"
            elif takes_text(resource):
                line += " -x"
            else:
                line += " -r"
        lines.append(line)
    lines += [f"complete -c {name} -l help -d 'Print the help'",
              f"complete -c {name} -l version -d 'Print the version'"]
    return "\n".join(lines) + "\n"


def main():
    source = pathlib.Path(__file__).resolve().parent.parent
    out = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else source / "completions"
    for folder in sorted((source / "programs").iterdir()):
        program = pathlib.Path(sys.argv[1]) / folder.name
        if not program.exists():
            continue
        rows = table(program)
        for kind, file, make in [("bash", folder.name, bash), ("zsh", "_" + folder.name, zsh),
                                 ("fish", folder.name + ".fish", fish)]:
            (out / kind).mkdir(parents=True, exist_ok=True)
            (out / kind / file).write_text(make(folder.name, rows))


if __name__ == "__main__":
    main()
