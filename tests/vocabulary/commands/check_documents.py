#!/usr/bin/env python3
"""Runs the console blocks of a document: check_documents.py QVPRES DOCUMENT

The first block of JSON is the file chart.json. In a console block, lines that start with "$ " are commands, and what
follows is what they print, on both streams; "..." as the last line stands for more. Exit codes are not looked at.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile


def blocks(document, language):
    return re.findall(rf"^```{language}\n(.*?)^```$", document, re.MULTILINE | re.DOTALL)


def main(program, document_path):
    document = pathlib.Path(document_path).read_text(encoding="utf-8")
    environment = dict(os.environ, PATH=f"{pathlib.Path(program).parent}:{os.environ['PATH']}")
    count = 0
    failed = False
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "chart.json").write_text(blocks(document, "json")[0], encoding="utf-8")
        for block in blocks(document, "console"):
            for command, expected in re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", block, re.MULTILINE):
                run = subprocess.run(
                    ["sh", "-c", command], cwd=folder, env=environment, stdout=subprocess.PIPE,
                    stderr=subprocess.STDOUT, encoding="utf-8", check=False)
                actual = run.stdout
                if expected.endswith("...\n"):
                    expected = expected[: -len("...\n")]
                    actual = actual[: len(expected)]
                count += 1
                if actual != expected:
                    failed = True
                    print(f"$ {command}\n--- expected\n{expected}--- actual\n{actual}")
    print(f"{count} commands")
    return 1 if failed or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
