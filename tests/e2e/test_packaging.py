"""The Debian packages of program and tool, unpacked by dpkg under a folder of their own, played by an ordinary user."""

import os
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

import pytest

from support import menu
from support.installation import CONFIG, PROJECT, built_installation
from support.robot import Robot
from support.system import NO_SOUND, SYSTEM

AS_PLAYER = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups"] if os.geteuid() == 0 else []
AS_ROOT = [] if os.geteuid() == 0 else ["unshare", "-r"]  # dpkg gives every file to root
GAME = "usr/lib/games/veldor"


def run(*command):
    return subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True).stdout


@pytest.fixture(scope="module")
def packages():
    """{name: file}"""
    with tempfile.TemporaryDirectory() as folder:
        # what players get is compressed for a minute
        run("cpack", "--config", built_installation().parent / "CPackConfig.cmake", "-B", folder, "-D",
            "CPACK_DEBIAN_COMPRESSION_TYPE=gzip")
        yield {path.name.split("_")[0]: path for path in Path(folder).glob("*.deb")}


class Player(Robot):
    """Starts the launcher installed in a tree with its own package database, not a copy of the build."""

    system = SYSTEM

    def __init__(self, packages):
        super().__init__(installation=self, scale=None)
        self.root = Path(tempfile.mkdtemp())
        self.root.chmod(0o755)
        for name in ("info", "updates"):
            (self.root / "var/lib/dpkg" / name).mkdir(parents=True)
        (self.root / "var/lib/dpkg/status").touch()
        (self.root / "alsa.conf").write_text(NO_SOUND)
        self.home = self.root / "player"
        self.home.mkdir()
        self.home.chmod(0o777)
        self.dpkg("--unpack", *packages.values())

    def dpkg(self, *arguments):
        # the libraries are those of this machine, and no script of the package must run against it
        forced = "--force-depends", "--force-script-chrootless", "--no-triggers"
        return run(*AS_ROOT, "dpkg", f"--root={self.root}", *forced, *arguments)

    def files(self):
        """{path: time of its last change} of the installed files."""
        return {path: path.stat().st_mtime_ns for path in (self.root / "usr").rglob("*")}

    def path(self, name):
        return self.home / ".local/share/veldor" / name

    def start(self, language="en_GB.UTF-8"):
        self._window = None
        self._program = subprocess.Popen(
            [*AS_PLAYER, self.root / "usr/games/veldor", "no", "films"], cwd="/", stderr=subprocess.DEVNULL,
            env={"PATH": os.environ["PATH"], "DISPLAY": self.desktop.name, "HOME": str(self.home), "LANG": language,
                 "ALSA_CONFIG_PATH": str(self.root / "alsa.conf")})
        return self.wait_for_menu()

    def errors(self):
        return ""


@pytest.fixture
def player(packages):
    with Player(packages) as player:
        yield player
    shutil.rmtree(player.root, ignore_errors=True)


NEEDED = {"veldor": {"liballegro4.4", "libfreetype6", "libx11-6", "libc6"},
          "veldor-tools": {"veldor", "libpng16-16", "libcpp-httplib0.11", "libc6"}}


def test_what_the_packages_say(packages):
    version = re.search(r"project\(veldor VERSION ([0-9.]+)", (PROJECT / "CMakeLists.txt").read_text())[1]
    assert packages.keys() == NEEDED.keys()
    for name, package in packages.items():
        fields = dict(re.findall(r"(?m)^(\S+): (.*)$", run("dpkg", "--field", package)))
        assert fields["Package"] == name and fields["Version"] == version
        needed = {each.split()[0] for each in fields["Depends"].split(", ")}
        assert NEEDED[name] <= needed and ("libcpp-httplib0.11" in needed) == (name == "veldor-tools")
        states = run("dpkg-query", "-W", "-f=${Status}\n", *needed - {"veldor"}).splitlines()
        assert set(states) == {"install ok installed"}
        contents = run("dpkg", "--contents", package).splitlines()
        assert all(line.split()[1] == "root/root" and line[8] != "w" for line in contents if line[0] != "l")
        assert not any("logfiles/" in line and not line.endswith("/") for line in contents), "a log is in the package"


def test_the_desktop_finds_program_icon_and_tool(packages, player):
    assert run("lintian", "--fail-on", "none", "--allow-root", *packages.values()) == ""
    installed = player.root / "usr"
    run("appstreamcli", "validate", "--no-net", *(installed / "share/metainfo").iterdir())
    entry = installed / "share/applications/veldor.desktop"
    run("desktop-file-validate", entry)
    values = dict(line.split("=", 1) for line in entry.read_text().splitlines()[1:])
    assert (installed / "games" / values["Exec"]).exists()
    for size in (16, 24, 32, 48, 64, 128, 256):
        icon = installed / f"share/icons/hicolor/{size}x{size}/apps/{values['Icon']}.png"
        assert f"{size} x {size}" in run("file", icon)
    assert "clean" in run(installed / "bin/vcckit", "check", player.root / GAME)
    edited = subprocess.run([installed / "bin/vcckit", "edit", "/nowhere"], capture_output=True, text=True)
    assert edited.returncode == 2 and "/nowhere" in edited.stderr, "the editor is not there"
    for file in ("man/man6/veldor.6.gz", "man/man1/vcckit.1.gz", "bash-completion/completions/vcckit",
                 "zsh/vendor-completions/_vcckit", "fish/vendor_completions.d/vcckit.fish"):
        assert (installed / "share" / file).exists()
    for page in set(re.findall(r"docs/\w+\.md", (PROJECT / "docs/vcckit.1").read_text())) | {"docs/faults.md"}:
        assert (installed / "share/doc/veldor-tools" / page).exists()


def test_a_player_without_rights_plays_and_keeps_what_is_the_players(player):
    before = player.files()
    player.start("de_DE.UTF-8")
    assert menu.look(player, "Leave", german=True) == menu.REST
    assert player.leave() == 0
    player.path("tools/language.ini").write_text("1\n")
    player.start("de_DE.UTF-8")
    assert menu.look(player, "Leave") == menu.REST
    menu.choose(player, "Options")
    player.standing_picture()
    player.click(260, 427)  # message delay: medium to long
    player.click(80, 540)  # accept
    assert player.wait_for_menu().leave() == 0
    assert player.start().leave() == 0
    assert "message_delay = 2" in player.path(CONFIG).read_text("latin-1")
    assert player.files() == before
    # an upgrade, and the removal
    player.path("gone.so").symlink_to(player.root / GAME / "gone.so")
    player.path("mine.txt").write_text("mine")
    player.path("vcc").write_bytes(b"an older program")
    assert player.start().leave() == 0
    assert player.path("vcc").read_bytes() == (player.root / GAME / "vcc").read_bytes()
    assert not player.path("gone.so").is_symlink() and player.path("mine.txt").exists()
    player.dpkg("--remove", "veldor-tools", "veldor")
    assert not player.files()
    assert player.path(CONFIG).exists()
