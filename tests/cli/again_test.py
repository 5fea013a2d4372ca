"""Plans and tiles made a second time, in another language, for posters chosen at random."""

import json
import math
import os
import random
import unittest

from PIL import Image

from tiles_support import TilesTest, noise

INCH_PAPERS = {
    'Photo 4" x 6"': (6, 4, 0, 0), 'Photo 5" x 7"': (7, 5, 0, 0), 'Photo 8" x 10"': (8, 10, 0, 0),
    'Letter 8.5" x 11"': (8.5, 11, 1, 1.25), 'Legal 8.5" x 14"': (8.5, 14, 1, 1.25),
    'Canvas 11" x 17"': (11, 17, 1, 1.25), "Custom (Inches)": (4, 6, 0, 0)}
METRIC_PAPERS = {
    "A8 - 53 x 74": (74, 53, 10, 10), "A7 - 74 x 105": (105, 74, 10, 10),
    "A6 - 105 x 148": (148, 105, 15, 15), "A5 - 148 x 210": (148, 210, 15, 15),
    "A4 - 210 x 297": (210, 297, 25, 25), "A3 - 297 x 420": (297, 420, 25, 25),
    "A2 - 420 x 594": (420, 594, 25, 25), "Custom (mm)": (148, 210, 0, 0)}
SIZES = [(25, 25), (40, 900), (301, 207), (1000, 1000), (1001, 700), (2000, 25), (3000, 2000)]


class Poster:
    """What is asked for, and the numbers that follow from it."""

    def __init__(self, source):
        self.photo = source.choice(SIZES)
        self.metric = source.random() < 0.5
        self.per_inch = 25.4 if self.metric else 1
        papers = METRIC_PAPERS if self.metric else INCH_PAPERS
        self.paper = source.choice(list(papers))
        self.width, self.height, upright, sideways = papers[self.paper]
        self.margins = [upright, sideways, upright, sideways]
        self.wide = source.choice([1, 2, 3, 7, 25, source.randint(1, 25)])
        self.high = source.choice([1, 2, 3, 7, 25, source.randint(1, 25)])
        self.rotate = source.choice(["none", "cw", "ccw", "180"])
        self.turned = source.random() < 0.4
        self.zoom = source.choice([0, 100, 400, source.randint(0, 400)])
        self.pan = [source.choice([0, 100, 200, source.randint(0, 200)]) for _ in range(2)]
        self.clip = source.choice([None, [source.randint(0, 16) for _ in range(4)]])
        self.options = ["--units", "mm" if self.metric else "in", "--paper", self.paper]
        self.choose_size(source)
        self.choose_margins(source)

    def choose_size(self, source):
        if "Custom" in self.paper and source.random() < 0.7:
            self.width, self.height = (round(source.uniform(1, 49) * self.per_inch, 2)
                                       for _ in range(2))
            self.options += ["--paper-size", f"{self.width},{self.height}"]

    def choose_margins(self, source):
        margins = [round(source.uniform(0, 0.12) * self.width, 2) for _ in range(4)]
        if (source.random() < 0.4 and self.width - margins[1] - margins[3] > self.per_inch
                and self.height - margins[0] - margins[2] > self.per_inch):
            self.margins = margins
            self.options += ["--margins", ",".join(map(str, margins))]

    def arguments(self):
        options = self.options + [
            "--wide", str(self.wide), "--high", str(self.high), "--rotate", self.rotate,
            "--zoom", str(self.zoom), "--pan", f"{self.pan[0]},{self.pan[1]}"]
        if self.turned:
            options.append("--rotate-tiles")
        if self.clip:
            options += ["--clip", ",".join(map(str, self.clip))]
        return options

    def photo_size(self):
        return self.photo[::-1] if self.rotate in ("cw", "ccw") else self.photo

    def trims(self):
        return [count / 64 for count in self.clip or [0] * 4]

    def tile_inches(self):
        top, right, bottom, left = self.margins
        width = (self.width - right - left) / self.per_inch
        height = (self.height - top - bottom) / self.per_inch
        top, right, bottom, left = self.trims()
        return width - right - left, height - top - bottom

    def poster_inches(self):
        tile = self.tile_inches()[::-1] if self.turned else self.tile_inches()
        return self.wide * tile[0], self.high * tile[1]

    def crop(self):
        """Unrounded width and height of the largest part of the photo that has the poster's shape,
        and how often it is divided by the zoom."""
        width, height = self.photo_size()
        across, down = self.poster_inches()
        fitting = min(width / across, height / down)
        return fitting * across, fitting * down, 1 + self.zoom / 100


