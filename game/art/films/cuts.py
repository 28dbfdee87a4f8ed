"""The cut list as data: films/cuts.txt. Cuts("intro")["fire"] is a time in seconds."""
from pathlib import Path


class Cuts(dict):
    def __init__(self, film):
        lines = (Path(__file__).parent / "cuts.txt").read_text(encoding="ascii").splitlines()
        rows = [line.split(None, 3) for line in lines if line.strip() and not line.startswith("#")]
        super().__init__((row[2], float(row[1])) for row in rows if row[0] == film)
        if list(self.values()) != sorted(self.values()) or "end" not in self:
            raise SystemExit(f"cuts.txt: the events of {film} are not in order or do not end")
