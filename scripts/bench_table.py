#!/usr/bin/env python3
"""Turns Google Benchmark JSON runs into Markdown ratio tables.

Benchmarks named ref/<kernel> and sse2/<kernel> are paired; the table gives
both times and the speed-up of the SSE2 kernel. Other benchmarks (exports,
throughput runs) are listed with their time and rate.

    scripts/bench_table.py build/release/bench/bench_me.json [more.json ...]
"""
import json
import sys


def load(paths):
    rows = []
    for path in paths:
        with open(path) as f:
            data = json.load(f)
        for b in data["benchmarks"]:
            if b.get("run_type", "iteration") != "iteration":
                continue
            scale = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}[b.get("time_unit", "ns")]
            rows.append((b["name"], b["cpu_time"] * scale, b.get("items_per_second")))
    return rows


def main():
    rows = load(sys.argv[1:])
    times = {name: t for name, t, _ in rows}
    pairs, others = [], []
    for name, t, ips in rows:
        if name.startswith("ref/"):
            kernel = name[4:]
            simd = times.get("sse2/" + kernel)
            if simd is not None:
                pairs.append((kernel, t, simd))
        elif not name.startswith("sse2/"):
            others.append((name, t, ips))
    if pairs:
        print("| kernel | reference ns | SSE2 ns | SSE2 speed-up |")
        print("|---|---:|---:|---:|")
        for kernel, r, s in pairs:
            print(f"| {kernel} | {r:.1f} | {s:.1f} | {r / s:.1f}x |")
    if others:
        print()
        print("| benchmark | ns per call | items/s |")
        print("|---|---:|---:|")
        for name, t, ips in others:
            rate = f"{ips / 1e6:.1f} M" if ips else ""
            print(f"| {name} | {t:.1f} | {rate} |")


if __name__ == "__main__":
    main()
