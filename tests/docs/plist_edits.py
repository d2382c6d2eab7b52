"""What a reader does to a property list with an editor.

    plist_edits.py add FILE SECTION BLOCK     the block's entries come to the section's, which is a
                                              path such as A/B, "/" the whole; they replace entries
                                              of the same name
    plist_edits.py same FILE ORIGINAL         fails unless both files say the same
"""

import plistlib
import sys
from pathlib import Path

HEAD = b'<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">\n<dict>\n'
TAIL = b"</dict>\n</plist>\n"


def add(file, section, block):
    content = plistlib.loads(file.read_bytes())
    target = content
    for name in filter(None, section.split("/")):
        target = target.setdefault(name, {})
    target.update(plistlib.loads(HEAD + Path(block).read_bytes() + TAIL))
    file.write_bytes(plistlib.dumps(content, sort_keys=False))


def same(file, original):
    if file.suffix == ".plist":
        equal = plistlib.loads(file.read_bytes()) == plistlib.loads(original.read_bytes())
    else:
        equal = file.read_bytes() == original.read_bytes()
    if not equal:
        sys.exit(f"{file.absolute()} is not {original}:\n{file.read_text()}")


def main():
    _, action, file, *rest = sys.argv
    if action == "add":
        add(Path(file), *rest)
    else:
        same(Path(file), Path(rest[0]))


if __name__ == "__main__":
    main()
