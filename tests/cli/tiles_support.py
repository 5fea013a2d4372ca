"""What the end-to-end tests of veldara-tiles share: running it, photos, and another reader."""

import json
import os
import random
import shutil
import subprocess
import tempfile
import unittest

from PIL import Image

Image.MAX_IMAGE_PIXELS = None

PROGRAM = os.environ["VELDARA_TILES"]
# Set by the build; a sanitizer keeps freed memory and leaves no room for limits.
SANITIZED = bool(os.environ.get("VELDARA_SANITIZED"))
# Set by hand on a machine where users cannot mount a disk of their own.
NO_MOUNTS = bool(os.environ.get("VELDARA_NO_MOUNTS"))


def noise(width, height, seed=1):
    """A photo whose every pixel tells where it comes from, as far as bytes can."""
    source = random.Random(seed)
    return Image.frombytes("RGB", (width, height), source.randbytes(3 * width * height))


def smooth(width, height):
    """A photo that JPEG keeps nearly as it is."""
    across = Image.linear_gradient("L").rotate(90).resize((width, height))
    down = Image.linear_gradient("L").resize((width, height))
    both = Image.radial_gradient("L").resize((width, height))
    return Image.merge("RGB", (across, down, both))


def sampling(picture):
    """Width and height of the sampling factors of a JPEG's first component."""
    return picture.layer[0][1:3]


class TilesTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="veldara-cli-")
        self.addCleanup(shutil.rmtree, self.folder)
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": self.folder,
            "XDG_DATA_HOME": self.path("data"),
            "XDG_CONFIG_HOME": self.path("config"),
            "LC_ALL": "C.UTF-8",
        }
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "LD_LIBRARY_PATH"):
            if name in os.environ:
                self.environment[name] = os.environ[name]

    def path(self, *names):
        return os.path.join(self.folder, *names)

    def photo(self, name, picture, **options):
        picture.save(self.path(name), **options)
        return self.path(name)

    def run_tiles(self, *arguments, under=(), **options):
        """Runs the program away from any terminal, under the eyes of another if one is named."""
        return subprocess.run(
            [*under, PROGRAM, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, env=self.environment, cwd=self.folder, timeout=300, **options)

    def run_on_small_disk(self, size, *arguments):
        """Runs it with a disk of that many bytes on the folder "disk", in a namespace of its own.
        Who is not root becomes it there. Returns the result; what the disk held is then in the
        folder "kept"."""
        os.makedirs(self.path("disk"), exist_ok=True)
        script = ('mount -t tmpfs -o size="$1" none disk || exit 99; shift; "$@"; status=$?; '
                  "cp -R disk kept || exit 99; exit $status")
        user = () if os.geteuid() == 0 else ("--user", "--map-root-user")
        result = self.run_tiles(*arguments, under=("unshare", *user, "--mount", "sh", "-c", script,
                                                   "sh", str(size)))
        self.assertNotEqual(result.returncode, 99, result.stderr)
        return result

    def system_calls(self, kinds, *arguments):
        """Runs it under strace; returns its calls of those kinds, without the thread's number."""
        # The leak sanitizer cannot work in a program that is watched.
        self.environment["ASAN_OPTIONS"] = (self.environment.get("ASAN_OPTIONS", "")
                                            + ":detect_leaks=0")
        with tempfile.NamedTemporaryFile() as log:
            watch = ["strace", "-f", "-y", "-s", "4096", "-e", "trace=" + kinds, "-o", log.name]
            result = self.run_tiles(*arguments, under=watch)
            self.assertEqual((result.returncode, result.stderr), (0, b""))
            lines = log.read().decode("utf-8", "replace").splitlines()
        return [line.split(maxsplit=1)[1] for line in lines]

    def done(self, *arguments):
        """Runs it and expects it to be done without a word on standard error."""
        result = self.run_tiles(*arguments)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        return result.stdout

    def refused(self, status, *arguments):
        """Runs it and expects that status; returns what it said."""
        result = self.run_tiles(*arguments)
        said = result.stderr.decode("utf-8", "replace")
        self.assertEqual(result.returncode, status, said)
        self.assertEqual(result.stdout, b"")
        self.assertTrue(said.startswith("veldara-tiles: "), said)
        return said

    def plan(self, *arguments):
        return json.loads(self.done("--plan", *arguments))

    def check_files(self, plan, picture, rotate_tiles=False):
        """Every file that the plan names holds exactly the photo's pixels."""
        folder = os.path.dirname(plan["tiles"][0]["file"])
        names = sorted(os.path.basename(tile["file"]) for tile in plan["tiles"])
        self.assertEqual(sorted(os.listdir(os.path.join(self.folder, folder))), names)
        for tile in plan["tiles"]:
            cut = picture.crop((tile["left"], tile["top"], tile["right"] + 1, tile["bottom"] + 1))
            if rotate_tiles:
                cut = cut.transpose(Image.Transpose.ROTATE_90)
            with Image.open(os.path.join(self.folder, tile["file"])) as written:
                self.assertEqual(written.size, (tile["width"], tile["height"]))
                self.assertEqual(written.mode, "RGB")
                self.assertEqual(written.tobytes(), cut.tobytes(), tile["file"])
