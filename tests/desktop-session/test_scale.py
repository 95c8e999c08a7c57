# SPDX-License-Identifier: MIT
"""The scale of the screen changes while the programs run, as a desktop's settings change it."""

import pathlib
import signal
import subprocess
import tempfile
import time

from charts import RECORDED, ChartsTest
from desktop import SCREEN, wait_until
from replicants import CHART, ReplicantsTest
from xclient import Client
from xsettings import SettingsManager

PLACE, SIZE = (40, 50), (420, 292)
"""Place and size of the window's content, in logical pixels: at all scales, all or most of it is on the screen."""
MIDDLES = ((300, 90), (300, 150), (300, 210))
"""Middles of the charts, at this size."""
WAY = (2, 1.5, 1, 2, 1, 1.5, 2, 1)


class ScaleTest(ChartsTest):
    environment = RECORDED
    settings = {"Xft/DPI": 96 * 1024}

    def setUp(self):
        self.manager = SettingsManager(self.desktop.environment["DISPLAY"], self.settings)
        self.addCleanup(lambda: self.manager.close())
        super().setUp()

    def place(self):
        self.desktop.xdotool("windowmove", self.window, *PLACE)
        self.desktop.xdotool("windowsize", self.window, *SIZE)
        wait_until(lambda: self.desktop.geometry(self.window)[2:] == SIZE, "the size")
        # The window manager places the frame; the content lies within.
        left, top = self.desktop.geometry(self.window)[:2]
        self.desktop.xdotool("windowmove", self.window, 2 * PLACE[0] - left, 2 * PLACE[1] - top)
        self.await_geometry(self.window, (*PLACE, *SIZE), 1)

    def await_geometry(self, window, logical, scale):
        """Takes a frame in logical pixels; each number on the screen may be rounded either way."""
        def fits():
            found = self.desktop.geometry(window)
            return all(abs(number - scale * wanted) < 1 for number, wanted in zip(found, logical))

        wait_until(fits, f"{logical} at {scale}")

    def set_scale(self, scale):
        self.manager.set_scale(scale)
        self.await_geometry(self.window, (*PLACE, *SIZE), scale)

    def pause(self):
        """Pauses all charts, and returns what the window shows from then on."""
        for x, y in MIDDLES:
            self.popup(x, y)
            self.choose("u")
        return self.still()

    def assert_same(self, found, expected, what="the picture"):
        if found == expected:
            return
        for name, picture in (("found", found), ("expected", expected)):
            path = pathlib.Path(tempfile.gettempdir(), f"{self.id()}.{name}.ppm")
            path.write_bytes(b"P6 %d %d 255\n" % (picture.width, picture.height) + picture.data)
            print(f"\n    {name}: {path}")
        self.fail(f"{what} is another one")

    def still(self, window=None):
        """Returns what a window shows once it no longer changes."""
        pictures = [None]

        def is_still():
            pictures.append(self.desktop.picture(window or self.window))
            return len(pictures) > 4 and all(picture == pictures[-1] for picture in pictures[-4:])

        wait_until(is_still, "a picture that stays")
        return pictures[-1]


    def await_settled(self):
        """For two seconds after a change, the window manager's actions do not count as the user's; nothing announces
        the end of that time."""
        changed = time.monotonic()
        wait_until(lambda: time.monotonic() > changed + 2.5, "the window to be settled")


