"""What tests on a real desktop share. The variable QEL_DESKTOP says which one; all tests of a run use the same session."""

import atexit
import os

from plasma import Plasma
from replicants import AUTOSTART, ReplicantsTest
from xfce import Xfce

DESKTOPS = {"xfce": Xfce, "plasma": Plasma}
DESKTOP = DESKTOPS[os.environ["QEL_DESKTOP"]]
SHARED = []


def shared():
    if not SHARED:
        SHARED.append(DESKTOP())
        atexit.register(SHARED[0].close)
    return SHARED[0]


class RealTest(ReplicantsTest):
    """The program on the shared session, in the left top corner of the screen."""

    @classmethod
    def setUpClass(cls):
        cls.desktop = shared()

    def make_config(self):
        config = self.desktop.config
        for file in [*config.glob("x-vnd.kvt-Qel*"), config / AUTOSTART]:
            file.unlink(missing_ok=True)
        return config

    def picture_name(self):
        return f"{os.environ['QEL_DESKTOP']}.{self.id()}"
