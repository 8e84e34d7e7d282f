"""Fails calls that may fail in what clients do, once and from then on for good: of each function the first, the second
and a later one of an operation, or with --all each call whose failure could have an effect of its own.

What an operation that meets a fault answers and logs must be what rules.py says; it is tried again, and given up when
it fails for good. The others come out as ever, nothing is left, and a picture is drawn as ever: after a fault that
came once in the same context, then by another client.
"""
import argparse
import collections
import concurrent.futures
import itertools
import os
import pathlib
import re
import subprocess
import sys

import rules

SCENARIOS = pathlib.Path(__file__).parents[1] / "scenarios"
NO_CONTEXT = 102
OTHER_WINDOW = "connect 2"  # which no scenario uses
ALL_PARTS = "answer", "errors", "picture"  # of what comes of an operation


class Reply:
    """What comes of an operation."""

    def __init__(self, lines):
        self.answer = lines[0]
        self.result = int(self.answer.split(",")[0])
        self.errors = [line[2:] for line in lines if line.startswith("E ")]
        self.picture = [line for line in lines if line.startswith("y ")]
        self.calls, self.alive = (
            collections.Counter({name: int(count) for name, count in re.findall(r"(\w+) (\d+)", line)})
            for line in lines[-2:])


class Client:
    """A process that does operations, one after the other, of which a function may fail."""

    def __init__(self, command, function=""):
        may_leave = rules.LEFT.get(function, "")
        options = {"LP_NUM_THREADS": "0"}  # of a driver whose threads only get into one another's way here
        if "thread" in may_leave:
            options["MESA_SHADER_CACHE_DISABLE"] = "true"  # has the driver's other thread
        if "memory" in may_leave:
            options["LSAN_OPTIONS"] = "detect_leaks=0"
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        env=os.environ | options)

    def ask(self, line):
        print(line, file=self.process.stdin, flush=True)
        answer = [text.rstrip("\n") for text in itertools.takewhile(str.strip, self.process.stdout)]
        if not answer:
            raise BrokenPipeError(f"{line}: the process ends")
        return answer

    def take(self, operation):
        return Reply(self.ask(operation))

    def end(self):
        """Returns the process's exit code."""
        self.process.communicate()
        return self.process.returncode


def survey(client, scenario):
    """The operations of a scenario, then of a picture in the context that it leaves, and what comes of each."""
    operations, picture = (client.ask(f"scenario {name}") for name in (scenario, "picture"))
    while operations[-1] in ("destroy", "new"):
        operations.pop()
    steps = [(operation, client.take(operation)) for operation in ("begin", *operations)]
    if steps[-1][1].result != NO_CONTEXT and not any(operation.endswith(" always") for operation in operations):
        drawing = [operation for operation in picture if operation.split()[0] not in ("create", "connect", "destroy")]
        steps += [(operation, client.take(operation)) for operation in (OTHER_WINDOW, *drawing, "destroy")]
    return steps + [("begin", client.take("begin"))]


def sites(scenario, steps):
    """Each call that may fail, and what it is like: what the operation is, what it calls, which of its calls it is."""
    failing_anyway = {operation.split()[1] for operation, _ in steps if operation.startswith("fail ")}
    before = collections.Counter()
    for operation, reply in steps:
        calls = reply.calls - before
        for function in calls.keys() & rules.MAY_FAIL - failing_anyway:
            for nth in range(1, calls[function] + 1):
                which = function, min(nth, 3)
                yield which, (operation.split()[0], reply.result, frozenset(calls)), (scenario, before[function] + nth)
        before = reply.calls


def left(operation, now, wanted, function):
    """Yields of what there is more than there should be, unless the function may leave it."""
    for kind in (now.alive - wanted.alive).keys() - rules.LEFT.get(function, "").split():
        yield f"{operation}: {kind} left"


def unlike(operation, now, wanted, function, parts=ALL_PARTS):
    """Yields how an operation comes out otherwise though nothing fails in it."""
    if any(getattr(now, part) != getattr(wanted, part) for part in parts):
        yield f"{operation}: without a fault, it answers {now.answer}, logs {now.errors} and shows {now.picture}"
    yield from left(operation, now, wanted, function)


