"""What differs between the systems for a test that starts the program and looks at it: the program of this system, or
the one for Windows under Wine. The installation under test (VELDOR_INSTALLATION) decides."""

import os
import shlex
import shutil
import subprocess
from pathlib import Path


PROJECT = Path(__file__).resolve().parents[2]
# A silent sound card.
NO_SOUND = """</usr/share/alsa/alsa.conf>
pcm.!default { type null }
ctl.!default { type null }
"""


class Linux:
    installation, folder_prefix = "build/release/veldor", "e2e-"
    name, program, library = "linux", "vcc", ".so"
    window_titles, has_inner_window, has_own_desktop = ("Veldor CC", "vcc"), True, False
    compiler = ["cc", "-shared", "-fPIC"]
    pad_source, pad_library = "kernel_pads.c", "kernel_pads.so"
    wrapper = shlex.split(os.environ.get("VELDOR_WRAPPER", ""))  # a command that becomes the program
    slowness = 10 if wrapper else 1

    def command(self, arguments, program=None):
        return [*self.wrapper, program or f"./{self.program}", *arguments]

    def environment(self):
        return {}

    def pad_environment(self, library):
        return {"LD_PRELOAD": str(library)}

    def end(self):
        pass


class Wine:
    """In Wine's virtual desktop, a window of 1024 x 768: a program's windows there are none of the X server's."""

    installation, folder_prefix = "build/windows/veldor", "Übung 日本 "
    name, program, library = "windows", "vcc.exe", ".dll"
    window_titles, has_inner_window, has_own_desktop = ("Default - Wine desktop",), False, True
    close_button = 792, -11  # in the frame of the program's window
    compiler = ["x86_64-w64-mingw32-gcc", "-shared", "-static", "-s"]
    pad_source, pad_library = "windows_pads.c", "ddraw.dll"
    wrapper = ["/usr/lib/wine/wine64"]
    slowness = 5
    server = "/usr/lib/wine/wineserver64"
    prefix = Path(os.environ.get("VELDOR_WINE_PREFIX", PROJECT / "build/windows-tests/prefix"))
    registry = [("Explorer", "Desktop", "Default"), (r"Explorer\Desktops", "Default", "1024x768"),
                ("Drivers", "Audio", "alsa")]

    def command(self, arguments, program=None):
        self.make_prefix()
        return [*self.wrapper, program or self.program, *arguments]

    def environment(self):
        # Without winedbg a program that crashes ends at once.
        return {"WINEPREFIX": str(self.prefix), "WINEARCH": "win64", "WINEDEBUG": "-all", "HOME": str(self.prefix),
                "WINEDLLOVERRIDES": "mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d",
                "LD_PRELOAD": str(self.prefix / "plain_warp.so")}

    def pad_environment(self, _):
        return {"WINEDLLOVERRIDES": self.environment()["WINEDLLOVERRIDES"] + ";ddraw=n,b"}

    def run(self, *command, display="", **options):
        """A program of Windows without a window of its own, to its end."""
        return subprocess.run([*self.wrapper, *map(str, command)],
                              env=os.environ | self.environment() | {"DISPLAY": display},
                              timeout=120, check=False, **options)

    def end(self):
        """Ends everything in the prefix, for the next desktop."""
        subprocess.run([self.server, "-k"], env=os.environ | self.environment(), check=False,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def make_prefix(self):
        """Sets Wine up, once; takes some 20 seconds."""
        ready = self.prefix / "ready"
        if ready.exists():
            return
        shutil.rmtree(self.prefix, ignore_errors=True)
        self.prefix.mkdir(parents=True)
        subprocess.run(["cc", "-shared", "-fPIC", "-D_GNU_SOURCE", "-o", self.prefix / "plain_warp.so",
                        Path(__file__).with_name("plain_warp.c")], check=True)
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        self.run("wineboot", "-i", **quiet)
        for key, value, text in self.registry:
            added = self.run("reg", "add", rf"HKCU\Software\Wine\{key}", "/v", value, "/d", text, "/f", **quiet)
            if added.returncode != 0:
                raise RuntimeError("Wine cannot be set up")
        subprocess.run([self.server, "-w"], env=os.environ | self.environment(), timeout=60, check=True)
        ready.touch()


def installation_folder():
    return Path(os.environ.get("VELDOR_INSTALLATION", PROJECT / Linux.installation))


SYSTEM = Wine() if (installation_folder() / Wine.program).exists() else Linux()

if __name__ == "__main__":
    Wine().make_prefix()
