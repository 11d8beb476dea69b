#!/usr/bin/python3
"""Draws the icons of both programs: src/app/corvane.ico, an antenna that sends, and
standin/standin.ico, a receiver's spectrum. Each holds every size that Windows asks for; small ones
are drawn simpler and on whole pixels. Needs python3-pil. Run by hand after a change of the drawing:
the icons are kept with the sources.
"""
import io
import math
import os
import struct

from PIL import Image, ImageDraw

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
SIZES = (16, 20, 24, 32, 40, 48, 64, 256)
FINE = 16  # how many times larger a picture is drawn than it becomes

NAVY, WHITE, ORANGE = (23, 64, 95, 255), (255, 255, 255, 255), (255, 128, 0, 255)
SLATE, GREEN, DIM = (58, 58, 66, 255), (90, 214, 120, 255), (150, 150, 164, 255)


class Canvas:
    """A picture in units of its final pixels, (0, 0) at the top left."""

    def __init__(self, size, ground):
        self.size = size
        self.image = Image.new("RGBA", (size * FINE, size * FINE), ground[:3] + (0,))
        self.pen = ImageDraw.Draw(self.image)
        inset = size // 64
        self.pen.rounded_rectangle(self._box(inset, inset, size - inset, size - inset),
                                   radius=size * FINE * 0.18, fill=ground)

    def _box(self, left, top, right, bottom):
        return [left * FINE, top * FINE, right * FINE - 1, bottom * FINE - 1]

    def bar(self, left, top, right, bottom, colour):
        self.pen.rectangle(self._box(left, top, right, bottom), fill=colour)

    def dot(self, x, y, radius, colour):
        self.pen.ellipse(self._box(x - radius, y - radius, x + radius, y + radius), fill=colour)

    def line(self, x0, y0, x1, y1, width, colour):
        """With round ends."""
        self.pen.line([x0 * FINE, y0 * FINE, x1 * FINE, y1 * FINE], fill=colour,
                      width=round(width * FINE))
        self.dot(x0, y0, width / 2, colour)
        self.dot(x1, y1, width / 2, colour)

    def arc(self, x, y, radius, begin, end, width, colour):
        points = [(x + radius * math.cos(math.radians(a)), y + radius * math.sin(math.radians(a)))
                  for a in range(begin, end + 1, 4)]
        for one, other in zip(points, points[1:]):
            self.line(*one, *other, width, colour)

    def done(self):
        return self.image.resize((self.size, self.size), Image.BOX)


def antenna(size):
    canvas = Canvas(size, NAVY)
    middle, head = size / 2, round(size * 0.34)
    stroke = {16: 1.5, 20: 1.8, 24: 2}.get(size, size * 0.055)
    foot, half = round(size * 0.875), {16: 3.25, 20: 4, 24: 5}.get(size, size * 0.14)
    for side in (-1, 1):
        canvas.line(middle, head, middle + side * half, foot, stroke, WHITE)
    bar = head + (foot - head) * 0.68
    canvas.line(middle - half * 0.6, bar, middle + half * 0.6, bar, stroke * 0.9, WHITE)
    waves = (0.29,) if size <= 24 else (0.175, 0.325)
    for radius in waves:
        for begin, end in ((140, 220), (320, 400)):
            canvas.arc(middle, head, size * radius, begin, end, stroke, WHITE)
    canvas.dot(middle, head, {16: 2, 20: 3, 24: 3}.get(size, size * 0.088), ORANGE)
    return canvas.done()


def spectrum(size):
    """Bars on a grid of whole pixels; one of them, the control channel, stands out."""
    canvas = Canvas(size, SLATE)
    heights = (0.2, 0.34, 0.26, 0.68, 0.3, 0.46, 0.22)
    if size <= 24:
        heights = (0.25, 0.62, 0.31, 0.45)
    step = int(size * 0.8 / len(heights))
    width = max(step - max(1, step // 3), 1)
    left = (size - (step * len(heights) - (step - width))) // 2
    floor = size - max(3, round(size * 0.19))
    for index, height in enumerate(heights):
        x = left + index * step
        canvas.bar(x, floor - round(size * height), x + width, floor,
                   GREEN if height > 0.6 else DIM)
    line = max(1, round(size / 24))
    canvas.bar(left, floor + line, size - left, floor + 2 * line, WHITE)
    return canvas.done()


def bitmap(image):
    """One picture as an icon keeps it: a bitmap with 32 bits a pixel, then an empty mask."""
    width, height = image.size
    rows = [image.crop((0, y, width, y + 1)).tobytes("raw", "BGRA") for y in range(height)]
    mask = bytes((width + 31) // 32 * 4 * height)
    header = struct.pack("<IiiHHIIiiII", 40, width, 2 * height, 1, 32, 0, 0, 0, 0, 0, 0)
    return header + b"".join(reversed(rows)) + mask


def png(image):
    stream = io.BytesIO()
    image.save(stream, "PNG", optimize=True)
    return stream.getvalue()


def save_icon(path, draw):
    pictures = [(size, png(draw(size)) if size > 64 else bitmap(draw(size))) for size in SIZES]
    offset = 6 + 16 * len(pictures)
    head = struct.pack("<HHH", 0, 1, len(pictures))
    for size, data in pictures:
        head += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    with open(os.path.join(ROOT, path), "wb") as file:
        file.write(head + b"".join(data for _, data in pictures))


if __name__ == "__main__":
    save_icon("src/app/corvane.ico", antenna)
    save_icon("standin/standin.ico", spectrum)
