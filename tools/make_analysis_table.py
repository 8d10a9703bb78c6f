#!/usr/bin/env python3
"""Writes tests/data/analysis.txt: a Barnes analysis of three passes as numpy's sums have it.

usage: tools/make_analysis_table.py > tests/data/analysis.txt
"""
import numpy as np

NX, NY, STATIONS = 20, 15, 60
FILTERS = (2.0, 0.6, 0.18)


def bilinear(grid, x, y):
    i, j = np.minimum(x.astype(int), NX - 2), np.minimum(y.astype(int), NY - 2)
    p, q = x - i, y - j
    return (grid[j, i] * (1 - q) * (1 - p) + grid[j, i + 1] * (1 - q) * p
            + grid[j + 1, i] * q * (1 - p) + grid[j + 1, i + 1] * p * q)


def means(x, y, values, k):
    grid = np.empty((NY, NX))
    columns = (x[None, :] - np.arange(NX)[:, None]) ** 2
    for row in range(NY):
        weight = np.exp(-(columns + (y - row)[None, :] ** 2) / k)
        grid[row] = weight @ values / weight.sum(1)
    return grid


def main():
    random = np.random.default_rng(5)
    x = np.float32(random.uniform(0, NX - 1, STATIONS)).astype(float)
    y = np.float32(random.uniform(0, NY - 1, STATIONS)).astype(float)
    v = np.float32(10 * np.sin(x / 4) + 8 * np.cos(y / 5) + random.normal(0, 1, STATIONS)).astype(float)
    grid = means(x, y, v, FILTERS[0])
    for k in FILTERS[1:]:
        grid = grid + means(x, y, v - bilinear(grid, x, y), k)
    print("# Barnes analysis by numpy's sums in double precision, made by tools/make_analysis_table.py:")
    print("# columns, rows, stations; filter, factor on it, passes; then column, row (both from 0, rows")
    print("# downward) and value of each station; then the grid, row by row.")
    print(NX, NY, STATIONS)
    print(FILTERS[0], 0.3, len(FILTERS))
    for row in zip(x, y, v):
        print("%.9g %.9g %.9g" % row)
    for row in grid:
        print(" ".join("%.7f" % value for value in row))


main()
