#!/usr/bin/python3
"""Makes data/grib2_var.lup from the WMO's code table 4.2 as Debian's package libeccodes-data has it.

Run from the root of the checkout:  tools/make_grib_table.py > data/grib2_var.lup
Names are those of data/variable.lup where it has the triplet, else the short names of the package.
"""
import re
import sys
from pathlib import Path

DEFINITIONS = Path("/usr/share/eccodes/definitions/grib2")
VERSION = "29"  # of the master table
HEAD = """\
# Variables of GRIB edition 2: centre (0: any) discipline category number name unit description
# Made by tools/make_grib_table.py from code table 4.2 of the WMO Manual on Codes (WMO-No. 306,
# Volume I.2), master table version %s. Don't edit.
"""


def our_names():
    names = {}
    for line in Path("data/variable.lup").read_text().splitlines():
        match = re.match(r"\d+,(\d+),(\d+),(\d+) (\S+)", line)
        if match:
            names.setdefault(tuple(int(n) for n in match.groups()[:3]), match.group(4))
    return names


def short_names():
    """Short names that a discipline, a category and a number alone stand for."""
    names = {}
    text = (DEFINITIONS / "shortName.def").read_text()
    for name, body in re.findall(r"'(\S+)' = \{(.*?)\}", text, re.S):
        keys = dict(re.findall(r"(\w+) = (\S+) ;", body))
        if sorted(keys) == ["discipline", "parameterCategory", "parameterNumber"]:
            triplet = tuple(int(keys[k]) for k in sorted(keys))
            names.setdefault(triplet, name)
    return names


def unit_text(unit):
    """"kg m-2 s-1" as "kg/m^2/s"; "-" for none."""
    if unit.lower() in ("numeric", "proportion", "fraction", "version"):
        return "-"
    if unit == "degree true":
        return "deg"
    over, under = [], []
    # "m/s" and "/s" stand beside "m s-1" and "s-1"
    unit = re.sub(r"/([A-Za-z]+)(\d*)$", lambda m: " %s-%s" % (m.group(1), m.group(2) or "1"), unit)
    for word in unit.split():
        match = re.fullmatch(r"([A-Za-z%]+)\^?(-?)(\d*)", word)
        if not match:
            return "-"
        base, sign, power = match.groups()
        (under if sign else over).append(base + ("^" + power if power not in ("", "1") else ""))
    text = "*".join(over) or "1"
    return "/".join([text] + under) if over or under else "-"


def rows():
    ours, short = our_names(), short_names()
    for path in sorted((DEFINITIONS / "tables" / VERSION).glob("4.2.*.table"),
                       key=lambda p: [int(n) for n in p.name.split(".")[2:4]]):
        discipline, category = (int(n) for n in path.name.split(".")[2:4])
        for line in path.read_text(errors="replace").splitlines():
            match = re.match(r"(\d+) (\S+) (.*)", line)
            if not match or int(match.group(1)) > 191 or match.group(3).startswith("Reserved"):
                continue
            number, text = int(match.group(1)), match.group(3).strip()
            unit = "-"
            found = re.fullmatch(r"(.*?)\s*\(([^()]*)\)", text)
            if found:
                text, unit = found.group(1), unit_text(found.group(2))
            triplet = (discipline, category, number)
            name = ours.get(triplet) or short.get(triplet) or "p%d_%d_%d" % triplet
            if text and number != 255:
                yield "0 %d %d %d %s %s %s" % (*triplet, name[:19], unit[:29], text[:79])


if __name__ == "__main__":
    sys.stdout.write(HEAD % VERSION)
    for row in rows():
        print(row)