def bordered(tile, margins):
    """The tile with its outermost pixels repeated around it."""
    top, right, bottom, left = margins
    width, height = tile.size
    columns = Image.new("RGB", (left + width + right, height))
    columns.paste(tile.crop((0, 0, 1, height)).resize((max(left, 1), height)), (0, 0))
    columns.paste(tile.crop((width - 1, 0, width, height)).resize((max(right, 1), height)),
                  (left + width, 0))
    columns.paste(tile, (left, 0))
    whole = Image.new("RGB", (columns.width, top + height + bottom))
    whole.paste(columns.crop((0, 0, columns.width, 1)).resize((columns.width, max(top, 1))), (0, 0))
    whole.paste(columns.crop((0, height - 1, columns.width, height))
                .resize((columns.width, max(bottom, 1))), (0, top + height))
    whole.paste(columns, (0, top))
    return whole


class TilesAgain(TilesTest):
    turns = {"none": None, "cw": Image.Transpose.ROTATE_270, "ccw": Image.Transpose.ROTATE_90,
             "180": Image.Transpose.ROTATE_180}

    def test_are_the_same_pixels(self):
        picture = noise(503, 387)
        photo = self.photo("p.tif", picture)
        source = random.Random(7)
        for number in range(60):
            rotate = source.choice(list(self.turns))
            turned = source.random() < 0.5
            clip = [source.randint(0, 16) for _ in range(4)]
            arguments = [
                "--rotate", rotate, "--clip", ",".join(map(str, clip)),
                "--wide", str(source.randint(1, 3)), "--high", str(source.randint(1, 3)),
                "--paper-size", f"{source.uniform(1, 1.5):.2f},{source.uniform(1, 1.5):.2f}",
                "--zoom", str(source.randint(0, 60)),
                "--pan", f"{source.randint(0, 200)},{source.randint(0, 200)}",
                "--format", source.choice(["bmp", "tif"]), "--out", f"out{number}", photo]
            if turned:
                arguments.insert(0, "--rotate-tiles")
            with self.subTest(arguments):
                turn = self.turns[rotate]
                self.compare(arguments, picture if turn is None else picture.transpose(turn),
                             turned, clip)

    def compare(self, arguments, picture, turned, clip):
        plan = self.plan(*arguments)
        first = plan["tiles"][0]
        across = (("top", "bottom") if turned else ("left", "right"))
        dots = (first[across[1]] - first[across[0]] + 1) / plan["tile_inches"]["width"]
        self.assertGreaterEqual(dots, 64)  # or the tile would be resampled
        margins = [math.floor(dots * (count / 64)) for count in clip]
        self.done(*arguments)
        for tile in plan["tiles"]:
            cut = picture.crop((tile["left"], tile["top"], tile["right"] + 1, tile["bottom"] + 1))
            if turned:
                cut = cut.transpose(Image.Transpose.ROTATE_90)
            with Image.open(os.path.join(self.folder, tile["file"])) as written:
                self.assertEqual(written.size, (tile["width"], tile["height"]))
                self.assertEqual(written.tobytes(), bordered(cut, margins).tobytes())
                self.assertAlmostEqual(float(written.info["dpi"][0]), plan["dpi"], delta=0.02)


QUALITY = ((200, "Excellent"), (140, "Very Good"), (90, "Good"), (70, "Fair"),
           (35, "Good from a distance"), (-1, "Fair from a distance"))


