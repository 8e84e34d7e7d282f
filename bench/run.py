#!/usr/bin/python3 -B
"""Lets the contestants of the benchmarks take turns, checks that they draw the same, and reports.

Run it by scripts/bench.sh, which installs, builds and provides the X server. It writes into the output folder
samples.json (everything measured), table.md, performance.png and growth.png.
"""

import argparse
import dataclasses
import json
import os
import pathlib
import subprocess

import numpy
from fontTools.ttLib import TTFont

import report

FONTS = "/usr/share/fonts/truetype/"
DEJAVU = FONTS + "dejavu/DejaVuSans.ttf"
CJK = FONTS + "wqy/wqy-zenhei.ttc"

# No raster threads: they would hide CPU time and compete with the library's thread. The heap is the users'.
ENVIRONMENT = {
    **os.environ,
    "LP_NUM_THREADS": "0",
    "LIBGL_ALWAYS_SOFTWARE": "1",
}

OWN = ["bare", "library"]
ALL = OWN + ["sdl", "cairo"]

# How far pictures may be apart, in 255ths: any component of the library from bare GL, the peers on average.
OWN_LIMIT = 2
PEER_LIMIT = 4

GROWTH_ROUNDS = 3  # curves need less than the table
BURST_SECONDS = 0.01  # of what is measured; what lies between, ticks being drawn, takes a thousand times as long
CANVAS_SECONDS = 0.5


@dataclasses.dataclass
class Measure:
    """One thing to measure: a frame of `count` items, of which the cost of an empty frame is taken off."""

    name: str
    kind: str
    options: dict = dataclasses.field(default_factory=dict)
    count: int = 1
    contestants: list = dataclasses.field(default_factory=lambda: ALL)
    font: str | None = DEJAVU
    whole_frame: bool = False  # nothing is taken off
    request: str = "slice"
    targets: tuple = (None, None)  # the library's ratio to bare GL: CPU, wall

    def arguments(self):
        options = {"kind": self.kind, "count": self.count, "font": self.font, **self.options}
        return [f"--{key}={value}" for key, value in options.items() if value is not None]

    def cost(self, answer, clock):
        """Microseconds for one item."""
        taken_off = 0 if self.whole_frame or self.request == "load" else answer["empty_" + clock]
        return (answer["full_" + clock] - taken_off) / self.count


MEASURES = [
    Measure("scene", "scene", whole_frame=True, targets=(1.03, 1.03)),
    Measure("text line", "text", count=40, targets=(1.03, 1.03)),
    Measure("label", "text", {"length": 4}, count=200, targets=(1.05, 1.05)),
    Measure("styled line", "text", {"size": 28, "bold": "true"}, count=20, targets=(1.03, 1.03)),
    Measure("rectangle", "rect", count=400, targets=(1.04, 1.04)),
    Measure("tick", "rect", {"width": 2, "height": 10}, count=1000, targets=(1.05, 1.05)),
    Measure("round", "round", {"width": 40, "height": 40}, count=200, targets=(1.04, 1.04)),
    Measure("bitmap", "bitmap", {"width": 256, "height": 256}, count=20, targets=(1.05, 1.08)),
    Measure("font load", "nothing", request="load", contestants=OWN, targets=(1.02, 1.02)),
    Measure("text line, CJK font", "text", count=40, font=CJK, contestants=OWN, targets=(1.05, 1.05)),
]


# Pictures in memory: by the kit, by hand with what it is made of, and without the library.
KIT = ["floor", "kit", "ximage"]
KIT_MEASURES = [
    Measure(name, kind, contestants=KIT, font=None, whole_frame=kind != "labels")
    for name, kind in (
        ("dashboard, painted anew", "dashboard"), ("chart, painted anew", "chart"),
        ("board, painted anew", "board"), ("board, the clock alone", "clock"),
        ("60 labels, beside the frame", "labels"))]


def characters(font):
    return len(TTFont(font, fontNumber=0).getBestCmap())


def growth_measures():
    """By curve: (x, measure) of every point."""
    fonts = [DEJAVU.replace("Sans.ttf", name) for name in ("MathTeXGyre.ttf", "SansMono.ttf", "Sans.ttf")]
    fonts += [FONTS + "wqy/wqy-microhei.ttc", CJK]
    wide = {"layer-width": 3200}
    layers = [(320, 180), (640, 360), (1280, 720), (1920, 1080), (2560, 1440)]

    def point(x, kind, options, **fields):
        return x, Measure(str(x), kind, options, contestants=OWN, **fields)

    return {
        "text line by its characters": [
            point(n, "text", {"length": n, **wide}, count=20) for n in (1, 8, 16, 32, 64, 96, 127)],
        "styled line of 10 by glyph size in pixels": [
            point(n, "text", {"length": 10, "size": n}, count=20) for n in (10, 20, 30, 50, 75, 100)],
        "text line by the font's characters": [
            point(characters(font), "text", {}, count=40, font=font) for font in fonts],
        "empty frame by the layer's pixels": [
            point(w * h, "nothing", {"layer-width": w, "layer-height": h}, whole_frame=True)
            for w, h in layers],
    }


