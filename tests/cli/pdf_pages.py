"""A poster's document as other tools take it apart: qpdf its objects, pdfimages its pictures."""

import base64
import glob
import json
import re
import subprocess
import zlib


def checked(document):
    """What qpdf has to say against the document; nothing when it is sound."""
    check = subprocess.run(["qpdf", "--check", document], capture_output=True, text=True)
    sound = check.returncode == 0 and not check.stderr and "WARNING" not in check.stdout
    if sound and "No syntax or stream encoding errors found" in check.stdout:
        return ""
    return check.stdout + check.stderr


class Page:
    """A page: its boxes in points, and where its content puts the photo and straight lines."""

    def __init__(self, boxes, content):
        self.boxes = boxes
        self.content = content
        numbers = r"((?:-?[\d.]+ ){%d})"
        self.lines = [tuple(map(float, (one + two).split())) for one, two in
                      re.findall(numbers % 2 + r"m\n" + numbers % 2 + r"l\nS", content)]
        found = re.search(numbers % 4 + r"re\nW n\n" + numbers % 6 + r"cm\n/Photo Do", content)
        self.clip, self.matrix = (tuple(map(float, part.split())) for part in found.groups())

    def place(self, x, y):
        """Where a point of the picture's unit square comes to lie, from the page's top left corner."""
        a, b, c, d, e, f = self.matrix
        return a * x + c * y + e, self.boxes["MediaBox"][3] - (b * x + d * y + f)


def pages_of(document):
    """The pages, and the dictionaries of their pictures of the photo."""
    said = subprocess.run(["qpdf", "--json=2", "--json-stream-data=inline", "--decode-level=none",
                           document], capture_output=True, check=True)
    plan = json.loads(said.stdout)
    objects = plan["qpdf"][1]

    def value(name):
        one = objects["obj:" + name]
        return one["stream"] if "stream" in one else one["value"]

    def resolved(one):
        return value(one) if isinstance(one, str) and one.endswith(" R") else one

    pages, pictures = [], []
    for listed in plan["pages"]:
        dictionary = value(listed["object"])
        boxes = {name[1:]: box for name, box in dictionary.items() if name.endswith("Box")}
        content = zlib.decompress(base64.b64decode(resolved(dictionary["/Contents"])["data"]))
        pages.append(Page(boxes, content.decode("ascii")))
        resources = resolved(dictionary["/Resources"])
        pictures.append(resolved(resolved(resources["/XObject"])["/Photo"])["dict"])
    return pages, pictures


def samples_of(document):
    """The bytes of the pages' pictures of the photo, unpacked and without predictors."""
    said = subprocess.run(["qpdf", "--json=2", "--json-stream-data=inline", "--decode-level=generalized",
                           document], capture_output=True, check=True)
    plan = json.loads(said.stdout)
    objects = plan["qpdf"][1]
    streams = [objects["obj:" + page["images"][0]["object"]]["stream"] for page in plan["pages"]]
    return [base64.b64decode(stream["data"]) for stream in streams]


def colour_space(document, picture):
    """Its name, and what its profile says of the number of parts."""
    space = picture["/ColorSpace"]
    said = subprocess.run(["qpdf", "--json=2", document], capture_output=True, check=True)
    objects = json.loads(said.stdout)["qpdf"][1]

    def resolved(one):
        found = objects["obj:" + one]
        return found["stream"] if "stream" in found else found["value"]

    if isinstance(space, str) and space.endswith(" R"):
        space = resolved(space)
    if isinstance(space, str):
        return space, None
    return space[0], resolved(space[1])["dict"]["/N"]


def jpegs_of(document, folder):
    """The JPEG pictures, as pdfimages -j takes them out, in the order of the pages."""
    subprocess.run(["pdfimages", "-j", document, folder + "/piece"], check=True, capture_output=True)
    return sorted(glob.glob(folder + "/piece-*.jpg"))
