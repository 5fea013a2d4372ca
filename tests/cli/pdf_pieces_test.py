"""The pieces of the photo in a finished document: pixel for pixel those of the photo, and each at
its place to a hundredth of a millimetre. Document, pictures and pixels are read by other tools."""

import os
import subprocess
import sys

from PIL import Image, ImageOps
from pdf_pages import checked, colour_space, jpegs_of, pages_of, samples_of
from tiles_support import SANITIZED, TilesTest, noise, smooth, unittest

MILLIMETRE = 72 / 25.4
TURNS = {"none": None, "cw": Image.Transpose.ROTATE_270, "180": Image.Transpose.ROTATE_180,
         "ccw": Image.Transpose.ROTATE_90}
A5 = ("--units", "mm", "--paper-size", "148,210", "--margins", "8,8,10,9")


def grainy(width, height):
    """Colours that change at every pixel and in the large, so that no shift goes unseen."""
    return Image.blend(smooth(width, height), noise(width, height), 0.25)


class Sheet:
    """A page of the document with its plan: from points of the paper to pixels of the turned photo,
    by the own area alone, and back by the matrix that the page puts its picture at."""

    def __init__(self, page, plan, picture, tiles_turned):
        self.page, self.tiles_turned = page, tiles_turned
        self.paper, self.photo = plan["own_pt"], plan["own_px"]
        # The picture's corners in the photo: top left, top right, bottom left.
        self.origin, self.across, self.down = (self.pixel(*page.place(*corner))
                                               for corner in ((0, 1), (1, 1), (0, 0)))
        self.size = picture["/Width"], picture["/Height"]

    def pixel(self, x, y):
        left, top, right, bottom = self.paper
        l, t, r, b = self.photo
        if self.tiles_turned:  # the tile's left edge lies at the bottom
            across, down = (bottom - y) / (bottom - top), (x - left) / (right - left)
        else:
            across, down = (x - left) / (right - left), (y - top) / (bottom - top)
        return l + across * (r - l), t + down * (b - t)

    def begin(self):
        """Where the picture begins in the photo, and its size there."""
        corners = self.origin, self.across, self.down
        least = [min(corner[i] for corner in corners) for i in (0, 1)]
        return least, [max(corner[i] for corner in corners) - least[i] for i in (0, 1)]

    def shown(self):
        """The part of the photo that the page shows, by what its content is cut to."""
        left, bottom, width, height = self.page.clip
        top = self.page.boxes["MediaBox"][3] - bottom - height
        corners = self.pixel(left, top), self.pixel(left + width, top + height)
        return [min(c[i] for c in corners) for i in (0, 1)] + [max(c[i] for c in corners) for i in (0, 1)]

    def upright(self, piece):
        """The piece as the page turns and mirrors it."""
        across, down = self.across, self.down
        if abs(across[0] - self.origin[0]) < abs(across[1] - self.origin[1]):
            piece = piece.transpose(Image.Transpose.TRANSPOSE)
            across, down = down, across
        if across[0] < self.origin[0]:
            piece = piece.transpose(Image.Transpose.FLIP_LEFT_RIGHT)
        if down[1] < self.origin[1]:
            piece = piece.transpose(Image.Transpose.FLIP_TOP_BOTTOM)
        return piece

    def on_page(self, x, y):
        """Where the page shows a point of the photo, by the matrix."""
        (ox, oy), (ax, ay), (dx, dy) = self.origin, self.across, self.down
        area = (ax - ox) * (dy - oy) - (ay - oy) * (dx - ox)
        u = ((x - ox) * (dy - oy) - (y - oy) * (dx - ox)) / area
        v = ((ax - ox) * (y - oy) - (ay - oy) * (x - ox)) / area
        return self.page.place(u, 1 - v)

    def corner(self, x, y):
        """The corner of the own area that shows that corner of the photo's part."""
        left, top, right, bottom = self.paper
        l, t, _, _ = self.photo
        if self.tiles_turned:
            return left if y == t else right, bottom if x == l else top
        return left if x == l else right, top if y == t else bottom


