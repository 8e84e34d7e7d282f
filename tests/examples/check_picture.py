#!/usr/bin/env python3
"""Runs an example and compares what it shows with a kept picture.

The example either leaves its picture in a file (--file) or shows it in the top-left corner of the screen until
its standard input ends; there it is looked at until it is the kept one. Wants an X server of its own.

On the GL that the kept pictures come from (--exact-on, found in the library's log) every pixel must be equal;
elsewhere colours may differ by 2 of 255. A picture that differs is written, with an image of the difference, to
files whose names begin with --results.
"""

import argparse
import pathlib
import subprocess
import sys
import tempfile
import time

from PIL import Image, ImageChops, ImageGrab

TOLERANCE = 2  # of 255, on another GL
PATIENCE = 20  # seconds until the kept picture must be on the screen


def read_arguments():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--kept", type=pathlib.Path, required=True)
    parser.add_argument("--results", type=pathlib.Path, required=True)
    parser.add_argument("--file", type=pathlib.Path, help="written by the example")
    parser.add_argument("--exact-on", required=True, help='for example "Mesa 22.3.6"')
    parser.add_argument("command", nargs="+")
    return parser.parse_args()


class Comparison:
    """A picture beside the kept one."""

    def __init__(self, kept, actual):
        self.actual = actual
        self.same_size = kept.size == actual.size
        self.image = ImageChops.difference(kept, actual) if self.same_size else None

    def greatest(self):
        """The greatest difference of a colour; of pictures of two sizes, more than any."""
        return max(high for _, high in self.image.getextrema()) if self.same_size else 256

    def write(self, stem):
        """Writes the picture and, made visible, the difference. Returns the files."""
        files = [stem.with_name(stem.name + "-actual.png")]
        self.actual.save(files[0])
        if self.same_size:
            files.append(stem.with_name(stem.name + "-difference.png"))
            self.image.point(lambda value: min(255, 32 * value)).save(files[1])
        return files


def compare_file(arguments, kept, log):
    """Runs the example to its end and compares the file that it wrote."""
    arguments.file.unlink(missing_ok=True)
    exit_code = subprocess.run(arguments.command, stderr=log, check=False).returncode
    if not arguments.file.exists():
        sys.stderr.buffer.write(pathlib.Path(log.name).read_bytes())
        sys.exit(f"{arguments.results.name}: no picture was written, the exit code is {exit_code}")
    return exit_code, Comparison(kept, Image.open(arguments.file).convert("RGB"))


def compare_screen(arguments, kept, log):
    """Looks at the screen until the example shows the kept picture, or nearly, or patience is over."""
    deadline = time.monotonic() + PATIENCE
    with subprocess.Popen(arguments.command, stdin=subprocess.PIPE, stderr=log) as example:
        while True:
            screen = ImageGrab.grab(xdisplay="").convert("RGB")
            comparison = Comparison(kept, screen.crop((0, 0, *kept.size)))
            if comparison.greatest() <= allowed(arguments, log):
                break
            if example.poll() is not None or time.monotonic() > deadline:
                break
            time.sleep(0.05)
        example.stdin.close()
        return example.wait(), comparison


def allowed(arguments, log):
    """The difference that the GL in use may have."""
    text = pathlib.Path(log.name).read_text(encoding="utf-8", errors="replace")
    versions = [line for line in text.splitlines() if "GL Version = " in line]
    exact = any(line.endswith(arguments.exact_on) for line in versions)
    return 0 if exact or not versions else TOLERANCE


def main():
    arguments = read_arguments()
    name = arguments.results.name
    kept = Image.open(arguments.kept).convert("RGB")
    with tempfile.NamedTemporaryFile() as log:
        compare = compare_file if arguments.file else compare_screen
        exit_code, comparison = compare(arguments, kept, log)
        greatest, limit = comparison.greatest(), allowed(arguments, log)
        if exit_code == 0 and greatest <= limit:
            print(f"{name}: as kept, the greatest difference is {greatest} of 255 ({limit} allowed)")
            return 0
        sys.stderr.buffer.write(pathlib.Path(log.name).read_bytes())

    if exit_code != 0:
        print(f"{name}: the example ended with exit code {exit_code}")
    if greatest > limit:
        files = comparison.write(arguments.results)
        what = f"differs by up to {greatest} of 255" if comparison.same_size else "has another size"
        print(f"{name}: the picture {what} ({limit} allowed); look at {' and '.join(map(str, files))}")
        print(f"{name}: if it is as it should be, accept it: cp {files[0]} {arguments.kept}")
    return 1


if __name__ == "__main__":
    sys.exit(main())