class PlanAgain(TilesTest):
    """What a plan must be, from what a poster is: not the program's arithmetic once more."""

    def test_fits_the_photo_and_the_paper(self):
        for width, height in SIZES:
            self.photo(f"{width}x{height}.bmp", noise(width, height))
        source = random.Random(20261121)
        planned = 0
        for _ in range(400):
            poster = Poster(source)
            arguments = [*poster.arguments(), "{}x{}.bmp".format(*poster.photo)]
            with self.subTest(arguments):
                width, height, divided = poster.crop()
                pixels = min(width / divided / poster.wide, height / divided / poster.high)
                result = self.run_tiles("--plan", *arguments)
                if result.returncode != 0:
                    self.assertIn(b"fewer pixels", result.stderr)
                    self.assertLess(pixels, 2)
                    continue
                self.assertGreater(pixels, 0.24)
                plan = json.loads(result.stdout)
                self.check_tiles(plan, poster)
                self.check_crop(plan, poster)
                self.check_resolution(plan, poster)
                self.check_pictures(plan, poster)
                self.check_figures(plan, poster)
                planned += 1
        self.assertGreater(planned, 300)

    def check_tiles(self, plan, poster):
        """They lie side by side, are of one size, and cover the crop."""
        tiles = plan["tiles"]
        self.assertEqual([tile["number"] for tile in tiles],
                         list(range(1, poster.wide * poster.high + 1)))
        rows = [tiles[start:start + poster.wide] for start in range(0, len(tiles), poster.wide)]
        for first, last, lines in (("left", "right", list(zip(*rows))), ("top", "bottom", rows)):
            sides = [(line[0][first], line[0][last]) for line in lines]
            for line, side in zip(lines, sides):
                self.assertEqual({(tile[first], tile[last]) for tile in line}, {side})
            for before, after in zip(sides, sides[1:]):
                self.assertLessEqual(abs(after[0] - before[1] - 1), 1)
            lengths = [end - start + 1 for start, end in sides]
            self.assertGreaterEqual(min(lengths), 1)
            self.assertLessEqual(max(lengths) - min(lengths), 1)
            self.assertEqual((plan["crop"][first], plan["crop"][last]), (sides[0][0], sides[-1][1]))

    def check_crop(self, plan, poster):
        """It has the poster's shape, is as large as the zoom lets it be, and lies as panned."""
        crop = plan["crop"]
        *full, divided = poster.crop()
        for length, whole, start, end, pan in (
                (full[0], poster.photo_size()[0], "left", "right", poster.pan[0]),
                (full[1], poster.photo_size()[1], "top", "bottom", poster.pan[1])):
            self.assertGreaterEqual(crop[start], 0)
            self.assertLess(crop[end], whole)
            pixels = crop[end] - crop[start] + 1
            self.assertLess(abs(pixels - length / divided), 1.6)
            self.assertLess(abs(crop[start] - (whole - length / divided) * pan / 200), 1.1)

    def check_resolution(self, plan, poster):
        for found, expected in zip(plan["tile_inches"].values(), poster.tile_inches()):
            self.assertAlmostEqual(found, expected)
        self.assertLessEqual(abs(plan["dpi"] - max(self.dots(plan, poster), 1.5)), 0.5)

    def dots(self, plan, poster):
        """The first tile's pixels in an inch of what it is printed on."""
        first = plan["tiles"][0]
        side = ("top", "bottom") if poster.turned else ("left", "right")
        return (first[side[1]] - first[side[0]] + 1) / plan["tile_inches"]["width"]

    def check_pictures(self, plan, poster):
        """A file is its tile, and where edges are clipped a border of as many whole pixels as fit;
        at 64 dots per inch at least."""
        dots = self.dots(plan, poster)
        larger = max(1, 64 / dots) if poster.clip else 1
        top, right, bottom, left = (dots * larger * trim for trim in poster.trims())
        for tile in plan["tiles"]:
            size = [tile["right"] - tile["left"] + 1, tile["bottom"] - tile["top"] + 1]
            if poster.turned:
                size.reverse()
            for found, pixels, border in ((tile["width"], size[0], left + right),
                                          (tile["height"], size[1], top + bottom)):
                if not poster.clip:
                    self.assertEqual(found, pixels)
                    continue
                self.assertLess(found, pixels * larger + border + 0.51)
                self.assertGreater(found, pixels * larger + border - 2.51)

    def check_figures(self, plan, poster):
        figures = plan["figures"]
        unit, decimals = (2.54, 1) if poster.metric else (1, 2)
        sides = figures["size"].removesuffix(" cm" if poster.metric else " inches").split(" x ")
        for found, inches in zip(sides, poster.poster_inches(), strict=True):
            self.assertLess(abs(float(found) - inches * unit), 0.5001 * 10 ** -decimals)
            self.assertFalse(found.endswith((".0", ".00")), "no trailing zeros")
        width, height, divided = poster.crop()
        dots = width / poster.poster_inches()[0] / divided
        found = figures["resolution"].removesuffix(" dots/cm" if poster.metric else " dpi")
        self.assertRegex(found, r"^\d+\.\d$")
        self.assertLess(abs(float(found) - dots / unit), 0.05001)
        self.assertLess(abs(float(figures["megapixels"]) - width * height / divided / 1e6), 0.005001)
        self.assertEqual(figures["quality"], next(word for least, word in QUALITY if dots > least))


if __name__ == "__main__":
    unittest.main()
