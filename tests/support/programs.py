"""Programs as processes that are spoken to by lines, and where they are found."""

import os
import queue
import shutil
import subprocess
import threading
import time


def program(name):
    """The path of an installed program; Debian keeps its engines in /usr/games."""
    path = shutil.which(name, path=os.environ.get("PATH", "") + os.pathsep + "/usr/games")
    if path is None:
        raise FileNotFoundError(f"{name} is not installed")
    return path


class Spoken:
    """A process whose input stays open. Its lines wait in `lines`, each with the moment when it came;
    the last is None, at the end of its output."""

    def __init__(self, command, **how):
        self.lines = queue.Queue()
        self.process = subprocess.Popen(
            [str(word) for word in command],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            **how,
        )
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        for line in self.process.stdout:
            text = line.decode("ascii", "backslashreplace").removesuffix("\n")
            self.lines.put((time.monotonic(), text))
        self.lines.put((time.monotonic(), None))

    def write(self, data):
        self.process.stdin.write(data)
        self.process.stdin.flush()