class Contestant:
    """A running program of one contestant."""

    def __init__(self, programs, name, measure, log):
        self.name = name
        self.process = subprocess.Popen(
            [programs / f"bench_{name}", *measure.arguments()], env=ENVIRONMENT, text=True,
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=log)

    def answer(self):
        line = self.process.stdout.readline()
        if not line:
            raise SystemExit(f"bench: {self.name} ended with {self.process.wait()}, see contestants.log")
        return json.loads(line)

    def ask(self, request):
        self.process.stdin.write(request + "\n")
        self.process.stdin.flush()
        return self.answer()

    def end(self):
        self.process.stdin.close()
        self.process.wait()


def read_picture(path):
    header, pixels = path.read_bytes().split(b"\n", 1)
    _, width, height, _ = header.split()
    return numpy.frombuffer(pixels, numpy.uint8).reshape(int(height), int(width), 3).astype(int)


def check_pictures(measure, running, folder):
    """The library's picture is bare GL's; in a scene or a picture of the kit's, the others' are close."""
    is_picture = measure.kind == "scene" or "kit" in measure.contestants
    pictures = {}
    for contestant in running:
        path = folder / f"{contestant.name}.ppm"
        contestant.ask(f"picture {path}")
        pictures[contestant.name] = read_picture(path)
    for name, picture in pictures.items():
        reference = running[0].name
        difference = abs(picture - pictures[reference])
        if name in OWN and difference.max() > OWN_LIMIT:
            raise SystemExit(f"bench: {measure.name}: {name} differs from {reference} by {difference.max()}")
        if is_picture and difference.mean() > PEER_LIMIT:
            raise SystemExit(f"bench: {measure.name}: {name} draws something else ({difference.mean():.1f})")
    if is_picture and any(
            picture.max() == picture.min() for picture in pictures.values()):
        raise SystemExit("bench: the pictures are blank")


def run(measure, effort, rounds):
    """Samples by contestant and clock, one a turn: those of the same turn were measured one after the other."""
    samples = {name: {"cpu": [], "wall": [], "empty": [], "resident": []} for name in measure.contestants}
    with open(effort.output / "contestants.log", "a", encoding="utf-8") as log:
        for number in range(rounds):
            running = [Contestant(effort.programs, name, measure, log) for name in measure.contestants]
            for contestant in running:
                samples[contestant.name]["resident"].append(contestant.answer()["resident"])
            if number == 0:
                check_pictures(measure, running, effort.output)
            for _ in range(effort.turns):
                for contestant in running:
                    answer = contestant.ask(f"{measure.request} {effort.seconds}")
                    for clock in ("cpu", "wall"):
                        samples[contestant.name][clock].append(measure.cost(answer, clock))
                    samples[contestant.name]["empty"].append(answer.get("empty_cpu"))
            for contestant in running:
                contestant.end()
    return samples


def run_in_process(effort, program, seconds, *arguments):
    """The Google Benchmark results by name: nanoseconds, and what the system had to do for a tick of a burst."""
    output = subprocess.run(
        [effort.programs / program, "--benchmark_format=json",
         "--benchmark_enable_random_interleaving=true",
         f"--benchmark_min_time={seconds}", f"--benchmark_repetitions={effort.rounds}", *arguments],
        env=ENVIRONMENT, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    results = {}
    bursts = {}
    for line in json.loads(output)["benchmarks"]:
        if line["run_type"] != "iteration":
            continue
        items = line.get("items_per_second")
        results.setdefault(line["run_name"], []).append(1e9 / items if items else line["real_time"])
        if "switches" in line:
            bursts.setdefault(line["run_name"], []).append(
                {counter: line[counter] for counter in ("cpu_ns", "system_ns", "switches")})
    return results, bursts


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("programs", type=pathlib.Path, help="folder of the contestants' programs")
    parser.add_argument("output", type=pathlib.Path, help="folder for the results")
    parser.add_argument("--rounds", type=int, default=7, help="new processes for each contestant")
    parser.add_argument("--turns", type=int, default=12, help="turns in a round")
    parser.add_argument("--seconds", type=float, default=0.1, help="length of a turn")
    parser.add_argument("--only", help="measures whose name contains this; no growth, no in-process results")
    effort = parser.parse_args()
    effort.output.mkdir(parents=True, exist_ok=True)

    results = {
        "machine": report.machine(), "measures": {}, "kit": {}, "canvases": {}, "growth": {}, "in process": {}, "bursts": {}}
    for measure in MEASURES:
        if effort.only is None or effort.only in measure.name:
            print(f"bench: {measure.name}", flush=True)
            samples = run(measure, effort, effort.rounds)
            results["measures"][measure.name] = {"samples": samples, "targets": measure.targets}
    for measure in KIT_MEASURES:
        if effort.only is None or effort.only in measure.name:
            print(f"bench: {measure.name}", flush=True)
            results["kit"][measure.name] = run(measure, effort, effort.rounds)
    if effort.only is None or effort.only in "canvases":
        print("bench: canvases", flush=True)
        results["canvases"], _ = run_in_process(effort, "bench_kit_inprocess", CANVAS_SECONDS)
    if effort.only is None:
        for curve, points in growth_measures().items():
            print(f"bench: {curve}", flush=True)
            results["growth"][curve] = [
                {"x": x, "samples": run(measure, effort, min(effort.rounds, GROWTH_ROUNDS))}
                for x, measure in points]
        print("bench: in process", flush=True)
        results["in process"], results["bursts"] = run_in_process(effort, "bench_inprocess", BURST_SECONDS, DEJAVU)

    (effort.output / "samples.json").write_text(json.dumps(results, indent=1), encoding="utf-8")
    report.write(results, effort.output)


if __name__ == "__main__":
    main()
