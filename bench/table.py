#!/usr/bin/env python3
"""Runs the benchmark programs of a build folder and prints the table of what was aimed at and what was reached.

table.py BUILD [--short] [--instructions] [--save]; see run.sh. Ends with an error only if a row is missing.
"""
import datetime
import json
import os
import platform
import re
import subprocess
import sys

import instructions

PROGRAMS = ["gridBench", "routesBench", "fieldBench", "mathBench", "pickBench", "readerBench"]
# What no row needs, and takes long.
SKIPPED = {"pickBench": "-raysIntoLargeSet/indexed:0", "readerBench": "Nodes|FaceSets", "mathBench": "transformPoints|multiplyMatrices"}


def rate(results, name):
    return results[name]["items_per_second"]


def each(results, name):
    """Nanoseconds an item."""
    return 1e9 / rate(results, name)


def megabytes(results, name):
    return results[name]["bytes_per_second"] / 1e6


def growth(results, order):
    """How much more a field costs among 100,000 than among 1,000."""
    name = "connectAndDestroy/fields:{}/order:{}"
    return each(results, name.format(100000, order)) / each(results, name.format(1000, order))


AT_MOST, AT_LEAST = "at most", "at least"

# Work, bound, target, unit, how it is computed.
ROWS = [
    ("grid, null OpenGL: against the hand loop", AT_MOST, 3, "x",
     lambda r: each(r, "gridNull/library") / each(r, "gridNull/hand")),
    ("grid, Mesa: frames against the hand loop's", AT_LEAST, 0.8, "x",
     lambda r: rate(r, "gridMesa/library") / rate(r, "gridMesa/hand")),
    ("grid culled, null OpenGL: a box of the whole grid", AT_MOST, 8, "ns", lambda r: each(r, "culledNull/library")),
    ("grid dynamic, null OpenGL: against the hand loop", AT_MOST, 3, "x",
     lambda r: each(r, "dynamicNull/library") / each(r, "dynamicNull/hand")),
    ("heap for transform, shape and geometry of a box", AT_MOST, 2100, "bytes", lambda r: r["heapPerBox"]["bytes"]),
    ("10,000 routes: an evaluation", AT_MOST, 120, "ns", lambda r: each(r, "routes/10000")),
    ("routes: an evaluation at 100,000 against one at 100", AT_MOST, 1.5, "x",
     lambda r: each(r, "routes/100000") / each(r, "routes/100")),
    ("connecting to one field and destroying: 100,000 against 1,000", AT_MOST, 2.5, "x", lambda r: growth(r, 0)),
    ("the same, destroyed backwards", AT_MOST, 2.5, "x", lambda r: growth(r, 1)),
    ("the same, destroyed in a mixed order", AT_MOST, 2.5, "x", lambda r: growth(r, 2)),
    ("rays into one set of 1,000,000 triangles", AT_LEAST, 1e6, "/s", lambda r: rate(r, "raysIntoLargeSet/indexed:1")),
    ("building its index", AT_MOST, 0.4, "s", lambda r: r["raysIntoLargeSet/indexed:1"]["buildSeconds"]),
    ("its size, a triangle", AT_MOST, 64, "bytes", lambda r: r["raysIntoLargeSet/indexed:1"]["bytesPerTriangle"]),
    ("rays into the grid", AT_LEAST, 5e5, "/s", lambda r: rate(r, "raysIntoGrid")),
    ("reading 20 MB of face sets", AT_LEAST, 150, "MB/s", lambda r: megabytes(r, "ReadFaceSets/20")),
    ("reading 50,000 small nodes", AT_LEAST, 60, "MB/s", lambda r: megabytes(r, "ReadNodes/50000")),
    ("affine matrix product", AT_MOST, 4, "ns", lambda r: each(r, "multiplyMatrices")),
    ("point through a matrix", AT_MOST, 1, "ns", lambda r: each(r, "transformPoints")),
    ("reading a field through its handle", AT_MOST, 3, "ns", lambda r: each(r, "readHandle")),
    ("getField by name, 29 fields", AT_MOST, 60, "ns", lambda r: each(r, "getFieldByName")),
]

