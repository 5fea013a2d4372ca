#!/usr/bin/env python3
"""Draws what a long day's use prints: the memory held after every 50 photos.

    tests/soak/plot.py < OUTPUT > docs/soak.svg
"""

import re
import sys

WIDTH, HEIGHT, LEFT, TOP, BOTTOM = 700, 180, 60, 12, 44


def main():
    figures = [(int(photos), int(held) / 1024) for photos, held in
               re.findall(r"(\d+) photos, +\d+ saves: +(\d+) KiB held", sys.stdin.read())]
    most_photos = figures[-1][0]
    most = int(max(held for _, held in figures)) + 1

    def x(photos):
        return LEFT + photos / most_photos * WIDTH

    def y(held):
        return TOP + (1 - held / most) * HEIGHT

    svg = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{LEFT + WIDTH + 30}" '
           f'height="{TOP + HEIGHT + BOTTOM}" font-family="sans-serif" font-size="12">',
           '<rect width="100%" height="100%" fill="#fff"/>']
    for mark in range(most + 1):
        svg.append(f'<line x1="{LEFT}" y1="{y(mark):.1f}" x2="{LEFT + WIDTH}" y2="{y(mark):.1f}" '
                   f'stroke="#ddd"/><text x="{LEFT - 6}" y="{y(mark) + 4:.1f}" '
                   f'text-anchor="end">{mark} MiB</text>')
    for mark in range(0, most_photos + 1, 5000):
        svg.append(f'<text x="{x(mark):.1f}" y="{TOP + HEIGHT + 18}" text-anchor="middle">'
                   f'{mark:,}</text>')
    svg.append(f'<text x="{LEFT + WIDTH / 2}" y="{TOP + HEIGHT + 36}" text-anchor="middle">'
               'photos</text>')
    points = " ".join(f"{x(photos):.1f},{y(held):.1f}" for photos, held in figures)
    svg.append(f'<polyline points="{points}" fill="none" stroke="#0a5ea8"/>')
    print("\n".join([*svg, "</svg>"]))


if __name__ == "__main__":
    main()
