#!/usr/bin/env python3
"""Runs the commands on vocabularies: check_commands.py QVPRES DATA MODULE HEADER

DATA holds every-type.json, MODULE registers what it declares, HEADER was generated from it. Each case tells the
arguments, the exit code, and what the streams hold.
"""

import json
import pathlib
import subprocess
import sys
import tempfile

SMALL = """{"namespaces": [{"name": "view", "firstId": 1, "lastId": 9, "fallback": "qvcore", "parameters": [
  {"id": 1, "name": "font-size", "short": "fs", "type": "int", "description": "in points"},
  {"id": 2, "name": "rows", "kind": "structure-list", "form": "list", "unserializable": true}]}], "unserializable": [77]}
"""
SMALL_LISTED = {
    "namespaces": [
        {
            "name": "view", "firstId": 1, "lastId": 9, "fallback": "qvcore", "description": "",
            "parameters": [
                {"id": 1, "name": "font-size", "jsonName": "fontSize", "short": "fs", "kind": "value", "type": "int",
                 "unserializable": False, "approximate": False, "description": "in points"},
                {"id": 2, "name": "rows", "jsonName": "rows", "short": None, "kind": "structure-list", "type": None,
                 "form": "list", "unserializable": True, "approximate": False, "description": ""},
            ],
        }
    ],
    "unserializable": [77],
}
SMALL_TABLE = """view  1 to 9, 2 parameters, falls back to qvcore
  id  name       short  type            remarks
   1  font-size  fs     int             in points
   2  rows              structure list  as lists of texts; never written

never written, and in no namespace: 77
"""
CAPITAL = SMALL.replace("font-size", "fontSize")
CAPITAL_FINDING = {
    "severity": "error", "rule": "name-conversion", "namespace": "view", "id": 1, "name": "fontSize",
    "message": 'JSON spells the name as "fontSize", which is read as "font-size"',
    "line": 2, "column": 3, "path": "/namespaces/0/parameters/0",
}
WIDER = SMALL.replace('"int"', '"double"')
RENAMED_CHANGE = {
    "verboseTexts": "fail", "shortTexts": "read",
    "changes": [{"namespace": "view", "id": 1, "name": "font-size", "part": "verbose name", "older": "font-size",
                 "newer": "fontSize", "verboseTexts": "fail", "shortTexts": "read"}],
}
GUESSED = """qvpres: every-type/season has a type of the host's own and is exported as text
qvpres: every-type/counted has a type of the host's own and is exported as structure
"""


class Checks:
    def __init__(self, program):
        self.program = program
        self.failures = 0
        self.count = 0

    def run(self, arguments, code, out=None, err=None, stdin=None):
        """out: the text, or what its JSON says; err: a part of the text, empty for none. None is not looked at."""
        self.count += 1
        run = subprocess.run([self.program, *map(str, arguments)], input=stdin, capture_output=True, encoding="utf-8",
                             check=False)
        actual = run.stdout if isinstance(out, str) or run.stdout == "" else None
        if out is not None and actual is None:
            actual = json.loads(run.stdout)
        self.expect(run.returncode == code, arguments, f"exit code {run.returncode} instead of {code}: {run.stderr}")
        self.expect(out is None or actual == out, arguments, f"printed\n{run.stdout}instead of\n{out}")
        if err is not None:
            wrong = run.stderr != "" if err == "" else err not in run.stderr
            self.expect(not wrong, arguments, f"complained\n{run.stderr}instead of\n{err}")
        return run.stdout

    def expect(self, condition, arguments, problem):
        if not condition:
            self.failures += 1
            print("qvpres", *arguments, "\n   ", problem)


