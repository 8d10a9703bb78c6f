#!/usr/bin/env python3
"""Writes tests/data/grid_weather.txt: weather operations on small fields by published formulas.

Each line: operation, greatest difference allowed, projection, level type and level, number of
operands; for each operand "const" and a number, or variable, unit and 25 values (5 columns by 5
rows from the north); then 25 results in the operation's own unit. The formulas are others than the
program's where there are others, so that the differences allowed are those of the formulas:

saturation vapour pressure, temperature at the condensation level, equivalent potential temperature:
  Bolton (1980), Mon. Wea. Rev. 108, 1046-1053, equations 10, 15, 21 and 43
wet bulb: psychrometric equation with the latent heat of Henderson-Sellers (1984)
wind chill: Siple and Passel (1945) and the index of the National Weather Service of 2001
heat index: Rothfusz (1990), NWS Technical Attachment SR 90-23
standard height: ICAO Doc 7488; projections: Snyder (1987), USGS Professional Paper 1395
Q vector: Hoskins, Draghici and Davies (1978), Q. J. R. Meteorol. Soc. 104, 31-38
"""
import numpy as np

rng = np.random.default_rng(20260102)
SHAPE = (5, 5)
KAPPA, EPS = 0.2857, 0.62198
LATLON, POLAR, LAMBERT = 2, 1, 4
RADIUS = 6371.22e3  # m


def field(low, high):
    return rng.uniform(low, high, SHAPE).astype(np.float32).astype(float)


def vapour(t):
    """hPa over water, of K."""
    return 6.112 * np.exp(17.67 * (t - 273.15) / (t - 29.65))


def dew_point(e):
    x = np.log(e / 6.112)
    return 243.5 * x / (17.67 - x) + 273.15


def ratio(td, p):
    """kg/kg"""
    return EPS * vapour(td) / (p - vapour(td))


def lcl_temperature(t, td):
    return 1.0 / (1.0 / (td - 56.0) + np.log(t / td) / 800.0) + 56.0


def theta_e(t, td, p):
    r = ratio(td, p)
    th = t * (1000.0 / p) ** (0.2854 * (1.0 - 0.28 * r))
    return th * np.exp((3376.0 / lcl_temperature(t, td) - 2.54) * r * (1.0 + 0.81 * r))


def solve(f, low, high):
    """Root of a rising function by bisection, at all points."""
    low, high = np.full(SHAPE, low), np.full(SHAPE, high)
    for _ in range(60):
        middle = (low + high) / 2.0
        low, high = np.where(f(middle) < 0, middle, low), np.where(f(middle) < 0, high, middle)
    return low


def wet_bulb(t, td, p):
    def excess(tw):
        latent = 1.91846e6 * (tw / (tw - 33.91)) ** 2
        return vapour(tw) - p * 1005.0 / (EPS * latent) * (t - tw) - vapour(td)
    return solve(excess, 220.0, 320.0)


def fahrenheit(t):
    return (t - 273.15) * 1.8 + 32.0


def kelvin(f):
    return (f - 32.0) / 1.8 + 273.15


def heat_index(t, td):
    f, h = fahrenheit(t), 100.0 * vapour(td) / vapour(t)
    return kelvin(-42.379 + 2.04901523 * f + 10.14333127 * h - 0.22475541 * f * h
                  - 6.83783e-3 * f * f - 5.481717e-2 * h * h + 1.22874e-3 * f * f * h
                  + 8.5282e-4 * f * h * h - 1.99e-6 * f * f * h * h)


def standard_height(p):
    low = 44330.77 * (1.0 - (p / 1013.25) ** 0.190263)
    high = 11000.0 + 287.05287 * 216.65 / 9.80665 * np.log(226.32 / p)
    return np.where(p > 226.32, low, high)


# --- places: latitude, longitude, plot x and y in 100 km, and the turn of the grid's north

def places(proj):
    column, row = np.meshgrid(np.arange(5) - 2, 2 - np.arange(5))
    if proj == LATLON:
        return 40.0 + 2.0 * row, -95.0 + 2.0 * column, None, None, np.zeros(SHAPE)
    k = RADIUS / 1e5
    if proj == POLAR:  # true at 60 N, centre 60 N 95 W, meridian of 95 W upright
        n, scale = 1.0, k * (1.0 + np.sin(np.radians(60.0)))
        centre = 60.0
    else:  # Lambert, tangent at 45 N, centre 40 N
        n = np.sin(np.radians(45.0))
        scale = k * np.cos(np.radians(45.0)) / n / np.tan(np.radians(22.5)) ** n
        centre = 40.0
    rho0 = scale * np.tan(np.radians(45.0 - centre / 2.0)) ** n
    x, y = 2.0 * column, -rho0 + 2.0 * row
    turn = np.degrees(np.arctan2(x, -y))
    lat = 90.0 - 2.0 * np.degrees(np.arctan((np.hypot(x, y) / scale) ** (1.0 / n)))
    return lat, -95.0 + turn / n, x, y, turn


