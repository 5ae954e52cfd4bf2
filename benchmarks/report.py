#!/usr/bin/env python3
"""Turns the JSON of a run of vantry_benchmarks into one Markdown table: each row beside what it is compared with.

usage: report.py RUN.json > REPORT.md
"""
import json
import platform
import re
import subprocess
import sys
from pathlib import Path

# A row, what it is compared with, how often that at most (or at least, for what is to be more), and what is compared:
# the time, the time for each item, or a counter.
TARGETS = [
    (r"Repository/CreateAndRegister/(\d+)", r"Floor/CreateAndRegister/\1", 1.5, "time"),
    (r"Repository/UpdateAndNotify/(\d+)", r"Floor/UpdateAndNotify/\1", 1.5, "time"),
    (r"Repository/UpdateAndNotifyWildcards/(\d+)", r"Floor/UpdateAndNotify/\1", 1.5, "item"),
    (r"Repository/UpdateUnmatchedPatterns/Prefix/\d+", r"Repository/UpdateUnmatchedPatterns/0", 1.1, "time"),
    (r"Repository/UpdateUnmatchedPatterns/Anew/[1-9]\d*", r"Repository/UpdateUnmatchedPatterns/Anew/0", 1.5, "time"),
    (r"Repository/UpdateUnmatchedPatterns/[1-9]\d*", r"Repository/UpdateUnmatchedPatterns/0", 1.5, "time"),
    (r"Repository/ConcurrentUpdates/threads:2", r"Repository/ConcurrentUpdates/threads:1", 1 / 1.5, "item"),
    (r"Repository/Memory/(\d+)", r"Floor/Memory/\1", 1.5, "bytes"),
    (r"Models/(?:ReadAll|Filter)/(1000000)", r"Floor/StandardItemModel/\1", 0.4, "time"),
    (r"Models/Complete/\d+", 16.0, 1.0, "time"),
    (r"Values/Click/\w+", 100.0, 1.0, "time"),
    (r"Desk/Start", r"Floor/EmptyWindow", 1.5, "time"),
    (r"Documents/LoadIni/(\d+)", r"Peer/QSettings/\1", 0.5, "time"),
    (r"Documents/LoadIni/(\d+)", r"Peer/KConfig/\1", 0.5, "time"),
    (r"Documents/LoadJson/(\d+)", r"Peer/QJsonDocument/\1", 2.0, "time"),
    (r"Documents/LoadXml/(\d+)", r"Peer/QXmlStreamReader/\1", 1.0, "time"),
    (r"Documents/LoadToml(Flat)?/(\d+)", r"Peer/TomlPlusPlus\1/\2", 1.5, "time"),
    (r"Documents/LoadToml/(\d+)", r"Peer/Toml11/\1", 1.0, "time"),
    (r"Documents/LoadYaml(Flat)?/(\d+)", r"Peer/LibFyamlEvents\1/\2", 2.0, "time"),
    (r"Documents/LoadYaml/(\d+)", r"Peer/YamlCpp/\1", 1.0, "time"),
    (r"Documents/Load(Ini|Json|Xml)/(\d+)", r"Peer/Augeas/\1/\2", 1 / 20, "time"),
    (r"Folder/Open/(\d+)", r"Floor/ReadFiles/\1", 10.0, "time"),
    (r"Folder/Memory/\d+", 5.0, 1.0, "times"),
    (r"Fleet/Load/(\d+)", r"Peer/EtcdLoad/\1", 2.0, "time"),
    (r"Fleet/WriteSequential", r"Peer/EtcdWriteSequential", 1.2, "time"),
    (r"Fleet/WriteBatch", r"Peer/EtcdWriteBatch", 2.0, "time"),
    (r"Fleet/WatchLatency", r"Peer/EtcdWatchLatency", 1.3, "p50_us"),
    (r"Fleet/WatchThroughput", r"Peer/EtcdWatchThroughput", 1.5, "time"),
    (r"Find/\w+/(\d+)", 500.0, 1.0, "time"),
    (r"Find/\w+/(\d+)", 50.0, 1.0, "first_ms"),
    (r"Changes/Diff/(\d+)", r"Documents/LoadIni/\1", 10.0, "time"),
    (r"Changes/DiffScattered/(\d+)", r"Documents/LoadIni/\1", 3.0, "time"),
    (r"Documents/SaveOneEdit/(.*)", r"Floor/WriteAndSync/\1", 3.0, "time"),
    (r"Documents/(RemoveMany|CopyWithin)/Yaml/(\d+)", r"Documents/\1/Toml/\2", 3.0, "time"),
    (r"Monitor/UpdateStorm/\d+", 1.0, 1.3, "slow_down"),
    (r"Monitor/UpdateStorm/\d+", 1.0, 0.2, "gui_busy"),
]