class Windows(ScaleTest):
    def test_the_window_follows_and_shows_nothing_of_the_scale_before(self):
        pictures = {1: self.pause()}
        for scale in WAY:
            self.set_scale(scale)
            picture = self.still()
            # Whatever the scale was before.
            self.assert_same(picture, pictures.setdefault(scale, picture), f"the picture at {scale}")
        self.assertEqual(len(pictures), 3)

    def test_charts_scroll_on(self):
        for scale in WAY:
            self.set_scale(scale)
            self.await_change()

    def test_many_changes_at_once_end_with_the_last(self):
        before = self.pause()
        for scale in WAY * 3:
            self.manager.set_scale(scale)
        self.set_scale(1)
        self.assert_same(self.still(), before)

    def test_other_windows_follow(self):
        self.desktop.key("ctrl+a", window=self.window)
        about = self.program.window("^About Qel$")
        self.desktop.key("ctrl+p", window=self.window)
        prefs = self.program.window("^Global preferences$")
        geometries = {window: self.desktop.geometry(window) for window in (about, prefs)}
        pictures = {about: self.still(about), prefs: self.buttons(prefs)}
        for scale in WAY:
            self.set_scale(scale)
            for window, (left, top, width, height) in geometries.items():
                wait_until(lambda: all(abs(found - scale * wanted) < 1 for found, wanted in
                                       zip(self.desktop.size(window), (width, height))), f"the size at {scale}")
        for window, geometry in geometries.items():
            self.await_geometry(window, geometry, 1)
        self.assert_same(self.still(about), pictures[about])
        self.assert_same(self.buttons(prefs), pictures[prefs])

    def buttons(self, window):
        """Those of the preferences; beside them there are sliders. The toolkit draws their ticks in one of two colours,
        the first time in the other one."""
        picture = self.still(window)
        height = picture.height // 5
        return picture.crop(0, picture.height - height, picture.width, height)

    def test_windows_look_as_if_they_were_opened_at_the_scale(self):
        def open_prefs():
            self.desktop.key("ctrl+p", window=self.window)
            return self.program.window("^Global preferences$")

        prefs = open_prefs()
        size = tuple(2 * length for length in self.desktop.size(prefs))
        self.set_scale(2)
        wait_until(lambda: self.desktop.size(prefs) == size, "preferences of twice the size")
        followed = self.buttons(prefs)
        self.desktop.key("alt+F4", window=prefs)
        wait_until(lambda: self.shown() == [self.window], "the preferences to close")
        prefs = open_prefs()
        self.assertEqual(self.desktop.size(prefs), size)
        self.assert_same(self.buttons(prefs), followed)

    def test_an_open_menu_follows(self):
        self.popup(*MIDDLES[0])
        menu = (set(self.shown()) - {self.window}).pop()
        before = self.desktop.size(menu)
        picture = self.still(menu)
        self.set_scale(2)
        wait_until(lambda: self.desktop.size(menu) == (2 * before[0], 2 * before[1]), "a menu of twice the size")
        self.await_change()
        self.set_scale(1)
        wait_until(lambda: self.desktop.size(menu) == before, "a menu of the size before")
        self.assert_same(self.still(menu), picture)
        self.choose("u")

    def test_a_hidden_tab_follows(self):
        before = self.pause()
        self.desktop.key("ctrl+Prior", window=self.window)
        wait_until(lambda: self.picture() != before, "the other tab")
        size = self.desktop.size(self.window)
        self.manager.set_scale(2)
        wait_until(lambda: self.desktop.size(self.window) == (2 * size[0], 2 * size[1]), "the other tab's size")
        self.desktop.key("ctrl+Next", window=self.window)
        self.await_geometry(self.window, (*PLACE, *SIZE), 2)
        self.set_scale(1)
        self.assert_same(self.still(), before)

    def maximise(self, maximised):
        with Client(self.desktop.environment["DISPLAY"]) as client:
            client.set_maximised(self.window, maximised)

    def test_a_maximised_window_stays_maximised(self):
        before = self.pause()
        self.maximise(True)
        wait_until(lambda: self.desktop.size(self.window)[0] == SCREEN[0], "the whole width")
        large = self.desktop.geometry(self.window)

        def captions():
            """The charts get as wide as the screen is in logical pixels: their pictures are stretched."""
            return self.still().crop(0, 0, 300, 100)

        picture = captions()
        for scale in (2, 1.5, 1):
            self.manager.set_scale(scale)
            wait_until(lambda: (captions() == picture) == (scale == 1), f"the picture at {scale}")
            self.assertEqual(self.desktop.geometry(self.window), large)
        self.manager.set_scale(2)
        wait_until(lambda: captions() != picture, "the picture at 2")
        self.maximise(False)
        self.await_geometry(self.window, (*PLACE, *SIZE), 2)
        self.set_scale(1)
        self.assertEqual((self.still().width, self.still().height), (before.width, before.height))

    def test_a_minimised_window_follows(self):
        before = self.pause()
        for way in ((2,), (1,), (1.5, 2, 1), (2, 1)):
            self.desktop.xdotool("windowminimize", self.window)
            wait_until(lambda: self.window not in self.shown(), "the window to go")
            for scale in way:
                self.set_scale(scale)
            self.desktop.xdotool("windowmap", self.window)
            wait_until(lambda: self.window in self.shown(), "the window to come")
            picture = self.still()
            self.await_geometry(self.window, (*PLACE, *SIZE), way[-1])
            if way[-1] == 1:
                # Except for the bottom chart, which may have the focus frame now.
                above = (0, 0, SIZE[0], MIDDLES[1][1])
                self.assert_same(picture.crop(*above), before.crop(*above))
            self.assertEqual(picture.pixel(picture.width - 2, picture.height - 2),
                             before.pixel(SIZE[0] - 2, SIZE[1] - 2))

    def test_a_window_that_would_be_out_of_reach_comes_and_goes_back(self):
        self.desktop.xdotool("windowmove", self.window, 800, 480)
        wait_until(lambda: self.desktop.geometry(self.window)[0] >= 800, "the window on the right")
        left, top, width, height = self.desktop.geometry(self.window)
        for _ in range(2):
            self.manager.set_scale(2)
            wait_until(lambda: self.desktop.size(self.window) == (2 * width, 2 * height), "twice the size")

            def is_in_reach():
                x, y = self.desktop.geometry(self.window)[:2]
                return 0 <= x < SCREEN[0] - 128 and 0 < y < SCREEN[1]

            wait_until(is_in_reach, "the window's title on the screen")
            self.manager.set_scale(1)
            wait_until(lambda: self.desktop.geometry(self.window) == (left, top, width, height), "the window back")

    def test_a_window_comes_from_below_a_panel_and_goes_back_when_that_is_gone(self):
        with Client(self.desktop.environment["DISPLAY"]) as client:
            panel = str(client.make_window())
            client.sync()
            for name, kind, value in (("_NET_WM_WINDOW_TYPE", "32a", "_NET_WM_WINDOW_TYPE_DOCK"),
                                      ("_NET_WM_STRUT", "32c", "0, 0, 150, 0")):
                self.desktop.output("xprop", "-id", panel, "-f", name, kind, "-set", name, value, check=True)
            self.desktop.xdotool("windowmap", panel)
            wait_until(lambda: " 0, 150," in self.desktop.output("xprop", "-root", "_NET_WORKAREA"), "the panel")
            self.manager.set_scale(2)
            wait_until(lambda: self.desktop.size(self.window) == (2 * SIZE[0], 2 * SIZE[1])
                       and self.desktop.geometry(self.window)[1] > 150, "the window below the panel")
        self.await_geometry(self.window, (*PLACE, *SIZE), 2)
        self.set_scale(1)

    def test_the_logical_size_is_saved(self):
        self.set_scale(2)
        self.settle()
        self.quit()
        self.manager.set_scale(1)
        self.restart()
        self.await_geometry(self.window, (*PLACE, *SIZE), 1)
        self.quit()
        self.manager.set_scale(1.5)
        self.restart()
        self.await_geometry(self.window, (*PLACE, *SIZE), 1.5)
        self.set_scale(1)

    def restart(self):
        self.program = self.start(**self.environment)
        self.window = self.program.window()

    def test_a_size_that_the_user_gives_at_a_scale_is_kept(self):
        self.set_scale(2)
        self.await_settled()
        self.desktop.resize(self.window, 1000, 600)
        self.settle()
        self.manager.set_scale(1)
        wait_until(lambda: self.desktop.size(self.window) == (500, 300), "half of the size")

    def test_what_cannot_be_shown_is_no_end(self):
        for resolution in (0, -1, 1, -(1 << 31)):
            self.manager.set({"Xft/DPI": resolution, "Gdk/WindowScalingFactor": resolution})
            self.settle()
            self.await_geometry(self.window, (*PLACE, *SIZE), 1)
        for resolution in (1 << 30, 0x7FFFFFFF, 100 * 96 * 1024):
            self.manager.set({"Xft/DPI": resolution, "Gdk/WindowScalingFactor": resolution})
            wait_until(lambda: self.desktop.size(self.window)[0] > 4 * SIZE[0], "a large window")
            self.assertLessEqual(self.desktop.size(self.window)[0], 8 * SIZE[0])
            self.manager.set({"Gdk/WindowScalingFactor": None})
            self.set_scale(1)
        self.manager.set({"Gdk/WindowScalingFactor": None})
        self.set_scale(1)
        self.await_change()
        # The toolkit may print something about this, as long as the program does not end because of it.
        self.program.signal(signal.SIGTERM)
        self.assertEqual(self.program.wait()[0], 0)


