"""veldara-tiles from end to end: the real program on real files, checked by another reader."""

import fcntl
import json
import os
import pty
import re
import resource
import select
import signal
import struct
import subprocess
import sys
import termios
import time
import unittest

from PIL import Image

from pdf_pages import checked, pages_of
from tiles_support import NO_MOUNTS, PROGRAM, SANITIZED, TilesTest, noise, sampling, smooth


class Document(TilesTest):
    """The poster as one PDF, looked at with the tools of other projects."""

    A4 = ("--units", "mm", "--paper", "A4 - 210 x 297")

    def make(self, *arguments):
        photo = self.photo("lake.jpg", smooth(1200, 900), quality=95)
        self.done(*self.A4, "--pdf", self.path("poster.pdf"), "--yes", *arguments, photo)
        self.assertEqual(checked(self.path("poster.pdf")), "")
        info = subprocess.run(["pdfinfo", self.path("poster.pdf")], capture_output=True, text=True)
        return dict(line.split(":", 1) for line in info.stdout.splitlines())

    def test_has_a_page_a_sheet_and_the_guide(self):
        info = self.make("--wide", "3")
        self.assertEqual(info["Pages"].strip(), "7")
        self.assertIn("595.276 x 841.89 pts (A4)", info["Page size"])
        self.assertEqual(sorted(os.listdir(self.folder)), ["lake.jpg", "poster.pdf"])

    def test_leaves_out_what_is_not_wanted(self):
        info = self.make("--wide", "3", "--no-guide", "--no-labels", "--sheets", "2-3,6")
        self.assertEqual(info["Pages"].strip(), "3")
        text = subprocess.run(["pdftotext", self.path("poster.pdf"), "-"], capture_output=True,
                              text=True).stdout
        self.assertEqual(text.strip(), "")

    def test_draws_the_marks_that_are_asked_for(self):
        drawn = {}
        for kind in ("none", "corners", "lines"):
            self.make("--wide", "2", "--no-guide", "--no-labels", "--overlap", "0", "--marks", kind)
            drawn[kind] = [page.lines for page in pages_of(self.path("poster.pdf"))[0]]
        self.assertFalse(any(drawn["none"]))
        self.assertTrue(all(drawn["corners"]))
        self.assertNotEqual(drawn["corners"], drawn["lines"])

    def interrupted(self, photo):
        """Writes a document and interrupts that as soon as there is a part of it."""
        process = subprocess.Popen([PROGRAM, *self.A4, "--wide", "25", "--pdf", self.path("a.pdf"), photo],
                                   stderr=subprocess.PIPE, env=self.environment)
        while process.poll() is None and len(os.listdir(self.folder)) < 2:
            time.sleep(0.001)
        process.send_signal(signal.SIGINT)
        return process, process.communicate(timeout=60)[1]

    def test_that_is_interrupted_leaves_nothing(self):
        photo = self.photo("lake.png", noise(3000, 2000), compress_level=1)
        for _ in range(20):
            process, said = self.interrupted(photo)
            if not os.path.exists(self.path("a.pdf")):
                break
            os.remove(self.path("a.pdf"))  # it was ready before the signal came
        self.assertEqual((process.returncode, said), (130, b"veldara-tiles: Canceled by user\n"))
        self.assertEqual(os.listdir(self.folder), ["lake.png"])

    def test_plan_tells_the_pages(self):
        photo = self.photo("lake.jpg", smooth(1200, 900))
        plan = self.plan(*self.A4, "--margins", "10,10,10,10", "--pdf", "a.pdf", "--sheets", "2,3",
                         photo)
        self.assertEqual(list(plan)[-2:], ["tiles", "pdf"])
        self.assertEqual(plan["pdf"]["file"], "a.pdf")
        guide, second, third = plan["pdf"]["pages"]
        self.assertEqual(list(guide), ["page", "kind", "tile", "width_pt", "height_pt", "own_pt",
                                       "own_px"])
        self.assertEqual((guide["page"], guide["kind"], guide["tile"]), (1, "guide", None))
        self.assertEqual((second["page"], second["kind"], second["tile"]), (2, "sheet", 2))
        self.assertAlmostEqual(second["width_pt"], 595.276, 3)
        self.assertAlmostEqual(second["own_pt"][0], 28.346, 3)
        self.assertAlmostEqual(second["own_pt"][3], 813.543, 3)
        crop = plan["crop"]
        self.assertAlmostEqual(second["own_px"][2] - third["own_px"][0],
                               crop["right"] + 1 - crop["left"], delta=1)
        self.assertEqual(second["own_px"][3], third["own_px"][1])
        self.assertEqual(os.listdir(self.folder), ["lake.jpg"])

    def test_without_a_document_the_plan_has_none(self):
        self.assertNotIn("pdf", self.plan(self.photo("lake.jpg", smooth(1200, 900))))

    def test_says_when_the_overlap_does_not_fit(self):
        photo = self.photo("lake.jpg", smooth(1200, 900))
        for more in (["--plan"], []):
            result = self.run_tiles(*self.A4, "--margins", "5,5,5,5", "--overlap", "8", "--pdf",
                                    "a.pdf", *more, photo)
            self.assertEqual(result.returncode, 0)
            self.assertIn(b"An overlap of 8 mm takes a right margin of 8 mm; the paper's is 5 mm",
                          result.stderr)

    def test_asks_before_it_replaces_a_document(self):
        photo = self.photo("lake.jpg", smooth(1200, 900))
        with open(self.path("a.pdf"), "w") as file:
            file.write("old")
        said = self.refused(1, "--pdf", self.path("a.pdf"), photo)
        self.assertIn("already exists", said)
        with open(self.path("a.pdf")) as file:
            self.assertEqual(file.read(), "old")

    def test_never_takes_the_photos_place(self):
        photo = self.photo("lake.jpg", smooth(1200, 900))
        with open(photo, "rb") as file:
            before = file.read()
        self.assertIn("photo's place", self.refused(1, "--yes", "--pdf", photo, photo))
        with open(photo, "rb") as file:
            self.assertEqual(file.read(), before)

    def test_refuses_what_does_not_fit_together(self):
        photo = self.photo("lake.jpg", smooth(1200, 900))
        for words in (["--overlap", "5"], ["--marks", "lines"], ["--no-guide"], ["--no-labels"],
                      ["--sheets", "1"]):
            self.assertIn("it belongs to --pdf", self.refused(2, *words, photo))
        for words in (["--out", "x"], ["--base", "x"], ["--format", "tif"]):
            self.assertIn("not both", self.refused(2, "--pdf", "a.pdf", *words, photo))
        self.assertIn("no sheet 5", self.refused(2, "--pdf", "a.pdf", "--sheets", "5", photo))
        self.assertIn("none, corners or lines",
                      self.refused(2, "--pdf", "a.pdf", "--marks", "dots", photo))
        self.assertIn("0 or more", self.refused(2, "--pdf", "a.pdf", "--overlap", "-1", photo))

    def test_a_full_disk_leaves_nothing(self):
        photo = self.photo("lake.jpg", noise(1200, 900), quality=95)
        result = self.run_tiles("--pdf", "a.pdf", photo, under=["sh", "-c",
                                'ulimit -f 100; trap "" XFSZ; exec "$@"', "sh"])
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertEqual(os.listdir(self.folder), ["lake.jpg"])
        self.assertIn(b"a.pdf", result.stderr)

    def number_of(self, document):
        """What the trailer says the document's number is, twice: of the first and of this version."""
        said = subprocess.run(["qpdf", "--show-object=trailer", document], capture_output=True, text=True,
                              check=True).stdout
        first, this = re.search(r"/ID \[ <(\w{32})> <(\w{32})> \]", said).groups()
        self.assertEqual(first, this)
        return this

    def test_every_document_has_a_number_of_its_own(self):
        numbers = set()
        for value in (10, 20, 30):
            photo = self.photo("lake.jpg", Image.new("L", (300, 200), value))
            self.done("--yes", "--pdf", self.path("a.pdf"), photo)
            self.assertEqual(checked(self.path("a.pdf")), "")
            numbers.add(self.number_of(self.path("a.pdf")))
        self.assertEqual(len(numbers), 3)

    def test_without_the_library_that_numbers_documents_says_so_and_leaves_nothing(self):
        photo = self.photo("lake.jpg", smooth(1200, 900))
        os.mkdir(self.path("libraries"))
        with open(self.path("libraries", "libgnutls.so.30"), "wb"):
            pass  # found before the real one, and nothing that can be loaded
        given = self.environment.get("LD_LIBRARY_PATH")
        self.environment["LD_LIBRARY_PATH"] = ":".join(filter(None, (self.path("libraries"), given)))
        said = self.refused(1, "--pdf", self.path("a.pdf"), photo)
        self.assertIn("The document could not be made: ", said)
        self.assertIn("the library GnuTLS is missing", said)
        self.assertFalse(os.path.exists(self.path("a.pdf")))


