#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Gives the search for fields that are named in src/ small trees, and looks at what it says."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

KEYS = pathlib.Path(__file__).parent / "keys"


def search(files):
    """Returns the check's output for a tree of these files, and its exit status."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = pathlib.Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        done = subprocess.run([sys.executable, KEYS, folder], capture_output=True, text=True, check=False)
        return done.stdout + done.stderr, done.returncode


class Keys(unittest.TestCase):
    def assert_found(self, code):
        said, status = search({"src/app/One.cpp": "int a;\n" + code})
        self.assertEqual((said.split(": ")[0], status), ("src/app/One.cpp:2", 1), code)

    def test_finds_every_way_to_name_a_field(self):
        for call in ('from.FindInt32("a", &value)', 'into->AddRect("a", r)', 'm.ReplaceMessage("a", 0, &inner)',
                     'm.HasBool("a")', 'prefs->SetString("a", text)', 'm.FindData(kName, B_RAW_TYPE, &data, &size)',
                     'm.AddInt64(\n        "a", value)', 'm.RemoveName("a")', 'm.GetInfo("a", &type)',
                     'm.FindFlat("a", &font)', 'm.AddMessenger("a", it)', 'AddMessageFont(&m, "a", &font)', 'm.AddPointer("a", this)'):
            self.assert_found(f"{call};\n")

    def test_names_each_place(self):
        said, status = search({"src/b/Two.h": 'f.FindBool("x", &b);\n\nf.AddBool("x", b);\n',
                               "src/a/One.cpp": 'f.AddInt8("x", 1);\n'})
        self.assertEqual([line.split(": ")[0] for line in said.splitlines()],
                         ["src/a/One.cpp:1", "src/b/Two.h:1", "src/b/Two.h:3"])
        self.assertEqual(status, 1)

    def test_lets_everything_else_be(self):
        said, status = search({
            "src/a/One.cpp": 'kField.Find(from, &value);\nlabel.SetText("a");\nmessage.AddFlat(name, font);\n'
                             'button->SetMessage(new BMessage(MSG_A));\n// m.FindInt32("a", &b)\n'
                             '/* m.FindInt32("a",\n &b) */\nline.SetPoint(kOrigin);\n'
                             'm.RemoveData(kField.Name(), 1);\nAddMessageFont(&m, name, &font);\n',
            "kits/a/Two.cpp": 'm.FindInt32("a", &b);\n',
            "tests/a/Three.cpp": 'm.FindInt32("a", &b);\n',
            "src/a/notes.txt": 'm.FindInt32("a", &b);\n'})
        self.assertEqual((said, status), ("", 0))

    def test_wants_a_tree(self):
        said, status = search({"other/One.cpp": ""})
        self.assertIn("no folder src", said)
        self.assertEqual(status, 1)


if __name__ == "__main__":
    unittest.main()