# For orientation: the times behind the ratios.
TIMES = [
    ("a box of the grid, null OpenGL", "gridNull/library"),
    ("by hand", "gridNull/hand"),
    ("a box of the dynamic grid", "dynamicNull/library"),
    ("by hand", "dynamicNull/hand"),
    ("an evaluation of 100 routes", "routes/100"),
    ("an evaluation of 100,000 routes", "routes/100000"),
]

# Program, benchmark, function, items a call.
COUNTED = [
    ("a box of the grid drawn", "gridBench", "gridNull/library", r"^ozDrawAction::apply", 10000),
    ("a box of the grid culled", "gridBench", "culledNull/library", r"^ozDrawAction::apply", 10000),
    ("an evaluation of 10,000 routes", "routesBench", "routes/10000", r"Routes::step", 10000),
    ("a node read, of 50,000", "readerBench", "ReadNodes/50000", r"^vlDB::readFile\(char const\*, ozContainer", 50000),
]


def run(build, short):
    results = {}
    for program in PROGRAMS:
        command = [os.path.join(build, program), "--benchmark_format=json"]
        if program in SKIPPED:
            command.append("--benchmark_filter=" + SKIPPED[program])
        if short:
            command.append("--benchmark_min_time=0.01")
        else:
            command += ["--benchmark_repetitions=5", "--benchmark_report_aggregates_only=true"]
        out = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False).stdout
        try:
            benchmarks = json.loads(out)["benchmarks"]
        except ValueError:
            continue
        for benchmark in benchmarks:
            if short or benchmark.get("aggregate_name") == "median":
                results[re.sub(r"/iterations:\d+", "", benchmark["run_name"])] = benchmark
    return results


def number(value):
    return f"{value:,.0f}" if value >= 1000 else f"{value:.3g}"


def table(results):
    lines, missing = [("work", "target", "reached", "")], []
    for work, bound, target, unit, compute in ROWS:
        try:
            reached = compute(results)
        except (KeyError, ZeroDivisionError):
            missing.append(work)
            lines.append((work, f"{bound} {number(target)} {unit}", "missing", ""))
            continue
        good = reached <= target if bound == AT_MOST else reached >= target
        lines.append((work, f"{bound} {number(target)} {unit}", f"{number(reached)} {unit}", "" if good else "not reached"))
    for work, name in TIMES:
        if name in results:
            lines.append((work, "", f"{number(each(results, name))} ns", ""))
    return lines, missing


def count(build):
    lines = []
    for work, program, benchmark, function, items in COUNTED:
        found, cost = instructions.measure(os.path.join(build, program), benchmark, [function])[function]
        lines.append((work, "", f"{number(cost / found / items)} instructions" if found else "missing", ""))
    return lines


def machine():
    with open("/proc/cpuinfo") as info:
        names = [line.split(":")[1].strip() for line in info if line.startswith("model name")]
    compiler = subprocess.run(["c++", "--version"], stdout=subprocess.PIPE, check=True, text=True).stdout.splitlines()[0]
    return f"{names[0] if names else platform.machine()}, {os.cpu_count()} cores, Linux {platform.release()}, {compiler}"


def save(lines):
    path = "docs/performance.md"
    with open(path) as page:
        text = page.read()
    rows = ["| " + " | ".join(line) + " |" for line in lines]
    rows.insert(1, "|---|---|---|---|")
    block = f"Run on {datetime.date.today()}: {machine()}.\n\n" + "\n".join(rows) + "\n"
    text = re.sub(r"(<!-- table -->\n).*?(<!-- end -->)", lambda m: m[1] + block + m[2], text, flags=re.S)
    with open(path, "w") as page:
        page.write(text)


def main():
    build, options = sys.argv[1], sys.argv[2:]
    results = run(build, "--short" in options)
    with open(os.path.join(build, "bench.json"), "w") as out:
        json.dump(results, out, indent=1)
    lines, missing = table(results)
    if "--instructions" in options:
        lines += count(build)
    widths = [max(len(line[i]) for line in lines) for i in range(3)]
    for work, target, reached, verdict in lines:
        print(f"{work:{widths[0]}}  {target:{widths[1]}}  {reached:>{widths[2]}}  {verdict}".rstrip())
    if "--save" in options:
        save(lines)
    for work in missing:
        print("missing:", work, file=sys.stderr)
    sys.exit(1 if missing else 0)


if __name__ == "__main__":
    main()
