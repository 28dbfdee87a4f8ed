"""vcckit convert: what it makes of the formats of other programs, of broken files, and of being killed."""

import signal
import subprocess
import time
import wave
from pathlib import Path

import numpy as np
import pytest
from PIL import Image

from support.installation import VCCKIT
from support.pulse import RATE, write_tone, write_wave

MASK = 255, 0, 255
WIDTH, HEIGHT = 101, 60  # an odd width: lines of a PCX picture are even


def convert(folder, *arguments, **options):
    return subprocess.run([VCCKIT, "convert", *arguments], cwd=folder, capture_output=True, text=True, **options)


def ffmpeg(*arguments):
    subprocess.run(["ffmpeg", "-loglevel", "error", "-y", *map(str, arguments)], check=True)


def drawing(colours):
    """Red, green, blue, opacity: a transparent corner, and opaque stripes of the mask's colour and of one near it."""
    pixels = np.zeros((HEIGHT, WIDTH, 4), np.uint8)
    pixels[..., 0] = np.arange(WIDTH) // (1 if colours > 256 else 25) * 2
    pixels[..., 1] = np.arange(HEIGHT)[:, None] * 4
    pixels[..., 2:] = 77, 255
    pixels[:20, :20, 3] = 0
    pixels[30:33] = (*MASK, 255)
    pixels[33:36] = 250, 3, 252, 255
    return pixels


def save(pixels, path):
    Image.fromarray(pixels).save(path, **({"quality": 95, "subsampling": 0} if path.suffix == ".jpg" else {}))


def pixels_of(path):
    image = Image.open(path)
    assert image.format == "PCX"
    return np.asarray(image.convert("RGB")), 8 if image.mode == "P" else 24


PICTURES = [
    # name, has transparency, bits, colours, most difference of a sample
    ("a.png", True, 24, 5000, 0),
    ("a.bmp", True, 24, 5000, 0),
    ("b.jpg", False, 24, 5000, 40),
    ("b.pcx", False, 24, 5000, 0),
    ("a.png", True, 8, 200, 3),
    ("a.png", True, 8, 5000, 16),
    ("b.bmp", False, 8, 200, 3),
]


@pytest.mark.parametrize("name, clear, bits, colours, most", PICTURES, ids=str)
def test_pictures(tmp_path, name, clear, bits, colours, most):
    drawn = drawing(colours) if clear else drawing(colours)[..., :3]
    save(drawn, tmp_path / name)
    done = convert(tmp_path, name, "-o", "out.pcx", "--bits", str(bits))
    assert done.returncode == 0, done.stderr
    assert done.stdout == f"out.pcx: {WIDTH} x {HEIGHT} pixels of {bits} bits\n"
    made, made_bits = pixels_of(tmp_path / "out.pcx")
    assert made_bits == bits
    # The mask covers exactly the transparent pixels, whatever 15 bits or a palette do to others.
    masked = (made == MASK).all(axis=2)
    if clear:
        assert np.array_equal(masked, drawn[..., 3] == 0)
    elif not name.endswith("jpg"):  # whose colours are not quite those that were drawn
        assert np.array_equal(masked, (drawn == MASK).all(axis=2))
    near = (made >> 3 == np.array(MASK) >> 3).all(axis=2) & ~masked
    assert not near.any()
    stripes = np.zeros_like(masked)
    stripes[30:36] = True  # their green may have been raised
    difference = np.abs(made.astype(int) - drawn[..., :3]).max(axis=2)
    assert difference[~masked & ~stripes].max() <= most
    assert difference[~masked & stripes].max(initial=0) <= 8 + most


SOUNDS = [
    # FFmpeg's arguments for the source, name, message
    ("-c:a libmp3lame -ac 2", "a.mp3", "2.0 s of 44100 Hz, stereo"),
    ("-c:a pcm_s24le -ar 96000", "a.wav", "2.0 s of 96000 Hz, mono"),
    ("-c:a pcm_f32le -ac 6 -ar 384000", "a.wav", "2.0 s of 48000 Hz, stereo"),
    ("-c:a flac -ar 22050", "a.flac", "2.0 s of 22050 Hz, mono"),
]


@pytest.mark.parametrize("coded, name, told", SOUNDS, ids=str)
def test_sounds(tmp_path, coded, name, told):
    ffmpeg("-f", "lavfi", "-i", "sine=441:d=2", *coded.split(), tmp_path / name)
    done = convert(tmp_path, name, "-o", "out.wav")
    assert (done.returncode, done.stdout) == (0, f"out.wav: {told}\n"), done.stderr
    with wave.open(str(tmp_path / "out.wav")) as made:
        assert (made.getsampwidth(), f"{made.getframerate()}") == (2, told.split()[3])
        assert made.getnframes() / made.getframerate() == pytest.approx(2, abs=0.05)


