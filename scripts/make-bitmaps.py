#!/usr/bin/env python3
"""Draws the library's named bitmaps: resources/<NAME>.bmp, 4-bit, uncompressed.
Pure green (0, 255, 0) is the background: the buttons' default transparent colour.
Run from the repository root; the outputs are committed.

Roles (by HButt's image lists: off, off pressed, on, on pressed, grey, grey pressed):
  HC1-HC6  check box, sunken 3D box with a tick     CB1-CB6  check box, flat box with a cross
  HR1-HR4  radio button, sunken ring                RB1-RB4  radio button, flat ring
  OK, CANCEL, HLP2      faces with symbol and word  OK1, CAN1, HLP1  the symbol alone
  OK2, CAN2             the symbol greyed           CLR  clear (a struck-out field)
  GPUSH                 a blank push-button face"""
import struct, os

PALETTE = [  # the 16 colours of the VGA palette
    (0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0), (0, 0, 128), (128, 0, 128), (0, 128, 128),
    (192, 192, 192), (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0), (0, 0, 255),
    (255, 0, 255), (0, 255, 255), (255, 255, 255)]
BLACK, DRED, DGREEN, GREY, DGREY, RED, KEY, BLUE, WHITE = 0, 1, 2, 7, 8, 9, 10, 12, 15

FONT = {  # 5 by 7 capitals, one string per row
    'O': ["01110", "10001", "10001", "10001", "10001", "10001", "01110"],
    'K': ["10001", "10010", "10100", "11000", "10100", "10010", "10001"],
    'C': ["01110", "10001", "10000", "10000", "10000", "10001", "01110"],
    'A': ["01110", "10001", "10001", "11111", "10001", "10001", "10001"],
    'N': ["10001", "11001", "10101", "10011", "10001", "10001", "10001"],
    'E': ["11111", "10000", "10000", "11110", "10000", "10000", "11111"],
    'L': ["10000", "10000", "10000", "10000", "10000", "10000", "11111"],
    'H': ["10001", "10001", "10001", "11111", "10001", "10001", "10001"],
    'P': ["11110", "10001", "10001", "11110", "10000", "10000", "10000"],
}


def canvas(w, h, fill=KEY):
    return [[fill] * w for _ in range(h)]


