"""The Debian package, unpacked by dpkg under a folder of its own and played by an ordinary user."""

import os
import shutil
import subprocess
import tempfile
from pathlib import Path

import pytest

from support.installation import built_installation
from support.robot import NO_SOUND, Robot

NOBODY = 65534
AS_PLAYER = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"] if os.geteuid() == 0 else []
AS_ROOT = [] if os.geteuid() == 0 else ["unshare", "-r"]  # dpkg gives every file to root


def run(*command, **options):
    return subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True, **options).stdout


@pytest.fixture(scope="module")
def package():
    with tempfile.TemporaryDirectory() as folder:
        run("cpack", "--config", built_installation().parent / "CPackConfig.cmake", "-B", folder)
        yield next(Path(folder).glob("*.deb"))


class System:
    """A tree with a package database of its own; nothing of this machine is changed."""

    def __init__(self, package):
        self.root = Path(tempfile.mkdtemp())
        self.root.chmod(0o755)
        for name in ("info", "updates"):
            (self.root / "var/lib/dpkg" / name).mkdir(parents=True)
        (self.root / "var/lib/dpkg/status").touch()
        self.home = self.root / "player"
        self.home.mkdir()
        self.home.chmod(0o777)
        self.dpkg("--unpack", package)

    def dpkg(self, *arguments):
        # the libraries are those of this machine, and no script of the package must run against it
        return run(*AS_ROOT, "dpkg", f"--root={self.root}", "--force-depends", "--force-script-chrootless", "--no-triggers", *arguments)

    def files(self):
        """{path: time of its last change}"""
        return {path: path.stat().st_mtime_ns for path in (self.root / "usr").rglob("*")}


@pytest.fixture
def system(package):
    system = System(package)
    yield system
    shutil.rmtree(system.root, ignore_errors=True)


class Player(Robot):
    """Starts the installed launcher instead of a copy of the build."""

    def __init__(self, system):
        super().__init__(installation=self)
        self.system = system

    def path(self, name):
        return self.system.home / ".local/share/veldor" / name

    def start(self, language="en_GB.UTF-8"):
        alsa = self.system.root / "alsa.conf"
        alsa.write_text(NO_SOUND)
        self._window = None
        self._program = subprocess.Popen(
            [*AS_PLAYER, self.system.root / "usr/bin/veldor", "no", "films"], cwd="/", stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            env={"PATH": os.environ["PATH"], "DISPLAY": self.desktop.name, "HOME": str(self.system.home), "LANG": language,
                 "ALSA_CONFIG_PATH": str(alsa)})
        return self.wait_for_menu()

    def errors(self):
        return ""

    def leave(self):
        self.key("x", "Alt_L")
        assert self.wait_for_end() == 0


@pytest.fixture
def player(system):
    with Player(system) as player:
        yield player


def test_what_the_package_says(package):
    fields = dict(line.split(": ", 1) for line in run("dpkg", "--field", package).splitlines() if ": " in line and line[0] != " ")
    assert fields["Package"] == "veldor" and fields["Version"] == "1.2.8"
    needed = [each.split()[0] for each in fields["Depends"].split(", ")]
    assert {"liballegro4.4", "libfreetype6", "libx11-6", "libc6"} <= set(needed)
    assert "install ok installed" in run("dpkg-query", "-W", "-f=${Status}\n", *needed)
    contents = run("dpkg", "--contents", package).splitlines()
    assert all(line.split()[1] == "root/root" and line[8] != "w" for line in contents if line[0] != "l")
    assert not any("logfiles/" in line and not line.endswith("/") for line in contents), "somebody's log is in the package"


def test_the_desktop_finds_program_and_icon(system):
    entry = (system.root / "usr/share/applications/veldor.desktop").read_text()
    values = dict(line.split("=", 1) for line in entry.splitlines()[1:])
    assert (system.root / "usr/bin" / values["Exec"]).exists()
    for size in (48, 256):
        assert f"{size} x {size}" in run("file", system.root / f"usr/share/icons/hicolor/{size}x{size}/apps/{values['Icon']}.png")


def test_the_tool_comes_with_manual_and_completion(system):
    tool = system.root / "usr/bin/vcckit"
    assert "clean" in run(tool, "check", system.root / "usr/lib/games/veldor")
    assert (system.root / "usr/share/man/man1/vcckit.1").exists()
    completion = system.root / "usr/share/bash-completion/completions/vcckit"
    assert "_vcckit" in run("bash", "-c", f"source {completion}; complete -p vcckit")


def test_a_player_without_rights_plays_and_keeps_settings(system, player):
    before = system.files()
    player.start()
    player.move(140, 357)
    menu = player.standing_picture()
    player.click_here()
    player.wait_for_change(menu)
    player.click(260, 427)  # message delay: medium to long
    player.click(80, 540)  # accept
    player.wait_for_menu().leave()
    player.start().leave()
    assert "message_delay = 2" in player.path("data/configs/vcc.cfg").read_text("latin-1")
    assert player.path("data/logfiles/veldor_log.txt").parent.is_dir()
    assert system.files() == before


def test_a_german_desktop_gets_german_screens(player):
    player.start("de_DE.UTF-8")
    german = player.standing_picture()
    player.leave()
    player.path("tools/language.ini").write_text("1\n")
    player.start("de_DE.UTF-8")
    assert (player.standing_picture()[186:428, 34:250] != german[186:428, 34:250]).any()


def test_an_upgrade_and_removal_leave_what_is_the_players(system, player):
    player.start().leave()
    own, installed = player.path("vcc"), system.root / "usr/lib/games/veldor/vcc"
    player.path("gone.so").symlink_to(system.root / "usr/lib/games/veldor/gone.so")
    player.path("mine.txt").write_text("mine")
    own.write_bytes(b"an older program")
    player.start().leave()
    assert own.read_bytes() == installed.read_bytes()
    assert not player.path("gone.so").is_symlink() and player.path("mine.txt").read_text() == "mine"
    system.dpkg("--remove", "veldor")
    assert not system.files(), sorted(system.files())[:5]
    assert player.path("data/configs/vcc.cfg").exists()


def test_no_home_is_told(system):
    done = subprocess.run([system.root / "usr/bin/veldor"], env={"PATH": os.environ["PATH"]}, capture_output=True, text=True, check=False)
    assert done.returncode != 0 and "no home folder" in done.stderr
