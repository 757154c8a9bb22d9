"""The service under test as a process."""

import os
import pathlib
import signal
import socket
import subprocess
import tempfile

from card import Card
from programs import LIMIT, wait_until



class Service:
    def __init__(self, folder, root, log, *arguments):
        self.root = root
        # Before the tests: the utility gives up on an answer after two seconds.
        with log.open("ab") as output:
            self.process = subprocess.Popen([folder / "pellvaned", "--foreground", "--root", root, *arguments],
                                            stdout=output, stderr=output,
                                            preexec_fn=lambda: os.setpriority(os.PRIO_PROCESS, 0, 0))

    def describe_state(self):
        """Where the service waits in the kernel, and what its supplicants say."""
        folder = pathlib.Path(f"/proc/{self.process.pid}")
        try:
            said = [f"pellvaned waits in {(folder / 'wchan').read_text()}"]
            for line in self.children().values():
                interface, settings = [word[2:].decode() for word in line.split(b"\0") if word[:2] in (b"-i", b"-c")]
                said += [self._ask_supplicant(pathlib.Path(settings).parent / interface, command)
                         for command in ("STATUS", "LIST_NETWORKS", "SCAN_RESULTS")]
            return "\n".join(said)
        except (OSError, ValueError) as error:
            return f"pellvaned: {error}"

    @staticmethod
    def _ask_supplicant(path, command):
        with tempfile.TemporaryDirectory() as folder, socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as control:
            control.settimeout(5)
            control.bind(f"{folder}/client")
            control.connect(str(path))
            control.send(command.encode())
            return f"{command}: {control.recv(8192).decode(errors='replace')}"

    def wait_for(self, name, seconds=LIMIT):
        """Returns the card with this name when the service answers for it."""
        card = Card(self.root, name)

        def answers():
            assert self.process.poll() is None, f"pellvaned ended with {self.process.returncode}"
            return card.is_there()

        wait_until(f"the service answers for {name}", answers, seconds)
        return card

    def names(self):
        folder = self.root / "Pellvane"
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
