"""Faults made to happen to the real command-line program while it runs."""

import os
import random
import resource
import shutil
import signal
import subprocess
import sys
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "cli"))
from tiles_support import PROGRAM, TilesTest, noise, smooth  # noqa: E402


def content_of(folder):
    """Name and bytes of each file that has a final name."""
    if not os.path.isdir(folder):
        return {}
    files = {}
    for name in os.listdir(folder):
        if not name.startswith(".veldara-"):
            with open(os.path.join(folder, name), "rb") as file:
                files[name] = file.read()
    return files


class FaultTest(TilesTest):
    def start(self, *arguments, **options):
        return subprocess.Popen(
            [PROGRAM, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE, env=self.environment, cwd=self.folder, **options)

    def undisturbed(self, *arguments):
        """What the run writes when nothing happens to it, and how long it takes."""
        start = time.monotonic()
        self.done(*arguments, "--out", self.path("undisturbed"), "--quiet")
        return content_of(self.path("undisturbed")), time.monotonic() - start

    def assertWhole(self, folder, expected):
        found = content_of(folder)
        for name, content in found.items():
            self.assertIn(name, expected)
            self.assertTrue(content == expected[name], f"{name} is not whole")
        return len(found)


class Killed(FaultTest):
    def kill_at(self, run, event):
        """Kills the run as soon as the event has come; True when that was before its end."""
        end = time.monotonic() + 120
        while not event() and run.poll() is None and time.monotonic() < end:
            pass
        run.kill()
        run.communicate()
        return run.returncode == -signal.SIGKILL

    def test_at_a_hundred_moments_leaves_whole_files(self):
        photo = self.photo("photo.bmp", noise(600, 400))
        arguments = (photo, "--wide", "5", "--high", "4", "--format", "tif")
        expected, duration = self.undisturbed(*arguments)
        self.assertEqual(len(expected), 20)
        chance = random.Random(4)
        seen = 0
        for moment in range(100):
            folder = self.path(f"killed{moment}")
            run = self.start(*arguments, "--out", folder, "--quiet")
            time.sleep(chance.random() * duration)
            run.kill()
            run.communicate()
            seen += self.assertWhole(folder, expected)
        self.assertGreater(seen, 20, "the moments were too early to show anything")

    def test_while_it_writes_over_old_tiles_keeps_each_old_or_new(self):
        old = self.photo("old.bmp", noise(1200, 900, 1))
        new = self.photo("new.bmp", noise(1200, 900, 2))
        arguments = ("--wide", "6", "--high", "5", "--base", "tile", "--format", "tif", "--quiet",
                     "--yes")
        self.done(old, *arguments, "--out", self.path("old"))
        self.done(new, *arguments, "--out", self.path("new"))
        before, after = content_of(self.path("old")), content_of(self.path("new"))
        killed, mixed = 0, 0
        for number in range(1, 26):
            folder = self.path(f"both{number}")
            shutil.copytree(self.path("old"), folder)
            tile = os.path.join(folder, f"tile{number:03}.tif")
            file = os.stat(tile).st_ino
            run = self.start(new, *arguments, "--out", folder)
            killed += self.kill_at(run, lambda: os.stat(tile).st_ino != file)
            found = content_of(folder)
            self.assertEqual(sorted(found), sorted(before))
            for name, content in found.items():
                self.assertTrue(content in (before[name], after[name]), f"{name} is neither")
            news = sum(found[name] == after[name] for name in found)
            self.assertGreaterEqual(news, number)
            mixed += news < len(found)
        self.assertGreater(killed, 10, "most runs had ended before they were killed")
        self.assertGreater(mixed, 10, "hardly any run left old tiles beside new ones")


class TwoPrograms(FaultTest):
    def test_write_the_same_tiles_into_one_folder(self):
        photo = self.photo("photo.bmp", noise(900, 600))
        arguments = (photo, "--wide", "6", "--high", "4")
        expected, _ = self.undisturbed(*arguments)
        os.mkdir(self.path("shared"))
        for _ in range(10):
            runs = [self.start(*arguments, "--yes", "--quiet", "--out", self.path("shared")) for _ in range(2)]
            for run in runs:
                _, said = run.communicate(timeout=120)
                self.assertEqual((run.returncode, said), (0, b""))
            self.assertEqual(self.assertWhole(self.path("shared"), expected), 24)


class ThePhoto(FaultTest):
    """Changed under the program's hands: it ends with a sentence or is done, and never crashes."""

    def disturb(self, name, act):
        """Runs it 25 times; returns how many were under way when they were disturbed, and the
        statuses they ended with."""
        arguments = (name, "--wide", "4", "--high", "4", "--format", "bmp", "--yes", "--quiet")
        expected, duration = self.undisturbed(*arguments)
        chance = random.Random(6)
        with open(name, "rb") as file:
            original = file.read()
        under_way, ended = 0, set()
        for moment in range(25):
            with open(name, "wb") as file:
                file.write(original)
            folder = self.path(f"{os.path.basename(name)}{moment}")
            run = self.start(*arguments, "--out", folder)
            time.sleep(chance.random() * duration)
            under_way += run.poll() is None
            act(name, len(original))
            _, said = run.communicate(timeout=120)
            self.assertIn(run.returncode, (0, 1), said)
            self.assertEqual(run.returncode == 1, said.startswith(b"veldara-tiles: "), said)
            ended.add(run.returncode)
            if run.returncode == 0:
                self.assertEqual(self.assertWhole(folder, expected), 16)
            else:
                self.assertWhole(folder, expected)
        self.assertGreater(under_way, 5, "hardly any run was disturbed")
        return ended

    def photos(self):
        picture = smooth(3000, 2000)
        yield self.photo("photo.jpg", picture, quality=90)
        yield self.photo("photo.tif", picture, compression="tiff_lzw")
        yield self.photo("photo.bmp", picture)

    def test_is_cut_short(self):
        for name in self.photos():
            with self.subTest(name):
                ended = self.disturb(name, lambda path, size: os.truncate(path, size // 3))
                self.assertIn(1, ended, "no run noticed")

    def test_is_emptied(self):
        for name in self.photos():
            with self.subTest(name):
                self.assertIn(1, self.disturb(name, lambda path, size: os.truncate(path, 0)),
                              "no run noticed")

    def test_is_removed(self):
        for name in self.photos():
            with self.subTest(name):
                # What is open stays readable.
                self.assertIn(0, self.disturb(name, lambda path, size: os.remove(path)))


class TheFolder(FaultTest):
    def test_is_taken_away_half_way(self):
        photo = self.photo("photo.bmp", noise(2000, 1500))
        folder = self.path("tiles")
        run = self.start(photo, "--wide", "10", "--high", "10", "--out", folder, "--format", "tif")
        moved = self.path("moved")
        end = time.monotonic() + 60
        while not os.path.exists(os.path.join(folder, "photo002.tif")) and time.monotonic() < end:
            time.sleep(0.001)
        os.rename(folder, moved)
        _, said = run.communicate(timeout=120)
        self.assertEqual(run.returncode, 1, said)
        self.assertFalse(os.path.exists(folder))
        self.assertGreaterEqual(len(content_of(moved)), 2)

    def test_has_a_folder_of_a_tiles_name(self):
        photo = self.photo("photo.bmp", noise(200, 200))
        os.makedirs(self.path("tiles", "photo003.bmp", "inside"))
        said = self.refused(1, photo, "--out", self.path("tiles"), "--yes")
        self.assertIn("photo003.bmp", said)
        self.assertEqual(os.listdir(self.path("tiles", "photo003.bmp")), ["inside"])
        self.assertEqual(len(os.listdir(self.path("tiles"))), 3)

    def test_gives_no_room_for_a_long_name(self):
        photo = self.photo("photo.bmp", noise(200, 200))
        self.refused(1, photo, "--out", self.path("tiles"), "--base", "n" * 250)
        self.assertEqual(os.listdir(self.path("tiles")), [])
        self.refused(1, photo, "--out", self.path("f" * 300))


class Memory(FaultTest):
    def test_that_is_too_small_is_said(self):
        # A progressive picture cannot be read row by row.
        photo = self.photo("large.jpg", smooth(7000, 5000), progressive=True)
        small = self.photo("small.jpg", smooth(300, 200))

        def limit():
            resource.setrlimit(resource.RLIMIT_AS, (120_000_000, 120_000_000))

        result = self.run_tiles(photo, preexec_fn=limit)
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertTrue(result.stderr.startswith(b"veldara-tiles: "), result.stderr)
        self.assertEqual(content_of(self.path("large_poster_images")), {})
        self.assertEqual(self.run_tiles(small, preexec_fn=limit).returncode, 0)


if __name__ == "__main__":
    unittest.main()