def main(program, data, module, header):
    checks = Checks(program)
    every_type = f"{data}/every-type.json"
    with tempfile.TemporaryDirectory() as folder:
        def file(name, text):
            path = pathlib.Path(folder, name)
            path.write_text(text, encoding="utf-8")
            return path

        small, capital, wider = file("small.json", SMALL), file("capital.json", CAPITAL), file("wider.json", WIDER)
        broken = file("broken.json", SMALL.replace('"int"', '"integer"'))
        missing = pathlib.Path(folder, "missing.json")

        checks.run(["vocabulary", "list", small], 0, SMALL_TABLE, "")
        checks.run(["vocabulary", "list", "--vocabulary", small], 0, SMALL_TABLE, "")
        checks.run(["vocabulary", "list", "-"], 0, SMALL_TABLE, "", stdin=SMALL)
        checks.run(["vocabulary", "list", small, "--json"], 0, SMALL_LISTED, "")
        checks.run(["vocabulary", "list", small, "--namespace", "other"], 2, "", "has no namespace other")
        checks.run(["vocabulary", "list", small, "--vocabulary", small], 2, "", "named twice")
        checks.run(["vocabulary", "list"], 2, "", "no vocabulary")
        checks.run(["vocabulary", "list", missing], 2, "", "missing.json")
        checks.run(["vocabulary", "list", broken], 2, "",
                   'broken.json:2:57: /namespaces/0/parameters/0/type: unknown type "integer"')
        checks.run(["vocabulary"], 2, "")

        exported = checks.run(["vocabulary", "export", small], 0, None, "")
        checks.run(["vocabulary", "list", "-"], 0, SMALL_TABLE, "", stdin=exported)
        copy = pathlib.Path(folder, "copy.json")
        checks.run(["vocabulary", "export", "--module", module, "-o", copy], 1, "", GUESSED)
        # What a registry does not hold: members and descriptions.
        changes = json.loads(checks.run(["vocabulary", "diff", every_type, copy, "--json"], 1))["changes"]
        checks.expect({change["part"] for change in changes} == {"members"}, ["diff"], f"changes: {changes}")
        checks.expect(len(changes) == 2, ["diff"], f"changes: {changes}")
        checks.run(["vocabulary", "diff", copy, module], 0)

        checks.run(["vocabulary", "lint", small], 0, "no findings\n", "")
        checks.run(["vocabulary", "lint", small, "--json"], 0, [], "")
        checks.run(["vocabulary", "lint", capital, "--json"], 1, [CAPITAL_FINDING], "")
        checks.run(["vocabulary", "lint", file("note.json", SMALL.replace('"int"', '"int64"'))], 0, None, "")

        checks.run(["vocabulary", "diff", small, small], 0, None, "")
        checks.run(["vocabulary", "diff", small, capital, "--json"], 1, RENAMED_CHANGE, "")
        checks.run(["vocabulary", "diff", small, capital, "--breaking"], 1, None, "")
        checks.run(["vocabulary", "diff", small, wider], 1, None, "")
        checks.run(["vocabulary", "diff", small, wider, "--breaking"], 0, None, "")
        checks.run(["vocabulary", "diff", "-", wider, "--breaking"], 0, None, "", stdin=SMALL)
        checks.run(["vocabulary", "diff", "-", "-"], 2, "", "only one", stdin=SMALL)
        checks.run(["vocabulary", "diff", small], 2, "")

        schema = json.loads(checks.run(["vocabulary", "schema", small], 0, None, ""))
        checks.expect("fontSize" in schema["$defs"]["bag"]["properties"], ["schema"], "no fontSize")
        short = json.loads(checks.run(["vocabulary", "schema", small, "--short"], 0, None, ""))
        checks.expect("fs" in short["$defs"]["bag"]["properties"], ["schema"], "no fs")
        checks.run(["vocabulary", "schema", small, "--namespace", "qvcore"], 0)
        checks.run(["vocabulary", "schema", small, "--namespace", "other"], 2, "", "has no namespace other")
        checks.run(["vocabulary", "schema", every_type], 2, "", "several namespaces")

        generated = pathlib.Path(header).read_text(encoding="utf-8")
        checks.run(["generate", "--cpp", every_type], 0, generated, "")
        checks.run(["generate", "--cpp", every_type, "--check", header], 0, "", "")
        checks.run(["generate", "--cpp", small, "--check", header], 1, "", "is not what small.json generates")
        checks.run(["generate", "--cpp", small, "--check", missing], 2, "", "missing.json")
        checks.run(["generate", small], 2, "", "--cpp")
    print(f"{checks.count} commands")
    return 1 if checks.failures else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
