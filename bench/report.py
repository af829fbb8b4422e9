#!/usr/bin/env python3
"""Works the results of a run out into tables and pictures. Arguments: the folder of the results; --keep to put them
into docs/performance.md and docs/pictures/."""

import json
import math
import pathlib
import platform
import re
import sys

results = pathlib.Path(sys.argv[1])
keep = "--keep" in sys.argv
page = pathlib.Path("docs/performance.md")
pictures = pathlib.Path("docs/pictures")
SIZES = (10, 100, 1000)
COMMAND_SIZES = (10, 30, 100, 300, 1000)
COMMANDS = ("fill", "activate one", "move one", "delete the first", "new mod", "activate all")
MANY = ("new mod", "delete the first", "move one")


def load(subject):
    """The medians of a subject, by the name of the row."""
    rows = {}
    for row in json.loads((results / f"{subject}.json").read_text())["benchmarks"]:
        if row.get("aggregate_name", "median") != "median":
            continue
        if "error_occurred" in row:
            sys.exit(f"{row['name']}: {row['error_message']}")
        name = re.sub(r"(/iterations:\d+)?(/repeats:\d+)?(/manual_time|/real_time)?$", "", row["run_name"])
        # 1.7 gives the two times in nanoseconds, the counters in seconds.
        rows[name] = row | {"time": row["real_time"] / 1e9, "cpu": row["cpu_time"] / 1e9}
    return rows


def shown(seconds):
    for unit, size in (("s", 1), ("ms", 1e-3), ("µs", 1e-6)):
        if seconds >= size:
            return f"{seconds / size:.3g} {unit}" if seconds / size < 100 else f"{seconds / size:.0f} {unit}"
    return f"{seconds * 1e9:.0f} ns"


def table(title, head, rows):
    lines = [f"### {title}", "", "| " + " | ".join(head) + " |", "|" + "|".join(["---"] + ["--:"] * (len(head) - 1)) + "|"]
    return "\n".join(lines + ["| " + " | ".join(map(str, row)) + " |" for row in rows]) + "\n"


def picture(file, title, series):
    """Times over numbers of mods, both in powers of ten. `series`: name, colour, whether dashed, points."""
    width, height, left, right, top, bottom = 760, 440, 70, 190, 40, 50
    times = [time for *_, points in series for _, time in points]
    low, high = math.floor(math.log10(min(times))), math.ceil(math.log10(max(times)))
    x = lambda mods: left + (math.log10(mods) - 1) / 2 * (width - left - right)
    y = lambda time: height - bottom - (math.log10(time) - low) / (high - low) * (height - top - bottom)
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" font-family="sans-serif" font-size="13">',
             f'<rect width="{width}" height="{height}" fill="white"/>',
             f'<text x="{left}" y="22" font-size="15" font-weight="bold">{title}</text>',
             f'<text x="{(left + width - right) / 2}" y="{height - 10}" text-anchor="middle">mods</text>']
    for power in range(low, high + 1):
        at = y(10.0**power)
        parts.append(f'<path d="M{left} {at:.1f}H{width - right}" stroke="#ddd"/>'
                     f'<text x="{left - 8}" y="{at + 4:.1f}" text-anchor="end">{shown(10.0**power)}</text>')
    for mods in (10, 30, 100, 300, 1000):
        parts.append(f'<path d="M{x(mods):.1f} {top}V{height - bottom}" stroke="#eee"/>'
                     f'<text x="{x(mods):.1f}" y="{height - bottom + 18}" text-anchor="middle">{mods}</text>')
    label_at = 0.0
    for name, colour, dashed, points in sorted(series, key=lambda one: -one[3][-1][1]):
        path = " ".join(f"{x(mods):.1f},{y(time):.1f}" for mods, time in points)
        parts.append(f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2"'
                     + (' stroke-dasharray="5 4"' if dashed else "") + "/>")
        if not name:
            continue
        label_at = max(label_at + 15, y(points[-1][1]) + 4)  # names do not cover each other
        parts.append(f'<text x="{width - right + 8}" y="{label_at:.1f}" fill="{colour}">{name}</text>')
    (pictures / file).write_text("\n".join(parts + ["</svg>"]) + "\n")


read, write, lists, commands, processes = (
    load(subject) for subject in ("read_settings", "write_key", "lists", "commands", "processes"))
tables = []

