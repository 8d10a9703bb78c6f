#!/usr/bin/env python3
"""Turns the tables of a Markdown page into definition lists, which a terminal of any width shows."""
import re
import sys


def cells(row):
    return [cell.strip().replace("\\|", "|") for cell in re.split(r"(?<!\\)\|", row)[1:-1]]


def listed(rows):
    head = cells(rows[0])
    for row in rows[2:]:
        first, *rest = cells(row)
        term = f"{first} {rest.pop(0)}".strip() if len(rest) > 1 and head[0] == "Option" else first
        *middle, last = rest
        names = head[len(head) - len(rest):-1]
        notes = ", ".join(f"{name.lower()} {cell}" for name, cell in zip(names, middle) if cell)
        text = f"{last} ({notes})" if notes and names[0] in ("Resource", "Unit") else ", ".join(filter(None, [*middle, last]))
        yield f"{term}\n:   {text or '-'}\n"


def main():
    table = []
    for line in sys.stdin.read().splitlines() + [""]:
        if line.startswith("|"):
            table.append(line)
            continue
        if table:
            print("\n".join(listed(table)))
            table = []
        print(line)


main()