class Plan(TilesTest):
    def test_has_its_members_in_their_order(self):
        photo = self.photo("a.bmp", noise(600, 400))
        text = self.done("--plan", "--wide", "3", "--paper-size", "8,8", photo).decode()
        plan = json.loads(text, object_pairs_hook=lambda pairs: pairs)
        names = [name for name, _ in plan]
        self.assertEqual(names, ["photo", "paper", "tile_inches", "grid", "crop", "figures", "dpi",
                                 "clip", "tiles"])
        inner = dict(plan)
        members = lambda value: [name for name, _ in value]
        self.assertEqual(members(inner["photo"]), ["file", "width", "height"])
        self.assertEqual(members(inner["paper"]), ["name", "units", "width", "height", "margins"])
        self.assertEqual(members(inner["tile_inches"]), ["width", "height"])
        self.assertEqual(members(inner["grid"]), ["wide", "high", "rotate_tiles"])
        self.assertEqual(members(inner["crop"]), ["left", "top", "right", "bottom"])
        self.assertEqual(members(inner["figures"]), ["size", "megapixels", "resolution", "quality"])
        self.assertEqual(members(inner["tiles"][0]), ["number", "left", "top", "right", "bottom",
                                                      "width", "height", "file"])

    def test_is_that_of_the_window(self):
        # 3000 x 2000 pixels on 3 x 2 sheets of 8 x 10 inches.
        photo = self.photo("a.bmp", Image.new("RGB", (3000, 2000)))
        plan = self.plan("--wide", "3", "--paper", 'Photo 8" x 10"', photo)
        self.assertEqual(plan["figures"], {"size": "24 x 20 inches", "megapixels": "4.80",
                                           "resolution": "100.0 dpi", "quality": "Good"})
        self.assertEqual(plan["crop"], {"left": 300, "top": 0, "right": 2699, "bottom": 1999})
        self.assertEqual(plan["dpi"], 100)
        self.assertIsNone(plan["clip"])
        self.assertEqual(plan["tile_inches"], {"width": 8, "height": 10})
        self.assertEqual(len(plan["tiles"]), 6)
        self.assertEqual(plan["tiles"][5]["number"], 6)

    def test_at_zoom_100(self):
        photo = self.photo("a.bmp", Image.new("RGB", (3000, 2000)))
        plan = self.plan("--wide", "3", "--paper", 'Photo 8" x 10"', "--zoom", "100", photo)
        self.assertEqual(plan["figures"], {"size": "24 x 20 inches", "megapixels": "2.40",
                                           "resolution": "50.0 dpi",
                                           "quality": "Good from a distance"})

    def test_leaves_out_and_shares_columns(self):
        photo = self.photo("a.bmp", Image.new("RGB", (1000, 5000)))
        plan = self.plan("--wide", "3", "--high", "15", "--paper-size", "1,1", photo)
        self.assertEqual([(t["left"], t["right"]) for t in plan["tiles"][:3]],
                         [(0, 332), (333, 665), (667, 999)])
        photo = self.photo("b.bmp", Image.new("RGB", (1001, 5005)))
        plan = self.plan("--wide", "2", "--high", "10", "--paper-size", "1,1", photo)
        self.assertEqual([(t["left"], t["right"]) for t in plan["tiles"][:2]],
                         [(0, 500), (500, 1000)])

    def test_speaks_of_the_turned_photo(self):
        photo = self.photo("a.bmp", noise(600, 400))
        plan = self.plan("--rotate", "cw", photo)
        self.assertEqual((plan["photo"]["width"], plan["photo"]["height"]), (400, 600))

    def test_gives_turned_tiles_the_size_they_have_as_files(self):
        photo = self.photo("a.bmp", noise(600, 400))
        plan = self.plan("--rotate-tiles", "--paper", 'Photo 8" x 10"', photo)
        self.assertTrue(plan["grid"]["rotate_tiles"])
        self.assertEqual(plan["tile_inches"], {"width": 8, "height": 10})
        for tile in plan["tiles"]:
            self.assertEqual(tile["width"], tile["bottom"] - tile["top"] + 1)
            self.assertEqual(tile["height"], tile["right"] - tile["left"] + 1)

    def test_writes_nothing(self):
        photo = self.photo("a.bmp", noise(60, 40))
        self.plan(photo)
        self.assertEqual(os.listdir(self.folder), ["a.bmp"])

    def test_in_millimetres(self):
        photo = self.photo("a.bmp", noise(600, 400))
        plan = self.plan("--units", "mm", "--paper", "A4 - 210 x 297", photo)
        self.assertEqual(plan["paper"], {"name": "A4 - 210 x 297", "units": "mm", "width": 210,
                                         "height": 297, "margins": [25, 25, 25, 25]})
        self.assertAlmostEqual(plan["tile_inches"]["width"], 160 / 25.4)
        self.assertTrue(plan["figures"]["size"].endswith(" cm"))
        self.assertTrue(plan["figures"]["resolution"].endswith(" dots/cm"))

    def test_has_points_in_every_locale(self):
        photo = self.photo("a.bmp", noise(600, 400))
        arguments = ["--plan", "--paper", 'Letter 8.5" x 11"', photo]
        expected = self.done(*arguments)
        self.assertIn(b'"width":8.5', expected)
        locales = self.path("locales")
        os.mkdir(locales)
        subprocess.run(["localedef", "--no-archive", "-i", "de_DE", "-f", "UTF-8",
                        os.path.join(locales, "de_DE.UTF-8")], check=True,
                       stderr=subprocess.DEVNULL)
        self.environment.update({"LOCPATH": locales, "LC_ALL": "de_DE.UTF-8",
                                 "LC_NUMERIC": "de_DE.UTF-8"})
        self.assertEqual(self.done(*arguments), expected)
        self.assertEqual(self.done("--plan", "--margins", "0.5,0.5,0.5,0.5", photo)[:1], b"{")

    def test_reads_the_header_only(self):
        # The pixels are missing: a plan can be made of it, and no tile.
        photo = self.photo("a.bmp", noise(2000, 1000))
        with open(photo, "r+b") as file:
            file.truncate(2000)
        whole = self.photo("b.jpg", smooth(2000, 1000))
        with open(whole, "r+b") as file:
            file.truncate(os.path.getsize(whole) // 2)
        self.assertEqual(self.plan(whole)["photo"]["width"], 2000)
        self.assertEqual(self.run_tiles("--yes", whole).returncode, 1)

    def test_quotes_names_as_json_wants_them(self):
        name = 'a "b" \\ \t\r\n\x01ü 日本.bmp'
        photo = self.photo(name, noise(60, 40))
        plan = self.plan(photo)
        self.assertEqual(plan["photo"]["file"], photo)
        self.assertTrue(plan["tiles"][0]["file"].endswith("日本001.bmp"))

    def test_shows_names_as_they_are_written(self):
        photo = self.photo("Büro.bmp", noise(60, 40))
        self.assertIn("Büro.bmp".encode(), self.done("--plan", photo))

    def test_is_valid_utf8_whatever_the_name(self):
        name = os.fsencode(self.folder) + b"/bad\xff\xed\xa0\x80.bmp"
        with open(name, "wb") as file:
            noise(60, 40).save(file, "BMP")
        result = subprocess.run([PROGRAM, "--plan", name], stdout=subprocess.PIPE, check=True)
        plan = json.loads(result.stdout.decode("utf-8", "strict"))
        self.assertIn("bad\ufffd", plan["photo"]["file"])


class Tiles(TilesTest):
    def test_are_the_photos_own_pixels(self):
        picture = noise(731, 509)
        for kind, extension in (("bmp", ".bmp"), ("tif", ".tif")):
            with self.subTest(kind):
                photo = self.photo("p" + extension, picture)
                arguments = ["--wide", "3", "--high", "4", "--zoom", "30", "--pan", "20,170",
                             "--out", self.path("out_" + kind), photo]
                plan = self.plan(*arguments)
                self.done(*arguments)
                self.check_files(plan, picture)

    def test_of_a_jpeg_are_what_another_reader_decodes(self):
        for subsampling in (0, 1, 2):
            for progressive in (False, True):
                with self.subTest(subsampling=subsampling, progressive=progressive):
                    photo = self.photo("p.jpg", smooth(701, 503), quality=85,
                                       subsampling=subsampling, progressive=progressive)
                    out = self.path(f"out{subsampling}{progressive}")
                    arguments = ["--wide", "3", "--zoom", "45", "--format", "bmp", "--out", out,
                                 photo]
                    plan = self.plan(*arguments)
                    self.done(*arguments)
                    self.check_files(plan, Image.open(photo).convert("RGB"))

    def test_as_jpeg_keep_colour_as_fine_as_brightness(self):
        picture = smooth(800, 600)
        photo = self.photo("p.jpg", picture, quality=98, subsampling=0)
        self.done("--wide", "2", "--paper-size", "8,6", photo)
        plan = self.plan("--wide", "2", "--paper-size", "8,6", photo)
        for tile in plan["tiles"]:
            with Image.open(tile["file"]) as written:
                self.assertEqual(sampling(written), (1, 1))
                self.assertEqual(written.quantization[0][0], 2)  # quality 95
                cut = picture.crop((tile["left"], tile["top"], tile["right"] + 1,
                                    tile["bottom"] + 1))
                worst = max(abs(a - b) for a, b in zip(written.tobytes(), cut.tobytes()))
                self.assertLess(worst, 12)

    def test_carry_their_resolution(self):
        photo = self.photo("p.bmp", noise(1600, 1200))
        for kind in ("jpg", "tif", "bmp"):
            arguments = ["--paper-size", "8,6", "--format", kind, "--out", self.path(kind), photo]
            plan = self.plan(*arguments)
            self.done(*arguments)
            self.assertEqual(plan["dpi"], 100)
            for tile in plan["tiles"]:
                with Image.open(tile["file"]) as written:
                    self.assertAlmostEqual(float(written.info["dpi"][0]), 100, delta=0.02)
                    self.assertAlmostEqual(float(written.info["dpi"][1]), 100, delta=0.02)
        with Image.open(self.path("tif", "p001.tif")) as written:
            self.assertEqual(written.info["compression"], "tiff_lzw")
            self.assertEqual(written.tag_v2[317], 2)  # the horizontal predictor

    def test_carry_the_colour_profile(self):
        profile = bytes(ImageCmsProfile())
        photo = self.photo("p.jpg", smooth(400, 300), icc_profile=profile)
        for kind in ("jpg", "tif"):
            for turn in ("none", "cw", "180"):
                out = self.path(kind + turn)
                self.done("--format", kind, "--rotate", turn, "--out", out, photo)
                self.assertEqual(len(os.listdir(out)), 4)
                for name in os.listdir(out):
                    with Image.open(os.path.join(out, name)) as written:
                        self.assertEqual(written.info.get("icc_profile"), profile)

    def test_of_a_turned_photo(self):
        picture = noise(301, 203)
        photo = self.photo("p.bmp", picture)
        turns = {"cw": Image.Transpose.ROTATE_270, "ccw": Image.Transpose.ROTATE_90,
                 "180": Image.Transpose.ROTATE_180}
        for turn, transpose in turns.items():
            with self.subTest(turn):
                arguments = ["--rotate", turn, "--wide", "3", "--out", self.path(turn), photo]
                plan = self.plan(*arguments)
                self.done(*arguments)
                self.check_files(plan, picture.transpose(transpose))

    def test_that_are_turned_themselves(self):
        picture = noise(301, 203)
        photo = self.photo("p.tif", picture)
        arguments = ["--rotate-tiles", "--wide", "3", "--high", "3", "--pan", "0,200", photo]
        plan = self.plan(*arguments)
        self.done(*arguments)
        self.check_files(plan, picture, rotate_tiles=True)

    def test_of_a_photo_with_an_orientation_tag(self):
        picture = noise(120, 80)
        for orientation, transpose in ((1, None), (3, Image.Transpose.ROTATE_180),
                                       (6, Image.Transpose.ROTATE_270),
                                       (8, Image.Transpose.ROTATE_90)):
            with self.subTest(orientation):
                photo = self.photo("p.tif", picture, tiffinfo={274: orientation})
                out = self.path(f"out{orientation}")
                plan = self.plan("--out", out, photo)
                self.done("--out", out, photo)
                self.check_files(plan, picture.transpose(transpose) if transpose is not None
                                 else picture)

    def test_go_beside_the_photo_by_default(self):
        os.mkdir(self.path("my photos"))
        picture = noise(90, 60)
        self.photo("my photos/Größe 1.BMP", picture)
        self.done("my photos/Größe 1.BMP")
        folder = self.path("my photos", "Größe 1_poster_images")
        self.assertEqual(sorted(os.listdir(folder)),
                         [f"Größe 1{i:03}.bmp" for i in range(1, 5)])

    def test_have_names_in_any_script(self):
        picture = noise(90, 60)
        photo = self.photo("写真.bmp", picture)
        arguments = ["--base", "плакат-", "--out", self.path("Ausgabe ä"), photo]
        plan = self.plan(*arguments)
        self.done(*arguments)
        self.check_files(plan, picture)
        self.assertEqual(os.path.basename(plan["tiles"][0]["file"]), "плакат-001.bmp")

    def test_one_by_one_and_625(self):
        picture = noise(260, 255)
        photo = self.photo("p.bmp", picture)
        for count in ("1", "25"):
            arguments = ["--wide", count, "--high", count, "--paper-size", "3,3", "--out",
                         self.path(count), photo]
            plan = self.plan(*arguments)
            self.done(*arguments)
            self.assertEqual(len(plan["tiles"]), int(count) ** 2)
            self.check_files(plan, picture)

    def test_of_a_whole_photo_cover_it(self):
        picture = noise(640, 480)
        photo = self.photo("p.bmp", picture)
        plan = self.plan("--wide", "4", "--high", "3", "--paper-size", "5,5", photo)
        self.done("--wide", "4", "--high", "3", "--paper-size", "5,5", photo)
        together = Image.new("RGB", picture.size)
        for tile in plan["tiles"]:
            with Image.open(tile["file"]) as written:
                together.paste(written, (tile["left"], tile["top"]))
        self.assertEqual(together.tobytes(), picture.tobytes())


def ImageCmsProfile():
    from PIL import ImageCms
    return ImageCms.ImageCmsProfile(ImageCms.createProfile("sRGB")).tobytes()


class Options(TilesTest):
    def test_out_of_range_name_the_range(self):
        photo = self.photo("p.bmp", noise(60, 40))
        for arguments, said in (
                (["--wide", "0"], "1 to 25"), (["--wide", "26"], "1 to 25"),
                (["--high", "2.5"], "1 to 25"), (["--high", "many"], "1 to 25"),
                (["--wide", "-1"], "1 to 25"),
                (["--zoom", "401"], "0 to 400"), (["--pan", "100"], "0 to 200"),
                (["--pan", "0,201"], "0 to 200"), (["--clip", "1,2,3"], "0 to 16"),
                (["--clip", "1,2,3,17"], "0 to 16"), (["--units", "cm"], "in or mm"),
                (["--rotate", "90"], "none, cw, ccw or 180"), (["--format", "png"], "jpg, tif or bmp"),
                (["--clip", "1,2,3"],
                 '--clip "1,2,3": give 4 whole numbers from 0 to 16, separated by commas.'),
                (["--paper-size", "8"], "width,height"), (["--margins", "1,2"], "top,right,bottom"),
                (["--paper-size", "8,x"], "width,height"),
                (["--margins", "1,2,x,4"], "top,right,bottom"),
                (["--paper-size", "0.7,8"], "--paper-size: "),
                (["--paper-size", "8,8", "--margins", "-1,0,0,0"], "--margins: "),
                (["--paper-size", "0.7,8"], "0.75 to 50 inches"),
                (["--paper-size", "51,8"], "0.75 to 50 inches"),
                (["--units", "mm", "--paper-size", "19,80"], "19.05 to 1270 millimetres"),
                (["--margins", "-1,0,0,0"], "can't be less than zero"),
                (["--margins", "0,3,0,3"], "Together they are larger than the paper width."),
                (["--paper", "Letter"], "--list-papers"), (["--paper", ""], "give a paper's name"),
                (["--paper", "A4 - 210 x 297"], "--units mm"),
                (["--profile", "none such"], "--list-profiles"),
                (["--profile", ""], "give a profile's name"),
                (["--test-target", "t.bmp"], 'leave out "'),
                (["--clip", "1,1,1,1", "--profile", "default"], "not both"),
                (["--base", "a/b"], "--out"), (["--out", ""], "--out"),
                (["--no-such-option"], '"--no-such-option": there is no such option.'),
                (["-x"], '"-x": there is no such option.'),
                (["--wide", "2", "--wide", "3"], "--wide: give it once, with one value."),
                (["--wide", "--high", "2"], '--wide "--high": give a whole number from 1 to 25.'),
                (["--plan=maybe"], "--plan = maybe."),
                (["--paper", 'Letter 8.5" x 11"', "--paper-size", "8,8"], "fixed"),
        ):
            with self.subTest(arguments):
                self.assertIn(said, self.refused(2, *arguments, photo))
        self.assertEqual(os.listdir(self.folder), ["p.bmp"])

    def test_need_a_photo(self):
        self.assertIn("photo", self.refused(2))
        self.assertIn('"b.jpg": only one photo, please.',
                      self.refused(2, "a.jpg", "b.jpg"))
        self.assertIn("--wide: give it once, with one value.", self.refused(2, "a.jpg", "--wide"))

    def test_plan_no_test_target(self):
        self.assertIn("give one of them", self.refused(2, "--plan", "--test-target", "t.bmp"))
        self.assertEqual(os.listdir(self.folder), [])

    def test_end_where_the_names_begin(self):
        self.photo("-plan.bmp", noise(60, 40))
        self.assertEqual(self.plan("--", "-plan.bmp")["photo"]["width"], 60)
        self.assertIn('"--quiet": only one photo, please', self.refused(2, "--", "-plan.bmp",
                                                                         "--quiet"))

    def test_ask_for_texts(self):
        self.assertEqual(self.done("--version"), b"veldara-tiles %s\n" % os.environ["VELDARA_VERSION"].encode())
        text = self.done("--help").decode()
        for option in ("--wide", "--high", "--units", "--paper", "--paper-size", "--margins",
                       "--rotate", "--rotate-tiles", "--zoom", "--pan", "--clip", "--profile",
                       "--format", "--out", "--base", "--yes", "--plan", "--test-target", "--quiet",
                       "--list-papers", "--list-profiles", "--version", "--help"):
            self.assertIn(option + " ", text.replace(",", " "))
        self.assertLessEqual(max(map(len, text.splitlines())), 79)

    def test_list_both_catalogues(self):
        text = self.done("--list-papers").decode()
        for name in ('Photo 4" x 6"', 'Canvas 11" x 17"', "Custom (Inches)", "A8 - 53 x 74",
                     "Custom (mm)"):
            self.assertIn(name, text)
        self.assertEqual(text.splitlines()[1], '  Photo 4" x 6"       6 x 4       margins 0,0,0,0')

    def test_every_listed_paper_can_be_chosen(self):
        photo = self.photo("p.bmp", noise(60, 40))
        units = None
        chosen = 0
        for line in self.done("--list-papers").decode().splitlines():
            if line.startswith("--units"):
                units = line.split()[1]
            elif line:
                name = line[2:22].rstrip()
                self.assertEqual(self.plan("--units", units, "--paper", name, photo)
                                 ["paper"]["name"], name)
                chosen += 1
        self.assertEqual(chosen, 15)

    def test_custom_paper(self):
        photo = self.photo("p.bmp", noise(60, 40))
        plan = self.plan("--paper-size", "13,19", "--margins", "0.5,0.25,0.5,0.25", photo)
        self.assertEqual(plan["paper"], {"name": "Custom (Inches)", "units": "in", "width": 13,
                                         "height": 19, "margins": [0.5, 0.25, 0.5, 0.25]})
        self.assertEqual(plan["tile_inches"], {"width": 12.5, "height": 18})


class Folders(TilesTest):
    def test_made_by_two_programs_at_once(self):
        photo = self.photo("a.bmp", noise(60, 40))
        # Each has looked before either makes it. The leak sanitizer cannot work under strace.
        slow = ["strace", "-f", "-o", "/dev/null", "-e", "trace=mkdir", "-e",
                "inject=mkdir:delay_enter=500000"]
        environment = {**self.environment, "ASAN_OPTIONS": "detect_leaks=0"}
        programs = [subprocess.Popen([*slow, PROGRAM, "--yes", "--out", self.path("out"), photo],
                                     env=environment) for _ in range(2)]
        self.assertEqual([program.wait(60) for program in programs], [0, 0])
        self.assertEqual(len(os.listdir(self.path("out"))), 4)

    def test_that_exist_are_refused_away_from_a_terminal(self):
        photo = self.photo("p.bmp", noise(60, 40))
        out = self.path("out")
        os.mkdir(out)
        said = self.refused(1, "--out", out, photo)
        self.assertIn(f'The folder "{out}" already exists.  Some files could be overwritten.', said)
        self.assertIn("--yes", said)
        self.assertEqual(os.listdir(out), [])

    def test_that_exist_are_refused_however_quiet(self):
        photo = self.photo("p.bmp", noise(60, 40))
        os.mkdir(self.path("out"))
        self.assertIn("already exists", self.refused(1, "--quiet", "--out", self.path("out"), photo))
        self.assertEqual(os.listdir(self.path("out")), [])
        with open(self.path("t.bmp"), "wb") as file:
            file.write(b"older")
        self.assertIn("already exists", self.refused(1, "-q", "--test-target", self.path("t.bmp")))

    def test_that_exist_are_used_with_yes(self):
        picture = noise(60, 40)
        photo = self.photo("p.bmp", picture)
        out = self.path("out")
        os.mkdir(out)
        with open(os.path.join(out, "p001.bmp"), "w", encoding="ascii") as old:
            old.write("old")
        plan = self.plan("--out", out, photo)
        self.done("--yes", "--out", out, photo)
        self.check_files(plan, picture)

    def test_that_hold_the_photo_keep_it(self):
        picture = noise(60, 40)
        photo = self.photo("p002.bmp", picture)
        os.symlink("p002.bmp", self.path("link.bmp"))
        with open(photo, "rb") as file:
            before = file.read()
        for name in (photo, "link.bmp"):
            said = self.refused(1, "--yes", "--out", self.folder, "--base", "p", name)
            self.assertIn(f'"{photo}" would take the photo\'s place', said)
            with open(photo, "rb") as file:
                self.assertEqual(file.read(), before)
            self.assertFalse(os.path.exists(self.path("p001.bmp")))
        self.done("--yes", "--out", self.folder, "--base", "q", photo)

    def test_without_a_parent_cannot_be_made(self):
        photo = self.photo("p.bmp", noise(60, 40))
        out = self.path("no", "such", "parent")
        self.assertIn(f'Could not create the folder "{out}" to save your poster tile images into.',
                      self.refused(1, "--out", out, photo))

    def test_that_are_files_cannot_be_made(self):
        photo = self.photo("p.bmp", noise(60, 40))
        self.assertIn("Could not create the folder", self.refused(1, "--out", photo, photo))


class Terminal(TilesTest):
    def on_a_terminal(self, arguments, answer=b"", interrupt=False, columns=80):
        """Runs it before a pseudo terminal; returns its status and all that it drew."""
        master, slave = pty.openpty()
        fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        process = subprocess.Popen([PROGRAM, *arguments], stdin=slave, stdout=slave, stderr=slave,
                                   env=self.environment, close_fds=True)
        os.close(slave)
        drawn = b""
        answered = False
        while True:
            ready, _, _ = select.select([master], [], [], 60)
            self.assertTrue(ready, "the program hangs: " + repr(drawn))
            try:
                piece = os.read(master, 65536)
            except OSError:
                break
            if not piece:
                break
            drawn += piece
            if b"[y/N]" in drawn and not answered:
                answered = True
                if interrupt:
                    process.send_signal(signal.SIGINT)
                else:
                    os.write(master, answer)
        os.close(master)
        return process.wait(60), drawn.decode()

    def test_shows_a_bar_that_goes_away(self):
        photo = self.photo("p.bmp", noise(600, 400))
        status, drawn = self.on_a_terminal([photo])
        self.assertEqual(status, 0)
        bars = ["", "=" * 12, "=" * 25, "=" * 37, "=" * 50]
        shown = [f"[{(bar + '>')[:50]:50}] {done}/4 {done * 25:3}%" for done, bar in enumerate(bars)]
        lines = drawn.split("\r")
        self.assertEqual(lines[:6], ["", *shown])
        self.assertEqual(lines[6], " " * len(shown[4]))
        self.assertIn("4 tiles written to", lines[7])

    def test_shows_figures_alone_where_there_is_no_room(self):
        photo = self.photo("p.bmp", noise(600, 400))
        for columns, last in ((14, "4/4 100%"), (15, "4/4 100%"), (16, "[====] 4/4 100%")):
            with self.subTest(columns=columns):
                status, drawn = self.on_a_terminal(["--out", self.path(f"out{columns}"), photo], columns=columns)
                self.assertEqual(status, 0)
                self.assertIn(f"\r{last}\r", drawn)

    def test_asks_before_a_test_image_is_replaced(self):
        target = self.path("t.bmp")
        for answer, status in ((b"n\n", 1), (b"y\n", 0)):
            with open(target, "wb") as file:
                file.write(b"older")
            ended, drawn = self.on_a_terminal(["--test-target", target], answer)
            self.assertIn("Do you want to replace it?", drawn)
            self.assertEqual(ended, status)
            with open(target, "rb") as file:
                self.assertEqual(file.read() == b"older", status == 1)

    def test_tells_where_the_test_image_is(self):
        target = self.path("t.bmp")
        self.assertEqual(self.on_a_terminal(["--test-target", target]),
                         (0, f"test image written to {target}\r\n"))

    def test_is_quiet_when_asked(self):
        photo = self.photo("p.bmp", noise(60, 40))
        self.assertEqual(self.on_a_terminal(["--quiet", photo]), (0, ""))
        self.assertEqual(self.on_a_terminal(["--quiet", "--test-target", self.path("t.bmp")]),
                         (0, ""))

    def test_asks_before_a_folder_is_used_again(self):
        photo = self.photo("p.bmp", noise(60, 40))
        out = self.path("out")
        os.mkdir(out)
        for answer, status, files in ((b"n\n", 1, 0), (b"\n", 1, 0), (b"what\n", 1, 0),
                                      (b"Yes\n", 0, 4), (b"y\n", 0, 4)):
            with self.subTest(answer):
                ended, drawn = self.on_a_terminal(["--out", out, photo], answer)
                self.assertIn(f'The folder "{out}" already exists.  Some files could be '
                              "overwritten.  Do you want to continue?", drawn)
                self.assertEqual(ended, status)
                self.assertEqual(len(os.listdir(out)), files)

    def test_can_be_left_at_the_question(self):
        photo = self.photo("p.bmp", noise(60, 40))
        os.mkdir(self.path("out"))
        status, drawn = self.on_a_terminal(["--out", self.path("out"), photo], interrupt=True)
        self.assertEqual(status, 130)
        self.assertIn("Canceled by user", drawn)

    def test_asks_nothing_that_is_not_seen(self):
        photo = self.photo("p.bmp", noise(60, 40))
        os.makedirs(self.path("out"))
        master, slave = pty.openpty()
        self.addCleanup(os.close, master)
        os.write(master, b"y\n")  # would answer a question
        ended = subprocess.run([PROGRAM, "--out", self.path("out"), photo], stdin=slave,
                               stderr=subprocess.PIPE, env=self.environment, timeout=60)
        os.close(slave)
        self.assertEqual(ended.returncode, 1)
        self.assertNotIn(b"[y/N]", ended.stderr)
        self.assertEqual(os.listdir(self.path("out")), [])

    def test_draws_nothing_on_a_pipe(self):
        photo = self.photo("p.bmp", noise(60, 40))
        self.assertEqual(self.done(photo), b"")


class Failures(TilesTest):
    def test_of_the_photo_name_it(self):
        for name, content in (("missing.jpg", None), ("empty.jpg", b""), ("text.jpg", b"hello" * 99),
                              ("cut.jpg", b"\xff\xd8\xff\xe0\x00\x10JFIF")):
            with self.subTest(name):
                if content is not None:
                    with open(self.path(name), "wb") as file:
                        file.write(content)
                self.assertIn(name, self.refused(1, self.path(name)))
        self.assertFalse([name for name in os.listdir(self.folder) if "poster" in name])

    def test_of_a_folder_instead_of_a_photo(self):
        self.refused(1, self.folder)

    def test_of_a_photo_that_is_cut_short(self):
        for name, options in (("p.bmp", {}), ("p.jpg", {"quality": 90}),
                              ("q.jpg", {"progressive": True}), ("p.tif", {}),
                              ("q.tif", {"compression": "tiff_lzw"})):
            with self.subTest(name):
                photo = self.photo(name, noise(640, 480), **options)
                with open(photo, "r+b") as file:
                    file.truncate(os.path.getsize(photo) * 2 // 3)
                self.assertIn(name, self.refused(1, "--yes", photo))

    def test_of_a_photo_that_is_too_small(self):
        for size in ((24, 500), (500, 24)):
            photo = self.photo("p.bmp", noise(*size))
            self.assertIn("The image you selected is EXTREMELY small.  It has a height and/or "
                          "width that is below the minimum allowable size of 25 pixels.  Please "
                          "select a larger image.", self.refused(1, photo))
        self.done(self.photo("q.bmp", noise(25, 25)))

    def test_of_more_tiles_than_pixels(self):
        photo = self.photo("p.bmp", noise(30, 30))
        said = self.refused(1, "--wide", "25", "--high", "25", "--zoom", "400", photo)
        self.assertIn("fewer pixels", said)

    def test_of_a_full_disk(self):
        # Files may not grow beyond 300 KB here: the first tile of a bitmap does not fit.
        photo = self.photo("p.bmp", noise(900, 600))

        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (300000, 300000))

        out = self.path("out")
        result = self.run_tiles("--out", out, photo, preexec_fn=limit)
        self.assertEqual(result.returncode, 1)
        self.assertIn(b"Error saving tile image file to disk.  Possible cause is that the disk is "
                      b"full.  Can not continue.", result.stderr)
        self.assertEqual(os.listdir(out), [])

    def test_of_a_full_standard_output(self):
        photo = self.photo("p.bmp", noise(60, 40))
        for arguments in (["--plan", photo], ["--help"], ["--list-papers"]):
            with self.subTest(arguments), open("/dev/full", "wb") as full:
                result = subprocess.run([PROGRAM, *arguments], stdout=full, stderr=subprocess.PIPE,
                                        env=self.environment, check=False, timeout=60)
                self.assertEqual(result.returncode, 1)
                self.assertEqual(result.stderr,
                                 b"veldara-tiles: Could not write to the standard output.\n")

    @unittest.skipIf(NO_MOUNTS, "VELDARA_NO_MOUNTS is set")
    def test_of_too_little_space(self):
        picture = noise(900, 600)
        photo = self.photo("p.bmp", picture)
        result = self.run_on_small_disk(1 << 20, "--wide", "2", "--high", "2", "--paper-size", "3,2",
                                        "--out", os.path.join("disk", "out"), photo)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, b"veldara-tiles: Not enough disk space on selected drive.  "
                                        b"Can not save images.\n")
        # What was written before is whole.
        names = sorted(os.listdir(self.path("kept", "out")))
        self.assertEqual(names, ["p001.bmp", "p002.bmp"])
        with Image.open(self.path("kept", "out", "p001.bmp")) as written:
            self.assertEqual(written.tobytes(), picture.crop((0, 0, 450, 300)).tobytes())

    def test_of_a_tile_that_its_format_cannot_hold(self):
        # A JPEG is at most 65,500 pixels wide.
        photo = self.photo("p.tif", Image.new("RGB", (66000, 990)), compression="tiff_lzw")
        said = self.refused(1, "--wide", "1", "--high", "1", "--format", "jpg", "--paper-size",
                            "50,0.75", photo)
        self.assertIn("A tile could not be encoded.", said)
        self.assertNotIn("compensation", said)

    def stopped_by(self, signal_number):
        """A run that is stopped by that signal while it writes tiles."""
        picture = noise(3000, 2000)
        photo = self.photo("p.bmp", picture)
        out = self.path("out")
        arguments = ["--wide", "25", "--high", "25", "--paper-size", "3,2", "--format", "tif",
                     "--out", out, photo]
        plan = self.plan(*arguments)
        process = subprocess.Popen([PROGRAM, *arguments], stderr=subprocess.PIPE,
                                   env=self.environment)
        while process.poll() is None and not (os.path.isdir(out) and len(os.listdir(out)) > 2):
            time.sleep(0.001)
        process.send_signal(signal_number)
        said = process.communicate(timeout=60)[1]
        self.assertEqual(process.returncode, 130)
        self.assertEqual(said, b"veldara-tiles: Canceled by user\n")
        names = sorted(os.listdir(out))
        self.assertLess(len(names), 625)
        for number, name in enumerate(names):
            tile = plan["tiles"][number]
            self.assertEqual(name, os.path.basename(tile["file"]))  # in order, and no leftovers
            with Image.open(tile["file"]) as written:
                cut = picture.crop((tile["left"], tile["top"], tile["right"] + 1,
                                    tile["bottom"] + 1))
                self.assertEqual(written.tobytes(), cut.tobytes())

    def test_by_ctrl_c_stop_between_tiles(self):
        self.stopped_by(signal.SIGINT)

    def test_by_a_request_to_end_stop_between_tiles(self):
        self.stopped_by(signal.SIGTERM)


