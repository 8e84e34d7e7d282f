"""Fails calls that may fail in what clients do: of each function one once and one from then on for good, or with --all
each call whose failure could have an effect of its own, both ways.

A process makes many trials, one after the other, and looks after each at what is left. What an operation that meets a
fault answers and logs must be what rules.py says.
"""
import argparse
import collections
import concurrent.futures
import os
import pathlib
import select
import subprocess
import sys

import rules

SCENARIOS = pathlib.Path(__file__).parents[1] / "scenarios"
BATCH = 40  # trials a process
SILENCE = 600  # seconds without a line from a trial, which has several in a tenth of one
NEVER_FAIL = set(
    "FT_Bitmap_Init FT_Set_Transform glActiveTexture glBindBuffer glBindFramebuffer glBindTexture glBlendFunc glClear "
    "glClearColor glDeleteBuffers glDeleteFramebuffers glDeleteProgram glDeleteShader glDeleteTextures glDisable "
    "glDisableVertexAttribArray glDrawArrays glDrawElements glEnable glEnableVertexAttribArray glPixelStorei "
    "glTexParameteri glUniform1i glUniform4fv glUseProgram glVertexAttribPointer glViewport".split())


def output(command, trials):
    """What a process says about these trials; what it does not come to is left out."""
    with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0) as process:
        process.stdin.write("".join(trial + "\n" for trial in trials).encode())
        process.stdin.close()
        text = b""
        while select.select([process.stdout], [], [], SILENCE)[0]:
            more = os.read(process.stdout.fileno(), 1 << 16)
            if not more:
                break
            text += more
        else:
            process.kill()
            text += b"! hangs\n"
    text = text.decode()
    return text if process.returncode == 0 or "\n!" in text else text + f"! ends with {process.returncode}\n"


def run(command, trials):
    """Yields each trial and its lines, those of which begin with '!' that say what is not well."""
    while trials:
        parts = output(command, trials).split("# ")[1:]
        for part in parts:
            trial, *lines = part.splitlines()
            yield trial, lines
        trials = trials[max(len(parts), 1):]  # without the one at which the process went down


def sites(scenario, lines):
    """Each fallible call of a scenario: what it is like, its trial.

    Two calls are alike if operations of one kind make them that make the same calls, as the same, or if neither is
    among the first twelve nor the last of its function there."""
    operations = []
    for line in lines:
        if line.startswith("> "):
            operations.append((line, {}))
        elif not line.startswith("!"):
            function, count = line.split()
            operations[-1][1][function] = int(count)

    before = collections.Counter()
    for name, calls in operations:
        kind = name, tuple((function, min(count, 3)) for function, count in calls.items())
        for function in calls.keys() - NEVER_FAIL:
            for nth in range(1, calls[function] + 1):
                position = "last" if nth == calls[function] else min(nth, 13)
                yield (function, kind, position), f"{scenario} {function} {before[function] + nth}"
        before.update(calls)


def batches(trials):
    """Those of one function together: what it may leave behind it leaves to its own."""
    by_function = collections.defaultdict(list)
    for trial in trials:
        by_function[trial.split()[1]].append(trial)
    return [some[i:i + BATCH] for some in by_function.values() for i in range(0, len(some), BATCH)]


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n", maxsplit=1)[0])
    parser.add_argument("--all", action="store_true", help="at each call that is not like another one")
    parser.add_argument("command", nargs="+", help="the program for trials")
    arguments = parser.parse_args()
    command = arguments.command + ["--quiet"]
    os.environ["LP_NUM_THREADS"] = "0"  # of a driver whose threads only get into one another's way here
    complaints = []

    scenarios = [scenario.stem for scenario in sorted(SCENARIOS.glob("*.txt"))
                 if "not swept" not in scenario.read_text()]
    found = {}
    for scenario, lines in run(command, scenarios):
        complaints += [f"{scenario}: {line}" for line in lines if line.startswith("!")]
        for alike, site in sites(scenario, lines):
            found.setdefault(alike, site)
    functions = sorted({function for function, _, _ in found})
    if arguments.all:
        trials = [f"{site} {how}" for site in found.values() for how in ("once", "forGood")]
    else:
        of_each = [[site for (function, *_), site in found.items() if function == each] for each in functions]
        trials = [trial for some in of_each for trial in (some[0] + " once", some[-1] + " forGood")]

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for results in pool.map(lambda batch: list(run(command, batch)), batches(trials)):
            for trial, lines in results:
                complaints += [f"{trial}: {line}" for line in lines if line.startswith("!")]
                complaints += [f"{trial}: no rule says {line}" for line in lines
                               if not line.startswith("!") and not rules.admit(line, trial.endswith("forGood"))]

    for complaint in complaints:
        print("faults:", complaint)
    print(f"faults: {len(functions)} functions, {len(trials)} trials, {len(complaints)} failures")
    sys.exit(bool(complaints) or len(functions) < 40)


if __name__ == "__main__":
    main()
