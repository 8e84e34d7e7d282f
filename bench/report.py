"""Turns the samples of the benchmarks into a table (Markdown) and plots (PNG)."""

import os
import platform
import statistics
import subprocess

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as pyplot  # noqa: E402  (the backend comes first)

NAMES = {"bare": "bare GL", "library": "library", "sdl": "SDL2", "cairo": "Cairo"}
COLORS = {"bare": "#7f8c8d", "library": "#1f77b4", "sdl": "#ff7f0e", "cairo": "#2ca02c"}
PACKAGES = ["libgl1-mesa-dri", "libfreetype6", "libsdl2-2.0-0", "libsdl2-ttf-2.0-0", "libcairo2"]


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        models = [line.split(":")[1].strip() for line in file if line.startswith("model name")]
    versions = subprocess.run(
        ["dpkg-query", "--show", "--showformat=${Package} ${Version}, ", *PACKAGES],
        check=False, stdout=subprocess.PIPE, text=True).stdout.rstrip(", ")
    cpu = models[0] if models else "unknown CPU"
    return f"{cpu}, {os.cpu_count()} CPUs, Linux {platform.release()}; {versions}"


def median(samples, contestant, clock):
    return statistics.median(samples[contestant][clock])


def ratio(samples, contestant, clock, base="bare"):
    """The median of the turns' ratios: what else happens to a machine lasts longer than a turn, and goes out."""
    pairs = zip(samples[contestant][clock], samples[base][clock])
    return statistics.median(own / other for own, other in pairs)


def cell(samples, contestant, clock):
    """Median, range and ratio to bare GL."""
    if contestant not in samples:
        return "–"
    values = samples[contestant][clock]
    digits = sum(statistics.median(values) < bound for bound in (10, 100))
    text = f"{statistics.median(values):.{digits}f} ({min(values):.{digits}f}…{max(values):.{digits}f})"
    return text if contestant == "bare" else f"{text} *{ratio(samples, contestant, clock):.2f}*"


def table(header, rows):
    lines = ["| " + " | ".join(row) + " |" for row in [header, ["---"] * len(header), *rows]]
    return "\n".join(lines) + "\n"


def full_table(measures, clock):
    rows = [[name] + [cell(measure["samples"], contestant, clock) for contestant in NAMES]
            for name, measure in measures.items()]
    return table(["µs", *NAMES.values()], rows)


def short_table(measures):
    """The library by bare GL and by SDL2."""
    rows = []
    for name, measure in measures.items():
        samples = measure["samples"]
        row = [name]
        for clock, target in zip(("cpu", "wall"), measure["targets"]):
            row += [f"{ratio(samples, 'library', clock):.3f}", f"{target:.2f}"]
        row.append(f"{ratio(samples, 'library', 'cpu', 'sdl'):.2f}" if "sdl" in samples else "–")
        rows.append(row)
    return table(["library / bare GL", "CPU", "target", "wall", "target", "library / SDL2, CPU"], rows)


def kit_table(pictures):
    """The kit by its floor, and by the frame that is measured between."""
    rows = []
    for name, samples in pictures.items():
        costs = [f"{median(samples, contestant, 'cpu') / 1000:.2f}" for contestant in ("kit", "floor", "ximage")]
        ratios = [f"{ratio(samples, 'kit', clock, 'floor'):.3f}" for clock in ("cpu", "wall")]
        kit = samples["kit"]
        by_empty = statistics.median(full / empty for full, empty in zip(kit["cpu"], kit["empty"]))
        rows.append([name, *costs, *ratios, f"{by_empty:.3f}"])
    return table(["a frame, CPU in ms", "kit", "floor", "Cairo and XPutImage", "kit / floor, CPU", "wall",
                  "kit / its empty frame"], rows)


def memory_line(measures):
    samples = measures["font load"]["samples"]
    bare, library = (median(samples, name, "resident") / 1024 for name in ("bare", "library"))
    return f"Resident memory after the font load: bare GL {bare:.1f} MiB, library {library:.1f} MiB.\n"


