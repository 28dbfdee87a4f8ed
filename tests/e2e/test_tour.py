"""The short tour that ./run takes without a display."""

import subprocess

from support.installation import PROJECT


def test_the_tour_shows_every_place_in_both_languages(tmp_path):
    done = subprocess.run([PROJECT / "scripts/tour", tmp_path], capture_output=True, text=True, timeout=180)
    assert done.returncode == 0, done.stderr
    pictures = {path.stem.split("-", 1)[1]: path.read_bytes() for path in tmp_path.iterdir()}
    assert 25 <= len(pictures) <= 35 and len(set(pictures.values())) == len(pictures), "two pictures are alike"
    places = "menu", "help", "hq", "factory", "battle", "options"
    assert {"film-1-1", "film-2-1"} | {f"{language}-{place}" for language in ("en", "de") for place in places} <= set(
        pictures)
