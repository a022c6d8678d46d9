#!/usr/bin/env python3
"""Holds the constants of docs/limits.md to the headers, and the headers to docs/limits.md.

Usage: check_limits.py ROOT

A row of its first table that names a constant, as "`kMost` in `folder/File.h`", states the value as the
first number of its second column. The header must define the constant with that value. The other way
round, every constant of a header whose name begins with kMax must stand in the table.
"""

import ast
import operator
import pathlib
import re
import sys

ROW = re.compile(r"^\|[^|]*\|([^|]*)\| `(\w+)` in `([\w./]+)` \|", re.MULTILINE)
FOLDERS = ("platform", "values", "formulas", "definitions", "attributes", "catalogue",
           "decoding", "tools/lumattr")
OPERATORS = {ast.LShift: operator.lshift, ast.Mult: operator.mul, ast.Add: operator.add,
             ast.Sub: operator.sub}


def evaluate(node, text, known):
    """The value of an expression of whole numbers and constants of the same header."""
    if isinstance(node, ast.BinOp) and type(node.op) in OPERATORS:
        return OPERATORS[type(node.op)](evaluate(node.left, text, known),
                                        evaluate(node.right, text, known))
    if isinstance(node, ast.Constant) and isinstance(node.value, int):
        return node.value
    if isinstance(node, ast.Name):
        return known[node.id] if node.id in known else value_of(node.id, text, known)
    raise ValueError(ast.dump(node))


def value_of(name, text, known):
    """The value that a header's text gives a constant; None when it defines none of that name."""
    found = re.search(rf"\b{name} =\s*([^;,]+?)[;,]", text)
    if found is None:
        return None
    plain = re.sub(r"std::(?:size_t|uint32_t)\{([^}]*)\}", r"(\1)", found.group(1))
    plain = plain.replace("'", "").replace("std::numeric_limits<std::uint32_t>::max()", "0xFFFFFFFF")
    plain = plain.replace("FileObject::", "")
    return evaluate(ast.parse(plain, mode="eval").body, text, known)


def stated(document):
    """Name, header and value of each row."""
    for limit, name, header in ROW.findall(document):
        number = re.search(r"\d[\d,]*", limit)
        yield name, header, int(number.group().replace(",", "")) if number else None


def headers_constants(root):
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*.h")):
            text = path.read_text(encoding="utf-8")
            for name in sorted(set(re.findall(r"\b(kMax[A-Z]\w*) =(?!=)", text))):
                yield name, path.relative_to(root).as_posix()


def faults(root):
    rows = list(stated((root / "docs/limits.md").read_text(encoding="utf-8")))
    if len(rows) < 15:
        yield f"docs/limits.md: only {len(rows)} rows with a constant were understood"
    file_object = (root / "platform/FileObject.h").read_text(encoding="utf-8")
    known = {"kMaxFileBytes": value_of("kMaxFileBytes", file_object, {})}
    for name, header, value in rows:
        path = root / header
        text = path.read_text(encoding="utf-8") if path.exists() else ""
        actual = value_of(name, text, known)
        if actual != value:
            yield f"{header}: {name} is {actual}, docs/limits.md says {value}"
    documented = {(name, header) for name, header, _ in rows}
    for name, header in headers_constants(root):
        if (name, header) not in documented:
            yield f"{header}: {name} does not stand in docs/limits.md"


def main():
    found = list(faults(pathlib.Path(sys.argv[1])))
    print("\n".join(found) or "docs/limits.md says what the headers say")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
