# SPDX-License-Identifier: MIT
"""The colour of a real desktop: picked from its wallpaper, tested, and restored."""

import signal
import unittest

import wallpaper
from desktop import wait_until
from prefs import DESKTOP_COLOR, PICK_DESKTOP, RAMPS, SWATCH, TEST_ON_DESKTOP, PrefsTest
from real import DESKTOP, OnRealDesktop
from session import Session

GROUND = (540, 60)
"""A place on the first chart without words or samples."""


class ColorTest(OnRealDesktop, PrefsTest):
    def swatch(self):
        return self.page().pixel(*SWATCH)

    def bare(self):
        """Returns the colours of the desktop, at several places."""
        picture = self.desktop.picture()
        return [picture.pixel(*place) for place in self.desktop.BARE]

    def start_test(self):
        """Tests a colour on the desktop that the wallpaper does not have, and returns it."""
        self.open_prefs()
        self.show("Colors")
        self.click((205, RAMPS["red"]))
        self.click(TEST_ON_DESKTOP)
        picked = self.swatch()
        self.assertGreater(picked[0], 200)
        self.await_plain(picked)
        return picked

    def await_plain(self, color):
        wait_until(lambda: set(self.bare()) == {color}, f"the desktop in the colour {color}")

    def await_picked(self, is_it, what):
        """Picks the desktop's colour until it is the expected one. While the desktop's tools are slow, the page picks
        the last known colour, which at first is not the desktop's."""
        def is_picked():
            self.click(PICK_DESKTOP)
            self.settle()
            return is_it(self.swatch())

        wait_until(is_picked, what)

    def drop_swatch(self):
        """Drops the swatch on the desktop."""
        self.take_hold(self.on_screen(self.prefs, *SWATCH))
        self.let_go(self.desktop.BARE[0])


class Color(ColorTest):
    def setUp(self):
        super().setUp()
        self.addCleanup(self.desktop.set_wallpaper, self.desktop.picture_file)

    def ground(self):
        return self.chart(0).pixel(*GROUND)

    def is_average(self, color):
        return wallpaper.is_near(color, wallpaper.AVERAGE, 4)

    def test_is_the_average_of_the_wallpaper(self):
        self.open_prefs()
        self.show("Colors")
        self.await_picked(self.is_average, "the average of the wallpaper on the page")
        self.quit()

    def test_is_followed_by_a_locked_chart(self):
        self.open_prefs()
        self.click(DESKTOP_COLOR)
        wait_until(lambda: self.is_average(self.ground()), "a chart in the average of the wallpaper")
        other = self.desktop.picture_file.with_name("other.png")
        wallpaper.write(other, average=(160, 110, 80))
        self.desktop.set_wallpaper(other)
        wait_until(lambda: wallpaper.is_near(self.ground(), (160, 110, 80), 4), "a chart in the average of the next one")
        self.quit()

    def test_is_that_of_a_swatch_dropped_on_it_for_good(self):
        files = self.desktop.left_on_desktop()
        self.open_prefs()
        self.show("Colors")
        self.click((205, RAMPS["red"]))
        color = self.swatch()
        self.assertGreater(color[0], 200)
        self.drop_swatch()
        self.await_plain(color)
        self.assertEqual(self.desktop.left_on_desktop(), files)
        self.cancel()
        self.quit()
        self.assertEqual(set(self.bare()), {color})
        self.desktop.log_out()
        self.desktop.log_in()
        wait_until(lambda: set(self.bare()) == {color}, "the same colour after the next login")

    def test_is_put_back_when_the_box_is_off(self):
        self.start_test()
        self.click(TEST_ON_DESKTOP)
        self.desktop.await_wallpaper()
        # Including what the desktop keeps for its next start.
        self.desktop.restart_desktop()
        self.desktop.await_wallpaper()

    def test_is_put_back_by_cancel(self):
        self.start_test()
        self.cancel()
        self.desktop.await_wallpaper()

    def test_is_put_back_by_the_end(self):
        self.start_test()
        self.quit()
        self.desktop.await_wallpaper()

    def test_is_put_back_at_the_next_start_after_a_kill(self):
        self.start_test()
        picked = self.bare()
        self.program.signal(signal.SIGKILL)
        self.program.wait()
        self.assertEqual(self.bare(), picked)
        self.program = self.start()
        self.desktop.await_wallpaper()

    def test_is_put_back_after_a_kill_and_a_logout(self):
        self.start_test()
        self.program.signal(signal.SIGKILL)
        self.program.wait()
        self.desktop.log_out()
        self.desktop.log_in()
        self.program = self.start()
        self.desktop.await_wallpaper()

    def test_is_left_alone_when_the_user_has_chosen_another_wallpaper_meanwhile(self):
        self.start_test()
        other = self.desktop.picture_file.with_name("other.png")
        wallpaper.write(other, average=(160, 110, 80))
        self.desktop.set_wallpaper(other)
        shown = lambda: all(wallpaper.is_near(color, wallpaper.color_at(*place, (160, 110, 80)))  # noqa: E731
                            for place, color in zip(self.desktop.BARE, self.bare()))
        wait_until(shown, "the other wallpaper")
        self.quit()
        self.assertTrue(shown())


