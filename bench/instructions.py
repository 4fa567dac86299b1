#!/usr/bin/env python3
"""Instructions per call of functions in a benchmark program: instructions.py PROGRAM FILTER FUNCTION...

Runs PROGRAM under valgrind's callgrind for the benchmarks that FILTER names, and prints for each FUNCTION (a regular
expression) how often it was called and how many instructions a call took, everything that it calls included.
"""
import os
import re
import subprocess
import sys
import tempfile


def calls(profile, pattern):
    """Number of calls of the functions that match, and the instructions that they took."""
    names, count, cost = {}, 0, 0
    called, expects = None, False
    wanted = re.compile(pattern)
    for line in profile:
        match = re.match(r"(c?fn)=\((\d+)\)(?: (.*))?$", line)
        if match:
            if match[3]:
                names[match[2]] = match[3]
            if match[1] == "cfn":
                called = names.get(match[2], "")
        elif line.startswith("calls="):
            number = int(line[6:].split()[0])
            expects = bool(called is not None and wanted.search(called))
            if expects:
                count += number
        elif expects:
            cost += int(line.split()[1])
            expects = False
    return count, cost


def measure(program, benchmark, functions):
    with tempfile.TemporaryDirectory() as folder:
        out = os.path.join(folder, "profile")
        subprocess.run(
            ["valgrind", "--tool=callgrind", "--callgrind-out-file=" + out, program,
             "--benchmark_filter=" + benchmark, "--benchmark_min_time=0.5"],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True,
            env=dict(os.environ, BENCH_UNCHECKED="1"))
        with open(out) as profile:
            lines = profile.read().splitlines()
    return {function: calls(lines, function) for function in functions}


if __name__ == "__main__":
    for name, (count, cost) in measure(sys.argv[1], sys.argv[2], sys.argv[3:]).items():
        print(name, count, cost / count if count else "never called")
