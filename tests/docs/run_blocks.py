#!/usr/bin/env python3
"""Runs the ```sh blocks of a document as printed, in a fresh copy of the tree, with the built program on the path.

A ```text block that follows a ```sh block is what the commands print on standard output. Commands that .ci/run runs
itself (building and testing the whole tree) are not run again; what SCENARIOMATCH_DEMO_OUTPUT holds, the output of
./scripts/demo, must contain the lines printed for it. A block after a line "<!-- needs SCENARIOMATCH_DATA -->"
runs where that folder is named. A block after a line "<!-- file: NAME -->" is that file: it is written for the blocks that
follow; where they have made one of this name, or --same-as has one, it must be the same. With --prefix the installation there
is that of the folder scenariomatch in the home folder, and what finds it is what the document exports, or another that
--exports names: a block of nothing but exports counts for all that follow. With --root the packages lie below another root,
and such blocks are passed over.
In both cases a block of sources must be a file. Exit status 77 (skipped) when a document has no block to run.
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
SOURCES = ("cmake", "cpp", "json")
# Of what one block prints; more is a fault.
MOST_OUTPUT = 1_000_000


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


def environment_for(program_folder, root):
    """What finds a program that is built, or packages that are installed below another root."""
    environment = dict(os.environ, COLUMNS="100", LC_ALL="C.UTF-8")
    if program_folder:
        environment["PATH"] = f"{program_folder}:{environment['PATH']}"
    if root:
        environment["PATH"] = f"{root}/usr/bin:{environment['PATH']}"
        environment["CMAKE_PREFIX_PATH"] = str(root / "usr")
        environment["PKG_CONFIG_PATH"] = ":".join(map(str, root.glob("usr/lib/**/pkgconfig")))
    return environment


def home_environment(environment, home, prefix):
    """That of somebody who has the installation in the home folder, and has told no program of it."""
    (home / "scenariomatch").symlink_to(prefix)
    hidden = ("CMAKE_PREFIX_PATH", "PKG_CONFIG_PATH")
    return {name: value for name, value in environment.items() if name not in hidden} | {"HOME": str(home)}


def is_exports(language, body):
    return language == "sh" and all(line.startswith("export ") for line in body.splitlines())


def exported(body, environment):
    """The environment after a block of exports."""
    listed = subprocess.run(["bash", "-euc", body + "env -0"], env=environment, stdout=subprocess.PIPE, check=True).stdout
    return dict(entry.split("=", 1) for entry in listed.decode().split("\0") if entry)


def run_block(body, folder, environment):
    """Exit status, and what was printed on standard output and standard error."""
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as talk:
        status = subprocess.run(["bash", "-euo", "pipefail", "-c", body], cwd=folder, env=environment, stdout=out,
                                stderr=talk, timeout=100, stdin=subprocess.DEVNULL).returncode
        texts = []
        for file in (out, talk):
            if file.seek(0, os.SEEK_END) > MOST_OUTPUT:
                return 1, "", f"it prints more than {MOST_OUTPUT} bytes\n"
            file.seek(0)
            texts.append(file.read().decode(errors="replace").replace("\r\n", "\n"))
    return status, *texts


def run_document(document, source, environment, same_as, place_of_program):
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
            if place_of_program != "tree" and language in SOURCES:
                failed += 1
                print(f"{place}: this block is no file: a line such as <!-- file: host/main.cpp --> goes before it")
            if is_exports(language, body):
                # They find an installation in the home folder; packages need none.
                environment = environment if place_of_program == "packages" else exported(body, environment)
                continue
            if language == "sh" and body.startswith("./scripts/demo") and "SCENARIOMATCH_DEMO_OUTPUT" in environment:
                output = lines_of_demo(environment["SCENARIOMATCH_DEMO_OUTPUT"])
            if language != "sh" or body.lstrip().startswith(RUN_BY_CI):
                continue
            if needs_data and "SCENARIOMATCH_DATA" not in environment:
                continue
            found += 1
            status, output, talk = run_block(body, folder, environment)
            if status != 0:
                failed += 1
                print(f"{place}: exit status {status}\n{output}{talk}")
    return found, failed


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    where = parser.add_mutually_exclusive_group(required=True)
    where.add_argument("--program-folder", type=pathlib.Path)
    where.add_argument("--prefix", type=pathlib.Path)
    where.add_argument("--root", type=pathlib.Path)
    parser.add_argument("--exports", type=pathlib.Path, metavar="DOCUMENT")
    parser.add_argument("--same-as", type=pathlib.Path, metavar="FOLDER")
    parser.add_argument("document", type=pathlib.Path)
    arguments = parser.parse_args()
    environment = environment_for(arguments.program_folder and arguments.program_folder.resolve(),
                                  arguments.root and arguments.root.resolve())
    with tempfile.TemporaryDirectory() as home:
        if arguments.prefix:
            environment = home_environment(environment, pathlib.Path(home), arguments.prefix.resolve())
        if arguments.exports:
            for language, _, body, *_ in blocks(arguments.exports.read_text(encoding="utf-8")):
                environment = exported(body, environment) if is_exports(language, body) else environment
        place = "packages" if arguments.root else "home" if arguments.prefix else "tree"
        found, failed = run_document(arguments.document.resolve(), arguments.source.resolve(), environment,
                                     arguments.same_as, place)
    print(f"{found} blocks run, {failed} wrong")
    if failed:
        return 1
    return 0 if found else 77


if __name__ == "__main__":
    sys.exit(main())
