"""End-to-end test of the main window as the start-up leaves it: the board's
size and picture, the window's size and the values of the window.

    python3 test_shell.py PROGRAM [unittest selectors...]
"""

import os
import sys
import unittest

# No byte-code caches in the source tree.
sys.dont_write_bytecode = True
from valkenhorn_session import Session, XServer  # noqa: E402

PROGRAM = None


class WindowAfterStartUp(unittest.TestCase):
    def test_board_and_window_sizes(self):
        with XServer() as x, Session(PROGRAM, x.display) as s:
            s.wait_started()
            board = s.get("Speelveld")
            self.assertEqual((board["width"], board["height"]), (25300, 13210))
            self.assertTrue(board["picture"].endswith("groen_leger/yambo_1.bmp"))
            form = s.get("Hoofdvenster")
            self.assertEqual(form["caption"], "Valkenhorn!")
            self.assertGreaterEqual(form["width"], 25545)
            self.assertGreaterEqual(form["height"], 13800)
            state = s.state()
            self.assertEqual(state["MinWidth"], 25545)
            self.assertEqual(state["MinHeight"], 13800)
            self.assertEqual(state["BoardSide"], 1)
            self.assertFalse(state["GameRunning"])
            for name in ("cmdStart", "cmdDisconnect"):
                self.assertFalse(s.get(name)["enabled"], name)
            self.assertTrue(s.get("Scroll_Timer")["enabled"])


if __name__ == "__main__":
    PROGRAM = os.path.abspath(sys.argv[1])
    unittest.main(argv=[sys.argv[0]] + sys.argv[2:], verbosity=2)
