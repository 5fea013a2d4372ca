"""HEIC files as telephones write them, put together from pictures that heif-enc has coded: a grid of tiles,
turned and mirrored by properties, with a colour profile. heif-enc itself writes none of that."""

import struct
import subprocess


def box(kind, *content):
    payload = b"".join(content)
    return struct.pack(">I4s", 8 + len(payload), kind) + payload


def full_box(kind, version, flags, *content):
    return box(kind, struct.pack(">I", version << 24 | flags), *content)


def coded(folder, picture, quality):
    """The decoder's configuration and the bytes of a picture, out of the file that heif-enc makes of it."""
    picture.save(f"{folder}/grid-part.png")
    subprocess.run(["heif-enc", "-q", str(quality), "grid-part.png", "-o", "grid-part.heic"], cwd=folder,
                   check=True, capture_output=True)
    with open(f"{folder}/grid-part.heic", "rb") as file:
        content = file.read()
    configuration, at = None, 0
    start = content.index(b"hvcC") - 4
    configuration = content[start : start + struct.unpack_from(">I", content, start)[0]]
    while at < len(content):
        size, kind = struct.unpack_from(">I4s", content, at)
        if kind == b"mdat":
            return configuration, content[at + 8 : at + size]
        at += size
    raise ValueError("heif-enc wrote no data")


def grid_heic(folder, name, picture, side, quality=80, rotation=0, mirror=None, profile=None):
    """Writes the picture as a grid of side x side tiles. rotation: quarter turns against the clock, applied
    before mirror: 0 top to bottom, 1 left to right."""
    across, down = -(-picture.width // side), -(-picture.height // side)
    tiles = []
    for row in range(down):
        for column in range(across):
            part = picture.crop((side * column, side * row, side * (column + 1), side * (row + 1)))
            tiles.append(coded(folder, part, quality))
    count = len(tiles)
    grid = count + 1  # its number as an item; the tiles are 1 to count
    properties = [tiles[0][0],
                  full_box(b"ispe", 0, 0, struct.pack(">II", side, side)),
                  full_box(b"ispe", 0, 0, struct.pack(">II", *picture.size))]
    of_grid = [3]
    if profile is not None:
        properties.append(box(b"colr", b"prof", profile))
        of_grid.append(len(properties))
    if rotation:
        properties.append(box(b"irot", bytes([rotation])))
        of_grid.append(0x80 | len(properties))
    if mirror is not None:
        properties.append(box(b"imir", bytes([mirror])))
        of_grid.append(0x80 | len(properties))
    uses = b"".join(struct.pack(">HBBB", number, 2, 0x81, 2) for number in range(1, count + 1))
    uses += struct.pack(">HB", grid, len(of_grid)) + bytes(of_grid)
    entries = [full_box(b"infe", 2, 1, struct.pack(">HH4sB", number, 0, b"hvc1", 0))
               for number in range(1, count + 1)]
    entries.append(full_box(b"infe", 2, 0, struct.pack(">HH4sB", grid, 0, b"grid", 0)))
    reference = box(b"dimg", struct.pack(f">HH{count}H", grid, count, *range(1, count + 1)))
    layout = struct.pack(">BBBBHH", 0, 0, down - 1, across - 1, *picture.size)
    kind = box(b"ftyp", b"heic\0\0\0\0mif1heic")

    def head(first):
        """All that comes before the data, whose place in the file is first."""
        places, at = b"", first
        for number, (_, data) in enumerate(tiles, 1):
            places += struct.pack(">HHHHII", number, 0, 0, 1, at, len(data))
            at += len(data)
        places += struct.pack(">HHHHII", grid, 1, 0, 1, 0, len(layout))
        return kind + full_box(
            b"meta", 0, 0,
            full_box(b"hdlr", 0, 0, bytes(4), b"pict", bytes(13)),
            full_box(b"pitm", 0, 0, struct.pack(">H", grid)),
            full_box(b"iloc", 1, 0, struct.pack(">BBH", 0x44, 0, count + 1), places),
            full_box(b"iinf", 0, 0, struct.pack(">H", count + 1), *entries),
            full_box(b"iref", 0, 0, reference),
            box(b"iprp", box(b"ipco", *properties), full_box(b"ipma", 0, 0, struct.pack(">I", count + 1), uses)),
            box(b"idat", layout))

    with open(f"{folder}/{name}", "wb") as file:
        file.write(head(len(head(0)) + 8))
        file.write(box(b"mdat", *(data for _, data in tiles)))
    return f"{folder}/{name}"