rows = []
for mods in SIZES:
    limit, ours = (read[f"{mods}/{name}"]["cpu"] for name in ("limit", "reading"))
    rows.append([mods, shown(limit), shown(ours), f"**{ours / limit:.2f}**"])
tables.append(table("Read all mods (processor time)", ["mods", "limit", "reading", "÷ limit"], rows))

rows = []
for mods in SIZES:
    for change in ("changed", "added"):
        row = write[f"{mods}/PutSetting/{change}"]
        rows.append([f"{mods}, {change}", shown(row["limit"]), shown(row["time"]), f"**{row['time'] / row['limit']:.2f}**"])
tables.append(table("Write one key", ["mods, key", "limit", "PutSetting", "÷ limit"], rows))

rows = []
for mods in SIZES:
    row = write[f"{mods}/history"]
    rows.append([mods, shown(row["without"]), shown(row["time"]), f"**{row['time'] / row['without']:.2f}**",
                 shown(row["undo"])])
tables.append(table("Keep the history", ["mods", "a change without", "with", "÷ without", "its undo"], rows))

tables.append(table("Long lists", ["what", "time", "at most"], [
    ["move a mod past 900 others", shown(lists["move"]["time"]), "50 ms"],
    ["find one of 10,000 names", shown(lists["find"]["time"]), "16 ms"],
    ["which mod wins, of 50,000 files", shown(lists["wins"]["time"]), "500 ms"]]))

rows = []
for command in COMMANDS:
    for mods in COMMAND_SIZES:
        row = commands[f"{mods}/{command}"]
        rows.append([f"{command}, {mods}", shown(row["limit"]), shown(row["time"]), f"**{row['time'] / row['limit']:.2f}**"])
tables.append(table("Commands", ["command, mods", "limit", "command", "÷ limit"], rows))

rows = []
for command, what in zip(MANY, ("new mod with so many folders", "delete the first of so many mods", "move a mod of so many folders")):
    few, many = (commands[f"many {number}/{command}"]["time"] for number in (1000, 10000))
    rows.append([what, shown(few), shown(many), f"**{many / few:.1f}**"])
tables.append(table("Very many", ["command", "1000", "10,000", "÷ 1000"], rows))

empty = processes["first window/empty"]
rows = []
for name, what in (("empty", "an empty window"), ("one label", "a window with a word in it"), ("Gantrel", "Gantrel, 100 mods")):
    row = processes[f"first window/{name}"]
    rows.append([what, shown(row["time"]), f"**{row['time'] / empty['time']:.2f}**", f"{row['peak'] / 2**20:.1f} MiB",
                 f"**{row['peak'] / empty['peak']:.2f}**"])
tables.append(table("First window", ["program", "time", "÷ empty", "peak memory", "÷ empty"], rows))

rows = [[window, shown(processes[f"at rest/{window}"]["time"]), f"{processes[f'at rest/{window}']['wake_ups']:.0f}"]
        for window in ("main window", "setup dialog")]
tables.append(table("At rest for 10 s", ["window", "processor time", "wake-ups"], rows))

trace = (results / "strace.txt").read_text()
starts = len(re.findall(r'execve\("[^"]*bench_first_window"', trace))
opens = len(re.findall(r'openat\([^\n]*Ulvane\.ini", O_RDONLY\|O_NONBLOCK', trace)) / starts
tables.append(f"Opening the main window with 100 mods opens the settings file {opens:.0f} times, by strace's count.\n")

model = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
context = json.loads((results / "read_settings.json").read_text())["context"]
tables.append(f"The machine: {context['num_cpus']} × {model[1] if model else platform.machine()}, Linux, "
              f"files on {(results / 'file-system.txt').read_text().strip()}.\n")

text = "\n".join(tables)
print(text)
if keep:
    colours = ("#c00000", "#000000", "#1f77b4", "#2ca02c", "#9467bd", "#8c564b")
    series = []
    for command, colour in zip(COMMANDS, colours):
        for key, name, dashed in (("time", command, False), ("limit", "", True)):
            series.append((name, colour, dashed, [(mods, commands[f"{mods}/{command}"][key]) for mods in COMMAND_SIZES]))
    picture("commands.svg", "Commands, and (dashed) their limits", series)
    before, rest = page.read_text().split("<!-- tables -->\n")
    after = rest.split("<!-- end of tables -->\n")[1]
    page.write_text(f"{before}<!-- tables -->\n\n{text}\n<!-- end of tables -->\n{after}")
