"""Makes what the build needs of the pictures that rsvg-convert has drawn.

    pictures.py archive OUT FOLDER NAME...   a zip archive of files of that folder, under those names
    pictures.py bitmap OUT PICTURE           a BMP file of 24 bits a pixel from a PNG file without transparent pixels

The same pictures give the same bytes, on any day and for any user.
"""

import struct
import sys
import zipfile
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
CHANNELS = {2: 3, 6: 4}  # of the two kinds of PNG that rsvg-convert writes


def archive(out, folder, names):
    with zipfile.ZipFile(out, "w", zipfile.ZIP_STORED) as packed:  # the pictures are compressed already
        for name in names:
            entry = zipfile.ZipInfo(name, (1980, 1, 1, 0, 0, 0))
            entry.create_system = 0  # otherwise it depends on the system that builds
            with open(f"{folder}/{name}", "rb") as picture:
                packed.writestr(entry, picture.read())


def chunks(png):
    place = len(SIGNATURE)
    while place < len(png):
        (length,) = struct.unpack_from(">I", png, place)
        yield png[place + 4 : place + 8], png[place + 8 : place + 8 + length]
        place += length + 12


def predicted(kind, left, above, corner):
    if kind == 1:
        return left
    if kind == 2:
        return above
    if kind == 3:
        return (left + above) // 2
    if kind == 4:
        estimate = left + above - corner
        return min((left, above, corner), key=lambda value: abs(estimate - value))
    return 0


def unfiltered(line, kind, above, step):
    result = bytearray(len(line))
    for i, value in enumerate(line):
        left, corner = (result[i - step], above[i - step]) if i >= step else (0, 0)
        result[i] = (value + predicted(kind, left, above[i], corner)) & 0xFF
    return bytes(result)


def lines(png):
    """The lines from the top, and the number of bytes a pixel."""
    parts = list(chunks(png))
    width, height, depth, kind, _, _, interlaced = struct.unpack(">IIBBBBB", parts[0][1])
    if not png.startswith(SIGNATURE) or depth != 8 or kind not in CHANNELS or interlaced:
        sys.exit("this is no PNG picture of 8 bits a channel")
    step = CHANNELS[kind]
    packed = zlib.decompress(b"".join(data for name, data in parts if name == b"IDAT"))
    result, above = [], bytes(width * step)
    for place in range(0, height * (width * step + 1), width * step + 1):
        above = unfiltered(packed[place + 1 : place + 1 + width * step], packed[place], above, step)
        result.append(above)
    return result, step


def bitmap(out, picture):
    with open(picture, "rb") as file:
        rows, step = lines(file.read())
    if step == 4 and any(alpha != 255 for row in rows for alpha in row[3::4]):
        sys.exit(f"{picture} has transparent pixels")
    pixels = b""
    for row in reversed(rows):
        line = b"".join(row[i : i + 3][::-1] for i in range(0, len(row), step))
        pixels += line + bytes(-len(line) % 4)
    info = struct.pack("<IiiHHIIiiII", 40, len(rows[0]) // step, len(rows), 1, 24, 0, len(pixels), 0, 0, 0, 0)
    with open(out, "wb") as file:
        file.write(struct.pack("<2sIHHI", b"BM", 14 + len(info) + len(pixels), 0, 0, 14 + len(info)) + info + pixels)


if __name__ == "__main__":
    task, target, source, *rest = sys.argv[1:]
    archive(target, source, rest) if task == "archive" else bitmap(target, source)
