"""The fenced blocks of a document, with the comments before them."""
import re
import sys

COMMENT = re.compile(r"<!--(.*?)-->", re.DOTALL)


class Block:
    def __init__(self, language, line, text, directives):
        self.language = language
        self.line = line
        self.text = text
        self.directives = directives  # (word, rest) of the comments before it


def fail(document, line, message):
    sys.exit("%s:%d: %s" % (document, line, message))


def read_blocks(document, text):
    """The fenced blocks in order, each with the comments that stand between it and what is before."""
    blocks = []
    lines = text.split("\n")
    directives = []
    i = 0
    while i < len(lines):
        fence = re.match(r"( *)(```+)(\w*)\s*$", lines[i])
        if fence:
            start = i + 1
            i = start
            while i < len(lines) and lines[i].strip() != fence.group(2):
                i += 1
            if i == len(lines):
                fail(document, start, "the block does not end")
            indent = len(fence.group(1))
            content = "".join(line[indent:] + "\n" for line in lines[start:i])
            blocks.append(Block(fence.group(3), start + 1, content, directives))
            directives = []
        elif lines[i].startswith("<!--"):
            start = i
            while "-->" not in lines[i]:
                i += 1
                if i == len(lines):
                    fail(document, start + 1, "the comment does not end")
            body = COMMENT.match("\n".join(lines[start : i + 1])).group(1)
            directives.append((body.strip(), start + 1))
        elif lines[i].strip():
            if directives and any(d[0].startswith("cpp: before") or d[0].startswith("output") for d in directives):
                fail(document, i + 1, "a comment that belongs to a block stands before something else")
            directives = [d for d in directives if d[0].startswith("cpp: given")]
        i += 1
    return blocks


def output_block(following):
    """The text of the block of output that belongs to a block; commands may stand between."""
    for block in following:
        if any(d[0] == "output" for d in block.directives):
            return block.text
        if block.language != "sh":
            return None
    return None