class Safety(TilesTest):
    """Tiles reach the disk before they get their names, and old ones stay until then."""

    def test_each_tile_is_flushed_before_it_is_renamed(self):
        photo = self.photo("p.bmp", noise(60, 40))
        out = self.path("out")
        calls = self.system_calls("fsync,fdatasync,rename,renameat,renameat2", "--out", out, photo)
        for number in range(1, 5):
            tile = f"p00{number}.bmp"
            renamed = [index for index, call in enumerate(calls)
                       if call.startswith("rename") and tile in call]
            self.assertEqual(len(renamed), 1, calls)
            temporary = re.search(r"\.veldara-[^\",>]*", calls[renamed[0]]).group()
            flushed = [call for call in calls[:renamed[0]]
                       if call.startswith(("fsync", "fdatasync")) and temporary in call]
            self.assertEqual(len(flushed), 1, calls)

    def test_no_old_tile_is_removed(self):
        photo = self.photo("p.bmp", noise(60, 40))
        out = self.path("out")
        self.done("--out", out, photo)
        calls = self.system_calls("unlink,unlinkat,rename,renameat,renameat2", "--yes", "--out", out,
                                  photo)
        self.assertEqual(len([call for call in calls if call.startswith("rename")]), 4, calls)
        removed = [call for call in calls if call.startswith("unlink") and "p00" in call]
        self.assertEqual(removed, [])


