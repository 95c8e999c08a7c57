"""Charts on a real desktop: torn off, moved, resized, dropped back and removed, and what the desktop does around them."""

from real import RealTest


class TearOff(RealTest):
    def test_leaves_a_chart_where_it_was_dropped(self):
        before = self.desktop.files()
        self.drag_out(704, 304)
        frame = self.desktop.geometry(self.replicant())
        self.assertEqual(frame[:2], (700, 300))
        self.await_chart(*frame)
        self.assertEqual(self.desktop.files(), before)
