#!/usr/bin/env python3
"""Turns the C++ blocks of a document into a test: extract.py DOCUMENT OUTPUT.cpp SOURCE_FOLDER

A block is tested as what it is; what cannot be seen from it is told by a comment before it, which readers do not see:

    int main in it                      a program of its own
    <!-- cpp: part of FILE -->          lines of a file of the project, word for word, which other tests run
    <!-- cpp: declarations -->          classes and functions; later blocks of the document see them
    <!-- cpp: global declarations -->   the same outside of every namespace, as specialisations must stand
    <!-- cpp: continued -->             statements that go on where the block before them ended
    none of these                       statements, run as a member function of the document's host (DocHost)

    <!-- cpp: given ... -->             declarations that readers need not see
    <!-- cpp: before ... -->            statements that readers need not see, run before the next block
    <!-- cpp: prints ... -->            statements that print exactly the next block, whatever its language

What a block prints is told by a comment behind each line with std::cout, or by a block of output:

    std::cout << 1 + 1 << "\\n";  // 2
    <!-- output -->

A statement in one line behind which "// throws TYPE" stands must throw that type.

Blocks of JSON must be JSON. Blocks of shell commands must be valid, and the scripts that they name must exist.
"""
import json
import re
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
from blocks import fail, output_block, read_blocks


def literal(text):
    """A text as a C++ literal, in pieces that every compiler takes."""
    pieces = [text[i : i + 8000] for i in range(0, len(text), 8000)] or [""]
    return " ".join('R"QV(%s)QV"' % piece for piece in pieces)


def stated_output(text):
    """What the comments behind lines with std::cout say; None where there are none."""
    output = None
    for line in text.split("\n"):
        found = re.search(r"std::cout.*; +// (.*)$", line)
        if found:
            output = (output or "") + found.group(1) + "\n"
    return output


def with_throws(text):
    """Statements that must throw become calls that check it."""
    return re.sub(
        r"^( *)(\S.*); +// throws ((?:\w+::)*\w+)(:.*)?$", r"\1DOC_EXPECT_THROW((\2), \3);", text, flags=re.MULTILINE
    )


class Writer:
    def __init__(self, document, root):
        self.document = document
        self.root = root
        self.name = re.sub(r"\W", "_", Path(document).stem)
        self.includes = ['#include "docs/DocHost.h"']
        self.body = []
        self.open = None  # the statements that a continued block joins

    def place(self, line):
        return '#line %d "%s"' % (line, self.document)

    def add_include_lines(self, text):
        """Takes the includes out of a block; they stand at the top of the file."""
        kept = []
        for line in text.split("\n"):
            if line.startswith("#include"):
                if line not in self.includes:
                    self.includes.append(line)
                kept.append("")
            else:
                kept.append(line)
        return "\n".join(kept)

    def declare(self, line, text):
        self.body += [self.place(line), self.add_include_lines(text)]

    def declare_globally(self, line, text):
        self.body.append("}}")
        self.declare(line, text)
        self.body.append(self.opening())

    def opening(self):
        return "namespace doc_%s { namespace {" % self.name

    def program(self, block, expected):
        space = "program_%d" % block.line
        # Only main itself may end without a return.
        text = re.sub(r"\bint main\(\)", "void Main()", self.add_include_lines(block.text))
        self.body += ["namespace %s {" % space, self.place(block.line), text, "}"]
        self.test(block.line, "%s::Main();" % space, expected)

    def test(self, line, call, expected):
        check = "EXPECT_EQ(std::string(%s), output.Text());" % literal(expected)
        self.body += [
            "TEST(%s, Line%d) {" % (self.name, line),
            "    const DocOutput output;",
            "    " + call,
            "    " + check,
            "}",
        ]

    def flush(self):
        """Writes the statements collected for one function."""
        if not self.open:
            return
        line, statements, expected = self.open
        self.open = None
        self.body.append("struct Block%d : DocHost {" % line)
        self.body.append("void Run() {")
        for at, text in statements:
            self.body += [self.place(at), with_throws(text)]
        self.body += ["}", "};"]
        self.test(line, "Block%d().Run();" % line, expected)

    def text(self):
        head = ["// Made from %s by tests/docs/extract.py." % Path(self.document).name] + self.includes
        return "\n".join(head + [self.opening()] + self.body + ["}}"]) + "\n"


def check_part(writer, block, name):
    source = (writer.root / name).read_text()
    wanted = block.text.rstrip("\n").split("\n")
    for indent in ("", "    ", "        "):
        shifted = "\n".join(indent + line if line else line for line in wanted)
        if shifted in source:
            return
    fail(writer.document, block.line, "is not part of " + name)


def check_shell(writer, block):
    result = subprocess.run(["bash", "-n"], input=block.text, text=True, capture_output=True)
    if result.returncode:
        fail(writer.document, block.line, result.stderr.strip())
    for script in re.findall(r"(?<![\w/.])(scripts/[\w-]+)", block.text):
        if not (writer.root / script).exists():
            fail(writer.document, block.line, "there is no " + script)


def write_cpp(writer, block, expected, hidden):
    kind = next((d for d in block.directives if d[0].startswith("cpp:")), ("", 0))[0]
    if kind.startswith("cpp: part of "):
        check_part(writer, block, kind[len("cpp: part of ") :])
        return
    if kind in ("cpp: declarations", "cpp: global declarations"):
        writer.flush()
        (writer.declare_globally if "global" in kind else writer.declare)(block.line, block.text)
        return
    if expected is None:
        expected = stated_output(block.text)
    if "std::cout" in block.text and expected is None:
        fail(writer.document, block.line, "does not say what it prints")
    expected = expected or ""
    if "int main(" in block.text:
        writer.flush()
        writer.program(block, expected)
    elif kind == "cpp: continued":
        if not writer.open:
            fail(writer.document, block.line, "there is nothing to go on from")
        line, statements, before = writer.open
        writer.open = (line, statements + hidden + [(block.line, block.text)], before + expected)
    else:
        writer.flush()
        writer.open = (block.line, hidden + [(block.line, block.text)], expected)


def main():
    document, output, root = sys.argv[1:4]
    blocks = read_blocks(document, Path(document).read_text())
    writer = Writer(document, Path(root))
    for position, block in enumerate(blocks):
        hidden = []
        prints = None
        for body, line in block.directives:
            word, _, rest = body.partition("\n")
            if word == "cpp: given":
                writer.flush()
                writer.declare(line + 1, rest)
            elif word == "cpp: before":
                hidden.append((line + 1, rest))
            elif word == "cpp: prints":
                prints = (line + 1, rest)
        if prints:
            writer.flush()
            writer.open = (prints[0], hidden + [prints], block.text)
        elif block.language == "cpp":
            write_cpp(writer, block, output_block(blocks[position + 1 :]), hidden)
        elif block.language == "sh":
            check_shell(writer, block)
        if block.language == "json":
            try:
                json.loads(block.text)
            except ValueError as failure:
                fail(document, block.line, "is not JSON: %s" % failure)
    writer.flush()
    Path(output).write_text(writer.text())


main()