# --- derivatives on latitude and longitude, per m

def ddx(f):
    lat = places(LATLON)[0]
    step = np.radians(2.0) * RADIUS * np.cos(np.radians(lat))
    return np.gradient(f, axis=1) / step


def ddy(f):
    return -np.gradient(f, axis=0) / (np.radians(2.0) * RADIUS)


def coriolis():
    return 2.0 * 7.2921e-5 * np.sin(np.radians(places(LATLON)[0]))


def geostrophic(z):
    g = 9.80665
    return -g / coriolis() * ddy(z), g / coriolis() * ddx(z)


def q_vector(z, t, along):
    u, v = geostrophic(z)
    d = ddx if along == "x" else ddy
    # the program's unit is that of derivatives per 100 km
    return (d(u) * ddx(t) + d(v) * ddy(t)) * -287.05 / (500.0 * 100.0) * 1e10


def smooth(f, s):
    out = np.zeros(SHAPE)
    for r in range(5):
        for c in range(5):
            rows, columns = np.mgrid[max(r - 4, 0):min(r + 5, 5), max(c - 4, 0):min(c + 5, 5)]
            w = np.exp(((rows - r) ** 2 + (columns - c) ** 2) / s)
            out[r, c] = np.sum(w * f[rows, columns]) / np.sum(w)
    return out


# --- the table

t, rh, p = field(260.0, 300.0), field(20.0, 95.0), field(600.0, 1000.0)
td = dew_point(vapour(t) * rh / 100.0)
hot, damp, wind = field(302.0, 312.0), field(45.0, 70.0), field(3.0, 20.0)
hot_td = dew_point(vapour(hot) * damp / 100.0)
cold = field(245.0, 275.0)
warm850, rh850, t500 = field(283.0, 293.0), field(50.0, 90.0), field(255.0, 265.0)
td850 = dew_point(vapour(warm850) * rh850 / 100.0)
parcel = solve(lambda x: theta_e(x, x, 500.0) - theta_e(warm850, td850, 850.0), 230.0, 290.0)
u, v, spd, direction = field(-30, 30), field(-30, 30), field(1, 40), field(0, 360)
z = 5500.0 + 30.0 * field(-1, 1)
around = field(1.0, 9.0)

