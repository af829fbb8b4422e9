#!/usr/bin/env python3
"""Prints tables of a run's results. Arguments: the folder of the results; --keep to put them into bench/results.md."""

import json
import pathlib
import platform
import re
import sys

results = pathlib.Path(sys.argv[1])
keep = "--keep" in sys.argv
page = pathlib.Path("bench/results.md")
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

context = json.loads((results / "read_settings.json").read_text())["context"]
tables.append(f"The machine: {context['num_cpus']} cores, {platform.machine()}, Linux, "
              f"files on {(results / 'file-system.txt').read_text().strip()}.\n")

text = "\n".join(tables)
print(text)
if keep:
    before, rest = page.read_text().split("<!-- tables -->\n")
    after = rest.split("<!-- end of tables -->\n")[1]
    page.write_text(f"{before}<!-- tables -->\n\n{text}\n<!-- end of tables -->\n{after}")