class DefaultWallpaper(ColorTest):
    """The desktop of a user who has never chosen a wallpaper."""

    BESIDE = (1252, 80, 28, 600)
    """Left, top, width and height of an area beside the windows of the tests and their shadows."""

    def arrange(self):
        self.desktop.log_out()
        self.desktop.forget_wallpaper()
        self.addCleanup(self.desktop.set_wallpaper, self.desktop.picture_file)
        self.desktop.log_in()
        wait_until(lambda: len(self.desktop.picture().crop(*self.BESIDE).colors()) > 50, "a picture on the desktop")
        self.whole = self.desktop.picture()
        self.wallpaper = self.whole.crop(*self.BESIDE)

    def test_is_averaged(self):
        data = self.whole.crop(0, 60, 1280, 680).data
        seen = tuple(sum(data[color::3]) / (len(data) / 3) for color in range(3))
        self.open_prefs()
        self.show("Colors")
        # Scaled to the screen, the picture may lose its edges.
        self.await_picked(lambda color: wallpaper.is_near(color, seen, 12), f"the average of the wallpaper, {seen}")
        self.quit()

    def try_color(self):
        self.open_prefs()
        self.show("Colors")
        self.click(TEST_ON_DESKTOP)
        wait_until(lambda: len(self.desktop.picture().crop(*self.BESIDE).colors()) == 1, "the colour on the desktop")

    def await_default(self):
        def is_there():
            # A compositor may round differently after it reloads the picture.
            return wallpaper.is_near(self.desktop.picture().crop(*self.BESIDE).data, self.wallpaper.data, 2)

        wait_until(is_there, "the wallpaper as before")

    def test_comes_back_after_a_test_and_stays_for_the_next_login(self):
        self.try_color()
        self.click(TEST_ON_DESKTOP)
        self.await_default()
        self.cancel()
        self.try_color()
        self.quit()
        self.await_default()
        self.desktop.log_out()
        self.desktop.log_in()
        self.await_default()


@unittest.skipIf(DESKTOP.choose_plain is Session.choose_plain, "its plain colour is a setting like those of pictures")
class PlainColor(ColorTest):
    """The desktop of a user who has chosen a plain colour instead of a wallpaper."""

    COLOR = (48, 80, 112)

    def arrange(self):
        self.desktop.log_out()
        self.desktop.choose_plain(self.COLOR)
        self.addCleanup(self.forget)
        self.desktop.log_in()
        self.await_plain(self.COLOR)

    def forget(self):
        self.desktop.log_out()
        self.desktop.forget_wallpaper()
        self.desktop.log_in()
        self.desktop.set_wallpaper(self.desktop.picture_file)
        self.desktop.await_wallpaper()

    def test_is_picked_and_comes_back_after_a_test(self):
        self.open_prefs()
        self.show("Colors")
        self.await_picked(lambda color: color == self.COLOR, "the desktop's colour on the page")
        self.cancel()
        self.start_test()
        self.click(TEST_ON_DESKTOP)
        self.await_plain(self.COLOR)

    def test_is_put_back_at_the_next_start_after_a_kill(self):
        picked = self.start_test()
        self.program.signal(signal.SIGKILL)
        self.program.wait()
        self.assertEqual(set(self.bare()), {picked})
        self.program = self.start()
        self.await_plain(self.COLOR)

    def test_another_one_dropped_on_it_lasts_as_long_as_the_session(self):
        picked = self.start_test()
        self.drop_swatch()
        self.cancel()
        self.quit()
        self.assertEqual(set(self.bare()), {picked})
        self.desktop.log_out()
        self.desktop.log_in()
        self.await_plain(self.COLOR)
