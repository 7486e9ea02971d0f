#!/usr/bin/env python3
"""Prints the names and the last lines of output of the tests that failed in
the latest ctest run of a build folder, so that a long run's failures can be
read at the end of its log instead of somewhere in the middle of it."""

import pathlib
import re
import sys

TAIL_LINES = 120


def failed_names(temporary: pathlib.Path) -> list[str]:
    listing = temporary / "LastTestsFailed.log"
    if not listing.is_file():
        return []
    names = []
    for line in listing.read_text(errors="replace").splitlines():
        number, _, name = line.partition(":")
        if number.strip().isdigit() and name:
            names.append(name)
    return names


def outputs(log: str) -> dict[str, str]:
    """Each test's output in LastTest.log, by name."""
    found = {}
    pattern = re.compile(r'^"(?P<name>[^"]+)" start time:.*?\nOutput:\n-+\n(?P<out>.*?)<end of output>',
                         re.S | re.M)
    for match in pattern.finditer(log):
        found[match["name"]] = match["out"]
    return found


def main() -> int:
    if len(sys.argv) != 2:
        print("usage: failed-tests.py BUILD_FOLDER", file=sys.stderr)
        return 2
    temporary = pathlib.Path(sys.argv[1]) / "Testing" / "Temporary"
    names = failed_names(temporary)
    if not names:
        print(f"no failed tests recorded in {sys.argv[1]}")
        return 0
    log_file = temporary / "LastTest.log"
    texts = outputs(log_file.read_text(errors="replace")) if log_file.is_file() else {}
    print(f"{len(names)} failed in {sys.argv[1]}: {' '.join(names)}")
    for name in names:
        lines = texts.get(name, "(no output recorded)\n").splitlines()
        print(f"--- {name}: last {min(len(lines), TAIL_LINES)} of {len(lines)} lines")
        print("\n".join(lines[-TAIL_LINES:]))
    return 0


if __name__ == "__main__":
    sys.exit(main())
