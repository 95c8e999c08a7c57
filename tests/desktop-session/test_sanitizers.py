# SPDX-License-Identifier: MIT
"""A sanitizer's finding fails the test."""

import os
import subprocess
import unittest

from desktop import TIMEOUT
from sanitizers import PROGRAM, REPORTS, is_sanitized


class SanitizersTest(unittest.TestCase):
    def check(self, kind, report):
        program = os.path.join(os.environ["QEL_TEST_PROGRAMS"], "desktop-session", "defect")
        result = subprocess.run([program, kind], capture_output=True, text=True, timeout=TIMEOUT)
        self.assertNotEqual(result.returncode, 0, result)
        self.assertIn(report, REPORTS.take())


@unittest.skipUnless(is_sanitized(PROGRAM, by=[b"asan"]), "the programs are built without AddressSanitizer")
class Sanitizers(SanitizersTest):
    def test_report_what_is_used_after_it_was_freed(self):
        self.check("freed", "heap-use-after-free")

    def test_report_what_leaks(self):
        self.check("leak", "detected memory leaks")

    def test_report_what_is_undefined(self):
        self.check("overflow", "__ubsan_handle_add_overflow")

    def test_report_what_aborts(self):
        self.check("abort", "ABRT")


@unittest.skipUnless(is_sanitized(PROGRAM, by=[b"tsan"]), "the programs are built without ThreadSanitizer")
class ThreadSanitizer(SanitizersTest):
    def test_reports_a_race(self):
        self.check("race", "data race")
