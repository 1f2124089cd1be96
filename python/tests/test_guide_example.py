"""The user guide's Python example runs and prints what the guide shows."""
import os
import re
import subprocess
import sys
import unittest

import k_bond

GUIDE = os.path.join(os.path.dirname(__file__), "..", "..", "docs", "user-guide.md")


class GuideExampleTest(unittest.TestCase):
    def test_python_example_prints_the_documented_output(self):
        with open(GUIDE) as f:
            text = f.read()
        section = text[text.index("## Worked example in Python"):]
        code = re.search(r"```python\n(.*?)```", section, re.S).group(1)
        expected = re.search(r"```text\n(.*?)```", section, re.S).group(1)
        package_root = os.path.dirname(os.path.dirname(os.path.abspath(k_bond.__file__)))
        env = dict(os.environ, PYTHONPATH=package_root, KBOND_LIBRARY=k_bond.library_path())
        proc = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True,
                              env=env, timeout=60)
        self.assertEqual(proc.stderr, "")
        self.assertEqual(proc.stdout, expected)


if __name__ == "__main__":
    unittest.main()
