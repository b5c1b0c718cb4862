#!/usr/bin/env python3
"""Does what a document tells its reader to do: files.py DOCUMENT FOLDER

Blocks below <!-- file: NAME --> become files of that name in FOLDER, those of one name one behind the other; blocks below
<!-- sh: run --> the script FOLDER/run.sh, and the block of output behind them FOLDER/expected.txt.
"""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
from blocks import output_block, read_blocks


def main():
    document, folder = sys.argv[1], Path(sys.argv[2])
    files = {}
    blocks = read_blocks(document, Path(document).read_text())
    for position, block in enumerate(blocks):
        for body, _ in block.directives:
            if body.startswith("file: "):
                name = body[len("file: ") :]
                files[name] = files.get(name, "") + ("\n" if name in files else "") + block.text
            elif body == "sh: run":
                files["run.sh"] = files.get("run.sh", "set -euo pipefail\n") + block.text
                files["expected.txt"] = output_block(blocks[position + 1 :]) or ""
    if not files:
        sys.exit("%s tells of no files" % document)
    folder.mkdir(parents=True, exist_ok=True)
    for name, text in files.items():
        (folder / name).write_text(text)


main()
