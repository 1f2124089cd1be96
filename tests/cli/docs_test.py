"""The user guide and the README show real output: every `$ kbond ...` line
in a console block is run from the source tree and must print exactly what
follows it; the conventions table must match the catalogue, the error table
the header, and the C example the file that the tests build and run."""
import json
import os
import re
import shlex
import subprocess
import unittest

from cli_harness import KBOND, SOURCE_DIR, run

GUIDE = os.path.join(SOURCE_DIR, "docs", "user-guide.md")
README = os.path.join(SOURCE_DIR, "README.md")


def console_examples(path):
    """(command line, expected output) for each ```console block."""
    with open(path) as f:
        text = f.read()
    for block in re.findall(r"```console\n(.*?)```", text, re.S):
        first, _, rest = block.partition("\n")
        if first.startswith("$ kbond "):
            yield first[2:], rest


def fenced(path, lang, after):
    with open(path) as f:
        text = f.read()
    start = text.index(after)
    return re.search(r"```%s\n(.*?)```" % lang, text[start:], re.S).group(1)


class ConsoleExamplesTest(unittest.TestCase):
    def check_file(self, path):
        examples = list(console_examples(path))
        self.assertTrue(examples)
        for command, expected in examples:
            args = shlex.split(command)[1:]
            with self.subTest(command=command):
                proc = subprocess.run([KBOND, *args], capture_output=True, text=True,
                                      cwd=SOURCE_DIR, timeout=120)
                self.assertEqual(proc.stdout + proc.stderr, expected)

    def test_user_guide_examples(self):
        self.check_file(GUIDE)

    def test_readme_examples(self):
        self.check_file(README)


class ReferenceTablesTest(unittest.TestCase):
    def test_conventions_table_matches_the_catalogue(self):
        with open(GUIDE) as f:
            text = f.read()
        section = text[text.index("## Conventions by bond type code"):
                       text.index("## Error codes")]
        rows = [line.split("|")[1:-1] for line in section.splitlines()
                if re.match(r"\| (\d+|—) \|", line)]
        _, out, _ = run("types", "--json")
        catalogue = json.loads(out)["types"]
        self.assertEqual(len(rows), len(catalogue))
        for cells, entry in zip(rows, catalogue):
            cells = [c.strip() for c in cells]
            code = lambda v: "—" if v is None else str(v)
            self.assertEqual(cells, [code(entry["code"]), code(entry["eom_code"]), entry["name"],
                                     str(entry["frequency"]), entry["day_count"],
                                     entry["ex_dividend"]])

    def test_error_table_lists_every_code_of_the_header(self):
        with open(os.path.join(SOURCE_DIR, "include", "k_bond.h")) as f:
            header = f.read()
        with open(GUIDE) as f:
            guide = f.read()
        for name, code in re.findall(r"#define (KVL_\w+)\s+\(?(-?\d+)\)?", header):
            self.assertIn("| %s | `%s` |" % (code, name), guide)

    def test_c_example_is_the_built_file_and_its_output(self):
        with open(os.path.join(SOURCE_DIR, "examples", "price_bond.c")) as f:
            self.assertEqual(fenced(GUIDE, "c", "## Worked example in C"), f.read())
        program = os.environ.get("KBOND_PRICE_BOND")
        if program:
            out = subprocess.run([program], capture_output=True, text=True).stdout
            self.assertEqual(fenced(GUIDE, "text", "## Worked example in C"), out)


if __name__ == "__main__":
    unittest.main()