class Trial:
    """A call of a function that fails in what a client does, alone or with all that follow it."""

    def __init__(self, client, function, nth, for_good):
        self.client = client
        self.function = function
        self.nth = nth
        self.for_good = for_good
        self.made = 0  # calls before the operation at work
        self.came = False
        self.drawing = False  # a picture in the same context, after the fault

    def run(self, steps, picture):
        """Yields what is not well."""
        self.client.take(f"begin {self.function} {self.nth} {'forGood' if self.for_good else ''}")
        for operation, wanted in steps[1:-1]:
            if operation == OTHER_WINDOW and self.came:
                if self.for_good or self.function in rules.LASTING:
                    break
                self.drawing = True
            now = self.client.take(operation)
            fails = self.fails(now)
            if fails:
                yield from self.effect(operation, now, wanted)
                if now.result != wanted.result and self.for_good:
                    break
                if now.result != wanted.result:
                    now = self.again(operation)
                    fails = False
            if not fails:
                yield from unlike(operation, now, wanted, self.function, self.settled(operation, steps))
            self.made = now.calls[self.function]
        if not self.came:
            yield "the fault does not come"
        for operation, wanted in picture:
            yield from unlike(f"afterwards, {operation}", self.client.take(operation), wanted, self.function)

    def fails(self, now):
        """Whether a call that the operation has made was to fail."""
        return now.calls[self.function] >= max(self.nth, self.made + 1) and (self.for_good or self.made < self.nth)

    def effect(self, operation, now, wanted):
        self.came = True
        which = min(max(self.nth - self.made, 1), 3)
        yield from left(operation, now, wanted, self.function)
        if not rules.admit(operation.split()[0], self.function, which, self.for_good, wanted, now):
            yield f"{operation}: no rule says that it answers {now.answer} and logs {now.errors}"

    def again(self, operation):
        if operation == "create":
            self.client.take("destroy")  # also when there is nothing
        return self.client.take(operation)

    def settled(self, operation, steps):
        """The parts that are as ever of an operation without a fault: what is drawn may lack what failed before."""
        if not self.came or self.drawing:
            return ALL_PARTS
        if operation.startswith("shows "):
            return ()
        # Which of its calls depends on those before.
        changes_later = self.function in rules.LASTING or self.function.startswith("FT_") or any(
            step.startswith("fail ") for step, _ in steps)
        return ("result",) if changes_later else ("answer", "errors")


def trials_of(function, sites_of_it, plays, command):
    """What is not well at any of them, in a process of their own: what the function may leave, it leaves to these."""
    complaints = []
    client = Client(command, function)
    for scenario, nth, how in sites_of_it:
        name = f"{scenario} {function} {nth} {how}"
        try:
            found = Trial(client, function, nth, how == "forGood").run(plays[scenario], plays["picture"])
            complaints += [f"{name}: {complaint}" for complaint in found]
        except BrokenPipeError as end:
            complaints.append(f"{name}: {end} with {client.end()}")
            client = Client(command, function)
    code = client.end()
    return complaints + ([f"{function}: the process ends with {code}"] if code else [])


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n", maxsplit=1)[0])
    parser.add_argument("--all", action="store_true", help="at each call that is not like another one")
    parser.add_argument("command", nargs="+", help="the program for trials")
    arguments = parser.parse_args()

    swept = sorted(file.stem for file in SCENARIOS.glob("*.txt") if "not swept" not in file.read_text())
    client = Client(arguments.command)
    swept.sort(key=lambda scenario: scenario != "picture")  # first, because it lets go of all that it makes
    plays = {scenario: survey(client, scenario) for scenario in swept}
    code = client.end()
    complaints = [f"without a fault, the process ends with {code}"] if code else []
    found = {}
    for scenario, steps in plays.items():
        for which, operation, site in sites(scenario, steps):
            found.setdefault((which, operation if arguments.all else ""), site)
    trials = collections.defaultdict(list)
    for ((function, _), _), (scenario, nth) in found.items():
        trials[function] += [(scenario, nth, "once"), (scenario, nth, "forGood")]

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        done = pool.map(lambda function: trials_of(function, trials[function], plays, arguments.command), trials)
        complaints += [complaint for some in done for complaint in some]
    for complaint in complaints:
        print("faults:", complaint)
    print(f"faults: {len(trials)} functions, {sum(map(len, trials.values()))} trials, {len(complaints)} failures")
    sys.exit(bool(complaints) or len(trials) < 40)


if __name__ == "__main__":
    main()
