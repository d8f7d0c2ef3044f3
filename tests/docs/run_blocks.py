#!/usr/bin/env python3
"""Runs the ```sh blocks of a document as printed, in a fresh copy of the tree, with the built program on the path.

A ```text block that follows a ```sh block is what the commands print on standard output. Commands that .ci/run runs
itself (building and testing the whole tree) are not run again; what SCENARIOMATCH_DEMO_OUTPUT holds, the output of
./scripts/demo, must contain the lines printed for it. A block after a line "<!-- needs SCENARIOMATCH_DATA -->"
runs where that folder is named. Exit status 77 (skipped) when a document has no block to run.
"""
import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

FENCE = re.compile(r"^```(\w*)\s*$")
RUN_BY_CI = ("./scripts/test", "./scripts/demo", "./scripts/package")
NEEDS_DATA = "<!-- needs SCENARIOMATCH_DATA -->"


def blocks(text):
    """Yields (language, first line number, body, needs_data, directly_after_previous)."""
    language, start, body, needs_data, gap = None, 0, [], False, True
    for number, line in enumerate(text.splitlines(), 1):
        match = FENCE.match(line)
        if language is None and match:
            language, start, body = match.group(1), number, []
        elif language is not None and line.startswith("```"):
            yield language, start, "\n".join(body) + "\n", needs_data, gap
            language, needs_data, gap = None, False, False
        elif language is not None:
            body.append(line)
        elif line.strip() == NEEDS_DATA:
            needs_data = True
        elif line.strip():
            gap = True


def tree_copy(source, target):
    for name in ("examples", "docs", "scripts", "tests/data", "README.md"):
        if (source / name).is_dir():
            shutil.copytree(source / name, target / name)
        elif (source / name).exists():
            shutil.copy(source / name, target / name)


def lines_of_demo(name):
    return set(pathlib.Path(name).read_text(encoding="utf-8").splitlines())


def run_document(document, source, program_folder):
    found, failed, output = 0, 0, None
    environment = dict(os.environ, PATH=f"{program_folder}:{os.environ['PATH']}", COLUMNS="100", LC_ALL="C.UTF-8")
    with tempfile.TemporaryDirectory() as folder:
        tree_copy(source, pathlib.Path(folder))
        for language, line, body, needs_data, gap in blocks(document.read_text(encoding="utf-8")):
            place = f"{document.relative_to(source)}:{line}"
            if language == "text" and output is not None and not gap:
                if body != output if isinstance(output, str) else not set(body.splitlines()) <= output:
                    failed += 1
                    print(f"{place}: printed differently:\n{output}\n--- expected:\n{body}")
                output = None
                continue
            output = None
            if language == "sh" and body.startswith("./scripts/demo") and "SCENARIOMATCH_DEMO_OUTPUT" in environment:
                output = lines_of_demo(environment["SCENARIOMATCH_DEMO_OUTPUT"])
            if language != "sh" or body.lstrip().startswith(RUN_BY_CI):
                continue
            if needs_data and "SCENARIOMATCH_DATA" not in environment:
                continue
            found += 1
            result = subprocess.run(
                ["bash", "-euo", "pipefail", "-c", body], cwd=folder, env=environment, text=True,
                capture_output=True, timeout=100, stdin=subprocess.DEVNULL)
            if result.returncode != 0:
                failed += 1
                print(f"{place}: exit status {result.returncode}\n{result.stdout}{result.stderr}")
            output = result.stdout
    return found, failed


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--program-folder", type=pathlib.Path, required=True)
    parser.add_argument("document", type=pathlib.Path)
    arguments = parser.parse_args()
    found, failed = run_document(arguments.document.resolve(), arguments.source.resolve(),
                                 arguments.program_folder.resolve())
    print(f"{found} blocks run, {failed} wrong")
    if failed:
        return 1
    return 0 if found else 77


if __name__ == "__main__":
    sys.exit(main())
