"""Draws the figures as SVG, for light and for dark pages, without a script in them."""

import math
from xml.sax.saxutils import escape

from measure import MIB, size_name

WIDTH, HEIGHT = 800, 430
LEFT, RIGHT, TOP, BOTTOM = 96, 190, 78, 104
PROGRAMS = {"tljira": "tljira", "curl": "curl", "python3-jira": "python3-jira"}

STYLE = """
  svg { font-family: system-ui, "DejaVu Sans", sans-serif; font-size: 13px; }
  .page { fill: #ffffff; }
  .title { font-size: 17px; font-weight: 600; fill: #1a1d21; }
  text { fill: #3b4149; }
  .small { font-size: 11px; fill: #626a73; }
  .grid { stroke: #e3e6ea; }
  .axis { stroke: #8b939c; }
  .line { fill: none; stroke-width: 2.5; stroke-linejoin: round; }
  .tljira { stroke: #0b62d6; } .tljira.dot, .tljira.name { fill: #0b62d6; }
  .curl { stroke: #5d6670; } .curl.dot, .curl.name { fill: #5d6670; }
  .python3-jira { stroke: #b5500b; } .python3-jira.dot, .python3-jira.name { fill: #b5500b; }
  text.name { stroke: none; font-weight: 600; }
  .dashed { stroke-dasharray: 6 4; }
  @media (prefers-color-scheme: dark) {
    .page { fill: #14171a; }
    .title { fill: #f1f3f5; }
    text { fill: #c6ccd3; }
    .small { fill: #98a1ab; }
    .grid { stroke: #2a2f35; }
    .axis { stroke: #6c757f; }
    .tljira { stroke: #6aa9ff; } .tljira.dot, .tljira.name { fill: #6aa9ff; }
    .curl { stroke: #a7b0ba; } .curl.dot, .curl.name { fill: #a7b0ba; }
    .python3-jira { stroke: #f0975a; } .python3-jira.dot, .python3-jira.name { fill: #f0975a; }
  }
"""


def ticks(lowest, highest):
    """1, 2 and 5 times powers of ten around the values, or powers alone where that would be many; the ends are among them."""
    for steps in ((1, 2, 5), (1, 3), (1,)):
        first = math.floor(math.log10(lowest))
        last = math.ceil(math.log10(highest))
        every = [step * 10.0**power for power in range(first, last + 1) for step in steps]
        below = [tick for tick in every if tick <= lowest * 1.001]
        above = [tick for tick in every if tick >= highest * 0.999]
        chosen = [tick for tick in every if below[-1] <= tick <= above[0]]
        if len(chosen) <= 8:
            break
    return chosen


def apart(places, distance):
    """The same places in the same order, moved so far that none is nearer to another than that."""
    order = sorted(range(len(places)), key=lambda index: places[index])
    moved = list(places)
    for earlier, later in zip(order, order[1:]):
        moved[later] = max(moved[later], moved[earlier] + distance)
    excess = max(0, moved[order[-1]] - (HEIGHT - BOTTOM + 4))
    return [place - excess for place in moved]


def draw(title, subtitle, unit, lines, notes):
    """lines: for each program its values by size. Both axes are logarithmic."""
    sizes = sorted({size for values in lines.values() for size in values})
    all_values = [value for values in lines.values() for value in values.values()]
    marks = ticks(min(all_values), max(all_values))
    if len(marks) == 1:
        marks = [marks[0] / 2, marks[0], marks[0] * 2]
    low, high = math.log(marks[0]), math.log(marks[-1])
    first, last = math.log(sizes[0]), math.log(sizes[-1])

    def x(size):
        return LEFT + (WIDTH - LEFT - RIGHT) * ((math.log(size) - first) / (last - first) if last > first else 0.5)

    def y(value):
        return HEIGHT - BOTTOM - (HEIGHT - TOP - BOTTOM) * (math.log(value) - low) / (high - low)

    summary = "; ".join(f"{name}: " + ", ".join(f"{size_name(size)} {value:.2f}" for size, value in sorted(values.items()))
                        for name, values in lines.items())
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" viewBox="0 0 {WIDTH} {HEIGHT}" role="img" '
        'aria-labelledby="title desc">',
        f'<title id="title">{escape(title)}</title>',
        f'<desc id="desc">{escape(subtitle)}. {escape(summary)}</desc>',
        f"<style>{STYLE}</style>",
        f'<rect class="page" width="{WIDTH}" height="{HEIGHT}"/>',
        f'<text class="title" x="20" y="32">{escape(title)}</text>',
        f'<text x="20" y="54">{escape(subtitle)}</text>',
    ]
    for mark in marks:
        place = y(mark)
        parts.append(f'<line class="grid" x1="{LEFT}" y1="{place:.1f}" x2="{WIDTH - RIGHT}" y2="{place:.1f}"/>')
        parts.append(f'<text x="{LEFT - 10}" y="{place + 4:.1f}" text-anchor="end">{mark:g}{escape(unit)}</text>')
    base = HEIGHT - BOTTOM
    parts.append(f'<line class="axis" x1="{LEFT}" y1="{base}" x2="{WIDTH - RIGHT}" y2="{base}"/>')
    for size in sizes:
        place = x(size)
        parts.append(f'<line class="axis" x1="{place:.1f}" y1="{base}" x2="{place:.1f}" y2="{base + 5}"/>')
        parts.append(f'<text x="{place:.1f}" y="{base + 21}" text-anchor="middle">{size_name(size)}</text>')
    parts.append(f'<text class="small" x="{(LEFT + WIDTH - RIGHT) / 2:.1f}" y="{base + 40}" text-anchor="middle">size of the file</text>')

    names = [name for name in PROGRAMS if name in lines]
    ends = [y(lines[name][max(lines[name])]) for name in names]
    for name, label in zip(names, apart(ends, 18)):
        points = [(x(size), y(value)) for size, value in sorted(lines[name].items())]
        path = " ".join(f"{px:.1f},{py:.1f}" for px, py in points)
        is_base = name == "curl"
        parts.append(f'<polyline class="line {name}{" dashed" if is_base else ""}" points="{path}"/>')
        if not is_base:
            parts += [f'<circle class="dot {name}" cx="{px:.1f}" cy="{py:.1f}" r="3.5"/>' for px, py in points]
        value = lines[name][max(lines[name])]
        shown = f"{value:.2f}" if value < 10 else f"{value:.0f}"
        parts.append(f'<text class="name {name}" x="{points[-1][0] + 12:.1f}" y="{label + 4:.1f}">{escape(PROGRAMS[name])} {shown}{escape(unit)}</text>')
    for number, note in enumerate(notes):
        parts.append(f'<text class="small" x="20" y="{HEIGHT - 30 + 16 * number}">{escape(note)}</text>')
    parts.append("</svg>")
    return "\n".join(parts) + "\n"


def pictures(rows, notes):
    """The name and the text of each picture."""
    for direction, verb in (("upload", "Attaching"), ("download", "Fetching")):
        times, memory = {}, {}
        for row in rows:
            if row["direction"] == direction:
                times.setdefault(row["program"], {})[row["bytes"]] = row["of_curl"]
                memory.setdefault(row["program"], {})[row["bytes"]] = row["peak_bytes"] / MIB
        yield f"{direction}-time", draw(f"{verb} a file: time, as a multiple of curl's",
                                        "Whole process, median of the runs' ratios; lower is better", " ×", times, notes)
        yield f"{direction}-memory", draw(f"{verb} a file: peak memory", "Whole process, median of the runs, in MiB; lower is better",
                                          " MiB", memory, notes)