class PdfTest(TilesTest):
    def make(self, photo, *arguments):
        """The sheets of a document of 3 x 2, once qpdf has found nothing wrong with it."""
        document = self.path("poster.pdf")
        arguments = (*A5, "--wide", "3", "--high", "2", "--yes", "--no-guide", "--pdf", document,
                     *arguments, photo)
        result = self.run_tiles(*arguments)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(checked(document), "")
        planned = self.plan(*arguments)["pdf"]["pages"]
        pages, pictures = pages_of(document)
        self.assertEqual((len(pages), len(pictures)), (len(planned), len(planned)))
        turned = "--rotate-tiles" in arguments
        return [Sheet(*of_one, turned) for of_one in zip(pages, planned, pictures)]

    def jpeg(self, *options, picture=None, **how):
        """A JPEG photo, made by Pillow and gone through jpegtran where options are given."""
        made = self.photo("photo.jpg", picture or grainy(700, 500), quality=88, **how)
        if options:
            os.rename(made, self.path("made.jpg"))
            subprocess.run(["jpegtran", "-copy", "all", *options, "-outfile", made,
                            self.path("made.jpg")], check=True)
        return made


class Pieces(PdfTest):
    def expect_exact(self, photo, *arguments, turn="none"):
        """Every piece, decoded, is the photo in what its page shows: own area and overlap."""
        sheets = self.make(photo, "--overlap", "6", "--rotate", turn, *arguments)
        with Image.open(photo) as stored:
            whole = ImageOps.exif_transpose(stored)
        if TURNS[turn] is not None:
            whole = whole.transpose(TURNS[turn])
        files = jpegs_of(self.path("poster.pdf"), self.folder)
        self.assertEqual(len(files), len(sheets))
        # All but the last in row and column have a strip beyond their own area.
        self.assertEqual(sum(any(abs(own - edge) > 2 for own, edge in zip(sheet.photo, sheet.shown()))
                             for sheet in sheets), len(sheets) - 1)
        for file, sheet in zip(files, sheets):
            with self.subTest(file=os.path.basename(file)), Image.open(file) as piece:
                self.assertEqual((piece.mode, piece.size), (whole.mode, sheet.size))
                self.expect_same(sheet.upright(piece), whole, sheet)
            os.remove(file)

    def expect_same(self, piece, whole, sheet):
        at, size = sheet.begin()
        left, top = round(at[0]), round(at[1])
        # At a whole pixel, and in the same scale on every sheet.
        for found, expected in zip((*at, *size), (left, top, *piece.size)):
            self.assertAlmostEqual(found, expected, delta=0.05)
        shown = sheet.shown()
        box = (max(int(shown[0] + 0.001), 0), max(int(shown[1] + 0.001), 0),
               min(-int(-shown[2] // 1), whole.width), min(-int(-shown[3] // 1), whole.height))
        self.assertGreater((box[2] - box[0]) * (box[3] - box[1]), 15000)
        mine = piece.crop((box[0] - left, box[1] - top, box[2] - left, box[3] - top))
        self.assertEqual(mine.tobytes(), whole.crop(box).tobytes())

    def test_every_sampling(self):
        for name, subsampling in (("4:4:4", 0), ("4:2:2", 1), ("4:2:0", 2)):
            with self.subTest(name):
                self.expect_exact(self.jpeg(subsampling=subsampling))

    def test_grey_and_inks(self):
        for mode in ("L", "CMYK"):
            with self.subTest(mode):
                self.expect_exact(self.jpeg(picture=grainy(700, 500).convert(mode)))

    def test_progressive_and_restart_markers(self):
        for options in (["-progressive"], ["-restart", "3B"], ["-restart", "1"], ["-optimize"],
                        ["-progressive", "-restart", "2"]):
            with self.subTest(options):
                self.expect_exact(self.jpeg(*options, subsampling=2))

    def test_every_orientation(self):
        for orientation in range(1, 9):
            with self.subTest(orientation):
                tag = Image.Exif()
                tag[0x0112] = orientation
                self.expect_exact(self.jpeg(subsampling=2, exif=tag.tobytes()))

    def test_every_rotation(self):
        photo = self.jpeg(subsampling=1)
        for turn in TURNS:
            with self.subTest(turn):
                self.expect_exact(photo, turn=turn)
                self.expect_exact(photo, "--rotate-tiles", turn=turn)


class Geometry(PdfTest):
    def test_neighbours_meet_to_a_twentieth_of_a_millimetre(self):
        photo = self.jpeg(subsampling=2)
        for more in ([], ["--rotate-tiles"], ["--marks", "none"], ["--clip", "3,2,4,1"]):
            with self.subTest(more):
                marked = "--marks" not in more
                sheets = self.make(photo, "--overlap", "5", *more)
                met = 0
                for number, sheet in enumerate(sheets):
                    if number % 3 < 2:
                        met += self.expect_meet(sheet, sheets[number + 1], 0, marked)
                    if number < 3:
                        met += self.expect_meet(sheet, sheets[number + 3], 1, marked)
                self.assertEqual(met, 2 * 7)

    def expect_meet(self, sheet, other, axis, marked):
        """Laid on each other by the corners of their own areas, which the marks point at, two
        sheets show the same point of the photo at the same place."""
        l, t, r, b = sheet.photo
        line = [(r, t), (r, b)] if axis == 0 else [(l, b), (r, b)]
        self.assertEqual(line[0][axis], other.photo[axis])
        for point in line:
            offsets = []
            for one in (sheet, other):
                corner = one.corner(*point)
                if marked:
                    self.expect_marked(one.page, corner)
                place = one.on_page(*point)
                offsets.append([place[i] - corner[i] for i in (0, 1)])
            for mine, theirs in zip(*offsets):
                self.assertLess(abs(mine - theirs), 0.05 * MILLIMETRE)
        return len(line)

    def expect_marked(self, page, corner):
        """A mark points at it along each of its edges."""
        height = page.boxes["MediaBox"][3]
        self.assertTrue(any(line[1] == line[3] and abs(height - line[1] - corner[1]) < 0.01
                            for line in page.lines), corner)
        self.assertTrue(any(line[0] == line[2] and abs(line[0] - corner[0]) < 0.01
                            for line in page.lines), corner)

    def test_page_boxes_are_exact(self):
        photo = self.jpeg()
        for paper, size in (("A4 - 210 x 297", (595.2756, 841.8898)),
                            ("A5 - 148 x 210", (419.5276, 595.2756))):
            document = self.path("poster.pdf")
            self.done("--units", "mm", "--paper", paper, "--pdf", document, "--yes", photo)
            self.assertEqual(checked(document), "")
            for page in pages_of(document)[0]:
                self.assertEqual(list(page.boxes), ["MediaBox"])
                self.assertEqual(page.boxes["MediaBox"][:2], [0, 0])
                for found, exact in zip(page.boxes["MediaBox"][2:], size):
                    self.assertAlmostEqual(found, exact, delta=0.001)


class Colours(PdfTest):
    def test_profiles_go_along(self):
        profiles = "/usr/share/color/icc/ghostscript/"
        for mode, name, parts in (("L", "default_gray.icc", 1), ("RGB", "default_rgb.icc", 3),
                                  ("CMYK", "default_cmyk.icc", 4)):
            with self.subTest(mode), open(profiles + name, "rb") as file:
                photo = self.jpeg(picture=grainy(700, 500).convert(mode), icc_profile=file.read())
                self.make(photo)
                document = self.path("poster.pdf")
                for picture in pages_of(document)[1]:
                    self.assertEqual(colour_space(document, picture), ("/ICCBased", parts))

    def test_other_photos_go_in_without_loss(self):
        picture = grainy(700, 500)
        for name in ("photo.png", "photo.tif", "photo.bmp"):
            with self.subTest(name):
                sheets = self.make(self.photo(name, picture))
                document = self.path("poster.pdf")
                for one in pages_of(document)[1]:
                    self.assertEqual(one["/Filter"], "/FlateDecode")
                    self.assertGreaterEqual(one["/DecodeParms"]["/Predictor"], 10)
                subprocess.run(["pdfimages", "-png", document, self.path("piece")], check=True)
                for number, sheet in enumerate(sheets):
                    with Image.open(self.path(f"piece-{number:03}.png")) as piece:
                        left, top = (round(edge) for edge in sheet.begin()[0])
                        cut = picture.crop((left, top, left + piece.width, top + piece.height))
                        self.assertEqual(piece.tobytes(), cut.tobytes())

    def test_greys_stay_grey(self):
        picture = grainy(700, 500).convert("L")
        with open("/usr/share/color/icc/ghostscript/default_gray.icc", "rb") as file:
            profile = file.read()
        for name in ("photo.png", "photo.tif"):
            for mode in ("L", "1"):
                for more, space, listed in (({}, ("/DeviceGray", None), "gray"),
                                            ({"icc_profile": profile}, ("/ICCBased", 1), "icc")):
                    with self.subTest(name=name, mode=mode, space=space):
                        stored = picture.convert(mode)
                        sheets = self.make(self.photo(name, stored, **more))
                        self.expect_greys(stored.convert("L"), sheets, space, listed)

    def test_greys_that_an_orientation_tag_turns_stay_grey(self):
        picture = grainy(700, 500).convert("L")
        for orientation, turn in ((2, Image.Transpose.FLIP_LEFT_RIGHT), (6, Image.Transpose.ROTATE_270)):
            with self.subTest(orientation):
                sheets = self.make(self.photo("photo.tif", picture, tiffinfo={274: orientation}))
                self.expect_greys(picture.transpose(turn), sheets, ("/DeviceGray", None), "gray")

    def expect_greys(self, picture, sheets, space, listed):
        document = self.path("poster.pdf")
        for one in pages_of(document)[1]:
            self.assertEqual(colour_space(document, one), space)
            self.assertEqual(one["/Filter"], "/FlateDecode")
            self.assertGreaterEqual(one["/DecodeParms"]["/Predictor"], 10)
        said = subprocess.run(["pdfimages", "-list", document], check=True, capture_output=True, text=True)
        for line in said.stdout.splitlines()[2:]:  # page, number, type, width, height, colour ...
            self.assertEqual(line.split()[5:9], [listed, "1", "8", "image"], line)
        for samples, sheet in zip(samples_of(document), sheets, strict=True):
            piece = sheet.upright(Image.frombytes("L", sheet.size, samples))
            left, top = (round(edge) for edge in sheet.begin()[0])
            cut = picture.crop((left, top, left + piece.width, top + piece.height))
            self.assertEqual(piece.tobytes(), cut.tobytes())

    def test_inks_of_a_tiff_stay_inks(self):
        picture = grainy(700, 500).convert("CMYK")
        with open("/usr/share/color/icc/ghostscript/default_cmyk.icc", "rb") as file:
            profile = file.read()
        for orientation in (1, 2, 6):
            for more, space in (({}, ("/DeviceCMYK", None)),
                                ({"icc_profile": profile}, ("/ICCBased", 4))):
                with self.subTest(orientation=orientation, space=space):
                    sheets = self.make(self.photo("photo.tif", picture, compression="tiff_lzw",
                                                  tiffinfo={274: orientation}, **more))
                    document = self.path("poster.pdf")
                    self.assertEqual(colour_space(document, pages_of(document)[1][0]), space)
                    self.expect_inks(document, picture, orientation, sheets)

    def expect_inks(self, document, picture, orientation, sheets):
        subprocess.run(["pdfimages", "-tiff", document, self.path("piece")], check=True)
        mark = {1: [], 2: [Image.Transpose.FLIP_LEFT_RIGHT], 6: [Image.Transpose.ROTATE_270]}
        for turn in mark[orientation]:
            picture = picture.transpose(turn)
        for number, sheet in enumerate(sheets):
            with Image.open(self.path(f"piece-{number:03}.tif")) as piece:
                self.assertEqual(piece.mode, "CMYK")
                left, top = (round(edge) for edge in sheet.begin()[0])
                piece = sheet.upright(piece)
                cut = picture.crop((left, top, left + piece.width, top + piece.height))
                self.assertEqual(piece.tobytes(), cut.tobytes())


class Memory(PdfTest):
    @unittest.skipIf(SANITIZED, "a sanitizer's address space has no limit")
    def test_a_progressive_photo_that_is_too_large_is_encoded_again_and_says_so(self):
        photo = self.jpeg("-progressive", picture=smooth(7000, 5000), subsampling=2)
        document = self.path("poster.pdf")
        arguments = (*A5, "--wide", "3", "--no-guide", "--yes", "--pdf", document, photo)
        result = self.run_tiles(*arguments)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        self.assertEqual(checked(document), "")
        with open(document, "rb") as file:
            cut = file.read()
        self.environment["MALLOC_ARENA_MAX"] = "1"  # a limit of addresses counts what is reserved
        # Its coefficients take 105 MB: room for them, but not for twice as much.
        result = self.run_tiles(*arguments, under=("sh", "-c", 'ulimit -s 1024; ulimit -v "$1"; shift; exec "$@"',
                                                   "sh", "200000"))
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn(b"its sheets were encoded again, as tile files are", result.stderr)
        self.assertEqual(checked(document), "")
        with open(document, "rb") as file:
            self.assertNotEqual(file.read(), cut)


if __name__ == "__main__":
    unittest.main(argv=sys.argv)
