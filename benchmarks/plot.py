# SPDX-FileCopyrightText: 2026 The bgpdt authors
# SPDX-License-Identifier: Apache-2.0
"""Panels side by side, a few in a row, as SVG."""
import math
from dataclasses import dataclass

WIDTH, HEIGHT, MARGIN, WORDS = 360, 240, 56, 150
COLOURS = ("#1f77b4", "#d62728", "#2ca02c", "#9467bd", "#ff7f0e", "#8c564b", "#e377c2", "#17becf", "#bcbd22", "#7f7f7f")


@dataclass(frozen=True)
class Line:
    words: str
    colour: str
    points: list  # of (x, y)


@dataclass(frozen=True)
class Panel:
    """Lines over the same axes, which begin at 0, or are logarithmic and begin at the least."""

    title: str
    units: tuple  # of x and y
    lines: list
    limit: float = 0  # of y to x, shown dashed; 0: none
    logarithmic: bool = False


class Axes:
    def __init__(self, panel, left, top):
        self.left, self.top, self.bottom = left, top, top + HEIGHT
        self.logarithmic = panel.logarithmic
        points = [point for line in panel.lines for point in line.points]
        self.most = max(x for x, _ in points), 1.1 * max(y for _, y in points)
        self.least = tuple(map(min, zip(*points))) if panel.logarithmic else (0, 0)

    def share(self, axis, value):
        """Of the axis, from 0 to 1."""
        ends = self.least[axis], self.most[axis]
        if not self.logarithmic:
            return value / ends[1]
        return math.log(value / ends[0]) / math.log(ends[1] / ends[0])

    def place(self, x, y):
        return f"{self.left + WIDTH * self.share(0, x):.1f},{self.bottom - HEIGHT * self.share(1, y):.1f}"

    def line(self, points, style):
        return f'<polyline points="{" ".join(self.place(*point) for point in points)}" fill="none" {style}/>'


def number(value):
    return f"{value:,.0f}".replace(",", " ") if value >= 10000 else f"{value:.0f}" if value >= 10 else f"{value:.2g}"


def drawn_words(panel, axes):
    """What the lines are: in the corner, or where those are many beside the panel, from the uppermost on."""
    rows = [(line.words, line.colour) for line in panel.lines]
    at, anchor, top = axes.left + WIDTH - 4, "end", axes.bottom - 24
    if len(rows) > 2:
        rows = [(line.words, line.colour) for line in sorted(panel.lines, key=lambda line: -line.points[-1][1])]
        at, anchor, top = axes.left + WIDTH + 8, "start", axes.top + 9
    if panel.limit:
        rows.append(("the limit", "gray"))
    return [f'<text x="{at}" y="{top + 14 * row}" text-anchor="{anchor}" fill="{colour}">{words}</text>'
            for row, (words, colour) in enumerate(rows)]


def drawn(panel, left, top):
    axes = Axes(panel, left, top)
    parts = [f'<text x="{left}" y="{top - 12}" font-size="13">{panel.title}</text>',
             f'<path d="M{left},{top} V{axes.bottom} H{left + WIDTH}" fill="none" stroke="black"/>',
             f'<text x="{left}" y="{top - 1}" dx="3" dy="9">{number(axes.most[1])} {panel.units[1]}</text>',
             f'<text x="{left + WIDTH}" y="{axes.bottom + 14}" text-anchor="end">{number(axes.most[0])} '
             f'{panel.units[0]}</text>']
    if panel.logarithmic:
        parts += [f'<text x="{left - 4}" y="{axes.bottom}" text-anchor="end">{number(axes.least[1])}</text>',
                  f'<text x="{left}" y="{axes.bottom + 14}">{number(axes.least[0])}</text>']
    if panel.limit:
        end = min(axes.most[0], axes.most[1] / panel.limit)
        parts.append(axes.line([(0, 0), (end, end * panel.limit)], 'stroke="gray" stroke-dasharray="4"'))
    parts += [axes.line(line.points, f'stroke="{line.colour}" stroke-width="2"') for line in panel.lines]
    return parts + drawn_words(panel, axes)


def plot(panels, path, columns=3):
    wide = WIDTH + MARGIN + (WORDS if any(len(panel.lines) > 2 for panel in panels) else 0)
    high = HEIGHT + 2 * MARGIN
    rows = math.ceil(len(panels) / columns)
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{wide * min(len(panels), columns) + MARGIN}" '
             f'height="{high * rows}" font-family="sans-serif" font-size="11">']
    for place, panel in enumerate(panels):
        parts += drawn(panel, MARGIN + place % columns * wide, MARGIN + place // columns * high)
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(parts + ["</svg>\n"]))
