"""Writes the seeds of fuzz_png, fuzz_webp, fuzz_heic and fuzz_avif: small pictures of our own, made with
the encoders of other programs (cwebp, heif-enc, avifenc; Debian: webp, libheif-examples, libavif-bin).

    new_kind_seeds.py fuzz/corpus
"""

import os
import subprocess
import sys
import tempfile

from PIL import Image, ImageCms

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "cli"))
from heic_files import grid_heic  # noqa: E402


def picture(width=24, height=18):
    across = Image.linear_gradient("L").rotate(90).resize((width, height))
    down = Image.linear_gradient("L").resize((width, height))
    return Image.merge("RGB", (across, down, Image.radial_gradient("L").resize((width, height))))


def seen_through(width=24, height=18):
    whole = picture(width, height)
    whole.putalpha(Image.linear_gradient("L").resize(whole.size))
    return whole


def main(corpus):
    profile = ImageCms.ImageCmsProfile(ImageCms.createProfile("sRGB")).tobytes()
    exif = Image.Exif()
    exif[0x0112] = 6

    def folder(kind):
        path = os.path.join(corpus, "fuzz_" + kind)
        os.makedirs(path, exist_ok=True)
        return lambda name: os.path.join(path, name)

    png = folder("png")
    for mode in ("1", "L", "LA", "P", "RGB", "RGBA"):
        seen_through().convert(mode).save(png("mode" + mode), "PNG")
    Image.new("I;16", (9, 7), 12345).save(png("grey16"), "PNG")
    picture().quantize(4).save(png("palette2keyed"), "PNG", bits=2, transparency=0)
    picture().save(png("profile"), "PNG", icc_profile=profile, exif=exif.tobytes(), dpi=(300, 300))

    with tempfile.TemporaryDirectory() as work:
        plain = os.path.join(work, "plain.png")
        clear = os.path.join(work, "clear.png")
        picture().save(plain)
        camera = os.path.join(work, "camera.jpg")
        resolution = Image.Exif()
        resolution.update({0x011A: 240.0, 0x011B: 240.0, 0x0128: 2})  # in inches
        picture().save(camera, exif=resolution)
        seen_through().save(clear)

        def make(*command):
            subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

        make("convert", plain, "-interlace", "PNG", "PNG:" + png("interlaced"))
        make("convert", plain, "-depth", "16", "-define", "png:bit-depth=16", "PNG:" + png("rgb16"))
        webp = folder("webp")
        make("cwebp", "-lossless", plain, "-o", webp("lossless"))
        make("cwebp", "-lossless", clear, "-o", webp("losslessOpacity"))
        make("cwebp", "-q", "70", plain, "-o", webp("lossy"))
        make("cwebp", "-q", "70", clear, "-o", webp("lossyOpacity"))
        picture().save(webp("animation"), "WEBP", save_all=True, append_images=[seen_through()])
        picture().save(webp("profile"), "WEBP", icc_profile=profile, exif=exif.tobytes())
        heic = folder("heic")
        for name, source, options in (("plain", plain, ()), ("lossless", plain, ("-L",)),
                                      ("opacity", clear, ()), ("exif", camera, ())):
            made = os.path.join(work, "made.heic")
            make("heif-enc", *options, source, "-o", made)
            os.replace(made, heic(name))
        for name, rotation in (("grid", 0), ("gridTurned", 1)):
            os.replace(grid_heic(work, "made.heic", picture(100, 70), 64, rotation=rotation), heic(name))
        avif = folder("avif")
        for name, source, options in (("plain", plain, ()), ("lossless", plain, ("--lossless",)),
                                      ("opacity", clear, ()), ("bits10", plain, ("--depth", "10")),
                                      ("hlg", plain, ("--cicp", "9/18/9")),
                                      ("turned", plain, ("--irot", "1", "--imir", "0"))):
            made = os.path.join(work, "made.avif")
            make("avifenc", "--speed", "9", *options, source, made)
            os.replace(made, avif(name))


if __name__ == "__main__":
    main(sys.argv[1])
