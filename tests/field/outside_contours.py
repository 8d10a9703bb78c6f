"""Lengths of contours and areas between them by contourpy, in grid lengths.

usage: outside_contours.py FILE COLUMNS ROWS MISSING LEVEL...
FILE holds the rows of values as floats of this machine, the northern first. Prints for each level
the length of its lines and the area from it up to the next level (without end for the last).
"""

import sys

import contourpy
import numpy as np


def length(lines):
    return sum(np.hypot(*np.diff(line, axis=0).T).sum() for line in lines)


def area(polygons, offsets):
    total = 0.0
    for points, starts in zip(polygons, offsets):
        for start, end in zip(starts[:-1], starts[1:]):
            x, y = points[start : end - 1].T  # the last point is the first
            total += (x * np.roll(y, -1) - y * np.roll(x, -1)).sum() / 2.0  # holes are negative
    return total


def main():
    path, columns, rows, missing = sys.argv[1:5]
    levels = [float(word) for word in sys.argv[5:]]
    z = np.fromfile(path, dtype=np.float32).reshape(int(rows), int(columns)).astype(float)[::-1]
    z = np.ma.masked_equal(z, float(missing))
    generator = contourpy.contour_generator(
        z=z,
        name="serial",
        corner_mask=False,
        quad_as_tri=False,
        line_type=contourpy.LineType.Separate,
        fill_type=contourpy.FillType.OuterOffset,
    )
    for lower, upper in zip(levels, levels[1:] + [float(z.max()) + 1.0]):
        print(length(generator.lines(lower)), area(*generator.filled(lower, upper)))


main()
