"""A private sound card: PulseAudio with one silent output, and a recording of what a program played through it."""

import os
import subprocess
import tempfile
import wave
from pathlib import Path

import numpy as np

from support.desktop import stop, wait_until

RATE = 44100  # of the output and of every recording; the library opens the device at this rate

ALSA_CONFIGURATION = """</usr/share/alsa/alsa.conf>
pcm.!default { type pulse }
ctl.!default { type pulse }
"""


class PulseServer:
    """`environment` makes the library's ALSA driver (and anything else) play here; what is heard is recorded."""

    def __enter__(self):
        self._scratch = tempfile.TemporaryDirectory(prefix="veldor-pulse-")
        self.folder = Path(self._scratch.name)
        configuration = self.folder / "asound.conf"
        configuration.write_text(ALSA_CONFIGURATION)
        # XDG_RUNTIME_DIR must stay the caller's for other programs: only PulseAudio's own variables are set.
        socket = self.folder / "native"
        # A fifth of a second in the server's buffer, heard that much later: a busy machine then loses no samples.
        self.environment = {
            "ALSA_CONFIG_PATH": str(configuration), "PULSE_SERVER": f"unix:{socket}", "PULSE_LATENCY_MSEC": "200",
            "PULSE_RUNTIME_PATH": str(self.folder), "PULSE_STATE_PATH": str(self.folder),
            "PULSE_COOKIE": str(self.folder / "cookie")}
        self._process = subprocess.Popen(
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--log-level=error",
             f"--load=module-null-sink sink_name=out rate={RATE} format=s16le channels=2",
             f"--load=module-native-protocol-unix auth-anonymous=1 socket={socket}"],
            env=os.environ | self.environment | {"HOME": str(self.folder)}, stderr=subprocess.DEVNULL)
        asking = {"args": ["pactl", "info"], "env": os.environ | self.environment, "capture_output": True}
        wait_until(lambda: subprocess.run(**asking, check=False).returncode == 0, "PulseAudio")
        self._heard = self.folder / "heard.raw"
        with open(self._heard, "wb") as target:
            self._recorder = subprocess.Popen(
                ["parec", "-d", "out.monitor", "--raw", f"--rate={RATE}", "--latency-msec=20"],
                stdout=target, env=os.environ | self.environment)
        wait_until(lambda: self._heard.stat().st_size > 0, "the recorder's first samples")
        return self

    def __exit__(self, *_):
        stop(self._recorder)
        stop(self._process)
        self._scratch.cleanup()

    def samples(self):
        """Everything so far: one row a frame, left and right."""
        raw = np.fromfile(self._heard, dtype="<i2")
        return raw[: len(raw) // 2 * 2].reshape(-1, 2)


def write_wave(path, samples):
    """Samples of -1 to 1, in 16 bits, on both channels."""
    path.unlink(missing_ok=True)  # not the build's one behind a link
    with wave.open(str(path), "wb") as file:
        file.setparams((2, 2, RATE, 0, "NONE", ""))
        file.writeframes(np.repeat(np.multiply(samples, 32767).astype("<i2"), 2).tobytes())


def write_tone(path, hz, seconds=3):
    # whole periods: the joint of a loop cannot be heard
    write_wave(path, np.sin(2 * np.pi * hz * np.arange(RATE * seconds) / RATE) / 2)


def loudness(samples):
    """Root mean square of the recording, 0 to 1."""
    assert len(samples), "nothing was recorded"
    return float(np.sqrt(np.mean((samples.astype(np.float64) / 32768) ** 2)))


def longest_gap_s(samples, silence=8):
    """Seconds of the longest silence between two audible frames."""
    loud = np.flatnonzero(np.abs(samples.astype(np.int32)).max(axis=1) > silence)
    return float(np.diff(loud).max() - 1) / RATE  # of silence alone there is no answer


def main_tone_hz(samples):
    """The strongest frequency of the recording's left channel."""
    left = samples[:, 0].astype(np.float64) * np.hanning(len(samples))
    spectrum = np.abs(np.fft.rfft(left))
    return float(np.argmax(spectrum) * RATE / len(left))