def test_a_loop_has_to_run_into_itself(tmp_path):
    silence, seconds = np.zeros(RATE // 10), np.arange(2 * RATE) / RATE
    whole, cut_off = (np.sin(2 * np.pi * hz * seconds) for hz in (441, 440.3))  # 440.3 Hz do not fit 2 s
    for name, samples, told in (("good", whole, ""), ("late", [*silence, *whole], "begins with silence"),
                                ("early", [*whole, *silence], "ends in silence"),
                                ("bad", cut_off, "clicks where its end meets its beginning")):
        write_wave(tmp_path / f"{name}.wav", np.multiply(samples, 0.75))
        done = convert(tmp_path, "--loop", f"{name}.wav", "-o", f"{name}-made.wav")
        assert done.returncode == (1 if told else 0) and told in done.stderr, done.stderr
    assert [path.name for path in tmp_path.glob("*-made.wav*")] == ["good-made.wav"]
    assert convert(tmp_path, "bad.wav", "-o", "made.wav").returncode == 0


FILMS = [
    # size, frames per second, name, message
    ("1280x720", 30, "a.mp4", "1.0 s of 800 x 450 pixels, 30 frames per second"),
    ("320x240", 100, "a.mov", "1.0 s of 320 x 240 pixels, 60 frames per second"),
]


@pytest.mark.parametrize("size, rate, name, told", FILMS, ids=str)
def test_films(tmp_path, size, rate, name, told):
    sound = ["-f", "lavfi", "-i", "sine=441:d=1"]
    ffmpeg("-f", "lavfi", "-i", f"testsrc=size={size}:rate={rate}:duration=1", *sound, tmp_path / name)
    done = convert(tmp_path, name)
    assert done.returncode == 0 and done.stdout.startswith(f"a.avi: {told}; without its sound"), done.stderr
    # The same moments: both films, shrunk to where coding does not matter.
    wanted, made = (frames_of(tmp_path / each) for each in (name, "a.avi"))
    assert np.abs(wanted - made).mean() < 4
    assert convert(tmp_path, name, "-o", "still.pcx").returncode == 0
    assert convert(tmp_path, name, "-o", "heard.wav").stdout.startswith("heard.wav: 1.0 s of 44100 Hz")


def test_what_is_turned_is_turned_back(tmp_path):
    top = np.zeros((WIDTH, 2 * WIDTH, 3), np.uint8)
    top[:WIDTH // 2] = 255  # white above black, as it is to be seen
    exif = Image.Exif()
    exif[0x0112] = 6  # of a camera held upright
    Image.fromarray(np.rot90(top)).save(tmp_path / "a.jpg", exif=exif)
    Image.fromarray(np.rot90(top)).save(tmp_path / "flat.png")
    ffmpeg("-i", tmp_path / "flat.png", "-pix_fmt", "yuvj444p", tmp_path / "flat.mp4")
    ffmpeg("-i", tmp_path / "flat.mp4", "-c", "copy", "-metadata:s:v", "rotate=270", tmp_path / "b.mp4")
    for name in ("a.jpg", "b.mp4"):
        assert convert(tmp_path, name, "-o", "out.pcx").returncode == 0
        assert np.abs(pixels_of(tmp_path / "out.pcx")[0].astype(int) - top).mean() < 9, name
    assert f" {2 * WIDTH} x " in convert(tmp_path, "b.mp4").stdout


def test_without_ffmpeg_the_remedy_is_told(tmp_path):
    save(drawing(200), tmp_path / "a.png")
    done = convert(tmp_path, "a.png", env={"PATH": str(tmp_path)})
    assert done.returncode == 2 and "a.png: cannot be read without FFmpeg: install the package ffmpeg" in done.stderr
    assert [path.name for path in tmp_path.iterdir()] == ["a.png"]


def frames_of(film):
    raw = subprocess.run(["ffmpeg", "-loglevel", "error", "-i", film, "-vf", "fps=6,scale=40:30", "-f", "rawvideo",
                          "-pix_fmt", "gray", "-"], check=True, capture_output=True).stdout
    return np.frombuffer(raw, np.uint8).reshape(-1, 30, 40)[:5].astype(int)


def cut(path):
    if path.suffix in (".png", ".jpg", ".pcx"):
        save(drawing(5000)[..., :3], path)
    else:
        ffmpeg("-f", "lavfi", "-i", "testsrc=d=2" if path.suffix == ".avi" else "sine=441:d=2", path)
    path.write_bytes(path.read_bytes()[:path.stat().st_size * 2 // 3])


BROKEN = [
    # name, what it contains or how it is made, message
    ("cut.png", cut, "is damaged or truncated"),
    ("cut.jpg", cut, "is damaged or truncated"),
    ("cut.pcx", cut, "is damaged or truncated"),
    ("cut.flac", cut, "is damaged or truncated"),
    ("cut.wav", cut, "is truncated"),
    ("cut.avi", cut, "is damaged or truncated"),
    ("text.txt", "no picture", "is not a picture, sound or film that FFmpeg knows"),
    ("text.png", "no picture", "is damaged or truncated"),
    ("empty.ogg", "", "is not a picture, sound or film that FFmpeg knows"),
    ("wide.png", Image.new("RGB", (4097, 2)).save, "has 4097 x 2 pixels, and the program takes at"),
    ("folder.png", Path.mkdir, "is not a file"),
    ("absent.png", None, "does not exist"),
]


@pytest.mark.parametrize("name, content, told", BROKEN, ids=[case[0] for case in BROKEN])
def test_broken_inputs_leave_the_target_as_it_was(tmp_path, name, content, told):
    source = tmp_path / name
    if content is not None:
        source.write_text(content) if isinstance(content, str) else content(source)
    target = tmp_path / ("out" + {".flac": ".wav", ".ogg": ".wav", ".wav": ".wav", ".avi": ".avi"}.get(
        source.suffix, ".pcx"))
    target.write_text("before")
    before = sorted(tmp_path.iterdir())
    done = convert(tmp_path, name, "-o", target.name)
    assert done.returncode == 2 and done.stderr.startswith(f"vcckit: {name}: {told}"), done.stderr
    assert target.read_text() == "before" and sorted(tmp_path.iterdir()) == before


def test_a_batch_goes_into_a_folder_and_never_over_itself(tmp_path):
    save(drawing(200), tmp_path / "a.png")
    save(drawing(200)[..., :3], tmp_path / "b.bmp")
    write_tone(tmp_path / "c.wav", 441, 1)
    (tmp_path / "out").mkdir()
    assert convert(tmp_path, "a.png", "b.bmp", "c.wav", "-o", "out").returncode == 0
    assert {path.name for path in (tmp_path / "out").iterdir()} == {"a.pcx", "b.pcx", "c.wav"}
    for arguments, told in ((["c.wav"], "would be replaced by its own conversion"),
                            (["a.png", "out/a.pcx", "-o", "."], "would become ./a.pcx, as a.png does"),
                            (["a.png", "b.bmp", "-o", "typo"], "typo: is not a folder"),
                            (["a.png", "-o", "a.gif"], "a.gif: is not a folder, and does not end"),
                            (["a.png", "-o", "a.avi"], "is a picture, not a film")):
        before = sorted(tmp_path.rglob("*"))
        done = convert(tmp_path, *arguments)
        assert done.returncode == 2 and told in done.stderr, done.stderr
        assert sorted(tmp_path.rglob("*")) == before


@pytest.fixture(scope="module")
def long_film(tmp_path_factory):
    film = tmp_path_factory.mktemp("film") / "a.mkv"
    ffmpeg("-f", "lavfi", "-i", "testsrc=size=800x600:rate=25:duration=8", "-c:v", "mpeg4", film)
    return film


@pytest.mark.parametrize("number", (signal.SIGINT, signal.SIGTERM, signal.SIGKILL), ids=str)
def test_killed_in_the_middle(long_film, tmp_path, number):
    target, unfinished = tmp_path / "a.avi", tmp_path / "a.avi.new"
    target.write_text("before")
    with subprocess.Popen([VCCKIT, "convert", long_film, "-o", target]) as kit:
        while not unfinished.exists() or unfinished.stat().st_size < 100_000:
            assert kit.poll() is None, "it was done before it could be killed"
            time.sleep(0.005)
        kit.send_signal(number)
        assert kit.wait(timeout=20) == -number
    assert target.read_text() == "before"
    assert unfinished.exists() == (number == signal.SIGKILL)
    # What a kill leaves is no hindrance.
    ffmpeg("-f", "lavfi", "-i", "testsrc=duration=0.2", tmp_path / "b.mkv")
    assert convert(tmp_path, "b.mkv", "-o", "a.avi").returncode == 0
    assert target.read_bytes().startswith(b"RIFF") and not unfinished.exists()
