"""A Markdown document whose code blocks say what they are for."""

import re
import textwrap

# Blocks that are steps of the session; the markers of the first three stand in front of a block.
STEPS = ("file", "append", "add", "run", "same", "scheduler")
# What else a block may be.
OTHERS = ("output", "excerpt", "not run")
# These have no block.
WITHOUT_BLOCK = ("same", "scheduler")
# The blocks with this language are the cases of tests of their own, in these documents.
CASES = "examples"
DOCUMENTS_WITH_CASES = ("language.md", "templates.md")

MARKER = re.compile(r"<!-- ([a-z ]+?): (.*?) -->$")
FENCE = re.compile(r"( *)```(.*)$")


class Mistake(Exception):
    """What is wrong in a document, and where."""

    def __init__(self, path, line, what):
        super().__init__(f"{path}:{line}: {what}")


class Block:
    """A marker and the code block behind it."""

    def __init__(self, path, line, kind, argument, text):
        self.path = path
        self.line = line
        self.kind = kind
        self.argument = argument
        self.text = text

    def words(self, count):
        words = self.argument.split()
        if len(words) != count:
            raise Mistake(self.path, self.line, f"'{self.kind}' takes {count} words")
        return words

    @property
    def name(self):
        """That of commands and of their output, without what else stands behind it."""
        return self.argument.split(",")[0]

    @property
    def status(self):
        """The exit status that commands are to end with."""
        found = re.search(r", status (\d+)$", self.argument)
        return int(found[1]) if found else 0


class Document:
    """The blocks of a document, each of which has to have a marker."""

    def __init__(self, path, source):
        self.path = path
        self.steps = []
        self.outputs = {}
        for block in blocks(path):
            if block.kind in STEPS:
                self.steps.append(block)
            elif block.kind == "output":
                self.outputs[block.name] = block
            elif block.kind == "excerpt":
                check_excerpt(block, source)
        names = [block.name for block in self.steps if block.kind == "run"]
        for name in names:
            if names.count(name) > 1:
                raise Mistake(path, 1, f"there are two blocks 'run: {name}'")
        for name, block in self.outputs.items():
            if name not in names:
                raise Mistake(path, block.line, f"no commands are marked 'run: {name}'")
        if not names:
            raise Mistake(path, 1, "no commands are marked <!-- run: NAME -->")


def blocks(path):
    """The marked blocks in their order."""
    lines = path.read_text().split("\n")
    marker = None
    number = 0
    while number < len(lines):
        line = lines[number]
        number += 1
        found = MARKER.match(line)
        fence = FENCE.match(line)
        if found and found[1] in STEPS + OTHERS:
            if marker:
                raise Mistake(path, marker.line, "no code block stands behind the marker")
            marker = Block(path, number, found[1], found[2], "")
            if marker.kind in WITHOUT_BLOCK:
                yield marker
                marker = None
        elif fence:
            begin = number
            while number < len(lines) and lines[number].strip() != "```":
                number += 1
            if number == len(lines):
                raise Mistake(path, begin, "the code block has no end")
            text = textwrap.dedent("\n".join(lines[begin:number]) + "\n")
            number += 1
            if marker:
                marker.text = text
                yield marker
                marker = None
            elif fence[2] != CASES or path.name not in DOCUMENTS_WITH_CASES:
                raise Mistake(path, begin, "the code block is not marked: say <!-- run: NAME -->, "
                              "or what else it is, above it")
        elif marker and line.strip():
            raise Mistake(path, marker.line, "no code block stands behind the marker")
        elif line.startswith("    ") and not (number > 1 and lines[number - 2].strip()):
            raise Mistake(path, number, "code stands between fences, so that it can be marked")
    if marker:
        raise Mistake(path, marker.line, "no code block stands behind the marker")


def check_excerpt(block, source):
    """The block's lines stand in the file, one below the other, at any depth."""
    wanted = block.text.rstrip("\n").split("\n")
    file = source / block.argument
    if not file.is_file():
        raise Mistake(block.path, block.line, f"there is no file {block.argument}")
    lines = file.read_text().split("\n")
    for first in range(len(lines) - len(wanted) + 1):
        part = textwrap.dedent("\n".join(lines[first:first + len(wanted)]))
        if part.rstrip("\n").split("\n") == wanted:
            return
    raise Mistake(block.path, block.line, f"{block.argument} has no such lines")


def matches(expected, shown):
    """Whether the output is what the document shows, where "..." is any lines, or none."""
    pattern = ""
    for line in expected.rstrip("\n").split("\n"):
        pattern += r"(?:.*\n)*?" if line.strip() == "..." else re.escape(line) + r" *\n"
    return re.fullmatch(pattern, shown.rstrip("\n") + "\n") is not None
