#!/usr/bin/env python3
"""Draws the module's cursors and icon: resources/*.cur, resources/*.ico.
Run from the repository root; the outputs are committed."""
import struct, os

W = H = 32

def dib(pixels, palette, bits):
    """A BITMAPINFOHEADER image with doubled height, XOR bits then AND mask.
    pixels: rows top-down of palette indexes, or None for transparent."""
    row_bytes = ((W * bits + 31) // 32) * 4
    mask_row = ((W + 31) // 32) * 4
    xor = bytearray()
    andm = bytearray()
    for y in reversed(range(H)):
        row = pixels[y]
        bitsrow = 0
        acc = []
        v = 0; n = 0
        for x in range(W):
            idx = row[x] if row[x] is not None else 0
            v = (v << bits) | idx
            n += bits
            if n == 8:
                acc.append(v); v = 0; n = 0
        xor += bytes(acc) + b"\0" * (row_bytes - len(acc))
        m = bytearray(mask_row)
        for x in range(W):
            if row[x] is None:
                m[x // 8] |= 0x80 >> (x % 8)
        andm += m
    hdr = struct.pack("<IiiHHIIiiII", 40, W, H * 2, 1, bits, 0, len(xor) + len(andm), 0, 0, len(palette), 0)
    pal = b"".join(struct.pack("<BBBB", b, g, r, 0) for (r, g, b) in palette)
    return hdr + pal + bytes(xor) + bytes(andm)

def write(path, kind, image, hot=(0, 0), colors=0, bits=1):
    # kind 1 icon, 2 cursor; for a cursor planes/bitcount hold the hotspot
    f1, f2 = (1, bits) if kind == 1 else hot
    d = struct.pack("<HHH", 0, kind, 1) + struct.pack("<BBBBHHII", W, H, colors, 0, f1, f2, len(image), 22)
    with open(path, "wb") as f:
        f.write(d + image)

def canvas(fill=None):
    return [[fill] * W for _ in range(H)]

def grid_cursor():
    # a bold plus sign with a white outline: the cell-picking cursor of the grid
    p = canvas()
    for y in range(H):
        for x in range(W):
            inside_v = 13 <= x <= 18 and 3 <= y <= 28
            inside_h = 13 <= y <= 18 and 3 <= x <= 28
            if inside_v or inside_h:
                p[y][x] = 1
    for y in range(H):
        for x in range(W):
            core_v = 14 <= x <= 17 and 4 <= y <= 27
            core_h = 14 <= y <= 17 and 4 <= x <= 27
            if core_v or core_h:
                p[y][x] = 0
    return p

def arrows_cursor(horizontal):
    # a double-headed resize arrow across a bar
    p = canvas()
    c = 16
    for i in range(4, 28):
        for t in (-1, 0, 1):
            x, y = (i, c + t) if horizontal else (c + t, i)
            p[y][x] = 0
    for k in range(6):
        for t in range(-k, k + 1):
            for (a, b) in ((4 + k, c + t), (27 - k, c + t)):
                x, y = (a, b) if horizontal else (b, a)
                p[y][x] = 0
    for i in range(8, 24):
        x, y = (c, i) if horizontal else (i, c)
        p[y][x] = 0
    return p

def drag_cursor():
    # an arrow with a small cell box: dragging a column or row
    p = canvas()
    for y in range(18):
        for x in range(y // 1 + 1):
            if x < 12:
                p[y][x] = 0 if (x == 0 or x == y or y == 17) else 1
    for y in range(20, 30):
        for x in range(14, 30):
            p[y][x] = 0 if y in (20, 29) or x in (14, 29) else 1
    return p

def grid_icon():
    # a small spreadsheet: grey header row and column, white cells, dark lines
    pal = [(0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0), (0, 0, 128), (128, 0, 128), (0, 128, 128),
           (192, 192, 192), (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0), (0, 0, 255),
           (255, 0, 255), (0, 255, 255), (255, 255, 255)]
    p = canvas()
    for y in range(2, 30):
        for x in range(1, 31):
            if y in (2, 29) or x in (1, 30) or (x - 1) % 7 == 0 or (y - 2) % 6 == 0:
                p[y][x] = 8
            elif y < 8 or x < 8:
                p[y][x] = 7
            else:
                p[y][x] = 15
    p[12][12] = p[12][13] = 12
    for x in range(9, 15):
        p[10][x] = 12
    return p, pal

here = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "resources")
mono = [(0, 0, 0), (255, 255, 255)]
write(os.path.join(here, "grid.cur"), 2, dib(grid_cursor(), mono, 1), hot=(16, 16))
write(os.path.join(here, "colsize.cur"), 2, dib(arrows_cursor(True), mono, 1), hot=(16, 16))
write(os.path.join(here, "rowsize.cur"), 2, dib(arrows_cursor(False), mono, 1), hot=(16, 16))
write(os.path.join(here, "drag.cur"), 2, dib(drag_cursor(), mono, 1), hot=(0, 0))
img, pal = grid_icon()
write(os.path.join(here, "grid.ico"), 1, dib(img, pal, 4), colors=16, bits=4)
