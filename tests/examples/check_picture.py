#!/usr/bin/python3
"""Runs an example and compares what it shows with a kept picture.

The example either leaves its picture in a file (--file) or shows it in the top-left corner of the screen until
its standard input ends; there it is looked at until it is the kept one. Wants an X server of its own.

A picture that differs is written, with an image of the difference, to files whose names begin with --results.
"""

import argparse
import pathlib
import subprocess
import sys
import tempfile
import time

from PIL import Image, ImageChops, ImageGrab

EXACT_GL = "Mesa 22.3.6"  # where the kept pictures come from: there every pixel must be equal
TOLERANCE = 2  # of 255, on another GL
PATIENCE = 20  # seconds until the kept picture must be on the screen


def read_arguments():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--kept", type=pathlib.Path, required=True)
    parser.add_argument("--results", type=pathlib.Path, required=True)
    parser.add_argument("--file", type=pathlib.Path, help="written by the example")
    parser.add_argument("command", nargs="+")
    return parser.parse_args()


def difference(kept, actual):
    """The greatest of a colour, of 255; of pictures of two sizes, more than any."""
    if kept.size != actual.size:
        return 256
    return max(high for _, high in ImageChops.difference(kept, actual).getextrema())


def allowed(log):
    """The difference that the GL in use, which the library logs, may have."""
    text = pathlib.Path(log.name).read_text(encoding="utf-8", errors="replace")
    versions = [line for line in text.splitlines() if "GL Version = " in line]
    return 0 if not versions or any(line.endswith(EXACT_GL) for line in versions) else TOLERANCE


def picture_of_file(arguments, log):
    arguments.file.unlink(missing_ok=True)
    exit_code = subprocess.run(arguments.command, stderr=log, check=False).returncode
    picture = Image.open(arguments.file) if arguments.file.exists() else Image.new("RGB", (1, 1))
    return exit_code, picture.convert("RGB")


def picture_of_screen(arguments, kept, log):
    """Looks until the example shows the kept picture, or nearly, or patience is over."""
    deadline = time.monotonic() + PATIENCE
    with subprocess.Popen(arguments.command, stdin=subprocess.PIPE, stderr=log) as example:
        while True:
            picture = ImageGrab.grab(xdisplay="").convert("RGB").crop((0, 0, *kept.size))
            over = example.poll() is not None or time.monotonic() > deadline
            if over or difference(kept, picture) <= allowed(log):
                break
            time.sleep(0.05)
        example.stdin.close()
        return example.wait(), picture


def main():
    arguments = read_arguments()
    name = arguments.results.name
    kept = Image.open(arguments.kept).convert("RGB")
    with tempfile.NamedTemporaryFile() as log:
        exit_code, picture = (picture_of_file(arguments, log) if arguments.file
                              else picture_of_screen(arguments, kept, log))
        greatest, limit = difference(kept, picture), allowed(log)
        result = f"the exit code is {exit_code}, the greatest difference {greatest} of 255 ({limit} allowed)"
        if exit_code == 0 and greatest <= limit:
            print(f"{name}: as kept; {result}")
            return
        sys.stderr.buffer.write(pathlib.Path(log.name).read_bytes())

    actual = arguments.results.with_name(name + "-actual.png")
    picture.save(actual)
    ImageChops.difference(kept, picture).point(lambda value: min(255, 32 * value)).save(
        arguments.results.with_name(name + "-difference.png"))
    sys.exit(f"{name}: {result}; look at {actual} and the difference beside it. If the picture is as it should "
             f"be, accept it: cp {actual} {arguments.kept}")


if __name__ == "__main__":
    main()