def compensated(cut, dpi, counts):
    """The tile with its border, made pixel by pixel."""
    top, right, bottom, left = (int(dpi * count / 64) for count in counts)
    wide = Image.new("RGB", (cut.width + left + right, cut.height + top + bottom))
    source, target = cut.load(), wide.load()
    for y in range(wide.height):
        for x in range(wide.width):
            target[x, y] = source[min(max(x - left, 0), cut.width - 1),
                                  min(max(y - top, 0), cut.height - 1)]
    return wide


class Metadata(TilesTest):
    """A photo's texts name files and commands; none is made, followed, run or copied."""

    def wicked(self):
        return ["../evil.jpg", self.path("evil"), "evil\0.bmp", "$(touch evil)", "| touch evil",
                "%s%n%n evil", "file://" + self.path("evil")]

    def photos(self):
        for number, text in enumerate(self.wicked()):
            # File and page names, texts, and the names of the machine and of the people.
            tags = {tag: text for tag in (269, 270, 271, 272, 285, 305, 315, 316, 33432)}
            exif = Image.Exif()
            exif.update(tags)
            packet = f"<x:xmpmeta><a href='{text}'/></x:xmpmeta>".encode()
            picture = smooth(60, 40)
            yield self.photo(f"{number}.tif", picture, tiffinfo=tags)
            yield self.photo(f"{number}.jpg", picture, exif=exif, comment=text.encode(), xmp=packet)

    def everything(self):
        return sorted(os.path.relpath(os.path.join(folder, name), self.folder)
                      for folder, _, names in os.walk(self.folder) for name in names)

    def test_makes_no_file_and_reaches_no_path(self):
        photos = list(self.photos())
        made = self.everything()
        for photo in photos:
            self.assertTrue(self.speaks_of_evil(photo))
            self.done("--format", "tif", "--out", self.path("tiles"), "--yes", photo)
            name = os.path.basename(photo)
            tiles = [f"tiles/{name[:-4]}00{number}.tif" for number in range(1, 5)]
            made = sorted(set(made + tiles))
            self.assertEqual(self.everything(), made)
            for tile in tiles:
                self.assertFalse(self.speaks_of_evil(self.path(tile)), tile)

    def test_starts_no_process_asks_for_no_path_and_calls_nobody(self):
        for photo in self.photos():
            with self.subTest(photo):
                calls = self.system_calls("%process,%file,%network", "--out", self.path("tiles"), "--yes", photo)
                self.assertTrue([call for call in calls if photo in call])
                started = [call for call in calls if "CLONE_THREAD" not in call
                           and re.match(r"(execve|execveat|fork|vfork|clone|clone3)\(", call)]
                self.assertEqual(len(started), 1, started)  # the program itself
                self.assertFalse([call for call in calls
                                  if "evil" in call or call.startswith(("socket", "connect"))])

    def speaks_of_evil(self, name):
        with open(name, "rb") as file:
            return b"evil" in file.read()