class GtkDesktops(ScaleTest):
    """They have an integer factor for windows in addition to the font resolution."""

    def set_and_await(self, scale, settings):
        self.manager.set(settings)
        self.await_geometry(self.window, (*PLACE, *SIZE), scale)

    def test_the_factor_counts_live(self):
        before = self.pause()
        self.set_and_await(2, {"Gdk/WindowScalingFactor": 2})
        self.set_and_await(1.5, {"Gdk/WindowScalingFactor": 1, "Xft/DPI": 144 * 1024})
        self.set_and_await(2, {"Gdk/WindowScalingFactor": 2, "Xft/DPI": 96 * 1024})
        self.set_and_await(1, {"Gdk/WindowScalingFactor": None})
        self.assert_same(self.still(), before)

    def test_it_counts_once_where_the_resolution_has_it(self):
        before = self.pause()
        self.set_and_await(2, {"Gdk/WindowScalingFactor": 2, "Gdk/UnscaledDPI": 96 * 1024, "Xft/DPI": 192 * 1024})
        self.set_and_await(1, {"Gdk/WindowScalingFactor": 1, "Gdk/UnscaledDPI": 96 * 1024, "Xft/DPI": 96 * 1024})
        self.assert_same(self.still(), before)

    def test_it_counts_at_the_start(self):
        self.settle()
        self.quit()
        self.manager.set({"Gdk/WindowScalingFactor": 2})
        self.program = self.start(**self.environment)
        self.window = self.program.window()
        self.await_geometry(self.window, (*PLACE, *SIZE), 2)
        at_start = self.pause_at(2)
        self.set_and_await(1, {"Gdk/WindowScalingFactor": 1})
        self.set_and_await(2, {"Gdk/WindowScalingFactor": 2})
        self.assert_same(self.still(), at_start)

    def pause_at(self, scale):
        for x, y in MIDDLES:
            self.popup(scale * x, scale * y)
            self.choose("u")
        return self.still()

    def test_the_toolkits_own_variables_are_the_users_word(self):
        self.manager.set({"Gdk/WindowScalingFactor": 2})
        # Plasma sessions set the second one.
        for name, value in (("QT_SCALE_FACTOR", "1.5"), ("QT_SCREEN_SCALE_FACTORS", "screen=1.5;")):
            self.program.signal(signal.SIGTERM)
            self.assert_ends_well(self.program)
            self.program = self.start(**{name: value}, **self.environment)
            self.window = self.program.window()
            self.await_geometry(self.window, (*PLACE, *SIZE), 1.5)
            self.await_change()
            self.manager.set({"Gdk/WindowScalingFactor": 1})
            self.await_change()
            self.await_geometry(self.window, (*PLACE, *SIZE), 1.5)

    def test_the_variables_of_a_login_to_mate_are_not(self):
        """Its daemon gives all programs the scale at login in variables, and publishes changes only in the settings."""
        settings = {"Gdk/WindowScalingFactor": 1, "Gdk/UnscaledDPI": 96 * 1024, "Xft/DPI": 96 * 1024}
        self.manager.set(settings)
        self.settle()
        self.quit()
        self.program = self.start(XDG_CURRENT_DESKTOP="MATE", QT_SCALE_FACTOR="2", QT_FONT_DPI="120", **self.environment)
        self.window = self.program.window()
        self.await_geometry(self.window, (*PLACE, *SIZE), 1)
        self.set_and_await(2, {"Gdk/WindowScalingFactor": 2, "Xft/DPI": 192 * 1024})
        self.set_and_await(1.5, {"Gdk/WindowScalingFactor": 1, "Gdk/UnscaledDPI": 144 * 1024, "Xft/DPI": 144 * 1024})
        self.set_and_await(1, settings)

    def test_a_daemon_that_is_started_anew_is_heard(self):
        self.manager.close()
        self.manager = SettingsManager(self.desktop.environment["DISPLAY"], self.settings)
        for scale in WAY:
            self.set_scale(scale)


