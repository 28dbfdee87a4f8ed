"""Renders the intro's layers that are not yet there.

usage: layers.py FOLDER [WIDTH]. Several may run at once; each takes what no other has begun.

A pose is the machine on a clear ground, its image in the water and its shadow; a plate is the empty ground.
Odd frames of slow movement have no pose of their own: the compositor makes them of their neighbours.
"""
import os
import subprocess
import sys
from pathlib import Path

sys.path[:0] = [str(Path(__file__).parent.parent), str(Path(__file__).parent)]
from avi import HEIGHT, RATE, WIDTH
from shots import CAMERA, CUT, in_world, lamps, muzzles, pose

HERE = Path(__file__).parent
SHOTS = list(CAMERA)
# shot, first and last time, frames from one pose to the next
STRETCHES = [
    ("dawn", CUT["begin"], CUT["begin"], 1),
    ("close", CUT["rise"], CUT["up"] + 0.35, 2),
    ("feet", CUT["feet"], CUT["step_1"], 1),  # a foot swings past the camera
    ("feet", CUT["step_1"], CUT["step_2"] + 0.6, 3),
    ("feet", CUT["step_2"] + 0.6, CUT["walk"], 1),
    ("menu", CUT["walk"], CUT["fire"], 3),
    ("menu", CUT["step_4"] + 0.35, CUT["step_6"], 1),
    ("menu", CUT["fire"], CUT["fire"] + 0.30, 2),
    ("menu", CUT["fire"] + 0.30, CUT["fire"] + 1.30, 4),
]
FLASH_FRAMES = 4  # frames of the flash that have a pass of their own
QUICK = ["-A"]
FINE = ["+A0.5", "+R2", "+AM1"]


def frames():
    """(frame, shot) of every pose, each once."""
    seen = {}
    for shot, first, last, step in STRETCHES:
        a, b = round(first * RATE), round(last * RATE)
        for n in range(a, max(b, a + 1), step):
            seen.setdefault(n, shot)
    return sorted(seen.items())


def declared(shot, t, visor, lit):
    p = pose(t)
    at, to, angle = CAMERA[shot]
    v = lambda q: "<" + ",".join(f"{x:.5f}" for x in q) + ">"
    middle = [sum(m) / 2 for m in zip(*muzzles(p))]
    return "\n".join(
        [
            f"#declare CamAt={v(at)}; #declare CamTo={v(to)}; #declare CamAngle={angle};",
            f"#declare Phase={p.phase + 4:.5f}; #declare Walk={p.walk}; #declare Bob={p.bob:.5f};",
            f"#declare GY={p.gun[0]:.4f}; #declare GP={p.gun[1]:.4f}; #declare Turn={p.turn};",
            f"#declare HY={p.head:.4f}; #declare GunBack={p.recoil:.4f}; #declare HullShift={v(p.sway)};",
            f"#declare Place={v(p.place)};",
            f"#declare Lit_V={visor}; #declare Lit_L={lit}; #declare Muzzle={v(middle)};",
            f"#declare VisorAt={v(in_world(p, (0, -0.25, 6.0)))};",
            f"#declare LampAt=array[2]{{{v(lamps(p)[0])},{v(lamps(p)[1])}}};",
            "",
        ]
    )


def jobs():
    """(name, scene, shot, time, pass, mirror, visor, lamps, part of the film's size, quality)"""
    for shot in SHOTS:
        t = CUT[{"dawn": "begin", "close": "close", "feet": "feet", "menu": "fire"}[shot]]
        yield f"plate-{shot}", "plate", shot, t, 0, 0, 0, 0, 1.1, ["+A0.3", "+R2", "+AM2"]
        if shot != "close":
            yield f"water-{shot}", "plate", shot, t, 1, 0, 0, 0, 1.1, ["+A0.3", "+R2"]
    yield "flash-plate", "plate", "menu", CUT["fire"], 2, 0, 0, 0, 0.5, QUICK
    for n, (name, number) in enumerate((("dark", 0), ("visor", 1), ("lamps", 2))):
        yield f"close-{name}", "machine", "close", CUT["close"], number, 0, 0, 0, 1, FINE
    every = frames()
    first = round(CUT["fire"] * RATE)
    for n in range(first, first + FLASH_FRAMES):
        yield f"flash-{n:03d}", "machine", "menu", n / RATE, 3, 0, 0, 0, 1, FINE
    order = sorted(every, key=lambda each: every.index(each) % 4)  # a rough film can be looked at early
    for n, shot in order:
        on = 0 if shot == "dawn" else 1
        yield f"pose-{n:03d}", "machine", shot, n / RATE, 0, 0, on, on, 1, FINE
        if shot != "close":
            yield f"mirror-{n:03d}", "machine", shot, n / RATE, 0, 1, on, on, 0.5, QUICK
            yield f"shadow-{n:03d}", "shadow", shot, n / RATE, 0, 0, 0, 0, 0.3, QUICK


def render(folder, job, full):
    name, scene, shot, t, number, mirror, visor, lit, size, quality = job
    out, lock = folder / f"{name}.png", folder / f"{name}.lock"
    if out.exists():
        return
    try:
        os.close(os.open(lock, os.O_CREAT | os.O_EXCL))
    except FileExistsError:
        return
    own = folder / f"own-{name}"
    own.mkdir(exist_ok=True)
    (own / "pose.inc").write_text(declared(shot, t, visor, lit))
    width = int(full * size + 0.5) // 4 * 4
    part = own / "part.png"
    said = subprocess.run(
        [
            "nice",
            "-n",
            "15",
            "povray",
            f"+I{HERE}/{scene}.pov",
            f"+L{own}",
            f"+L{HERE}",
            f"+L{HERE.parent}/lib",
            f"Declare=Shot={SHOTS.index(shot)}",
            f"Declare=Pass={number}",
            f"Declare=Mirror={mirror}",
            f"+O{part}",
            f"+W{width}",
            f"+H{width * HEIGHT // WIDTH}",
            *(["+UA"] if scene == "machine" else []),
            *quality,
            "+WT1",
            "-D",
        ],
        capture_output=True,
        text=True,
    )
    if said.returncode != 0:
        sys.exit(f"layers.py: {name}\n{said.stderr[-1500:]}")
    part.rename(out)
    for each in (own / "pose.inc", lock):
        each.unlink()
    own.rmdir()


def main(folder, full=WIDTH):
    folder = Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    for job in jobs():
        render(folder, job, full)
    open_ = [job[0] for job in jobs() if not (folder / f"{job[0]}.png").exists()]
    if open_:
        sys.exit(f"layers.py: another one is at work on {', '.join(open_)}; if none runs, remove {folder}/*.lock")


if __name__ == "__main__":
    main(sys.argv[1], *(int(v) for v in sys.argv[2:]))