class Edges(TilesTest):
    def check_border(self, rotate):
        picture = noise(1100, 800)
        photo = self.photo("p.bmp", picture)
        counts = (3, 16, 5, 8)
        arguments = ["--clip", "3,16,5,8", "--paper-size", "4,3", "--out",
                     self.path("out" + str(len(rotate))), *rotate, photo]
        plan = self.plan(*arguments)
        self.done(*arguments)
        self.assertEqual(plan["clip"], list(counts))
        self.assertAlmostEqual(plan["tile_inches"]["width"], 4 - 24 / 64)
        self.assertAlmostEqual(plan["tile_inches"]["height"], 3 - 8 / 64)
        first = plan["tiles"][0]
        side = ("top", "bottom") if rotate else ("left", "right")
        dpi = (first[side[1]] - first[side[0]] + 1) / plan["tile_inches"]["width"]
        self.assertEqual(plan["dpi"], round(dpi))
        for tile in plan["tiles"]:
            cut = picture.crop((tile["left"], tile["top"], tile["right"] + 1, tile["bottom"] + 1))
            if rotate:
                cut = cut.transpose(Image.Transpose.ROTATE_90)
            expected = compensated(cut, dpi, counts)
            with Image.open(tile["file"]) as written:
                self.assertEqual(written.size, (tile["width"], tile["height"]))
                self.assertEqual(written.size, expected.size)
                self.assertEqual(written.tobytes(), expected.tobytes())

    def test_are_repeated(self):
        self.check_border([])

    def test_are_repeated_around_turned_tiles(self):
        self.check_border(["--rotate-tiles"])

    def test_of_few_dots_are_made_of_enlarged_tiles(self):
        photo = self.photo("p.bmp", Image.new("RGB", (400, 300), (10, 200, 30)))
        arguments = ["--wide", "1", "--high", "1", "--paper-size", "8,6", "--clip", "0,0,0,0",
                     photo]
        plan = self.plan(*arguments)
        self.done(*arguments)
        self.assertEqual(plan["dpi"], 50)
        with Image.open(plan["tiles"][0]["file"]) as written:
            self.assertEqual(written.size, (512, 384))
            self.assertEqual(written.getpixel((511, 383)), (10, 200, 30))

    def test_come_from_the_profile_file(self):
        photo = self.photo("p.bmp", noise(600, 400))
        self.assertEqual(self.done("--list-profiles").decode().split("\n")[0],
                         "default                  --clip 0,0,0,0")
        os.makedirs(self.path("data", "veldara"))
        with open(self.path("data", "veldara", "printer_edge_config"), "wb") as file:
            file.write("Büro, Laser\t01,02,03,04,\r\n".encode())
        self.assertEqual(self.done("--list-profiles").decode(), "Büro, Laser  --clip 1,2,3,4\n")
        self.assertEqual(self.plan("--profile", "Büro, Laser", photo)["clip"], [1, 2, 3, 4])
        self.refused(2, "--profile", "default", photo)

    def test_come_from_the_folder_that_the_preferences_name(self):
        for folder, name in ((("data", "veldara"), "usual"), (("shared",), "everybody's")):
            os.makedirs(self.path(*folder))
            with open(self.path(*folder, "printer_edge_config"), "wb") as file:
                file.write(f"{name}\t01,02,03,04,\r\n".encode())
        os.makedirs(self.path("config", "veldara"))

        def listed(value):
            with open(self.path("config", "veldara", "values"), "w", encoding="utf-8") as file:
                file.write(f"[Software\\Korvane\\omra]\n{value}\n")
            return self.done("--list-profiles").decode()

        self.assertEqual(listed(f'string "app_dir" = "{self.path("shared")}"'),
                         "everybody's  --clip 1,2,3,4\n")
        self.assertEqual(listed('dword "app_dir" = 1'), "usual  --clip 1,2,3,4\n")

    def test_built_in_profiles_are_there_when_the_file_is_bad(self):
        os.makedirs(self.path("data", "veldara"))
        with open(self.path("data", "veldara", "printer_edge_config"), "wb") as file:
            file.write(b"mine\t01,02,03,04,\r\nno profile\r\n")
        photo = self.photo("p.bmp", noise(600, 400))
        self.assertEqual(self.plan("--profile", "Kodak photo lab default", photo)["clip"],
                         [3, 4, 3, 2])

    def assertColour(self, found, expected, kind):
        # A JPEG blurs a little where stripes meet.
        allowed = 12 if kind == "jpg" else 0
        self.assertTrue(all(abs(a - b) <= allowed for a, b in zip(found, expected)),
                        (found, expected))

    def test_have_a_test_target(self):
        frames = ((180, 120, 0), (0, 0, 255), (0, 255, 0), (255, 0, 0))
        for kind in ("bmp", "TIF", "jpg"):
            target = self.path("target." + kind)
            self.done("--paper-size", "8,10.5", "--test-target", target)
            with Image.open(target) as written:
                self.assertEqual(written.size, (1024, 1344))
                self.assertAlmostEqual(float(written.info["dpi"][0]), 128, delta=0.02)
                for i, colour in enumerate(frames):
                    for place in ((8 * i, 500), (8 * i + 7, 500), (1023 - 8 * i, 500),
                                  (500, 8 * i), (500, 1343 - 8 * i), (8 * i, 8 * i)):
                        self.assertColour(written.getpixel(place), colour, kind)
                self.assertColour(written.getpixel((36, 36)), (255, 255, 255), kind)
        self.done("--test-target", self.path("t.jpg"))
        self.assertIn("already exists", self.refused(1, "--test-target", self.path("t.jpg")))
        self.done("--yes", "--test-target", self.path("t.jpg"))
        self.assertIn("Must save image as bmp, tif or jpg file",
                      self.refused(2, "--test-target", self.path("t.png")))