class NoDaemon(ChartsTest):
    environment = RECORDED

    def test_one_that_comes_later_is_heard(self):
        size = self.desktop.size(self.window)
        manager = SettingsManager(self.desktop.environment["DISPLAY"], {"Xft/DPI": 192 * 1024})
        self.addCleanup(manager.close)
        wait_until(lambda: self.desktop.size(self.window) == (2 * size[0], 2 * size[1]), "twice the size")

    def test_the_resolution_among_the_servers_resources_counts_at_the_start(self):
        size = self.desktop.size(self.window)
        self.quit()
        self.merge("Xft.dpi: 192")
        self.addCleanup(self.desktop.output, "xrdb", "-remove")
        self.program = self.start(**self.environment)
        self.window = self.program.window()
        wait_until(lambda: self.desktop.size(self.window) == (2 * size[0], 2 * size[1]), "twice the size")

    def merge(self, resources):
        subprocess.run(["xrdb", "-nocpp", "-merge"], input=resources, text=True, env=self.desktop.environment,
                       check=True, timeout=20)


class Replicants(ReplicantsTest):
    """Charts on the desktop."""

    environment = RECORDED
    NEAR, FAR = (420, 100), (900, 500)

    def setUp(self):
        self.manager = SettingsManager(self.desktop.environment["DISPLAY"], {"Xft/DPI": 96 * 1024})
        self.addCleanup(lambda: self.manager.close())
        super().setUp()
        for place in (self.NEAR, self.FAR):
            self.desktop.resize(self.window, 360, 300)
            count = len(self.replicants())
            self.drag_out(place[0] + 4, place[1] + 4)
            self.replicant(count + 1)
        self.geometries = self.places()
        self.assertEqual([geometry[:2] for geometry in self.geometries], [self.NEAR, self.FAR])

    def await_places(self, places):
        wait_until(lambda: self.places() == places, f"the places {places}")

    def far_at_2(self):
        """In the nearest place: in the bottom right corner."""
        width, height = (2 * number for number in self.geometries[1][2:])
        return SCREEN[0] - width, SCREEN[1] - height, width, height

    def test_they_keep_their_logical_places_and_sizes(self):
        near = tuple(2 * number for number in self.geometries[0])
        for _ in range(3):
            self.manager.set_scale(2)
            wait_until(lambda: sorted(self.places()) == sorted([near, self.far_at_2()]), "the places at 2")
            self.manager.set_scale(1)
            self.await_places(self.geometries)

    def test_they_show_nothing_of_the_scale_before(self):
        self.program.signal(signal.SIGTERM)
        self.assert_ends_well(self.program)

        def pictures():
            found = [self.desktop.picture(window) for window in sorted(self.desktop.windows(CHART))]
            return [picture.data for picture in found]

        def still():
            seen = [None]

            def is_still():
                seen.append(pictures())
                return len(seen) > 4 and all(one == seen[-1] for one in seen[-4:])

            wait_until(is_still, "pictures that stay")
            return seen[-1]

        before = still()
        self.manager.set_scale(1.5)
        wait_until(lambda: self.places() != self.geometries, "other places")
        still()
        self.manager.set_scale(1)
        self.await_places(self.geometries)
        self.assertTrue(still() == before)

    def test_the_places_are_kept_over_a_login_at_another_scale(self):
        self.manager.set_scale(2)
        near = tuple(2 * number for number in self.geometries[0])
        wait_until(lambda: near in self.places(), "the places at 2")
        self.end_host(signal.SIGTERM)
        self.start_host()
        wait_until(lambda: sorted(self.places()) == sorted([near, self.far_at_2()]), "the places at 2")
        self.end_host(signal.SIGTERM)
        self.manager.set_scale(1)
        self.start_host()
        self.await_places(self.geometries)
