"""The intro's shots: cameras, and what the machine does at a time.

The ray tracer gets these numbers, the compositor projects with them.

Metres and degrees as in the scenes (y up, left-handed); times are those of the cut list.
"""
from dataclasses import dataclass

import numpy as np

from avi import HEIGHT, WIDTH, smooth
from cuts import Cuts

CUT = Cuts("intro")
STRIDE = 2.2 / 0.65  # metres of hull per walking cycle: a foot stands .65 of it and is moved 2.2 m meanwhile
LEGS = (
    (1, 1, 0.0),
    (-1, 1, 0.5),
    (1, -1, 0.58),
    (-1, -1, 0.08),
)  # side, front, place in the cycle, as in lib/brontar.inc
CAMERA = {  # place, aim, angle
    "dawn": ((-1.0, 1.3, -30), (-3.5, 5.4, 0), 44),
    "close": ((-6.6, 1.0, -12.6), (-2.2, 4.3, -2), 40),
    "feet": ((-1.3, 0.62, -6.2), (-1.5, 1.75, 0), 58),
    "menu": ((-2.2, 1.6, -17.6), (-2.9, 5.2, 0), 60),  # scenes/menu.pov
}
STARTS = {"dawn": CUT["begin"], "close": CUT["close"], "feet": CUT["feet"], "menu": CUT["walk"]}
CYCLE = {"feet": 2.5, "menu": 2.5}
MENU_PHASE = 0.12  # the machine of scenes/menu.pov stands in this place of its cycle
CROUCH = -1.75


@dataclass
class Pose:
    """Arguments of Brontar() and what a film adds: the gun's recoil, the hull's shift, where it stands."""

    phase: float = 0.0
    walk: float = 0.0
    bob: float = 0.0
    gun: tuple = (0.0, 0.0)  # yaw, pitch
    head: float = 0.0
    recoil: float = 0.0
    sway: tuple = (0.0, 0.0, 0.0)
    turn: float = 0.0
    place: tuple = (0.0, 0.0, 0.0)


def shot_at(t):
    return [name for name, start in STARTS.items() if t >= start - 1e-6][-1]


def turned(point, degrees):
    """A point after the ray tracer's `rotate y*degrees`."""
    a = np.radians(degrees)
    x, y, z = point
    return np.array([x * np.cos(a) + z * np.sin(a), y, -x * np.sin(a) + z * np.cos(a)])


def rotated(point, rx, ry, rz):
    """A point after the ray tracer's `rotate <rx,ry,rz>`."""
    x, y, z = point
    a = np.radians(rx)
    y, z = y * np.cos(a) - z * np.sin(a), y * np.sin(a) + z * np.cos(a)
    x, y, z = turned((x, y, z), ry)
    a = np.radians(rz)
    return np.array([x * np.cos(a) - y * np.sin(a), x * np.sin(a) + y * np.cos(a), z])


def settled(t, after, depth, rate=3.2, swing=9.0):
    """The hull sinks when a step or a rise ends, and comes up again."""
    return -depth * np.exp(-(t - after) * rate) * np.sin((t - after) * swing) if t > after else 0.0


