#!/usr/bin/env python3
"""Runs the ```sh blocks of a document as printed, in a fresh copy of the tree, with the built program on the path.

A ```text block that follows a ```sh block is what the commands print on standard output. Commands that .ci/run runs
itself (building and testing the whole tree) are not run again; what SCENARIOMATCH_DEMO_OUTPUT holds, the output of
./scripts/demo, must contain the lines printed for it. A block after a line "<!-- needs SCENARIOMATCH_DATA -->"
runs where that folder is named. A block after a line "<!-- file: NAME -->" is that file: it is written for the blocks that
follow; where they have made one of this name, or --same-as has one, it must be the same. With --prefix the program and the
package that projects find are those installed there. Exit status 77 (skipped) when a document has no block to run.
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
FILE = re.compile(r"^<!-- file: (\S+) -->$")


def blocks(text):
    """Yields (language, first line number, body, needs_data, name of the file, gap to the block before)."""
    language, start, body, needs_data, name, gap = None, 0, [], False, None, True
    for number, line in enumerate(text.splitlines(), 1):
        match = FENCE.match(line)
        if language is None and match:
            language, start, body = match.group(1), number, []
        elif language is not None and line.startswith("```"):
            yield language, start, "\n".join(body) + "\n", needs_data, name, gap
            language, needs_data, name, gap = None, False, None, False
        elif language is not None:
            body.append(line)
        elif line.strip() == NEEDS_DATA:
            needs_data = True
        elif FILE.match(line):
            name = FILE.match(line).group(1)
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


def fault_of_file(path, body, same_as):
    """Writes a printed file; says where another one differs from it."""
    for other in (path, same_as):
        if other is not None and other.exists() and other.read_text(encoding="utf-8") != body:
            return f"printed differently than in {other}"
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(body, encoding="utf-8")
    return None


def environment_for(program_folder, prefix):
    environment = dict(os.environ, PATH=f"{program_folder}:{os.environ['PATH']}", COLUMNS="100", LC_ALL="C.UTF-8")
    if prefix:
        environment["CMAKE_PREFIX_PATH"] = str(prefix)
        environment["PKG_CONFIG_PATH"] = ":".join(map(str, prefix.glob("lib/**/pkgconfig")))
    return environment


def run_document(document, source, environment, same_as):
    found, failed, output = 0, 0, None
    with tempfile.TemporaryDirectory() as folder:
        tree_copy(source, pathlib.Path(folder))
        for language, line, body, needs_data, name, gap in blocks(document.read_text(encoding="utf-8")):
            place = f"{document.relative_to(source)}:{line}"
            if language == "text" and output is not None and not gap:
                if body != output if isinstance(output, str) else not set(body.splitlines()) <= output:
                    failed += 1
                    print(f"{place}: printed differently:\n{output}\n--- expected:\n{body}")
                output = None
                continue
            output = None
            if name:
                fault = fault_of_file(pathlib.Path(folder, name), body, same_as and same_as / name)
                failed += bool(fault)
                print(f"{place}: {fault}" if fault else f"{place}: {name}")
                continue
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
    where = parser.add_mutually_exclusive_group(required=True)
    where.add_argument("--program-folder", type=pathlib.Path)
    where.add_argument("--prefix", type=pathlib.Path)
    parser.add_argument("--same-as", type=pathlib.Path, metavar="FOLDER")
    parser.add_argument("document", type=pathlib.Path)
    arguments = parser.parse_args()
    prefix = arguments.prefix and arguments.prefix.resolve()
    environment = environment_for(prefix / "bin" if prefix else arguments.program_folder.resolve(), prefix)
    found, failed = run_document(arguments.document.resolve(), arguments.source.resolve(), environment,
                                 arguments.same_as)
    print(f"{found} blocks run, {failed} wrong")
    if failed:
        return 1
    return 0 if found else 77


if __name__ == "__main__":
    sys.exit(main())