MILLISECONDS = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}


def plain_name(name):
    """The name without what tells how it was timed."""
    return re.sub(r"/(iterations:\d+|repeats:\d+|real_time|manual_time|process_time)", "", name)


def measured(row, what):
    if what == "time":
        return row["real_time"] * MILLISECONDS[row["time_unit"]]
    if what == "item":
        return 1e3 / row["items_per_second"]
    return row[what]


def shown(number):
    return f"{number:.4g}" if number < 1000 else f"{number:,.0f}"


def comparisons(name, rows):
    """For each target of the row: what it is compared with, the ratio, the target, and whether it is met."""
    for pattern, reference, most, what in TARGETS:
        match = re.fullmatch(pattern, name)
        if not match:
            continue
        if isinstance(reference, str):
            other = match.expand(reference)
            if other not in rows or "error_occurred" in rows[other]:
                continue
            base = measured(rows[other], what)
        else:
            base = reference
            other = f"{reference:g} ms" if what == "time" else what
        ratio = measured(rows[name], what) / base
        yield other, ratio, most, ratio <= most


def table(rows):
    yield "| row | ms | ns/item | bytes | compared with | ratio | target | |"
    yield "|---|--:|--:|--:|---|--:|--:|---|"
    for name, row in rows.items():
        if "error_occurred" in row:
            yield f"| {name} | | | | {row['error_message']} | | | failed |"
            continue
        per_item = shown(1e9 / row["items_per_second"]) if "items_per_second" in row else ""
        size = shown(row["bytes"]) if "bytes" in row else ""
        cells = f"| {name} | {shown(measured(row, 'time'))} | {per_item} | {size} |"
        found = list(comparisons(name, rows))
        if not found:
            yield f"{cells} | | | |"
        for other, ratio, most, met in found:
            yield f"{cells} {other} | {ratio:.2f} | {most:.2f} | {'met' if met else '**missed**'} |"
            cells = "| | | | |"


def first_line(path, key):
    for line in Path(path).read_text().splitlines():
        if line.startswith(key):
            return line.split(":", 1)[1].strip()
    return "unknown"


def commit():
    try:
        git = subprocess.run(["git", "describe", "--always", "--dirty"], cwd=Path(__file__).parent, text=True,
                             capture_output=True, check=True)
    except (OSError, subprocess.CalledProcessError):  # no git here, or not its work tree
        return "unknown"
    return git.stdout.strip()


def machine(context):
    memory = int(first_line("/proc/meminfo", "MemTotal").split()[0]) / 2**20
    yield f"- commit: {commit()}"
    yield f"- date: {context['date']}"
    yield f"- processor: {first_line('/proc/cpuinfo', 'model name')}, {context['num_cpus']} cores"
    yield f"- memory: {memory:.1f} GiB"
    yield f"- kernel: {platform.system()} {platform.release()}"
    yield f"- compiler: {context.get('compiler', 'unknown')}"
    yield f"- Qt: {context.get('qt', 'unknown')}"
    yield f"- load before the run: {context.get('load_avg', ['unknown'])[0]}"


def main():
    run = json.loads(Path(sys.argv[1]).read_text())
    rows = {plain_name(row["name"]): row for row in run["benchmarks"]}
    print("# What Vantry's rows took\n")
    print("\n".join(machine(run["context"])))
    print()
    print("\n".join(table(rows)))


if __name__ == "__main__":
    main()
