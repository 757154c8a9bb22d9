"""What a window shows on a real screen while a wait blocks the program. Qt's offscreen platform repaints more."""

import os
import pathlib
import subprocess
import sys

if __name__ == "__main__":
    program = pathlib.Path(sys.argv[1]) / "window_repaint_tests"
    sys.exit(subprocess.run([program], env={**os.environ, "QT_QPA_PLATFORM": "xcb"}, timeout=120).returncode)
