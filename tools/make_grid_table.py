#!/usr/bin/env python3
"""Writes tests/data/grid_math.txt: operations on small random fields as numpy has them.

Each line: operation, number of operands, the operands (30 values each, row by row from the north),
and 30 results. The grid of the derivatives has 6 columns and 5 rows, 0.5 by 0.25 apart.
"""
import sys
import numpy as np

rng = np.random.default_rng(20260101)
u, v, s = (rng.uniform(-30.0, 30.0, (5, 6)).astype(np.float32).astype(float) for _ in range(3))
p, q = (rng.uniform(0.5, 9.0, (5, 6)).astype(np.float32).astype(float) for _ in range(2))


def ddx(f):
    return np.gradient(f, 0.5, axis=1)


def ddy(f):
    return -np.gradient(f, 0.25, axis=0)


TABLE = [
    ("add", (u, v), u + v), ("sub", (u, v), u - v), ("mul", (u, v), u * v),
    ("div", (u, p), u / p), ("mod", (u, p), np.fmod(u, p)), ("pow", (p, q), np.power(p, q)),
    ("sqrt", (p,), np.sqrt(p)), ("exp", (q,), np.exp(q)), ("abs", (u,), np.abs(u)),
    ("log", (p,), np.log(p)), ("log10", (p,), np.log10(p)),
    ("sin", (u,), np.sin(np.radians(u))), ("cos", (u,), np.cos(np.radians(u))),
    ("tan", (u,), np.tan(np.radians(u))), ("asin", (u / 64,), np.degrees(np.arcsin(u / 64))),
    ("acos", (u / 64,), np.degrees(np.arccos(u / 64))), ("atan", (u,), np.degrees(np.arctan(u))),
    ("atan2", (u, v), np.degrees(np.arctan2(u, v))),
    ("max", (u, v, s), np.maximum.reduce([u, v, s])),
    ("min", (u, v, s), np.minimum.reduce([u, v, s])),
    ("sum", (u, v, s), u + v + s), ("avg", (u, v, s), np.mean([u, v, s], axis=0)),
    ("interp", (u, p, v), u + (v - u) * p), ("thick", (u, v), u - v),
    ("wspd", (u, v), np.hypot(u, v)), ("wdir", (u, v), np.degrees(np.arctan2(-u, -v)) % 360),
    ("uwnd", (u + 180, p), -p * np.sin(np.radians(u + 180))),
    ("vwnd", (u + 180, p), -p * np.cos(np.radians(u + 180))),
    ("dot", (u, v, p, q), u * p + v * q), ("cross", (u, v, p, q), u * q - v * p),
    ("dx", (u,), ddx(u)), ("dy", (u,), ddy(u)),
    ("conv", (u, v), -ddx(u) - ddy(v)), ("diverg", (u, v), ddx(u) + ddy(v)),
    ("vconv", (u, v, s), (-ddx(u) - ddy(v)) * s),
    ("rvort", (u, v), ddx(v) - ddy(u)), ("def1", (u, v), ddx(u) - ddy(v)),
    ("def2", (u, v), -ddy(u) - ddx(v)), ("adv", (u, v, s), -u * ddx(s) - v * ddy(s)),
]

for name, operands, result in TABLE:
    numbers = np.concatenate([x.ravel() for x in (*operands, result)])
    sys.stdout.write(f"{name} {len(operands)} " + " ".join(f"{x:.9g}" for x in numbers) + "\n")
