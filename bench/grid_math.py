#!/usr/bin/env python3
"""The workloads of bench/grid_math.cpp by numpy (and scipy where it is installed)."""
import time
import numpy as np

NY, NX = 1801, 3600
rng = np.random.default_rng(1)
u, v, t = (rng.uniform(-30, 30, (NY, NX)).astype(np.float32) for _ in range(3))
out = np.empty_like(u)


def best(name, work):
    least = 1e9
    for _ in range(5):
        start = time.perf_counter()
        work()
        least = min(least, time.perf_counter() - start)
    print(f"{name:<24} {least:9.4f}")


best("copyto", lambda: np.copyto(out, u))
best("add (out=)", lambda: np.add(u, v, out=out))
best("multiply (out=)", lambda: np.multiply(u, v, out=out))
best("hypot (out=)", lambda: np.hypot(u, v, out=out))
best("arctan2 (out=)", lambda: np.arctan2(u, v, out=out))
best("gradient axis 1", lambda: np.gradient(u, axis=1))
best("gradient axis 0", lambda: np.gradient(u, axis=0))
best("vorticity", lambda: np.gradient(v, axis=1) - np.gradient(u, axis=0))
best("masked add", lambda: np.ma.masked_equal(u, -9999.0) + np.ma.masked_equal(v, -9999.0))
kelvin = t + 280


def theta_e(p=1000.0, rh=0.5):
    """Bolton (1980), equations 10, 15, 21 and 43."""
    c = kelvin - 273.15
    e = rh * 6.112 * np.exp(17.67 * c / (c + 243.5))
    r = 0.622 * e / (p - e)
    tl = 2840.0 / (3.5 * np.log(kelvin) - np.log(e) - 4.805) + 55.0
    theta = kelvin * (1000.0 / p) ** (0.2854 * (1 - 0.28 * r))
    return theta * np.exp((3.376 / tl - 0.00254) * 1000 * r * (1 + 0.81 * r))


best("theta-e (Bolton)", theta_e)
try:
    from scipy.ndimage import map_coordinates
    rows = rng.uniform(0, NY - 1, (NY, NX))
    columns = rng.uniform(0, NX - 1, (NY, NX))
    rows.sort()
    best("map_coordinates order 1",
         lambda: map_coordinates(u, [rows, columns], order=1, cval=-9999.0))
except ImportError:
    print("map_coordinates: scipy isn't installed")
