# SPDX-License-Identifier: MIT
"""Every window fits on a small screen with large letters, in each language."""

from charts import RECORDED
from desktop import DesktopTest, wait_until
from test_version import STORE, store_of

SCREEN = (1024, 768)
FRAME = (10, 40)
"""A generous estimate of the space that a window manager's frame takes."""
FONT = "DejaVu Sans,20,-1,5,50,0,0,0,0,0"
ANY_TITLE = ".*"
LANGUAGES = ("", "de")


class LargeLetters(DesktopTest):
    """The font comes from the settings of a desktop that the toolkit can read."""

    environment = dict(RECORDED, QT_QPA_PLATFORMTHEME="kde", KDE_SESSION_VERSION="5")

    def setUp(self):
        super().setUp()
        (self.config / "kdeglobals").write_text(f"[General]\nfont={FONT}\nmenuFont={FONT}\n")
        self.program = None
        self.seen = {}

    def open(self, language):
        # A user has one program: the one of the previous language must have ended, even if its test failed.
        if self.program:
            self.program.close()
        self.program = self.start(**self.environment, LANGUAGE=language)

    def shown(self):
        return set(self.desktop.windows(ANY_TITLE, self.program.pid))

    def new_window(self, before):
        return wait_until(lambda: self.shown() - before, "another window").pop()

    def look_at(self, window, what):
        """Takes the size of the window once it no longer changes."""
        sizes = []

        def stays():
            sizes.append(self.desktop.size(window))
            return len(sizes) > 5 and len(set(sizes[-5:])) == 1

        wait_until(stays, f"the size of {what}")
        width, height = sizes[-1]
        self.seen[what] = (width, height)
        self.assertLessEqual(width + FRAME[0], SCREEN[0], what)
        self.assertLessEqual(height + FRAME[1], SCREEN[1], what)

    def look_at_all(self, language):
        self.open(language)
        window = wait_until(self.shown, "the window").pop()
        self.look_at(window, "window with charts")
        self.desktop.key("ctrl+Next", window=window)
        self.look_at(window, "window with uptimes")
        self.desktop.key("ctrl+Next", window=window)

        before = self.shown()
        self.desktop.focus(window)
        self.desktop.click(window, 400, 160, button=3)
        menu = self.new_window(before)
        self.look_at(menu, "menu of a chart")
        # The first item opens the preferences.
        self.desktop.key("Down", "Return")
        wait_until(lambda: menu not in self.shown(), "the menu to close")
        prefs = self.new_window(before)
        self.desktop.focus(prefs)
        for page in range(5):
            self.look_at(prefs, f"page {page} of the preferences")
            self.desktop.key("ctrl+Next", window=prefs)
        self.assertGreater(self.seen["page 0 of the preferences"][0], 600, "the letters are large")

        # The largest sample of a font.
        self.desktop.key("ctrl+Next", "ctrl+Next", "ctrl+Next", window=prefs)
        self.desktop.key("Tab", "Tab", "Tab", "Tab", "End")
        lower = self.seen["page 3 of the preferences"][1]
        wait_until(lambda: self.desktop.size(prefs)[1] > lower, "a window with a taller sample")
        self.look_at(prefs, "preferences with the largest sample")

    def test_every_window_fits_with_a_font_of_twenty_points(self):
        for language in LANGUAGES:
            with self.subTest(language or "en"):
                self.look_at_all(language)

    def test_the_question_about_another_version_fits_too(self):
        for language in LANGUAGES:
            with self.subTest(language or "en"):
                (self.config / STORE).write_bytes(store_of("0.2.9"))
                self.open(language)
                self.look_at(wait_until(self.shown, "the question").pop(), "question")

    def test_the_windows_of_the_menu_fit_too(self):
        for language in LANGUAGES:
            with self.subTest(language or "en"):
                self.open(language)
                window = wait_until(self.shown, "the window").pop()
                for key, what in (("ctrl+a", "about window"), ("ctrl+p", "preferences of the sampler")):
                    before = self.shown()
                    self.desktop.key(key, window=window)
                    self.look_at(self.new_window(before), what)
