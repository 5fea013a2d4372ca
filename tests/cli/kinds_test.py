"""Photos of every kind that can be read, made by other programs and checked by other readers."""

import io
import json
import os
import subprocess
import sys
import unittest
import zlib

from PIL import Image, ImageChops, ImageCms, ImageStat

from heic_files import grid_heic
from tiles_support import TilesTest, noise, smooth

ORIENTATION = 0x0112

# What makes a stored picture upright, by its tag's value.
UPRIGHT = {1: None, 2: Image.Transpose.FLIP_LEFT_RIGHT, 3: Image.Transpose.ROTATE_180,
           4: Image.Transpose.FLIP_TOP_BOTTOM, 5: Image.Transpose.TRANSPOSE,
           6: Image.Transpose.ROTATE_270, 7: Image.Transpose.TRANSVERSE,
           8: Image.Transpose.ROTATE_90}


def mean_difference(one, other):
    """The mean over all channels, in levels."""
    return sum(ImageStat.Stat(ImageChops.difference(one, other)).mean) / 3


def on_white(picture):
    """Without its opacity, as on paper."""
    whole = picture.convert("RGBA")
    white = Image.new("RGBA", whole.size, (255, 255, 255, 255))
    return Image.alpha_composite(white, whole).convert("RGB")


class KindsTest(TilesTest):
    def run_tool(self, *arguments):
        subprocess.run(arguments, check=True, cwd=self.folder, stdout=subprocess.DEVNULL,
                       stderr=subprocess.PIPE)

    def whole(self, photo, **options):
        """The photo as one tile, which holds all of it: the tile's file."""
        width, height = (self.plan("--plan", photo)["photo"][side] for side in ("width", "height"))
        extra = [part for name, value in options.items() for part in (f"--{name}", value)]
        out = self.path("out" + str(len(os.listdir(self.folder))))
        self.done("--wide", "1", "--high", "1", "--paper-size", f"{width / 20},{height / 20}",
                  "--margins", "0,0,0,0", "--out", out, *extra, photo)
        (tile,) = os.listdir(out)
        return os.path.join(out, tile)

    def pixels(self, photo):
        with Image.open(self.whole(photo, format="tif")) as tile:
            tile.load()
            return tile

    def assertSame(self, one, other):
        self.assertEqual(one.size, other.size)
        self.assertIsNone(ImageChops.difference(one.convert("RGB"), other.convert("RGB")).getbbox())


