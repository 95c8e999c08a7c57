"""Charts that are dragged out of the window onto the desktop."""

from replicants import ReplicantsTest


class DragOut(ReplicantsTest):
    def test_shows_the_chart_where_it_was_dropped(self):
        width = self.desktop.size(self.window)[0]
        self.drag_out(700, 500)
        replicant = self.replicant()
        self.assertEqual(self.desktop.geometry(replicant)[:3], (696, 496, width - 6))
        # It is a copy.
        self.assertEqual(self.quit().count(b"ChartType"), 3)
        self.assertEqual(self.replicants(), [replicant])

    def test_again_and_again_shows_as_many(self):
        for count in range(3):
            self.drag_out(700, 500 + 20 * count)
            self.replicant(count + 1)
        self.assertEqual([top for _, top, _, _ in self.places()], [496, 516, 536])
        self.assertEqual(len(self.hosts()), 1)

    def test_that_is_given_up_by_escape_shows_nothing(self):
        self.begin_drag(self.handle(), (700, 500))
        self.desktop.xdotool("key", "Escape")
        self.end_drag()
        self.assert_shows_nothing()

    def test_onto_the_window_itself_shows_nothing(self):
        for place in ((300, 200), (300, 30)):
            with self.subTest(place):
                self.drag_out(*place)
        self.assert_shows_nothing()
        self.assertEqual(self.quit().count(b"ChartType"), 3)

    def test_onto_a_foreign_window_shows_nothing(self):
        self.open_foreign()
        self.drag_out(*self.on_screen(self.foreign, 80, 50))
        self.assert_shows_nothing()

    def test_needs_a_move(self):
        self.desktop.xdotool("mousemove", *self.handle(), "click", 1)
        self.assert_shows_nothing()
