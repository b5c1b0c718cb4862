#!/usr/bin/env python3
"""Lets Doxygen read the comments of a header as they stand: doxygen-filter.py HEADER

The headers have plain comments in plain words. A comment before a declaration becomes its documentation; one that several
declarations up to an empty line share becomes that of each of them; the first comment of a header that of the file, and of
the class that it is named after, where that has none of its own. What is indented inside a comment is shown as it is, and
nothing in a comment is markup.
"""
import re
import sys
from pathlib import Path

COMMENT = re.compile(r"( *)//( ?)(.*)$")
TYPE = re.compile(r" *(template <.*> *)?(class|struct|enum|union|namespace)\b")


def escape(text):
    return re.sub(r"([\\@<>#&$%\"])", r"\\\1", text)


def paragraphs(lines):
    """A comment's lines as Doxygen wants them."""
    result, verbatim = [], False
    for line in lines:
        shown = line.startswith("  ")
        if shown and not verbatim:
            result.append("@verbatim")
        if not shown and verbatim and line:
            result.append("@endverbatim")
        verbatim = shown or (verbatim and not line)
        result.append(line if verbatim else escape(line))
    return result + (["@endverbatim"] if verbatim else [])


def documented(indent, lines, first=""):
    return [indent + "/// " + line for line in ([first] if first else []) + paragraphs(lines)]


def statements(lines):
    """Each declaration of a stretch of code, as its lines."""
    result, current, depth = [], [], 0
    for line in lines:
        current.append(line)
        code = re.sub(r"//.*", "", line).rstrip()
        depth += len(re.findall(r"[({]", code)) - len(re.findall(r"[)}]", code))
        if depth == 0 and code.endswith((";", "}")):
            result.append(current)
            current = []
    if current:
        result.append(current)
    return result


def stretch(lines, start):
    """The end of the code that a comment at start - 1 stands for: an empty line, a comment, or the end of the class."""
    depth = 0
    for position in range(start, len(lines)):
        line = lines[position]
        if depth <= 0 and (not line.strip() or line.strip().startswith("//")):
            return position
        depth += line.count("{") + line.count("(") - line.count("}") - line.count(")")
        if depth < 0 or re.match(r"\s*(public|private|protected):", line):
            return position
    return len(lines)


def convert(lines, stem, of_file=True):
    result = []
    position = 0
    first = of_file
    file_comment = []

    def names_file(line):
        return file_comment and re.match(r"(class|struct) (QV\w+ )?%s\b[^;]*$" % stem, line)

    while position < len(lines):
        comment = COMMENT.match(lines[position])
        if not comment:
            code = re.match(r"([^}]*[^}\s])\s+// (.*)$", lines[position])
            if code and re.search(r"[;,})\w]$", code.group(1)):
                result.append("%s ///< %s" % (code.group(1), escape(code.group(2))))
            else:
                if names_file(lines[position]) and not result[-1].startswith("///"):
                    result += documented("", file_comment)
                result.append(lines[position])
            position += 1
            continue
        indent, body = comment.group(1), []
        while position < len(lines) and COMMENT.match(lines[position]):
            body.append(COMMENT.match(lines[position]).group(3))
            position += 1
        end = stretch(lines, position)
        code = lines[position:end]
        if first:
            result += documented(indent, body, "@file")
            file_comment = body
        elif not code:
            result += ["//"] * len(body)  # of nothing that follows
        elif not TYPE.match(code[0]):
            for statement in statements(code):
                result += documented(indent, body) + convert(statement, stem, False)
            position = end
        else:
            result += documented(indent, body)
        first = False
    return result


def main():
    path = Path(sys.argv[1])
    text = path.read_text()
    # Doxygen does not find the namespace of these, and nobody looks for them.
    text = re.sub(r"template <.*>\nstruct std::hash<(.|\n)*?\n};\n", "", text)
    print("\n".join(convert(text.split("\n"), path.stem)))


main()
