#!/usr/bin/env python3
"""Draws what the program held over a long day: soak 1200 | tests/soak/plot.py >docs/soak.svg"""

import re
import sys

WIDTH, HEIGHT = 820, 300
LEFT, RIGHT, TOP, BOTTOM = 60, 800, 30, 250
FIGURE = re.compile(r" *(\d+) photos, +\d+ saves: +(\d+) KiB held")


def ticks(largest):
    """Round steps, about five of them."""
    step = 10 ** (len(str(largest)) - 1)
    while largest / step < 4:
        step //= 2
    return range(0, largest + 1, step)


def main():
    found = (FIGURE.match(line) for line in sys.stdin)
    figures = [(int(match[1]), int(match[2])) for match in found if match]
    last, most = figures[-1][0], max(held for _, held in figures)
    across = lambda photos: f"{LEFT + (RIGHT - LEFT) * photos / last:.1f}"
    down = lambda held: f"{BOTTOM - (BOTTOM - TOP) * held / most:.1f}"

    print(f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
          'font-family="sans-serif" font-size="12">')
    print(f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#fff"/>')
    print(f'<text x="{LEFT}" y="18">KiB held, a figure for every 50 photos</text>')
    for held in ticks(most):
        y = down(held)
        print(f'<line x1="{LEFT}" y1="{y}" x2="{RIGHT}" y2="{y}" stroke="#ddd"/>')
        print(f'<text x="{LEFT - 6}" y="{float(y) + 4:.1f}" text-anchor="end">{held:,}</text>')
    for photos in ticks(last):
        print(f'<text x="{across(photos)}" y="{BOTTOM + 18}" text-anchor="middle">{photos:,}</text>')
    print(f'<text x="{RIGHT}" y="{BOTTOM + 38}" text-anchor="end">photos</text>')
    points = " ".join(f"{across(photos)},{down(held)}" for photos, held in figures)
    print(f'<polyline points="{points}" fill="none" stroke="#0a5ea8"/>')
    print("</svg>")


main()
