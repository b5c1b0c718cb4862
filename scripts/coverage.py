"""Puts together what the test programs counted: coverage.py BUILD [FOLDER/...] writes counts.json and missing.txt to BUILD.

Inline functions and templates stand in many objects, and most of them run in some only. gcovr adds up the branches of a
line by their position, and cannot tell which of them are for exceptions where a copy never ran. Here each function is
added up over its copies first, then its branches without those for exceptions are added to those of the other functions
on the line, as with templates. The result is a trace file, from which gcovr makes its report.
"""

import json
import pathlib
import subprocess
import sys


class File:
    """One file of the sources: its lines by number, and its functions by name, each with its line and how often it ran."""

    def __init__(self):
        self.lines = {}
        self.functions = {}

    def add(self, told):
        for counted in told["lines"]:
            self.lines.setdefault(counted["line_number"], Line()).add(counted)
        for counted in told["functions"]:
            function = self.functions.setdefault(counted["name"], [counted["start_line"], 0])
            function[1] += counted["execution_count"]


class Line:
    """One line of the sources: how often it ran, and the branches of each function that has code there."""

    def __init__(self):
        self.count = 0
        self.functions = {}

    def add(self, counted):
        self.count += counted["count"]
        taken = [branch["count"] for branch in counted["branches"] if not branch["throw"]]
        before = self.functions.setdefault(counted.get("function_name", ""), [])
        before.extend([0] * (len(taken) - len(before)))
        for position, count in enumerate(taken):
            before[position] += count

    def branches(self):
        longest = max((len(taken) for taken in self.functions.values()), default=0)
        return [sum(taken[i] for taken in self.functions.values() if i < len(taken)) for i in range(longest)]


def reports(build):
    """What gcov says of each object, also of those that no program ran."""
    for note in sorted(build.rglob("*.gcno")):
        gcov = subprocess.run(["gcov", "--json-format", "--stdout", "--branch-probabilities", str(note)],
                              check=False, capture_output=True, text=True)
        if gcov.returncode == 0:
            yield json.loads(gcov.stdout)
        elif "no functions found" not in gcov.stderr:
            sys.exit(f"gcov {note}: {gcov.stderr}")


def collect(build, folders):
    """{name: File} for the files in the folders."""
    root = pathlib.Path.cwd()
    files = {}
    for report in reports(build):
        for told in report["files"]:
            path = root / told["file"]
            name = str(path.relative_to(root)) if path.is_relative_to(root) else ""
            if name.startswith(folders) and path.exists():  # objects may be left of files that are gone
                files.setdefault(name, File()).add(told)
    return files


def has_code(text):
    """Whether what runs there is the author's: on a brace alone it is destructors."""
    return text.split("//")[0].strip() not in ("", "{", "}", "};", "{}")


def trace(files, sources):
    """In the form of gcovr's trace files."""
    def told(name, number, line):
        branches = line.branches() if has_code(sources[name][number - 1]) else []
        return {"line_number": number, "count": line.count, "gcovr/noncode": False, "gcovr/excluded": False,
                "branches": [{"count": count, "fallthrough": False, "throw": False} for count in branches]}

    return {"gcovr/format_version": "0.3", "files": [
        {"file": name,
         "functions": [{"name": function, "lineno": number, "execution_count": count}
                       for function, (number, count) in sorted(file.functions.items())],
         "lines": [told(name, number, line) for number, line in sorted(file.lines.items())
                   if line.count != 0 or has_code(sources[name][number - 1])]}
        for name, file in sorted(files.items())]}


def missing(counts, sources):
    """A row for each line that did not run, or not all of whose branches were taken."""
    for file in counts["files"]:
        for line in file["lines"]:
            taken = [branch["count"] for branch in line["branches"]]
            what = "line" if line["count"] == 0 else f"{taken.count(0)} of {len(taken)} branches" if 0 in taken else ""
            if what:
                text = sources[file["file"]][line["line_number"] - 1].strip()
                yield f'{file["file"]}:{line["line_number"]}: {what}: {text}\n'


def main():
    build = pathlib.Path(sys.argv[1])
    files = collect(build, tuple(sys.argv[2:]))
    sources = {name: pathlib.Path(name).read_text(encoding="utf-8").splitlines() for name in files}
    counts = trace(files, sources)
    (build / "counts.json").write_text(json.dumps(counts), encoding="utf-8")
    (build / "missing.txt").write_text("".join(missing(counts, sources)), encoding="utf-8")


if __name__ == "__main__":
    main()
