"""Plans and tiles made a second time, in another language, for posters chosen at random."""

import math
import os
import random
import unittest
from decimal import ROUND_HALF_UP, Decimal

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
        """Unrounded width and height without the zoom, and the zoom's share."""
        width, height = self.photo_size()
        poster = self.poster_inches()
        ratio = poster[0] / poster[1]
        share = 1 / (self.zoom / 100 + 1)
        if width / height < ratio:
            return width, width / ratio, share
        return ratio * height, height, share

    def tiles(self):
        photo = self.photo_size()
        width, height, share = self.crop()
        cut = round(width * share), round(height * share)
        start = [round((photo[i] - cut[i]) * (self.pan[i] / 200)) for i in range(2)]
        rects = []
        for row in range(self.high):
            for column in range(self.wide):
                left = round(column / self.wide * cut[0]) + start[0]
                top = round(row / self.high * cut[1]) + start[1]
                right = min(round(cut[0] / self.wide + left - 1), photo[0] - 1)
                bottom = min(round(cut[1] / self.high + top - 1), photo[1] - 1)
                rects.append((left, top, right, bottom))
        return rects

    def dots(self):
        left, top, right, bottom = self.tiles()[0]
        pixels = bottom - top + 1 if self.turned else right - left + 1
        return pixels / self.tile_inches()[0]

    def picture(self, rect):
        size = [rect[2] - rect[0] + 1, rect[3] - rect[1] + 1]
        if self.turned:
            size.reverse()
        if not self.clip:
            return tuple(size)
        dots = self.dots()
        if dots < 64:
            size = [round(side * (64 / dots)) for side in size]
            dots = 64
        top, right, bottom, left = (math.floor(dots * trim) for trim in self.trims())
        return size[0] + left + right, size[1] + top + bottom

    def figures(self):
        width, height, share = self.crop()
        poster = self.poster_inches()
        dots = width / poster[0] * share
        if self.metric:
            size = " x ".join(shortened(side * 2.54, 1) for side in poster) + " cm"
            resolution = rounded(dots / 2.54, 1) + " dots/cm"
        else:
            size = " x ".join(shortened(side, 2) for side in poster) + " inches"
            resolution = rounded(dots, 1) + " dpi"
        words = ((200, "Excellent"), (140, "Very Good"), (90, "Good"), (70, "Fair"),
                 (35, "Good from a distance"), (-1, "Fair from a distance"))
        return {"size": size, "megapixels": rounded(width * height * share / 1000000, 2),
                "resolution": resolution,
                "quality": next(word for least, word in words if dots > least)}


def rounded(value, decimals):
    """Half away from zero, on the decimal value."""
    step = Decimal(1).scaleb(-decimals)
    return str(Decimal(repr(float(value))).quantize(step, rounding=ROUND_HALF_UP))


def shortened(value, decimals):
    return rounded(value, decimals).rstrip("0").rstrip(".") or "0"


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


class PlanAgain(TilesTest):
    def test_gives_the_same_numbers(self):
        for width, height in SIZES:
            self.photo(f"{width}x{height}.bmp", noise(width, height))
        source = random.Random(20261121)
        planned = 0
        for _ in range(400):
            poster = Poster(source)
            arguments = [*poster.arguments(), "{}x{}.bmp".format(*poster.photo)]
            with self.subTest(arguments):
                if any(right < left or bottom < top for left, top, right, bottom in poster.tiles()):
                    self.assertIn("fewer pixels", self.refused(1, *arguments))
                    continue
                self.compare(self.plan(*arguments), poster)
                planned += 1
        self.assertGreater(planned, 300)

    def compare(self, plan, poster):
        rects = poster.tiles()
        self.assertEqual([(tile["left"], tile["top"], tile["right"], tile["bottom"])
                          for tile in plan["tiles"]], rects)
        self.assertEqual([(tile["width"], tile["height"]) for tile in plan["tiles"]],
                         [poster.picture(rect) for rect in rects])
        self.assertEqual(tuple(plan["tile_inches"].values()), poster.tile_inches())
        self.assertEqual(plan["dpi"], max(2, round(poster.dots())))
        self.assertEqual(plan["figures"], poster.figures())


if __name__ == "__main__":
    unittest.main()