class Streaming(TilesTest):
    """Large photos do not have to fit in memory."""

    def peak(self, *arguments):
        """Peak memory in bytes of a run that has to be done. Measured from a small process: what is
        started by a large one counts as large from its first moment."""
        result = subprocess.run(["/usr/bin/time", "-f", "%M", PROGRAM, *arguments],
                                stderr=subprocess.PIPE, env=self.environment, check=True)
        return int(result.stderr) * 1024

    @unittest.skipIf(SANITIZED, "sanitizers keep freed memory")
    def test_memory_is_that_of_bands_not_of_the_photo(self):
        picture = smooth(6000, 9000)  # 162 MB
        self.photo("p.jpg", picture, quality=90)
        self.photo("p.tif", picture)
        self.photo("p.bmp", picture)
        for name in ("p.jpg", "p.tif", "p.bmp"):
            with self.subTest(name):
                out = self.path("out_" + name)
                used = self.peak("--wide", "6", "--high", "9", "--paper-size", "4,4", "--format",
                                 "jpg", "--out", out, self.path(name))
                self.assertEqual(len(os.listdir(out)), 54)
                self.assertLess(used, 2 * 6000 * 1000 * 3 + (64 << 20))

    def test_tiles_are_the_same_with_shared_and_left_out_rows(self):
        picture = noise(503, 1001)
        for kind in ("bmp", "tif"):
            photo = self.photo("p." + kind, picture)
            for high in ("2", "3", "7", "25"):
                out = self.path(f"out{kind}{high}")
                arguments = ["--wide", "2", "--high", high, "--paper-size", "9,3", "--out", out,
                             photo]
                plan = self.plan(*arguments)
                self.done(*arguments)
                self.check_files(plan, picture)


if __name__ == "__main__":
    unittest.main(argv=sys.argv)