def in_process_table(results):
    rows = [[name, f"{statistics.median(values):.1f}", f"{min(values):.1f}…{max(values):.1f}"]
            for name, values in results.items()]
    return table(["in process", "ns", "range"], rows)


def burst_table(bursts):
    """Of the ticks of a burst, which the draw thread takes while more are queued."""
    def middle(values, counter, factor=1):
        return f"{factor * statistics.median(value[counter] for value in values):.0f}"
    rows = [[name, middle(values, "cpu_ns"), middle(values, "system_ns"), middle(values, "switches", 1000)]
            for name, values in bursts.items()]
    return table(["in process", "CPU, ns a tick", "of it in the system", "context switches in 1,000"], rows)


def plot_measures(measures, path):
    figure, axes = pyplot.subplots(figsize=(9, 5))
    width = 0.8 / len(NAMES)
    for i, contestant in enumerate(NAMES):
        shown = [(k, ratio(measure["samples"], contestant, "cpu"))
                 for k, measure in enumerate(measures.values()) if contestant in measure["samples"]]
        axes.bar([k + i * width for k, _ in shown], [value for _, value in shown], width,
                 color=COLORS[contestant], label=NAMES[contestant])
    axes.set_xticks([k + 0.4 - width / 2 for k in range(len(measures))], measures, rotation=30, ha="right")
    axes.set_yscale("log")
    axes.yaxis.set_major_formatter("{x:g}")
    axes.axhline(1, color="black", linewidth=0.8)
    axes.set_ylabel("CPU time, ratio to bare GL")
    axes.legend(loc="lower center", bbox_to_anchor=(0.5, 1), ncol=len(NAMES))
    figure.tight_layout()
    figure.savefig(path, dpi=110)


def plot_growth(growth, in_process, path):
    figure, grid = pyplot.subplots(2, 3, figsize=(12, 6.5))
    for axes, (title, points) in zip(grid.flat, growth.items()):
        for contestant in ("bare", "library"):
            axes.plot([point["x"] for point in points],
                      [median(point["samples"], contestant, "cpu") for point in points],
                      "o-", color=COLORS[contestant], label=NAMES[contestant])
        axes.set_title(title, fontsize=9)
    axes = grid.flat[len(growth)]
    queue = [(int(name.split("/")[1]), statistics.median(values) / 1000)
             for name, values in in_process.items() if name.startswith("QueueWhileBusy")]
    axes.plot([length for length, _ in queue], [cost for _, cost in queue], "o-", color=COLORS["library"])
    axes.set_xscale("log", base=2)
    axes.set_title("queued call, wall, by calls in a row", fontsize=9)
    for axes in grid.flat[:len(growth) + 1]:
        axes.set_ylim(bottom=0)
        axes.set_ylabel("µs")
        axes.legend(["bare GL", "library"] if len(axes.lines) > 1 else ["library"], fontsize=8)
    for axes in grid.flat[len(growth) + 1:]:
        axes.axis("off")
    figure.tight_layout()
    figure.savefig(path, dpi=110)


def write(results, folder):
    measures = results["measures"]
    parts = [results["machine"] + "\n"]
    if measures:
        parts += [short_table(measures),
                  "CPU time:\n", full_table(measures, "cpu"), "Wall time:\n", full_table(measures, "wall")]
    if results["kit"]:
        parts.append(kit_table(results["kit"]))
    if results["canvases"]:
        parts.append(in_process_table(results["canvases"]))
    if "font load" in measures:
        parts.append(memory_line(measures))
    if results["in process"]:
        parts += [in_process_table(results["in process"]), burst_table(results["bursts"])]
    (folder / "table.md").write_text("\n".join(parts), encoding="utf-8")
    print("\n".join(parts))

    if measures:
        plot_measures(measures, folder / "performance.png")
    if results["growth"]:
        plot_growth(results["growth"], results["in process"], folder / "growth.png")