TEMP_C, TEMP, DEWP, RHUM = ("temp", "C"), ("temp", "K"), ("dewp", "K"), ("rhum", "%")
MB, PASCAL, WSPD = ("pres", "mb"), ("pres", "Pa"), ("wspd", "m/s")
NONE, P850, P500 = (0, 0), (100, 850), (100, 500)
CASES = [
    ("dewp", 0.3, LATLON, NONE, [(TEMP, t), (RHUM, rh)], td),
    ("dewp", 0.3, LATLON, NONE, [(TEMP_C, t - 273.15), (RHUM, rh)], td),
    ("rhum", 0.5, LATLON, NONE, [(TEMP, t), (("dewp", "C"), td - 273.15)], rh),
    ("wetblb", 0.4, LATLON, P850, [(TEMP, t), (RHUM, rh)], wet_bulb(t, td, 850.0)),
    ("wetblb", 0.4, LATLON, NONE, [(TEMP, t), (DEWP, td), (MB, p)], wet_bulb(t, td, p)),
    ("show", 0.5, LATLON, NONE, [(TEMP, warm850), (RHUM, rh850), (TEMP_C, t500 - 273.15)],
     t500 - parcel),
    ("wchill", 0.5, LATLON, NONE, [(TEMP, cold), (WSPD, wind)],
     kelvin(0.0817 * (3.71 * np.sqrt(wind * 2.23694) + 5.81 - 0.25 * wind * 2.23694)
            * (fahrenheit(cold) - 91.4) + 91.4)),
    ("wchill2", 0.2, LATLON, NONE, [(TEMP, cold), (("wspd", "knt"), wind * 1.943844)],
     kelvin(35.74 + 0.6215 * fahrenheit(cold)
            + (0.4275 * fahrenheit(cold) - 35.75) * (wind * 2.23694) ** 0.16)),
    ("heat", 1.2, LATLON, NONE, [(TEMP, hot), (RHUM, damp)], heat_index(hot, hot_td)),
    ("heat", 1.2, LATLON, NONE, [(TEMP, hot), (DEWP, hot_td)], heat_index(hot, hot_td)),
    ("theta", 0.1, LATLON, P500, [(TEMP, t)], t * 2.0 ** KAPPA),
    ("theta", 0.1, LATLON, NONE, [(TEMP, t), (PASCAL, p * 100.0)], t * (1000.0 / p) ** KAPPA),
    ("thetae", 0.8, LATLON, P850, [(TEMP, t), (RHUM, rh)], theta_e(t, td, 850.0)),
    ("thetae", 0.8, LATLON, NONE, [(TEMP, t), (DEWP, td), (MB, p)], theta_e(t, td, p)),
    ("vtemp", 0.05, LATLON, P850, [(TEMP, t), (RHUM, rh)], t * (1 + 0.608 * ratio(td, 850.0))),
    ("thetav", 0.1, LATLON, NONE, [(TEMP, t), (DEWP, td), (MB, p)],
     t * (1 + 0.608 * ratio(td, p)) * (1000.0 / p) ** KAPPA),
    ("vapor", 0.1, LATLON, NONE, [(DEWP, td)], vapour(td)),
    ("vapor", 0.1, LATLON, NONE, [(TEMP, t), (RHUM, rh)], vapour(t) * rh / 100.0),
    ("pr_alt", 3.0, LATLON, NONE, [(MB, p)], standard_height(p)),
    ("pr_alt", 3.0, LATLON, NONE, [(PASCAL, p * 20.0)], standard_height(p / 5.0)),
    ("shum", 0.1, LATLON, P850, [(DEWP, td)], 1000 * EPS * vapour(td) / 850.0),
    ("shum", 0.1, LATLON, NONE, [(TEMP, t), (RHUM, rh), (MB, p)], 1000 * EPS * vapour(td) / p),
    ("mixrat", 0.1, LATLON, NONE, [(DEWP, td), (MB, p)], 1000 * ratio(td, p)),
    ("mixrat", 0.1, LATLON, P850, [(TEMP, t), (RHUM, rh)], 1000 * ratio(td, 850.0)),
    ("ugeos", 0.5, LATLON, P500, [(("hght", "m"), z)], geostrophic(z)[0]),
    ("vgeos", 0.5, LATLON, P500, [(("hght", "m"), z)], geostrophic(z)[1]),
    ("ugeos", 0.5, LATLON, P500, [(("hght", "10_m"), z / 10.0)], geostrophic(z)[0]),
    ("uq", 0.4, LATLON, P500, [(("hght", "m"), z), (TEMP, t)], q_vector(z, t, "x")),
    ("vq", 0.4, LATLON, P500, [(("hght", "m"), z), (TEMP, t)], q_vector(z, t, "y")),
    ("smooth", 1e-4, LATLON, NONE, [(TEMP, t), -8.0], smooth(t, -8.0)),
    ("smooth", 1e-4, LATLON, NONE, [(TEMP, t), 2.5], smooth(t, 2.5)),
]
for proj in (LATLON, POLAR, LAMBERT):
    lat, lon, x, y, turn = places(proj)
    CASES += [("lat", 2e-3, proj, NONE, [(TEMP, around)], lat),
              ("lon", 2e-3, proj, NONE, [(TEMP, around)], lon)]
    if x is not None:
        CASES += [("projx", 2e-3, proj, NONE, [(TEMP, around)], x),
                  ("projy", 2e-2, proj, NONE, [(TEMP, around)], y)]
    sine, cosine = np.sin(np.radians(direction - turn)), np.cos(np.radians(direction - turn))
    CASES += [("ewdir", 2e-3, proj, NONE, [(("uwnd", "m/s"), u), (("vwnd", "m/s"), v)],
               (np.degrees(np.arctan2(-u, -v)) + turn) % 360.0),
              ("uwndg", 2e-3, proj, NONE, [(("wdir", "deg"), direction), (WSPD, spd)],
               -spd * sine),
              ("vwndg", 2e-3, proj, NONE, [(("wdir", "deg"), direction), (WSPD, spd)],
               -spd * cosine)]


def numbers(values):
    return " ".join(f"{x:.7g}" for x in np.asarray(values).ravel())


for name, allowed, proj, (ltype, level), operands, result in CASES:
    words = [f"{name} {allowed:g} {proj} {ltype} {level} {len(operands)}"]
    for operand in operands:
        words.append(f"const {operand}" if isinstance(operand, float)
                     else f"{operand[0][0]} {operand[0][1]} {numbers(operand[1])}")
    print(" ".join(words + [numbers(result)]))
