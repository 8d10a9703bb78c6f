#!/usr/bin/env python3
"""Prints the tables of words that the code holds, or compares them with the manual's.

usage: tools/manual_tables.py            prints each table's name and words
       tools/manual_tables.py --check    tells what stands in only one of code and manual

A table of the manual stands behind a comment "<!-- table: NAME -->"; its words are those in
backticks in the first column.
"""
import pathlib
import re
import sys

SOURCE = pathlib.Path(__file__).resolve().parent.parent
FIRST = r'\{\s*"((?:[^"\\]|\\.)+)"'
# name: file, array, what a row's word is, what stands in front of it in the manual
TABLES = {
    "plot_param": ("tyr/plot/params.cpp", "kWords", r'(?:sets|takes|begins)\("([^"]+)"', ""),
    "dumps": ("tyr/image/image_format.cpp", "kFormats",
              r'\{\w+,\s*"[^"]*",\s*"[^"]*",\s*"([^"]+)"', ""),
    "plot_type": ("tyr/start/convert.cpp", "kPlotTypeWords", FIRST, ""),
    "draw": ("tyr/start/convert.cpp", "kDrawWords", FIRST, ""),
    "file_param": ("tyr/start/convert.cpp", "kFileParamWords", FIRST, ""),
    "flags": ("tyr/start/convert.cpp", "kFlagWords", FIRST, ""),
    "message": ("tyr/base/msg.cpp", "kLevels", FIRST, ""),
    "types": ("tyr/var/type_words.cpp", "kPlotWords", FIRST, ""),
    "ranges": ("tyr/var/time_range.cpp", "kRangeWords", FIRST, ""),
    "levels": ("tyr/var/level.cpp", "kKeywords", FIRST, ""),
    "level_units": ("tyr/var/level.cpp", "kUnits", FIRST, ""),
    "line_styles": ("tyr/plot/attributes.cpp", "kLineStyles", FIRST, ""),
    "fills": ("tyr/plot/attributes.cpp", "kFills", FIRST, ""),
    "markers": ("tyr/plot/attributes.cpp", "kMarkers", FIRST, ""),
    "places": ("tyr/plot/style.cpp", "kPlaces", FIRST, ""),
    "print_colours": ("tyr/gks/colour_table.cpp", "kPrintWords", FIRST, ""),
    "paper": ("tyr/paper/paper.cpp", "kPapers", FIRST, ""),
    "devices": ("tyr/base/device_kind.h", "kDeviceLetters", r"'(\w)'", ""),
    "regions": ("tyr/place/region.cpp", "kBuiltin", FIRST, ""),
    "name_paths": ("tyr/names/name_template.cpp", "kPaths", r"\{'(\w)'", "%"),
    "name_dates": ("tyr/names/name_template.cpp", "kDates", r"\{'(\w)'", "%"),
    "grid_functions": ("tyr/grid_math/grid_function.cpp", "kFunctions", r'\{"(\w+)",\s*GridOp', ""),
    "profile_names": ("programs/profiler/evaluate.cpp", "kNames", FIRST, ""),
    "exit_codes": ("tyr/base/sys.h", "ExitCode", r"kExit\w+ = (\d+)", ""),
}


def body(text, name):
    """What stands between the braces of an array or enumeration."""
    place = re.search(rf"\b{name}(?:\[\])?(?: =)? \{{", text)
    if not place:
        sys.exit(f"no table {name}")
    depth = 0
    for i in range(place.end() - 1, len(text)):
        depth += {"{": 1, "}": -1}.get(text[i], 0)
        if depth == 0:
            return text[place.end():i]
    sys.exit(f"table {name} has no end")


def code_tables():
    tables = {}
    for name, (file, array, row, front) in TABLES.items():
        rows = re.findall(row, body((SOURCE / file).read_text(), array))
        tables[name] = {front + word.replace("\\\\", "\\") for word in rows}
    tables["devices"].add("d")  # what any other letter means
    options = (SOURCE / "tyr/start/option_table.cpp").read_text()
    tables["options"] = {"-" + key for key in re.findall(r'\{kOpt\w+,\s*"(\w+)"', options)}
    forms = "".join(file.read_text() for file in (SOURCE / "tyr/geo/projections").glob("*.cpp"))
    words = re.findall(r"\.words = \{([^}]*)\}", forms) + re.findall(r'named\(\w+, "\w*", (.*)\)', forms)
    tables["projections"] = {w for row in words for w in re.findall(r'"=?(\w+)"', row)}
    return tables


def manual_tables():
    tables = {}
    for file in sorted((SOURCE / "docs/manual").glob("*.md")):
        for name, rows in re.findall(r"<!-- table: (\w+) -->\n\n((?:\|.*\n)+)", file.read_text()):
            words = set()
            for row in rows.splitlines()[2:]:
                cell = re.split(r"(?<!\\)\|", row)[1]
                words |= {w.replace("\\|", "|") for w in re.findall(r"`([^`]+)`", cell)}
            tables.setdefault(name, set()).update(words)
    return tables


def main():
    code = code_tables()
    if sys.argv[1:] != ["--check"]:
        for name, words in sorted(code.items()):
            print(f"{name}: {' '.join(sorted(words))}")
        return 0
    manual = manual_tables()
    wrong = 0
    for name in sorted(code.keys() | manual.keys()):
        for word in sorted(code.get(name, set()) ^ manual.get(name, set())):
            where = "the code" if word in code.get(name, set()) else "the manual"
            print(f"{name}: {word} stands only in {where}")
            wrong += 1
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
