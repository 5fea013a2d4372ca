"""The command line that chooses the sheets by the poster's size."""

import json
import os
import sys

from tiles_support import TilesTest, noise, unittest


class PosterSize(TilesTest):
    def setUp(self):
        super().setUp()
        self.lake = self.photo("lake.jpg", noise(1200, 800))

    def chosen(self, *arguments):
        """Runs it, and returns what it said it chose."""
        result = self.run_tiles(*arguments, self.lake)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result.stderr.decode()

    def tiles(self, folder):
        files = {}
        for name in sorted(os.listdir(self.path(folder))):
            with open(self.path(folder, name), "rb") as file:
                files[name] = file.read()
        return files

    def test_a_width_gives_the_same_tiles_as_its_counts(self):
        said = self.chosen("--poster-width", "12", "--out", self.path("by_size"))
        # The first paper is 6 x 4 inches: two of them side by side are just as wide.
        self.assertIn("2 x 2 sheets: 12 x 8 inches, 100.0 dpi (Good), 100 % of the photo", said)
        self.chosen("--wide", "2", "--high", "2", "--out", self.path("by_counts"))
        self.assertEqual(self.tiles("by_size"), self.tiles("by_counts"))

    def test_a_height_turns_the_sheets(self):
        said = self.chosen("--poster-height", "6", "--out", self.path("by_size"))
        self.assertIn("on their side", said)
        self.chosen("--wide", "2", "--high", "1", "--rotate-tiles", "--out", self.path("by_counts"))
        self.assertEqual(self.tiles("by_size"), self.tiles("by_counts"))

    def test_millimetres_and_any_paper(self):
        said = self.chosen("--units", "mm", "--poster-width", "420", "--any-paper", "--plan")
        plan = json.loads(self.run_tiles("--units", "mm", "--poster-width", "420", "--any-paper",
                                         "--plan", self.lake).stdout)
        self.assertIn(plan["paper"]["name"], said)

    def test_a_quality_is_kept(self):
        said = self.chosen("--best-quality", "Very Good", "--out", self.path("tiles"))
        self.assertIn("(Very Good)", said)
        self.assertTrue(os.listdir(self.path("tiles")))

    def test_quiet_says_nothing(self):
        self.assertEqual(self.chosen("--poster-width", "12", "-q"), "")

    def test_choices_are_listed_and_nothing_is_written(self):
        before = sorted(os.listdir(self.folder))
        table = self.done("--poster-width", "12", "--choices", self.lake).decode().splitlines()
        self.assertTrue(table[0].startswith("sheets"))
        self.assertTrue(table[1].startswith("2 x 2 sheets "))
        listed = json.loads(self.done("--poster-width", "12", "--choices", "--plan", self.lake))
        self.assertEqual(listed["units"], "in")
        self.assertEqual(len(listed["choices"]), len(table) - 1)
        first = listed["choices"][0]
        self.assertEqual((first["wide"], first["high"], first["rotate_tiles"]), (2, 2, False))
        self.assertEqual((first["width"], first["height"], first["sheets"]), (12, 8, 4))
        self.assertEqual(first["photo_kept"], 1)
        self.assertEqual(sorted(os.listdir(self.folder)), before)

    def test_wishes_that_cannot_be_met_say_why(self):
        for arguments, said in (
                (["--poster-width", "2000"], "25 by 25 sheets are too few"),
                (["--poster-height", "0.5"], "The smallest poster is 0.75 inches"),
                (["--poster-height", "0"], "The smallest poster is 0.75 inches"),
                (["--best-quality", "Excellent", "--paper", 'Photo 8" x 10"', "--zoom", "400"],
                 "Even one sheet has no more than")):
            with self.subTest(arguments):
                self.assertIn(said, self.refused(1, *arguments, self.lake))

    def test_a_small_photo_gives_few_sheets(self):
        small = self.photo("small.bmp", noise(200, 150))
        self.assertIn("The photo has fewer than 25 pixels for each side of so many tiles",
                      self.refused(1, "--poster-width", "100", small))

    def test_contradictions_are_refused(self):
        for arguments, said in (
                (["--poster-width", "9", "--wide", "2"], "--wide: "),
                (["--poster-height", "9", "--high", "2"], "--high: "),
                (["--best-quality", "Good", "--rotate-tiles"], "--rotate-tiles: "),
                (["--best-quality", "Good", "--poster-width", "9"], "not both"),
                (["--best-quality", "Great"], "Excellent"),
                (["--choices"], "--poster-width"), (["--any-paper"], "--poster-width"),
                (["--poster-width", "9", "--any-paper", "--margins", "1,1,1,1"], "--any-paper"),
                (["--poster-width", "wide"], "--poster-width")):
            with self.subTest(arguments):
                self.assertIn(said, self.refused(2, *arguments, self.lake))


if __name__ == "__main__":
    unittest.main(argv=sys.argv)
