#!/usr/bin/env python3
"""Runs the benchmarks and prints a table: work, size, times, ratio to plain SQLite, limit, ok.

usage: report.py PROGRAM [--filter REGEX] [--min-time SECONDS]

Ends with 1 when a ratio is above its limit.
"""
import argparse
import json
import subprocess
import sys


def rows(results):
    for result in results:
        if "error_message" in result:
            raise SystemExit(f"{result['name']}: {result['error_message']}")
        parts = [part for part in result["name"].split("/") if not part.startswith(("manual", "iter"))]
        limit = result["limit"]
        if "ratio" in result:
            plain = result["plain_ms"]
            figures = (f"{plain * result['ratio']:.4g} ms", f"{plain:.4g} ms", result["ratio"])
        else:
            figures = ("", "", result["bytes_per_tool"])
        size = parts.pop().removeprefix("rows:")
        bare = f"{result['bare_ms']:.4g} ms" if "bare_ms" in result else ""
        syncs = f"{result['syncs']:.3g} : {result['plain_syncs']:.3g}" if result.get("plain_syncs") else ""
        peak = f"{result['peak_kb']:.0f} kB" if result.get("peak_kb") else ""
        yield " ".join(parts), f"{int(size):,}", *figures, bare, syncs, limit, peak


def main():
    parser = argparse.ArgumentParser(description="The benchmarks as a table.")
    parser.add_argument("program")
    parser.add_argument("--filter", default=".")
    parser.add_argument("--min-time", default="0.5")
    options = parser.parse_args()
    done = subprocess.run([options.program, f"--benchmark_filter={options.filter}",
                           f"--benchmark_min_time={options.min_time}", "--benchmark_format=json"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True)
    over = 0
    print("| work | size | component | plain | ratio | bare | syncs | limit | ok | peak |")
    print("|---|--:|--:|--:|--:|--:|--:|--:|---|--:|")
    for work, size, time, plain, ratio, bare, syncs, limit, peak in rows(json.loads(done.stdout)["benchmarks"]):
        ok = ratio <= limit
        over += not ok
        print(f"| {work} | {size} | {time} | {plain} | {ratio:.2f} | {bare} | {syncs} | {limit:g} | "
              f"{'ok' if ok else 'OVER'} | {peak} |")
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main())