class Png(KindsTest):
    def check(self, picture, expected=None, **options):
        photo = self.photo("p.png", picture, **options)
        self.assertSame(self.pixels(photo), expected or picture.convert("RGB"))

    def test_every_colour_type(self):
        colour = smooth(130, 90)
        self.check(colour)
        self.check(colour.convert("L"))
        self.check(colour.convert("1"))
        self.check(colour.convert("P"), colour.convert("P").convert("RGB"))
        self.check(colour.quantize(4), colour.quantize(4).convert("RGB"), bits=2)
        self.check(colour.quantize(16), colour.quantize(16).convert("RGB"), bits=4)

    def test_sixteen_bits_are_rounded(self):
        wide = Image.new("I;16", (256, 64))
        wide.putdata([(257 * x + 40) % 65536 for _ in range(64) for x in range(256)])
        rounded = Image.new("L", wide.size)
        rounded.putdata([round(value * 255 / 65535) for value in wide.getdata()])
        self.check(wide, rounded.convert("RGB"))

    def test_transparency_is_white_paper(self):
        seen = smooth(120, 80)
        seen.putalpha(Image.linear_gradient("L").resize(seen.size))
        photo = self.photo("a.png", seen)
        self.assertLessEqual(max(high for _, high in ImageChops.difference(
            self.pixels(photo), on_white(seen)).getextrema()), 1)
        grey = Image.merge("LA", (seen.getchannel(0), seen.getchannel(3)))
        photo = self.photo("g.png", grey)
        self.assertLessEqual(max(high for _, high in ImageChops.difference(
            self.pixels(photo), on_white(grey)).getextrema()), 1)
        keyed = smooth(60, 50).quantize(8)
        photo = self.photo("k.png", keyed, transparency=0)
        with Image.open(photo) as again:
            self.assertSame(self.pixels(photo), on_white(again))

    def test_interlaced_is_the_same_picture(self):
        picture = noise(123, 77)
        self.photo("plain.png", picture)
        self.run_tool("convert", "plain.png", "-interlace", "PNG", "laced.png")
        with open(self.path("laced.png"), "rb") as file:
            self.assertEqual(file.read(29)[28], 1)
        self.assertSame(self.pixels(self.path("laced.png")), picture)

    def with_chunk(self, name, data):
        """A PNG that has that chunk behind its header."""
        with open(self.photo("plain.png", smooth(90, 60)), "rb") as file:
            plain = file.read()
        after_header = 33
        path = self.path("chunk.png")
        with open(path, "wb") as file:
            file.write(plain[:after_header] + len(data).to_bytes(4, "big") + name + data +
                       zlib.crc32(name + data).to_bytes(4, "big") + plain[after_header:])
        return path

    def profile_of(self, photo):
        with Image.open(self.whole(photo, format="tif")) as tile:
            return tile.info.get("icc_profile")

    def test_gamma_becomes_a_profile(self):
        self.assertTrue(self.profile_of(self.with_chunk(b"gAMA", (100000).to_bytes(4, "big"))))

    def test_coded_colour_becomes_a_profile(self):
        display_p3 = [12, 13, 0, 1]  # primaries, transfer, matrix, full range
        profile = self.profile_of(self.with_chunk(b"cICP", bytes(display_p3)))
        red = ImageCms.ImageCmsProfile(io.BytesIO(profile)).profile.red_colorant[0]
        for seen, expected in zip(red, (0.5151, 0.2412, -0.0011)):
            self.assertAlmostEqual(seen, expected, places=3)
        for refused in ([12, 13, 1, 1], [12, 13, 0, 0], [12, 13, 0], [*display_p3, 0]):
            with self.subTest(refused=refused):
                self.assertIsNone(self.profile_of(self.with_chunk(b"cICP", bytes(refused))))

    def test_tiles_are_tiffs(self):
        self.assertTrue(self.whole(self.photo("p.png", smooth(90, 60))).endswith(".tif"))


