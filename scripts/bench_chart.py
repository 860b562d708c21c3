#!/usr/bin/python3
"""Ratio table and chart from side-by-side peer runs (the vcbench JSON output).

For every operation that has our export, the ratio is our time over the
fastest peer kernel at the SSE2 level (MMX/MMX2/SSE/SSE2 kernels, as the peers
select them there) and over the fastest peer at any level, each taken within
one run. Given several runs, the median ratio per row is reported and charted.

    scripts/bench_chart.py --png docs/peer-ratios.png run1.json [run2.json ...]

Prints a Markdown table. The chart needs python3-matplotlib (Debian package).
"""
import argparse
import json
import statistics


def ratios(path):
    with open(path) as f:
        results = json.load(f)["results"]
    ops = {}
    for r in results:
        if r.get("ns") is None:  # a peer entry without a timing (no kernel at that level)
            continue
        o = ops.setdefault(r["op"], {"ours": None, "sse2": [], "any": []})
        if r["impl"] == "ours":
            o["ours"] = r["ns"]
        else:
            o["any"].append((r["ns"], r["impl"], r["kernel"]))
            if r["level"] == "SSE2":
                o["sse2"].append((r["ns"], r["impl"], r["kernel"]))
    out = {}
    for op, o in ops.items():
        if o["ours"] is None or not o["sse2"]:
            continue
        sse2, best = min(o["sse2"]), min(o["any"])
        out[op] = (o["ours"], sse2, best, o["ours"] / sse2[0], o["ours"] / best[0])
    return out


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("--png", help="write the chart here")
    ap.add_argument("--title", default="Our time / fastest SSE2-level peer (median of runs; below 1 we are faster)")
    ap.add_argument("runs", nargs="+")
    args = ap.parse_args()
    runs = [ratios(p) for p in args.runs]
    rows = []
    for op in runs[0]:
        if not all(op in r for r in runs):
            continue
        per = [r[op][3] for r in runs]
        med = statistics.median(per)
        # The run whose SSE2 ratio is the median gives the nanoseconds shown.
        mid = runs[per.index(sorted(per)[(len(per) - 1) // 2])][op]
        rows.append((op, mid, per, med, statistics.median([r[op][4] for r in runs])))
    print("| Operation | ours ns | fastest SSE2-level peer, ns | SSE2 ratio per run | vs SSE2 peer (median) | vs best peer (median) |")
    print("|---|---:|---|---|---:|---:|")
    for op, mid, per, med, best in rows:
        ours, sse2 = mid[0], mid[1]
        print(f"| {op} | {ours:.1f} | {sse2[1]} `{sse2[2]}` {sse2[0]:.1f} | {' / '.join(f'{p:.2f}' for p in per)} "
              f"| {med:.2f} | {best:.2f} |")
    if args.png:
        import matplotlib

        matplotlib.use("Agg")
        import matplotlib.pyplot as plt

        names = [r[0] for r in rows][::-1]
        meds = [r[3] for r in rows][::-1]
        fig, ax = plt.subplots(figsize=(9, 0.32 * len(rows) + 1.2))
        colors = ["#2a7d2a" if m <= 1.0 else ("#c9a227" if m <= 1.10 else "#b03a2e") for m in meds]
        ax.barh(names, meds, color=colors)
        ax.axvline(1.0, color="black", linewidth=0.8)
        ax.axvline(1.10, color="gray", linewidth=0.8, linestyle="--")
        for y, m in enumerate(meds):
            ax.text(m + 0.02, y, f"{m:.2f}", va="center", fontsize=8)
        ax.set_xlabel("ratio (green: faster than the peer; amber: within 10%; red: slower)")
        ax.set_title(args.title, fontsize=10)
        ax.tick_params(axis="y", labelsize=8)
        fig.tight_layout()
        fig.savefig(args.png, dpi=110)


if __name__ == "__main__":
    main()
