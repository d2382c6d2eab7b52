#!/usr/bin/env python3
"""What run-examples accepts, and that it fails where a document is wrong."""

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

RUNNER = Path(__file__).with_name("run-examples")
LINKS = Path(__file__).with_name("check-links")
LIST = """<plist version="1.0"><dict><key>A</key><dict><key>B</key><string>1</string></dict></dict></plist>
"""


def block(marker, text, language=""):
    return f"<!-- {marker} -->\n```{language}\n{text}\n```\n\n"


class RunExamples(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        (self.folder / "original.plist").write_text(LIST)

    def follow(self, text):
        document = self.folder / "document.md"
        document.write_text(text)
        return subprocess.run([sys.executable, RUNNER, self.folder, document], check=False,
                              capture_output=True, text=True, env=os.environ | {"CDPATH": ""})

    def accept(self, text):
        result = self.follow(text)
        self.assertEqual(result.returncode, 0, result.stderr)

    def refuse(self, text, reason):
        result = self.follow(text)
        self.assertEqual(result.returncode, 1, result.stdout)
        self.assertIn(reason, result.stderr)

    def test_compares_what_commands_print(self):
        self.accept(block("run: a", "echo one\necho two >&2") + block("output: a", "one\ntwo"))
        self.refuse(block("run: a", "echo one") + block("output: a", "two"), "document.md:6: 'a' prints")

    def test_has_one_session_for_a_document(self):
        self.accept(block("run: a", "cd ~; x=5; f() { echo f$1; }") +
                    block("run: b", "pwd; f $x") + block("output: b", "/home/me\nf5"))

    def test_takes_dots_for_any_lines(self):
        output = block("output: a", "...\n3\n...\n5")
        self.accept(block("run: a", "seq 5") + output)
        self.refuse(block("run: a", "seq 4") + output, "prints something else")

    def test_notices_commands_that_fail(self):
        self.refuse(block("run: a", "true\nfalse\necho on"), "document.md:1: 'a' ends with status 1")
        self.accept(block("run: a, status 2", "(exit 2)"))
        self.refuse(block("run: a, status 2", "true"), "'a' ends with status 0, not 2")

    def test_notices_blocks_that_nobody_runs(self):
        run = block("run: a", "true")
        self.refuse(run + "```sh\nfalse\n```\n", "document.md:6: the code block is not marked")
        self.refuse(run + "\n    false\n", "code stands between fences")
        self.refuse(run + block("output: b", "x"), "no commands are marked 'run: b'")
        self.refuse(run + "<!-- run: b -->\n\nText.\n", "no code block stands behind the marker")
        self.refuse(run + run, "there are two blocks")
        self.refuse("Nothing.\n", "no commands are marked")
        self.accept(run + block("not run: a picture", "-->"))

    def test_writes_files_where_the_session_is(self):
        self.accept(block("run: a", "mkdir ~/x; cd ~/x") + block("file: y/f", "one") +
                    block("append: y/f", "two") + block("run: b", "cat ~/x/y/f") +
                    block("output: b", "one\n\ntwo"))

    def test_edits_property_lists(self):
        begin = block("run: a", "cd ~") + block("file: f.plist", LIST)
        same = "<!-- same: f.plist original.plist -->\n"
        self.accept(begin + same)
        other = block("add: f.plist A", "<key>B</key>\n<string>2</string>")
        self.refuse(begin + other + same, "'same' failed")
        self.accept(begin + other + block("add: f.plist A", "<key>B</key><string>1</string>") + same)

    def test_finds_excerpts_at_any_depth(self):
        (self.folder / "code").write_text("{\n  if (a)\n    b();\n}\n")
        run = block("run: a", "true")
        self.accept(run + block("excerpt: code", "if (a)\n  b();"))
        self.refuse(run + block("excerpt: code", "if (a)\n  c();"), "code has no such lines")


class CheckLinks(unittest.TestCase):
    def check(self, text):
        with tempfile.TemporaryDirectory() as folder:
            (Path(folder) / "other.md").write_text("# A plug-in's `name`\n\n```\n# code\n```\n")
            (Path(folder) / "document.md").write_text(text)
            return subprocess.run([sys.executable, LINKS, folder], check=False,
                                  capture_output=True, text=True)

    def test_follows_links_to_files_and_headings(self):
        good = "[a](other.md) [b](other.md#a-plug-ins-name) [c](#here) [d](https://x/y#z)\n\n## Here\n"
        self.assertEqual(self.check(good).returncode, 0)
        for link in ("another.md", "other.md#code", "#there"):
            result = self.check(f"[a]({link})\n")
            self.assertEqual(result.returncode, 1)
            self.assertIn("document.md:1: ", result.stderr)


if __name__ == "__main__":
    unittest.main()
