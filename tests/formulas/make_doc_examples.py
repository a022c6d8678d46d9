#!/usr/bin/env python3
"""Turns the examples of docs/formulas.md into tests.

Usage: make_doc_examples.py DOCUMENT HEADER OUTPUT

Every ```cpp block of DOCUMENT becomes one test of the C++ file OUTPUT, named after the operation
that the block calls first. HEADER declares the operations; each must have a block of its name. A
line that calls an operation stands for itself and says in a comment what comes out:

    VALUE.OPERATION(ARGUMENTS);  // CODE: OUTCOME
    VALUE.OPERATION(ARGUMENTS);  // CODE: OUTCOME, NAME = OUTCOME

CODE is what the call returns. OUTCOME is the value afterwards, of VALUE or of the argument NAME: a
number as written, "nan", "(1, 2)" for vectors, "kept" for what it was before, or "≈ 0.5 ± 1e-12".
After a ";" a remark may follow. Other lines are taken as they are; only a line of its own may be a comment
of another form. What does not hold to this is reported as DOCUMENT:LINE and fails the build.
"""

import pathlib
import re
import sys

NUMBER = r"-?\d+(?:\.\d+)?"
EXACT = rf"nan|{NUMBER}|\({NUMBER}(?:, {NUMBER})+\)"
NEAR = rf"≈ ({NUMBER}) ± (\d+(?:\.\d+)?(?:e-\d+)?)"
OUTCOME = rf"kept|{EXACT}|{NEAR}"
CALL = re.compile(r"\s*(\w+)\.(\w+)\(.*\);")
CHECK = re.compile(rf"([01]): ({OUTCOME})((?:, \w+ = (?:{OUTCOME}))*)(?:; .+)?")
OTHER = re.compile(rf", (\w+) = ({OUTCOME})")

HEAD = """\
// Made from {document}: change that.
#include "tests/formulas/DocExample.h"

#include <gtest/gtest.h>

#include "platform/ExTime.h"
#include "values/LumType.h"

using lum::test::NumberOf;
using lum::test::Written;
"""


class ExampleError(Exception):
    """An example that does not hold to the form, and the line it stands in."""

    def __init__(self, line, message):
        super().__init__(message)
        self.line = line


class Block:
    """The lines of one example and the operations that it checks."""

    def __init__(self, line):
        self.line, self.lines, self.operations = line, [], []


def read_operations(header):
    """The names of the operations: those members alone take values that they may change."""
    return re.findall(r"virtual int (\w+)\(CLumType& ", header)


def read_blocks(document):
    blocks, is_inside = [], False
    for number, text in enumerate(document.split("\n"), 1):
        if text.startswith("```"):
            is_inside = not is_inside and text.rstrip() == "```cpp"
            if is_inside:
                blocks.append(Block(number))
        elif is_inside:
            blocks[-1].lines.append((number, text))
    return blocks


def assertion(name, outcome):
    near = re.fullmatch(NEAR, outcome)
    if near:
        return f"EXPECT_NEAR(NumberOf({name}), {near[1]}, {near[2]});"
    if outcome == "kept":
        return f"EXPECT_EQ(Written({name}), written_{name});"
    return f'EXPECT_EQ(Written({name}), "{outcome}");'


def statement(call, code, outcomes):
    """One line of C++: the call, and what is there afterwards."""
    before = [f"const std::string written_{name} = Written({name}); "
              f'EXPECT_NE(written_{name}, "0") << "0 cannot show that a value is kept"; '
              for name, outcome in outcomes if outcome == "kept"]
    after = [assertion(name, outcome) for name, outcome in outcomes]
    return f"{{ {''.join(before)}EXPECT_EQ({call}, {code}); {' '.join(after)} }}"


def convert_line(block, number, text, operations):
    """The C++ of one line. Operations that it checks are added to the block."""
    code_text, slashes, comment = text.partition("//")
    call = CALL.fullmatch(code_text.rstrip())
    is_call = call is not None and call[2] in operations
    if not is_call:
        if re.search(rf"\.(?:{'|'.join(operations)})\(", code_text):
            raise ExampleError(number, "expected the call of an operation on a line of its own")
        if slashes and code_text.strip():
            raise ExampleError(number, "expected no comment: no operation is called here")
        return text
    check = CHECK.fullmatch(comment.strip())
    if check is None:
        raise ExampleError(number, "expected a comment '// CODE: OUTCOME' after the call, "
                                   f"found '{(slashes + comment).strip()}'")
    block.operations.append(call[2])
    outcomes = [(call[1], check[2])]
    outcomes += [(other[1], other[2]) for other in OTHER.finditer(check[5])]
    return statement(code_text.strip().rstrip(";"), check[1], outcomes)


def convert_block(block, operations, document, taken):
    lines = []
    for number, text in block.lines:
        lines += [f'#line {number} "{document}"', convert_line(block, number, text, operations)]
    if not block.operations:
        raise ExampleError(block.line, "expected an example that calls and checks an operation")
    name = block.operations[0]
    taken.append(name)
    number = taken.count(name)
    title = name if number == 1 else f"{name}{number}"
    return "\n".join([f"TEST(FormulaExamples, {title}) {{", *lines, "}", ""])


def convert(text, operations, document):
    """The C++ file for a document, and the errors found in it."""
    tests, taken, errors = [HEAD.format(document=document)], [], []
    for block in read_blocks(text):
        try:
            tests.append(convert_block(block, operations, document, taken))
        except ExampleError as error:
            errors.append(f"{document}:{error.line}: {error}")
    last = text.count("\n") + 1
    errors += [f"{document}:{last}: expected an example of {name}, found none"
               for name in operations if name not in taken]
    return "\n".join(tests), errors


def main():
    document, header, output = (pathlib.Path(argument) for argument in sys.argv[1:4])
    operations = read_operations(header.read_text(encoding="utf-8"))
    if not operations:
        sys.exit(f"{header}:1: expected declarations of operations, found none")
    shown = "/".join(document.parts[-2:])
    source, errors = convert(document.read_text(encoding="utf-8"), operations, shown)
    if errors:
        sys.exit("\n".join(errors))
    output.write_text(source, encoding="utf-8")


if __name__ == "__main__":
    main()