def pose(t):
    shot = shot_at(t)
    if shot in ("dawn", "close"):
        up = smooth(t, CUT["rise"], CUT["up"])
        bob = CROUCH * (1 - up) + settled(t, CUT["up"], 0.16)
        turn, place = (180 + 32, (0.4, -0.12, 1.0)) if shot == "close" else (180 + 58, (1.0, -0.12, 4.0))
        return Pose(
            0, 0, bob, (-6, 7 - 13 * up), -8 + 16 * smooth(t, CUT["rise"] + 0.5, CUT["up"]), 0, (0, 0, 0), turn, place
        )
    if shot == "feet":
        phase = 0.5 + (t - CUT["step_1"]) / CYCLE[shot]
        turn = -90 + 14
        way = turned((0, 0, STRIDE * (phase - 0.5)), turn)
        return Pose(
            phase,
            1,
            -0.05 + 0.10 * np.sin(4 * np.pi * phase + 0.6),
            (4, -7),
            0,
            0,
            (0, 0, 0),
            turn,
            tuple(np.array((1.6, -0.10, 4.6)) + way),
        )
    # a straight walk up to the last step, then the rest of the cycle ever slower
    stop = 2 * MENU_PHASE * CYCLE[shot]
    after = np.clip(t - CUT["step_6"], 0, stop)
    phase = (min(t, CUT["step_6"]) - CUT["step_6"]) / CYCLE[shot] + (after - after**2 / (2 * stop)) / CYCLE[shot]
    still = smooth(t, CUT["step_6"], CUT["step_6"] + stop)
    bob = (-0.05 + 0.10 * np.sin(4 * np.pi * phase + 0.6)) * (1 - still) + settled(t, CUT["step_6"] + 0.35, 0.09)
    aim = smooth(t, CUT["aim"], CUT["aimed"])
    age = t - CUT["fire"]
    kick = np.exp(-age * 5.0) * min(1, age / 0.04) if age > 0 else 0.0
    rock = np.exp(-age * 2.6) * np.sin(age * 8.5) if age > 0 else 0.0
    turn = 180 + 30
    place = np.array((1.0, -0.12, 1.0)) + turned((0, 0, STRIDE * (phase - MENU_PHASE)), turn)
    return Pose(
        phase,
        1,
        bob - 0.12 * rock,
        (-26 + 30 * aim, 2 - 11 * aim - 5.0 * kick),
        -14 + 26 * smooth(t, CUT["aim"] - 0.15, CUT["aimed"] - 0.2),
        0.75 * kick,
        (0, 0, -0.34 * rock),
        turn,
        tuple(place),
    )


def in_world(p, point):
    """A point of the hull (its own metres) in the scene."""
    q = rotated(point, p.walk * 1.5 * np.sin(4 * np.pi * p.phase), 0, p.walk * 1.6 * np.sin(2 * np.pi * p.phase))
    return turned(q + np.array([0, 5.55 + p.bob, 0]) + np.array(p.sway), p.turn) + np.array(p.place)


def muzzles(p):
    at = np.array([1.72, 1.95, 0.75])
    return [in_world(p, at + rotated((s * 0.24, -0.02, 5.3 - p.recoil), p.gun[1], p.gun[0], 0)) for s in (-1, 1)]


def lamps(p):
    """The two head lamps."""
    at = np.array([0, -0.42, 4.55])
    return [in_world(p, at + rotated((s * 1.1, -0.30, 1.22), 6, p.head, 0)) for s in (-1, 1)]


def foot(p, leg):
    """Where a foot's middle is, and its height above where it stands."""
    side, front, offset = leg
    ph = (p.phase + offset) % 1.0
    swing = (ph - 0.65) / 0.35
    ahead, up = (1.1 - 2.2 * ph / 0.65, 0.0) if ph < 0.65 else (-1.1 + 2.2 * swing, np.sin(np.pi * swing))
    local = (side * (3.35 + (0.15 if front < 0 else 0)), 0, front * 3.05 + p.walk * ahead)
    return turned(local, p.turn) + np.array(p.place), up * p.walk


def footfalls(shot, first, last):
    """(time, place) of the feet that come down in a shot, in order of time; found by looking."""
    falls, step = [], 1 / 240
    for leg in LEGS:
        high = False
        for k in range(int((last - first) / step)):
            t = first + k * step
            where, up = foot(pose(t), leg)
            if high and up == 0:
                falls.append((t, where))
            high = up > 0
    return sorted(falls, key=lambda fall: fall[0])


def project(shot, point):
    """Pixel and pixels per metre of a point of the scene."""
    at, to, angle = (np.array(v, float) if np.ndim(v) else v for v in CAMERA[shot])
    ahead = (to - at) / np.linalg.norm(to - at)
    right = np.cross([0, 1, 0], ahead)
    right /= np.linalg.norm(right)
    up = np.cross(ahead, right)
    d = np.array(point, float) - at
    depth = max(d @ ahead, 0.1)
    scale = WIDTH / 2 / np.tan(np.radians(angle) / 2) / depth
    return WIDTH / 2 + d @ right * scale, HEIGHT / 2 - d @ up * scale, scale