class Webp(KindsTest):
    def encoded(self, *options, picture=None):
        self.photo("plain.png", picture or noise(111, 87))
        self.run_tool("cwebp", "-quiet", *options, "plain.png", "-o", "p.webp")
        self.run_tool("dwebp", "-quiet", "p.webp", "-o", "read.png")
        with Image.open(self.path("read.png")) as read:
            return self.path("p.webp"), on_white(read)

    def test_lossless_is_exact_and_becomes_tiff(self):
        photo, _ = self.encoded("-lossless", "-exact")
        self.assertSame(self.pixels(photo), noise(111, 87))
        self.assertTrue(self.whole(photo).endswith(".tif"))

    def test_lossy_is_what_another_reader_sees_and_becomes_jpeg(self):
        photo, read = self.encoded("-q", "80", picture=smooth(320, 200))
        self.assertLess(mean_difference(self.pixels(photo), read), 2)
        self.assertTrue(self.whole(photo).endswith(".jpg"))

    def test_opacity_is_on_white(self):
        seen = smooth(120, 80)
        seen.putalpha(Image.linear_gradient("L").resize(seen.size))
        for options in (("-lossless",), ("-q", "90")):
            photo, read = self.encoded(*options, picture=seen)
            self.assertLess(mean_difference(self.pixels(photo), read), 1)

    def test_first_picture_of_an_animation(self):
        first, second = smooth(100, 60), noise(100, 60)
        photo = self.photo("a.webp", first, save_all=True, append_images=[second], lossless=True)
        self.assertSame(self.pixels(photo), first)

    def on_canvas(self, picture, width, height, left, top):
        """An animation whose first picture lies there on a canvas of that size."""
        with open(self.photo("a.webp", picture, save_all=True, append_images=[noise(*picture.size)],
                             lossless=True), "rb") as file:
            data = bytearray(file.read())
        size = data.index(b"VP8X") + 12
        data[size:size + 6] = (width - 1).to_bytes(3, "little") + (height - 1).to_bytes(3, "little")
        place = data.index(b"ANMF") + 8
        data[place:place + 6] = (left // 2).to_bytes(3, "little") + (top // 2).to_bytes(3, "little")
        with open(self.path("canvas.webp"), "wb") as file:
            file.write(data)
        return self.path("canvas.webp")

    def test_around_the_first_picture_is_white(self):
        transparent = smooth(100, 60)
        transparent.putalpha(128)
        for picture in (smooth(100, 60), transparent):
            expected = Image.new("RGB", (140, 90), "white")
            expected.paste(on_white(picture), (30, 20))
            seen = self.pixels(self.on_canvas(picture, 140, 90, 30, 20))
            self.assertLessEqual(max(high for _, high in ImageChops.difference(
                seen.convert("RGB"), expected).getextrema()), 1)

    def test_first_picture_that_leaves_the_canvas_is_refused(self):
        for left, top in ((42, 20), (30, 32)):
            photo = self.on_canvas(smooth(100, 60), 140, 90, left, top)
            self.assertIn("Could not read", self.refused(1, "--yes", photo))

    def test_grey_profile_is_none_of_colours(self):
        with open("/usr/share/color/icc/ghostscript/default_gray.icc", "rb") as file:
            photo = self.photo("p.webp", smooth(120, 80), lossless=True, icc_profile=file.read())
        with Image.open(self.whole(photo, format="tif")) as tile:
            self.assertNotIn("icc_profile", tile.info)

    def test_profile_and_orientation_come_along(self):
        profile = ImageCms.ImageCmsProfile(ImageCms.createProfile("sRGB")).tobytes()
        exif = Image.Exif()
        exif[ORIENTATION] = 6
        picture = smooth(120, 80)
        photo = self.photo("p.webp", picture, lossless=True, icc_profile=profile, exif=exif.tobytes())
        with Image.open(self.whole(photo, format="tif")) as tile:
            self.assertEqual(tile.info["icc_profile"], profile)
            self.assertSame(tile, picture.transpose(Image.Transpose.ROTATE_270))


class Orientation(KindsTest):
    def test_all_eight(self):
        picture = noise(90, 60)
        for orientation in range(1, 9):
            exif = Image.Exif()
            exif[ORIENTATION] = orientation
            for name, options in (("p.png", {}), ("p.webp", {"lossless": True}), ("p.tif", {})):
                photo = self.photo(name, picture, exif=exif, **options)
                turn = UPRIGHT[orientation]
                upright = picture if turn is None else picture.transpose(turn)
                with self.subTest(name=name, orientation=orientation):
                    self.assertSame(self.pixels(photo), upright)

    def test_of_a_tiff_that_is_not_rgb(self):
        for mode in ("L", "1", "P", "CMYK"):
            picture = noise(90, 60).convert(mode)
            shown = self.pixels(self.photo("straight.tif", picture))
            for orientation, turn in ((3, Image.Transpose.ROTATE_180),
                                      (6, Image.Transpose.ROTATE_270),
                                      (7, Image.Transpose.TRANSVERSE)):
                exif = Image.Exif()
                exif[ORIENTATION] = orientation
                photo = self.photo("turned.tif", picture, exif=exif)
                self.assertSame(self.pixels(photo), shown.transpose(turn))


class Heif(KindsTest):
    """HEIC by heif-enc and AVIF by avifenc; read again by heif-convert and avifdec."""

    def heic(self, picture, *options):
        self.photo("plain.png", picture)
        self.run_tool("heif-enc", *options, "plain.png", "-o", "p.heic")
        self.run_tool("heif-convert", "p.heic", "read.png")
        with Image.open(self.path("read.png")) as read:
            return self.path("p.heic"), read.convert("RGB")

    def avif(self, picture, *options):
        self.photo("plain.png", picture)
        self.run_tool("avifenc", "--speed", "9", *options, "plain.png", "p.avif")
        self.run_tool("avifdec", "p.avif", "read.png")
        with Image.open(self.path("read.png")) as read:
            read.load()
            return self.path("p.avif"), read

    def test_heic_is_what_another_reader_sees_and_becomes_jpeg(self):
        photo, read = self.heic(smooth(320, 200), "-q", "80")
        self.assertLess(mean_difference(self.pixels(photo), read), 2)
        self.assertLess(mean_difference(self.pixels(photo), smooth(320, 200)), 4)
        self.assertTrue(self.whole(photo).endswith(".jpg"))

    def test_heic_of_ten_bits(self):
        photo, read = self.heic(smooth(320, 200), "-b", "10")
        self.assertLess(mean_difference(self.pixels(photo), read), 2)

    def test_avif_is_what_another_reader_sees_and_becomes_jpeg(self):
        photo, read = self.avif(smooth(320, 200))
        self.assertLess(mean_difference(self.pixels(photo), read.convert("RGB")), 2)
        self.assertTrue(self.whole(photo).endswith(".jpg"))

    def test_avif_of_ten_and_twelve_bits(self):
        for depth in ("10", "12"):
            photo, _ = self.avif(smooth(320, 200), "--depth", depth)
            self.assertLess(mean_difference(self.pixels(photo), smooth(320, 200)), 2)

    def test_lossless_avif_is_exact(self):
        photo, _ = self.avif(noise(120, 80), "--lossless")
        self.assertSame(self.pixels(photo), noise(120, 80))

    def test_avif_of_a_grid(self):
        photo, read = self.avif(smooth(512, 256), "--grid", "2x1")
        self.assertLess(mean_difference(self.pixels(photo), read.convert("RGB")), 2)

    def test_opacity_is_on_white(self):
        seen = smooth(128, 96)
        seen.putalpha(Image.linear_gradient("L").resize(seen.size))
        photo, read = self.avif(seen)
        self.assertLess(mean_difference(self.pixels(photo), on_white(read)), 2)

    def test_rotation_and_mirror_properties(self):
        picture = smooth(128, 96)
        turns = {"0": [], "1": [Image.Transpose.ROTATE_90], "2": [Image.Transpose.ROTATE_180],
                 "3": [Image.Transpose.ROTATE_270]}
        for angle, steps in turns.items():
            for axis, mirror in ((None, None), ("0", Image.Transpose.FLIP_TOP_BOTTOM),
                                 ("1", Image.Transpose.FLIP_LEFT_RIGHT)):
                options = ["--irot", angle] if angle != "0" else []
                options += ["--imir", axis] if axis else []
                photo, _ = self.avif(picture, *options)
                expected = picture
                for step in steps + ([mirror] if mirror is not None else []):
                    expected = expected.transpose(step)
                shown = self.pixels(photo)
                self.assertEqual(shown.size, expected.size)
                self.assertLess(mean_difference(shown, expected), 3, (angle, axis))

    def test_heic_as_telephones_write_it(self):
        """A grid whose last tiles reach beyond the picture, turned and mirrored, with a profile."""
        picture, profile = smooth(300, 200), ImageCms.ImageCmsProfile(ImageCms.createProfile("sRGB")).tobytes()
        turns = {0: [], 1: [Image.Transpose.ROTATE_90], 2: [Image.Transpose.ROTATE_180],
                 3: [Image.Transpose.ROTATE_270]}
        for rotation, steps in turns.items():
            for mirror, flip in ((None, []), (0, [Image.Transpose.FLIP_TOP_BOTTOM])):
                name = f"grid{rotation}{mirror}.heic"
                photo = grid_heic(self.folder, name, picture, 128, rotation=rotation, mirror=mirror,
                                  profile=profile)
                expected = picture
                for step in steps + flip:
                    expected = expected.transpose(step)
                shown = self.pixels(photo)
                self.assertEqual(shown.size, expected.size)
                self.assertLess(mean_difference(shown, expected), 3, (rotation, mirror))
        # The library's own way of putting the tiles together gives the same pixels.
        whole = grid_heic(self.folder, "whole.heic", picture, 128)
        self.run_tool("heif-convert", whole, "read.png")
        with Image.open(self.path("read.png")) as read:
            self.assertSame(self.pixels(whole), read)
        self.done("--wide", "2", "--high", "2", "--format", "jpg", "--out", "tiles", photo)
        for name in os.listdir(self.path("tiles")):
            with Image.open(self.path("tiles", name)) as tile:
                self.assertEqual(tile.info["icc_profile"], profile)

    def test_coded_colour_becomes_a_profile(self):
        for code in ("12/13/6", "9/16/9", "9/18/9"):  # Display P3, and BT.2100 with PQ and HLG
            photo, _ = self.avif(smooth(128, 96), "--cicp", code)
            tiles = self.path("tiles" + code.replace("/", "_"))
            self.done("--wide", "2", "--high", "2", "--out", tiles, photo)
            names = os.listdir(tiles)
            self.assertEqual(len(names), 4)
            for name in names:
                with Image.open(os.path.join(tiles, name)) as tile:
                    profile = ImageCms.ImageCmsProfile(io.BytesIO(tile.info["icc_profile"]))
                    self.assertEqual(profile.profile.xcolor_space.strip(), "RGB")
        photo, _ = self.avif(smooth(128, 96), "--cicp", "1/13/6")
        with Image.open(self.whole(photo, format="tif")) as tile:
            self.assertNotIn("icc_profile", tile.info)

    def test_profile_comes_along(self):
        profile = ImageCms.ImageCmsProfile(ImageCms.createProfile("sRGB")).tobytes()
        with open(self.path("p.icc"), "wb") as file:
            file.write(profile)
        photo, _ = self.avif(smooth(128, 96), "--icc", self.path("p.icc"))
        with Image.open(self.whole(photo, format="tif")) as tile:
            self.assertEqual(tile.info["icc_profile"], profile)


class BadPhotos(KindsTest):
    def every_kind(self):
        self.photo("p.png", noise(80, 60))
        self.photo("p.webp", noise(80, 60), lossless=True)
        self.run_tool("heif-enc", "p.png", "-o", "p.heic")
        self.run_tool("avifenc", "--speed", "9", "p.png", "p.avif")
        return [self.path("p." + ending) for ending in ("png", "webp", "heic", "avif")]

    def test_what_is_cut_off_is_refused(self):
        for photo in self.every_kind():
            with open(photo, "rb") as file:
                whole = file.read()
            for part in (20, len(whole) // 10, len(whole) // 2, len(whole) - 60):
                cut = self.path("cut" + os.path.splitext(photo)[1])
                with open(cut, "wb") as file:
                    file.write(whole[:part])
                said = self.refused(1, "--yes", cut)
                self.assertIn("Could not read", said)
                self.assertFalse(any(name.endswith((".tif", ".jpg")) for _, _, names
                                     in os.walk(self.folder) for name in names), said)

    def test_size_that_is_a_lie_is_refused(self):
        photo = self.photo("p.png", noise(80, 60))
        with open(photo, "r+b") as file:
            whole = bytearray(file.read())
            whole[16:24] = (900000).to_bytes(4, "big") * 2
            whole[29:33] = zlib.crc32(bytes(whole[12:29])).to_bytes(4, "big")
            file.seek(0)
            file.write(whole)
        self.assertIn("too small to hold", self.refused(1, "--plan", photo))

    def test_codec_that_is_not_there(self):
        """A library without the codec: the program finds none where it looks first."""
        photo = self.every_kind()[2]
        with open(self.path("libheif.so.1"), "wb") as file:
            file.write(b"not a library")
        self.environment["LD_LIBRARY_PATH"] = self.folder
        self.assertIn("This HEIC file is coded in a way that this system cannot read",
                      self.refused(1, "--plan", photo))


class Plans(KindsTest):
    def test_only_heic_and_avif_load_their_library(self):
        self.photo("p.png", noise(80, 60))
        self.photo("p.jpg", noise(80, 60))
        self.photo("p.webp", noise(80, 60))
        self.run_tool("heif-enc", "p.png", "-o", "p.heic")
        self.environment["LD_DEBUG"] = "files"
        for name, loaded in (("p.png", False), ("p.jpg", False), ("p.webp", False), ("p.heic", True)):
            result = self.run_tiles("--plan", self.path(name))
            self.assertEqual(json.loads(result.stdout)["photo"]["width"], 80)
            self.assertEqual(b"libheif" in result.stderr, loaded, name)
            self.assertNotIn(b"libgnutls", result.stderr, name)


if __name__ == "__main__":
    unittest.main()