def write_bmp(path, pixels):
    """Writes rows given top-down as a bottom-up 4-bit BITMAPINFOHEADER file."""
    h, w = len(pixels), len(pixels[0])
    stride = (w * 4 + 31) // 32 * 4
    body = bytearray()
    for row in reversed(pixels):
        line = bytearray(stride)
        for x, c in enumerate(row):
            line[x // 2] |= c << (4 if x % 2 == 0 else 0)
        body += line
    table = b"".join(struct.pack("<BBBB", b, g, r, 0) for (r, g, b) in PALETTE)
    info = struct.pack("<IiiHHIIiiII", 40, w, h, 1, 4, 0, len(body), 0, 0, 16, 0)
    off = 14 + len(info) + len(table)
    with open(path, "wb") as f:
        f.write(struct.pack("<HIHHI", 0x4D42, off + len(body), 0, 0, off) + info + table + body)


def rect(p, x0, y0, x1, y1, c):
    for y in range(y0, y1 + 1):
        for x in range(x0, x1 + 1):
            p[y][x] = c


def line(p, pts, c):
    for (x, y) in pts:
        p[y][x] = c


def text(p, x, y, word, c):
    for ch in word:
        for dy, row in enumerate(FONT[ch]):
            for dx, bit in enumerate(row):
                if bit == "1":
                    p[y + dy][x + dx] = c
        x += 6


def tick(p, x, y, c):  # a 7 by 5 tick, two pixels thick, its foot at (x + 2, y + 4)
    for i, (dx, dy) in enumerate([(0, 2), (1, 3), (2, 4), (3, 3), (4, 2), (5, 1), (6, 0)]):
        p[y + dy][x + dx] = c
        p[y + dy - 1][x + dx] = c


def cross(p, x, y, n, c):  # an n by n cross, two pixels thick
    for i in range(n - 1):
        for (a, b) in ((x + i, y + i), (x + i + 1, y + i), (x + n - 1 - i, y + i), (x + n - 2 - i, y + i)):
            p[b][a] = c
    for (a, b) in ((x, y + n - 1), (x + 1, y + n - 1), (x + n - 1, y + n - 1), (x + n - 2, y + n - 1)):
        p[b][a] = c


def check_box(sunken, on, face, mark):
    p = canvas(16, 16)
    if sunken:  # shadow and black at the top and left, white and face at the bottom and right
        rect(p, 1, 1, 14, 14, WHITE)
        rect(p, 1, 1, 13, 13, DGREY)
        rect(p, 2, 2, 13, 13, GREY)
        rect(p, 2, 2, 12, 12, BLACK)
        rect(p, 3, 3, 12, 12, face)
    else:
        rect(p, 1, 1, 14, 14, BLACK)
        rect(p, 2, 2, 13, 13, face)
    if on:
        if sunken:
            tick(p, 4, 5, mark)
        else:
            cross(p, 4, 4, 8, mark)
    return p


def radio(sunken, on, face):
    p = canvas(16, 16)
    c, r2 = 7.5, 6.5 ** 2
    for y in range(16):
        for x in range(16):
            d = (x - c) ** 2 + (y - c) ** 2
            if d <= r2:
                if d >= 5.0 ** 2:  # the ring: light from the bottom right when sunken
                    p[y][x] = (DGREY if x + y < 15 else WHITE) if sunken else BLACK
                else:
                    p[y][x] = face
                if on and d <= 2.3 ** 2:
                    p[y][x] = BLACK
    return p


def help_mark(p, x, y, ring=BLUE, mark=WHITE):
    """A 15 by 15 disc with a question mark."""
    for yy in range(15):
        for xx in range(15):
            if (xx - 7) ** 2 + (yy - 7) ** 2 <= 7.2 ** 2:
                p[y + yy][x + xx] = ring
    q = ["0111110", "1100011", "0000011", "0000110", "0001100", "0001100", "0000000", "0001100"]
    for dy, row in enumerate(q):
        for dx, bit in enumerate(row):
            if bit == "1":
                p[y + 3 + dy][x + 4 + dx] = mark


def images():
    out = {}
    # check boxes: off, off pressed, on, on pressed, grey, grey pressed
    for prefix, sunken in (("HC", True), ("CB", False)):
        looks = [(False, WHITE, BLACK), (False, GREY, BLACK), (True, WHITE, BLACK), (True, GREY, BLACK),
                 (True, GREY, DGREY), (True, DGREY, GREY)]
        for i, (on, face, mark) in enumerate(looks, 1):
            out["%s%d" % (prefix, i)] = check_box(sunken, on, face, mark)
    # radio buttons: off, off pressed, on, on pressed
    for prefix, sunken in (("HR", True), ("RB", False)):
        for i, (on, face) in enumerate([(False, WHITE), (False, GREY), (True, WHITE), (True, GREY)], 1):
            out["%s%d" % (prefix, i)] = radio(sunken, on, face)
    # OK faces
    p = canvas(16, 16); tick(p, 4, 6, DGREEN); tick(p, 5, 5, DGREEN); out["OK1"] = p
    p = canvas(16, 16); tick(p, 4, 6, DGREY); tick(p, 5, 5, DGREY); out["OK2"] = p
    p = canvas(30, 16); tick(p, 2, 6, DGREEN); tick(p, 3, 5, DGREEN); text(p, 17, 4, "OK", BLACK); out["OK"] = p
    # Cancel faces
    p = canvas(16, 16); cross(p, 3, 3, 10, RED); out["CAN1"] = p
    p = canvas(16, 16); cross(p, 3, 3, 10, DGREY); out["CAN2"] = p
    p = canvas(54, 16); cross(p, 2, 3, 10, RED); text(p, 17, 4, "CANCEL", BLACK); out["CANCEL"] = p
    # Help faces; HLP1 is also what a static control shows for a missing image
    p = canvas(16, 16); help_mark(p, 0, 0); out["HLP1"] = p
    p = canvas(42, 16); help_mark(p, 0, 0); text(p, 18, 4, "HELP", BLACK); out["HLP2"] = p
    # Clear: a field struck out
    p = canvas(16, 16); rect(p, 1, 3, 14, 12, BLACK); rect(p, 2, 4, 13, 11, WHITE)
    line(p, [(2 + i, 11 - i * 7 // 11) for i in range(12)], RED)
    line(p, [(2 + i, 10 - i * 7 // 11) for i in range(12)], RED)
    out["CLR"] = p
    # Generic push face: a raised grey square
    p = canvas(16, 16); rect(p, 0, 0, 15, 15, BLACK); rect(p, 0, 0, 14, 14, WHITE); rect(p, 1, 1, 14, 14, DGREY)
    rect(p, 1, 1, 13, 13, GREY); out["GPUSH"] = p
    return out


if __name__ == "__main__":
    root = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "resources")
    for name, pixels in sorted(images().items()):
        write_bmp(os.path.join(root, name + ".bmp"), pixels)
    print("wrote %d bitmaps" % len(images()))
