#!/usr/bin/env python3
"""Write Resource/distortion.obj: a dome picture, warped for a projector that shines on a ball mirror.

The dome is a half sphere around the origin, z up, its zenith the middle of the
dome picture and its front (y) that picture's lower edge. The mirror stands at
the rear rim, the projector between it and the middle, looking at the mirror.
Each place of the projector's picture is followed by mirror to the dome; the
mesh says which place of the dome picture belongs there. Another theatre has
other numbers: change the constants and run this again. Standard library only.
"""
import math
import pathlib

MIRROR = (0.0, -0.97, 0.0)  # middle of the ball; the dome's radius is 1
BALL = 0.14                 # its radius
LENS = (0.0, -0.35, -0.02)  # the projector's lens
WIDE = 0.19                 # half the picture's width at distance 1 from the lens
LOW, HIGH = -0.01, 0.20     # its lower and upper edge there
COLUMNS, ROWS = 64, 36      # cells of the mesh
TARGET = pathlib.Path(__file__).resolve().parent.parent / "Resource" / "distortion.obj"


def add(a, b, scale=1.0):
    return tuple(x + scale * y for x, y in zip(a, b))


def dot(a, b):
    return sum(x * y for x, y in zip(a, b))


def unit(a):
    return add((0, 0, 0), a, 1 / math.sqrt(dot(a, a)))


def hit_ball(start, ray, middle, radius, near):
    """Distance along a unit ray to a ball; a ray that misses it meets its rim."""
    away = add(start, middle, -1)
    half = dot(away, ray)
    root = math.sqrt(max(half * half - dot(away, away) + radius * radius, 0.0))
    return -half - root if near else -half + root


def dome_place(column, row):
    """The place in the dome picture, 0..1, that a place of the projector's picture shows."""
    # The projector looks along -y, so its right is -x; the audience sees the mirror's picture turned.
    ray = unit(((0.5 - column) * 2 * WIDE, -1.0, LOW + (HIGH - LOW) * row))
    on_mirror = add(LENS, ray, hit_ball(LENS, ray, MIRROR, BALL, True))
    normal = unit(add(on_mirror, MIRROR, -1))
    bounced = unit(add(ray, normal, -2 * dot(ray, normal)))
    x, y, z = unit(add(on_mirror, bounced, hit_ball(on_mirror, bounced, (0, 0, 0), 1.0, False)))
    polar = math.acos(min(max(z, -1.0), 1.0))
    radius = polar / math.pi  # half a turn from rim to rim
    around = math.atan2(-y, x)
    return tuple(min(max(0.5 + radius * f(around), 0.0), 1.0) for f in (math.cos, math.sin))


def main():
    lines = ["# A dome picture warped for a ball mirror; tools/make_distortion.py has the numbers.",
             "o distortion"]
    places, points = [], []
    for j in range(ROWS + 1):
        for i in range(COLUMNS + 1):
            column, row = i / COLUMNS, j / ROWS
            # The picture's top has the lowest z.
            places.append(f"v {(column - 0.5) * 16:.4f} 0.0000 {(0.5 - row) * 9:.4f}")
            points.append("vt {:.5f} {:.5f}".format(*dome_place(column, row)))
    lines += places + points + ["vn 0.0000 -1.0000 0.0000"]
    for j in range(ROWS):
        for i in range(COLUMNS):
            first = j * (COLUMNS + 1) + i + 1
            corners = (first, first + 1, first + COLUMNS + 2, first + COLUMNS + 1)
            lines.append("f " + " ".join(f"{k}/{k}/1" for k in corners))
    TARGET.parent.mkdir(exist_ok=True)
    TARGET.write_text("\n".join(lines) + "\n")
    print(f"{TARGET} written")


if __name__ == "__main__":
    main()
