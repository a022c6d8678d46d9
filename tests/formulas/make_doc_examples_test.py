#!/usr/bin/env python3
"""What make_doc_examples.py takes and what it refuses, with the line it names."""

import unittest

from make_doc_examples import convert, read_operations

OPERATIONS = ["Neg"]


def errors_of(*lines):
    return convert("\n".join(["```cpp", *lines, "```"]), OPERATIONS, "doc.md")[1]


class MakeDocExamplesTest(unittest.TestCase):
    def test_a_check_becomes_assertions_on_code_and_value(self):
        source, errors = convert("```cpp\nx.Neg(y);  // 1: -2.5, y = kept; why\n```\n", OPERATIONS,
                                 "doc.md")
        self.assertEqual(errors, [])
        self.assertIn("TEST(FormulaExamples, Neg) {\n#line 2 \"doc.md\"\n", source)
        self.assertIn("EXPECT_EQ(x.Neg(y), 1);", source)
        self.assertIn('EXPECT_EQ(Written(x), "-2.5");', source)
        self.assertIn("EXPECT_EQ(Written(y), written_y);", source)

    def test_a_tolerance_becomes_a_near_assertion(self):
        source, _ = convert("```cpp\nx.Neg(y);  // 1: ≈ 0.5 ± 1e-12\n```\n", OPERATIONS, "doc.md")
        self.assertIn("EXPECT_NEAR(NumberOf(x), 0.5, 1e-12);", source)

    def test_blocks_that_do_not_hold_to_the_form_are_refused(self):
        rows = [
            (["CLumDouble x;"], "doc.md:1: expected an example that calls"),
            (["x.Neg(y);"], "doc.md:2: expected a comment"),
            (["", "x.Neg(y);  // -2.5"], "doc.md:3: expected a comment"),
            (["x.Neg(y);  // 2: 1"], "doc.md:2: expected a comment"),
            (["x.Neg(y);  // 1: about 1"], "doc.md:2: expected a comment"),
            (["x.Neg(y);  // 1: 1, y = "], "doc.md:2: expected a comment"),
            (["int code = x.Neg(y);  // 1: 1"], "doc.md:2: expected the call"),
            (["CLumDouble x;  // 1: 1"], "doc.md:2: expected no comment"),
        ]
        for lines, expected in rows:
            with self.subTest(lines):
                self.assertTrue(errors_of(*lines)[0].startswith(expected), errors_of(*lines))

    def test_an_operation_without_an_example_is_named(self):
        _, errors = convert("text\n", OPERATIONS, "doc.md")
        self.assertEqual(errors, ["doc.md:2: expected an example of Neg, found none"])

    def test_operations_are_told_from_accessors(self):
        header = "virtual int GetInt(int& value) const;\nvirtual int Neg(CLumType& value);\n"
        self.assertEqual(read_operations(header), OPERATIONS)


if __name__ == "__main__":
    unittest.main()
