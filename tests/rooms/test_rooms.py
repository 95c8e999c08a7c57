#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The faults that the check of rooms finds, each in a small tree of its own."""

import pathlib
import sys
import tempfile
import unittest
from unittest import mock

sys.dont_write_bytecode = True
import rooms  # noqa: E402

USED = {"src/app/User.cpp": '#include "kits/kernel/Clock.h"\n', "kits/kernel/Clock.h": ""}
"""A public header, and why it is public."""


class Rooms(unittest.TestCase):
    def faults(self, files):
        with tempfile.TemporaryDirectory() as root:
            for name, text in files.items():
                path = pathlib.Path(root) / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(text)
            return rooms.faults(root)

    def test_a_tree_in_order_has_none(self):
        self.assertEqual(self.faults(USED | {
            "src/chart/Chart.h": "#include <vector>\n",
            "src/app/App.cpp": '#include "src/app/App.h"\n#include "src/chart/Chart.h"\n',
            "src/app/App.h": "#pragma once\n"}), [])

    def test_an_include_that_points_up(self):
        self.assertEqual(self.faults({
            "src/chart/Chart.cpp": '\n#include "src/pages/Page.h"\n', "src/pages/Page.h": ""}),
            ["src/chart/Chart.cpp:2: src/pages/Page.h (src/pages) is above src/chart"])

    def test_a_public_header_belongs_to_the_room_of_its_code(self):
        tree = USED | {"kits/kernel/clock/Clock.cpp": '#include "kits/kernel/Clock.h"\n'}
        self.assertEqual(self.faults(tree), [])
        self.assertEqual(self.faults(tree | {"kits/kernel/threads/Wait.cpp": '#include "kits/kernel/Clock.h"\n'}),
                         ["kits/kernel/threads/Wait.cpp:1: kits/kernel/Clock.h (kits/kernel/clock) is above "
                          "kits/kernel/threads"])

    def test_a_public_header_without_code_belongs_to_the_lowest_room(self):
        self.assertEqual(self.faults(USED | {"kits/kernel/process/Streams.cpp": '#include "kits/kernel/Clock.h"\n'}), [])

    def test_neighbours(self):
        self.assertEqual(self.faults({"src/app/App.cpp": '#include "src/desktop/Host.h"\n', "src/desktop/Host.h": ""}),
                         ["src/app/App.cpp:1: src/desktop/Host.h (src/desktop) is above src/app"])

    def test_a_cycle(self):
        with mock.patch.object(rooms.House, "may_include", staticmethod(lambda room, other: True)):
            self.assertEqual(self.faults({
                "src/app/App.h": '#include "src/chart/Chart.h"\n', "src/chart/Chart.h": '#include "src/app/App.h"\n'}),
                ["src/app/App.h:1: closes the cycle src/chart -> src/app -> src/chart"])

    def test_a_private_header_in_src(self):
        self.assertEqual(self.faults({"src/app/App.cpp": '#include "kits/kernel/threads/Record.h"\n',
                                      "kits/kernel/threads/Record.h": ""}),
                         ["src/app/App.cpp:1: kits/kernel/threads/Record.h is private to its kit"])

    def test_a_public_header_that_nobody_outside_needs(self):
        self.assertEqual(self.faults({"kits/kernel/threads/Wait.cpp": '#include "kits/kernel/Wait.h"\n',
                                      "kits/kernel/Wait.h": ""}),
                         ["kits/kernel/Wait.h:1: nobody outside its kit needs this header"])

    def test_a_public_header_that_only_public_headers_need(self):
        self.assertEqual(self.faults(USED | {"kits/kernel/Clock.h": '#include "kits/kernel/Types.h"\n',
                                             "kits/kernel/Types.h": ""}), [])

    def test_headers_and_conditions_that_src_does_without(self):
        self.assertEqual(self.faults({"src/app/App.cpp": "#include <QWidget>\n#include <unistd.h>\n#ifdef X\n#endif\n"}),
                         ["src/app/App.cpp:1: <QWidget> in src/", "src/app/App.cpp:2: <unistd.h> in src/",
                          "src/app/App.cpp:3: #if in src/"])

    def test_a_kit_that_knows_the_program(self):
        self.assertEqual(self.faults({"kits/support/List.cpp": '#include "src/app/App.h"\n', "src/app/App.h": ""}),
                         ["kits/support/List.cpp:1: kits know nothing of src/app/App.h"])

    def test_a_program_among_the_kits(self):
        self.assertEqual(self.faults({
            "kits/pictures/main.cpp": '#include "kits/pictures/Sizes.h"\n#include "kits/support/Rect.h"\n',
            "kits/pictures/Sizes.h": "", "kits/support/Rect.h": "", "src/app/App.h": '#include "kits/support/Rect.h"\n'}),
            ["kits/pictures/main.cpp:2: kits/support/Rect.h (kits/support) is above kits/pictures"])

    def test_no_room_and_no_file(self):
        self.assertEqual(self.faults({"src/attic/Old.cpp": "", "src/app/App.cpp": '#include "src/app/Gone.h"\n'}),
                         ['src/app/App.cpp:1: no such file: "src/app/Gone.h"', "src/attic/Old.cpp:1: src/attic is no room"])


if __name__ == "__main__":
    unittest.main()
