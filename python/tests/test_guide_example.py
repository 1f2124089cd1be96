"""The Python blocks of the user guide and the README run and print what
the documents show."""
import os
import re
import subprocess
import sys
import unittest

import k_bond

ROOT = os.path.join(os.path.dirname(__file__), "..", "..")
# A python block, and the text block right after it when there is one.
BLOCK = re.compile(r"```python\n(.*?)```\s*(?:```text\n(.*?)```)?", re.S)


def blocks(document, start, end=None):
    with open(os.path.join(ROOT, document)) as f:
        text = f.read()
    text = text[text.index(start):text.index(end) if end else None]
    return BLOCK.findall(text)


class DocumentedExamples(unittest.TestCase):
    def run_blocks(self, found):
        package_root = os.path.dirname(os.path.dirname(os.path.abspath(k_bond.__file__)))
        env = dict(os.environ, PYTHONPATH=package_root, KBOND_LIBRARY=k_bond.library_path(),
                   MPLBACKEND="Agg")
        self.assertTrue(found)
        for code, expected in found:
            with self.subTest(block=code.splitlines()[0]):
                proc = subprocess.run([sys.executable, "-c", code], capture_output=True,
                                      text=True, env=env, timeout=120)
                if "No module named 'numpy'" in proc.stderr or "'pandas'" in proc.stderr:
                    continue  # the DataFrame examples need numpy and pandas
                self.assertEqual(proc.stderr, "")
                if expected:
                    self.assertEqual(proc.stdout, expected)

    def test_user_guide_python_section(self):
        self.run_blocks(blocks("docs/user-guide.md", "## Python", "## Worked examples with"))

    def test_readme_quick_start(self):
        self.run_blocks(blocks("README.md", "## Python"))


if __name__ == "__main__":
    unittest.main()
