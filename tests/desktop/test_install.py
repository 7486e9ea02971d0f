"""What cmake --install and cpack -G DEB make of a build folder:

    python3 test_install.py BUILD_DIR VERSION CMAKE CPACK [Class[.method] ...]

cmake --install into a prefix of the test's own puts the executable in bin/,
the program folder in share/valkenhorn (where the installed program finds it),
the desktop entry, the icon at 48, 128 and 256 pixels in the hicolor theme and
the AppStream metainfo, and nothing else; desktop-file-validate and
appstreamcli validate accept the two files. cpack -G DEB makes a package with
the same files and the runtime dependencies, none of the build's; unpacked
with dpkg-deb -x into a root of the test's own, its executable tells its
version and, under an Xvfb, ends its start-up with the program folder of that
root. Standard library only; exit code 77 (skipped) without dpkg-deb."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))

from valkenhorn_session import Session, XServer, run_tests  # noqa: E402

BUILD = VERSION = CMAKE = CPACK = None
APP_ID = "nl.valkenhorn.Valkenhorn"
ICON_SIZES = (48, 128, 256)
RUNTIME_PACKAGES = ("libqt6widgets6", "libqt6gui6", "libqt6core6", "libqt6network6", "libqt6multimedia6",
                    "libqt6dbus6", "qt6-qpa-plugins", "fonts-liberation", "fonts-dejavu-core")
# Nothing a package needs only to be built: compilers, headers, test and build tools.
BUILD_ONLY = re.compile(r"(-dev\b|^cmake|^ninja|^g\+\+|^gcc\b|^build-essential|gtest|gmock|benchmark|xvfb|"
                        r"^python3|^pkg-config|qt6-base-dev-tools|^libgif)")


def png_header(path):
    """(width, height, bit depth, colour type) of a PNG file."""
    with open(path, "rb") as f:
        head = f.read(33)
    if head[:8] != b"\x89PNG\r\n\x1a\n" or head[12:16] != b"IHDR":
        return None
    return (int.from_bytes(head[16:20], "big"), int.from_bytes(head[20:24], "big"), head[24], head[25])


def desktop_entry(path):
    """The keys of the group [Desktop Entry]."""
    keys, group = {}, None
    with open(path, encoding="utf-8") as f:
        for line in f:
            line = line.rstrip("\n")
            if line.startswith("[") and line.endswith("]"):
                group = line[1:-1]
            elif group == "Desktop Entry" and "=" in line and not line.startswith("#"):
                key, value = line.split("=", 1)
                keys[key] = value
    return keys


def files_under(root):
    found = []
    for folder, _, names in os.walk(root):
        for name in names:
            found.append(os.path.relpath(os.path.join(folder, name), root))
    return sorted(found)


class Installed(unittest.TestCase):
    """cmake --install --prefix into a temporary folder."""

    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.mkdtemp(prefix="vk-install-")
        cls.prefix = os.path.join(cls.scratch, "usr")
        done = subprocess.run([CMAKE, "--install", BUILD, "--prefix", cls.prefix], capture_output=True)
        if done.returncode != 0:
            raise AssertionError("cmake --install failed:\n" + done.stdout.decode() + done.stderr.decode())
        cls.files = files_under(cls.prefix)

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.scratch, ignore_errors=True)

    def path(self, relative):
        return os.path.join(self.prefix, relative)

    def test_only_the_programs_files(self):
        allowed = ("bin/valkenhorn", "share/valkenhorn/", "share/applications/%s.desktop" % APP_ID,
                   "share/icons/hicolor/", "share/metainfo/%s.metainfo.xml" % APP_ID)
        strays = [f for f in self.files if not any(f == a or (a.endswith("/") and f.startswith(a))
                                                   for a in allowed)]
        self.assertEqual([], strays)

    def test_executable_in_bin(self):
        self.assertTrue(os.access(self.path("bin/valkenhorn"), os.X_OK))
        done = subprocess.run([self.path("bin/valkenhorn"), "--version"], capture_output=True, timeout=30)
        self.assertEqual(b"valkenhorn %s\n" % VERSION.encode(), done.stdout)

    def test_program_folder(self):
        folder = self.path("share/valkenhorn")
        for name in ("splash.gif", "intro.wav", "message.wav", "rolldice.wav", "groen_leger", "bruin_leger",
                     "help/rules.html", "help/sharebox.html"):
            self.assertTrue(os.path.exists(os.path.join(folder, name)), name)
        self.assertFalse(os.path.exists(os.path.join(folder, "valkenhorn")))

    def test_icon_at_every_size(self):
        icons = [f for f in self.files if f.startswith("share/icons/")]
        self.assertEqual(sorted("share/icons/hicolor/%dx%d/apps/%s.png" % (s, s, APP_ID) for s in ICON_SIZES),
                         icons)
        for size in ICON_SIZES:
            # Eight bits a sample, RGBA.
            self.assertEqual((size, size, 8, 6),
                             png_header(self.path("share/icons/hicolor/%dx%d/apps/%s.png" % (size, size, APP_ID))))

    def test_desktop_entry(self):
        path = self.path("share/applications/%s.desktop" % APP_ID)
        keys = desktop_entry(path)
        self.assertEqual("Application", keys.get("Type"))
        self.assertEqual("Valkenhorn", keys.get("Name"))
        self.assertEqual("Valkenhorn", keys.get("Name[nl]"))
        self.assertTrue(keys.get("Comment[nl]"))
        self.assertEqual("valkenhorn", keys.get("Exec").split()[0])
        self.assertEqual(APP_ID, keys.get("Icon"))
        self.assertEqual("Game;StrategyGame;", keys.get("Categories"))
        self.assertEqual("false", keys.get("Terminal"))
        validator = shutil.which("desktop-file-validate")
        self.assertIsNotNone(validator, "desktop-file-validate (desktop-file-utils) is missing")
        done = subprocess.run([validator, path], capture_output=True)
        self.assertEqual((0, b""), (done.returncode, done.stdout + done.stderr))

    def test_metainfo(self):
        path = self.path("share/metainfo/%s.metainfo.xml" % APP_ID)
        root = ElementTree.parse(path).getroot()
        self.assertEqual("desktop-application", root.get("type"))
        self.assertEqual(APP_ID, root.findtext("id"))
        self.assertEqual("Valkenhorn", root.findtext("name"))
        self.assertEqual(APP_ID + ".desktop", root.findtext("launchable"))
        self.assertEqual("valkenhorn", root.findtext("provides/binary"))
        self.assertEqual(VERSION, root.find("releases/release").get("version"), "the newest release")
        validator = shutil.which("appstreamcli")
        self.assertIsNotNone(validator, "appstreamcli (appstream) is missing")
        done = subprocess.run([validator, "validate", "--no-net", path], capture_output=True)
        self.assertEqual(0, done.returncode, (done.stdout + done.stderr).decode())

    def test_installed_program_finds_its_folder(self):
        with XServer() as x, Session(self.path("bin/valkenhorn"), x.display) as s:
            s.wait_started()
            self.assertEqual(self.path("share/valkenhorn") + "/", s.state()["ProgramFolder"])


class DebianPackage(unittest.TestCase):
    """cpack -G DEB with the build's configuration."""

    @classmethod
    def setUpClass(cls):
        if not shutil.which("dpkg-deb") or not shutil.which("dpkg-shlibdeps"):
            raise unittest.SkipTest("no dpkg-deb or dpkg-shlibdeps here")
        cls.scratch = tempfile.mkdtemp(prefix="vk-deb-")
        done = subprocess.run([CPACK, "-G", "DEB", "-B", cls.scratch, "--config",
                               os.path.join(BUILD, "CPackConfig.cmake")], capture_output=True)
        if done.returncode != 0:
            raise AssertionError("cpack failed:\n" + done.stdout.decode() + done.stderr.decode())
        debs = [n for n in os.listdir(cls.scratch) if n.endswith(".deb")]
        if len(debs) != 1:
            raise AssertionError("cpack made %r" % debs)
        cls.deb = os.path.join(cls.scratch, debs[0])
        # The package unpacked as dpkg would install it, but under a root of
        # the test's own: no root rights, nothing outside the scratch folder.
        cls.root = os.path.join(cls.scratch, "root")
        done = subprocess.run(["dpkg-deb", "-x", cls.deb, cls.root], capture_output=True)
        if done.returncode != 0:
            raise AssertionError("dpkg-deb -x failed:\n" + done.stdout.decode() + done.stderr.decode())

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.scratch, ignore_errors=True)

    def unpacked(self, relative):
        return os.path.join(self.root, relative)

    def field(self, name):
        return subprocess.run(["dpkg-deb", "-f", self.deb, name], capture_output=True,
                              check=True).stdout.decode().strip()

    def depends(self):
        return [part.strip().split()[0] for part in self.field("Depends").split(",") if part.strip()]

    def test_name_version_section(self):
        self.assertEqual(("valkenhorn", VERSION, "games"),
                         (self.field("Package"), self.field("Version"), self.field("Section")))
        self.assertTrue(self.deb.endswith("valkenhorn_%s_%s.deb" % (VERSION, self.field("Architecture"))))

    def test_runtime_dependencies(self):
        depends = self.depends()
        for package in RUNTIME_PACKAGES:
            self.assertIn(package, depends)

    def test_no_build_only_dependency(self):
        fields = self.depends() + [p.strip().split()[0] for p in self.field("Recommends").split(",") if p.strip()]
        self.assertEqual([], [p for p in fields if BUILD_ONLY.search(p)])

    def test_files(self):
        listing = subprocess.run(["dpkg-deb", "-c", self.deb], capture_output=True, check=True).stdout.decode()
        names = {line.split()[-1].lstrip(".") for line in listing.splitlines() if line.strip()}
        for path in ("/usr/bin/valkenhorn", "/usr/share/applications/%s.desktop" % APP_ID,
                     "/usr/share/metainfo/%s.metainfo.xml" % APP_ID, "/usr/share/valkenhorn/splash.gif",
                     "/usr/share/valkenhorn/help/rules.html"):
            self.assertIn(path, names)
        for size in ICON_SIZES:
            self.assertIn("/usr/share/icons/hicolor/%dx%d/apps/%s.png" % (size, size, APP_ID), names)
        self.assertFalse([n for n in names if "tests-bin" in n or "artgen" in n or n.endswith("valkenhorn-rules")])

    def test_unpacked_files(self):
        """dpkg-deb -x lays out the executable, the program folder, the
        desktop entry, the metainfo and the icons under usr/, and nothing
        else; the program folder holds what the build's holds."""
        files = files_under(self.root)
        self.assertTrue(os.access(self.unpacked("usr/bin/valkenhorn"), os.X_OK))
        allowed = ("usr/bin/valkenhorn", "usr/share/valkenhorn/", "usr/share/applications/%s.desktop" % APP_ID,
                   "usr/share/icons/hicolor/", "usr/share/metainfo/%s.metainfo.xml" % APP_ID)
        self.assertEqual([], [f for f in files if not any(f == a or (a.endswith("/") and f.startswith(a))
                                                          for a in allowed)])
        self.assertIn("usr/share/applications/%s.desktop" % APP_ID, files)
        self.assertIn("usr/share/metainfo/%s.metainfo.xml" % APP_ID, files)
        for size in ICON_SIZES:
            self.assertEqual((size, size, 8, 6), png_header(
                self.unpacked("usr/share/icons/hicolor/%dx%d/apps/%s.png" % (size, size, APP_ID))))
        # Every picture, sound and help page of the build's program folder;
        # none of the executables beside them.
        built = [f for f in files_under(os.path.join(BUILD, "program"))
                 if f.endswith((".gif", ".bmp", ".wav", ".html"))]
        self.assertIn("splash.gif", built)
        self.assertEqual(built, files_under(self.unpacked("usr/share/valkenhorn")))

    def test_unpacked_executable_tells_its_version(self):
        done = subprocess.run([self.unpacked("usr/bin/valkenhorn"), "--version"], capture_output=True, timeout=30)
        self.assertEqual((0, b"valkenhorn %s\n" % VERSION.encode()), (done.returncode, done.stdout))

    def test_unpacked_program_finds_its_folder(self):
        """Started from the unpacked root, the program ends its start-up with
        the program folder beside it in that root (../share/valkenhorn from
        its own folder), not with the build's or a system-wide one."""
        with XServer() as x, Session(self.unpacked("usr/bin/valkenhorn"), x.display) as s:
            s.wait_started()
            self.assertEqual(os.path.realpath(self.unpacked("usr/share/valkenhorn")) + "/", s.state()["ProgramFolder"])
            self.assertTrue(any(line.startswith("End of Form Load at ") for line in s.log_lines()))
            self.assertEqual([], [line for line in s.log_lines() if line.startswith("run-time fault: ")])


def main():
    global BUILD, VERSION, CMAKE, CPACK
    if len(sys.argv) < 5:
        sys.stderr.write(__doc__)
        return 2
    BUILD, VERSION, CMAKE, CPACK = os.path.abspath(sys.argv[1]), sys.argv[2], sys.argv[3], sys.argv[4]
    names = sys.argv[5:]
    return run_tests(sys.modules[__name__], names)


if __name__ == "__main__":
    sys.exit(main())
