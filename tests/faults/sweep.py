"""Fails each call that may fail, in each scenario, once and from then on for good.

Each time in a process of its own, which also looks at what is left. What an operation that meets a fault answers
and logs must be in effects.txt beside this file; what they are now is written to a file of that name in the current
folder.
"""
import argparse
import collections
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

HERE = pathlib.Path(__file__).parent
WATCHDOG = 30  # seconds; a trial takes a tenth of one, with sanitizers one
ENOUGH = 4000  # injections
NEVER_FAIL = set(
    "FT_Bitmap_Init FT_Set_Transform glActiveTexture glBindBuffer glBindFramebuffer glBindTexture glBlendFunc glClear "
    "glClearColor glDeleteBuffers glDeleteFramebuffers glDeleteProgram glDeleteShader glDeleteTextures glDisable "
    "glDisableVertexAttribArray glDrawArrays glDrawElements glEnable glEnableVertexAttribArray glPixelStorei "
    "glTexParameteri glUniform1i glUniform4fv glUseProgram glVertexAttribPointer glViewport".split())


def run(command):
    """Returns the lines it prints, those of which begin with '!' that say what is not well."""
    try:
        done = subprocess.run(command, stdout=subprocess.PIPE, text=True, timeout=WATCHDOG, check=False)
    except subprocess.TimeoutExpired:
        return ["! hangs"]
    lines = done.stdout.splitlines()
    failed = done.returncode != 0 and not any(line.startswith("!") for line in lines)
    return lines + [f"! ends with {done.returncode}"] if failed else lines


def without_characters(effect):
    """What is said of several characters is said once, and starred."""
    lines = collections.Counter(re.sub("(character|: Char) [0-9]+", r"\1 ...", effect).split(" | "))
    return " | ".join(line + (" *" if count > 1 else "") for line, count in lines.items())


def injections(trial, scenario, complain):
    """The commands for each call that may fail and that the scenario does not let fail anyway."""
    failing = {line.split()[2] for line in scenario.read_text().splitlines() if line.startswith("> fail ")}
    for line in run([trial, "--quiet", scenario.stem]):
        function, _, count = line.partition(" ")
        if function == "!":
            complain(f"{scenario.stem}: {line}")
        elif function not in NEVER_FAIL | failing:
            for nth in range(1, int(count) + 1):
                for how in ("once", "forGood"):
                    yield [trial, "--quiet", scenario.stem, function, str(nth), how]


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--every", type=int, default=1, help="leave out the others")
    parser.add_argument("trial", help="the program for one")
    arguments = parser.parse_args()

    complaints = []
    everything = [command for scenario in sorted((HERE.parent / "scenarios").glob("*.txt"))
                  if "not swept" not in scenario.read_text()
                  for command in injections(arguments.trial, scenario, complaints.append)]
    chosen = everything[::arguments.every]
    effects = {}
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count() + 2) as pool:  # some always wait for the X server
        for command, lines in zip(chosen, pool.map(run, chosen)):
            name = " ".join(command[2:])
            complaints += [f"{name}: {line}" for line in lines if line.startswith("!")]
            effects |= {without_characters(line): name for line in lines if not line.startswith("!")}

    pathlib.Path("effects.txt").write_text("".join(line + "\n" for line in sorted(effects)))
    kept = set((HERE / "effects.txt").read_text().splitlines())
    complaints += [f"{effects[line]}: not in effects.txt: {line}" for line in effects.keys() - kept]
    if arguments.every == 1:
        complaints += [f"no longer: {line}" for line in kept - effects.keys()]

    for complaint in complaints:
        print("faults:", complaint)
    print(f"faults: {len(everything) // 2} sites, {len(chosen)} injections, {len(complaints)} failures")
    sys.exit(bool(complaints) or len(everything) < ENOUGH)


if __name__ == "__main__":
    main()
