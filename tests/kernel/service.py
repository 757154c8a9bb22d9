"""The service under test as a process."""

import os
import pathlib
import signal
import subprocess

from card import REGISTRY, Card
from programs import LIMIT, wait_until

LOG = pathlib.Path("/run/results/pellvaned.log")


class Service:
    def __init__(self, folder, *arguments):
        with LOG.open("ab") as log:
            self.process = subprocess.Popen([folder / "pellvaned", "--foreground", *arguments], stdout=log, stderr=log)

    def wait_for(self, name, seconds=15):
        """Returns the card with this name when the service answers for it."""
        card = Card(name)

        def answers():
            assert self.process.poll() is None, f"pellvaned ended with {self.process.returncode}"
            return card.is_there()

        wait_until(f"the service answers for {name}", answers, seconds)
        return card

    @staticmethod
    def names():
        folder = REGISTRY / "Pellvane"
        return sorted(path.name for path in folder.iterdir()) if folder.exists() else []

    def children(self):
        """The process numbers of its children, with their command lines."""
        found = {}
        for status in pathlib.Path("/proc").glob("[0-9]*/stat"):
            try:
                if int(status.read_text().rsplit(")", 1)[1].split()[1]) == self.process.pid:
                    found[int(status.parent.name)] = (status.parent / "cmdline").read_bytes()
            except (OSError, IndexError):
                pass
        return found

    def kill_children(self):
        children = self.children()
        for child in children:
            os.kill(child, signal.SIGKILL)
        return children

    def end(self):
        if self.process.poll() is None:
            self.process.terminate()
        status = self.process.wait(LIMIT)
        assert status in (0, -signal.SIGTERM), f"pellvaned ended with {status}"

    def kill(self):
        """A no-op after it has ended."""
        self.process.kill()
        self.process.wait()
