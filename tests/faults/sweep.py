"""Fails calls that may fail in what clients do: of each function one once and one from then on for good, or with --all
each call whose failure could have an effect of its own, both ways.

A process makes many trials, one after the other, and looks after each at what is left. What an operation that meets a
fault answers and logs must be in effects.txt beside this file.
"""
import argparse
import collections
import concurrent.futures
import os
import pathlib
import re
import select
import subprocess
import sys

HERE = pathlib.Path(__file__).parent
BATCH = 40  # trials a process
SPINS = 60  # seconds of a processor, for a step of a trial that takes a tenth of one
SLEEPS = 60  # seconds, all threads of the process asleep
NEVER_FAIL = set(
    "FT_Bitmap_Init FT_Set_Transform glActiveTexture glBindBuffer glBindFramebuffer glBindTexture glBlendFunc glClear "
    "glClearColor glDeleteBuffers glDeleteFramebuffers glDeleteProgram glDeleteShader glDeleteTextures glDisable "
    "glDisableVertexAttribArray glDrawArrays glDrawElements glEnable glEnableVertexAttribArray glPixelStorei "
    "glTexParameteri glUniform1i glUniform4fv glUseProgram glVertexAttribPointer glViewport".split())


def used(pid):
    """Seconds of a processor that the process has used so far."""
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def is_asleep(pid):
    """Whether all its threads are: those that wait for a processor are not."""
    try:
        states = [stat.read_text().rpartition(")")[2].split()[0]
                  for stat in pathlib.Path(f"/proc/{pid}/task").glob("*/stat")]
    except OSError:  # one has just ended
        return False
    return "R" not in states


def makes_no_progress(process):
    """Waits for output, for as long as the process works towards it, however slow the machine. Whether it hangs."""
    begin = former = used(process.pid)
    asleep = 0
    while not select.select([process.stdout], [], [], 1)[0]:
        now = used(process.pid)
        asleep = asleep + 1 if now == former and is_asleep(process.pid) else 0
        former = now
        if asleep > SLEEPS or now - begin > SPINS:
            return True
    return False


def output(command, trials):
    """What a process says about these trials; what it does not come to is left out."""
    with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0) as process:
        process.stdin.write("".join(trial + "\n" for trial in trials).encode())
        process.stdin.close()
        text = b""
        while True:
            if makes_no_progress(process):
                process.kill()
                return text.decode() + "! hangs\n"
            more = os.read(process.stdout.fileno(), 1 << 16)
            if not more:
                break
            text += more
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


def operations(lines):
    """What each operation of a trial without a fault is, and its calls of each function."""
    for line in lines:
        if line.startswith("> "):
            calls = {}
            yield line, calls
        elif not line.startswith("!"):
            function, count = line.split()
            calls[function] = int(count)


def sites(scenario, lines):
    """Each fallible call of a scenario that the scenario does not let fail anyway: what it is like, its trial.

    Two calls are alike if operations of one kind make them that make the same calls, as the same, or if neither is
    among the first twelve nor the last of its function there."""
    failing = {line.split()[2] for line in scenario.read_text().splitlines() if line.startswith("> fail ")}
    before = collections.Counter()
    for name, calls in list(operations(lines)):
        kind = name, tuple((function, min(count, 3)) for function, count in calls.items())
        for function in calls.keys() - NEVER_FAIL - failing:
            for nth in range(1, calls[function] + 1):
                position = "last" if nth == calls[function] else min(nth, 13)
                yield (function, kind, position), f"{scenario.stem} {function} {before[function] + nth}"
        before.update(calls)


def without_characters(effect):
    """What is said of several characters is said once, and starred."""
    lines = collections.Counter(re.sub("(character|: Char) [0-9]+", r"\1 ...", effect).split(" | "))
    return " | ".join(line + (" *" if count > 1 else "") for line, count in lines.items())


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
    effects = {}

    scenarios = [scenario for scenario in sorted((HERE.parent / "scenarios").glob("*.txt"))
                 if "not swept" not in scenario.read_text()]
    found = {}
    for trial, lines in run(command, [scenario.stem for scenario in scenarios]):
        complaints += [f"{trial}: {line}" for line in lines if line.startswith("!")]
        for alike, site in sites(HERE.parent / f"scenarios/{trial}.txt", lines):
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
                effects |= {without_characters(line): trial for line in lines if not line.startswith("!")}

    kept = set((HERE / "effects.txt").read_text().splitlines())
    complaints += [f"{effects[line]}: not in effects.txt: {line}" for line in effects.keys() - kept]

    for complaint in complaints:
        print("faults:", complaint)
    print(f"faults: {len(functions)} functions, {len(trials)} trials, {len(complaints)} failures")
    sys.exit(bool(complaints) or len(functions) < 40)


if __name__ == "__main__":
    main()
