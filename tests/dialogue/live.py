"""The engine as a process whose input stays open."""

import queue
import subprocess
import threading

PATIENCE = 20.0  # for an answer that has to come
SILENCE = 0.3  # for one that must not come


class Process:
    def __init__(self, engine, patience, *arguments, **how):
        self.patience = PATIENCE * patience
        self.process = subprocess.Popen(
            [str(engine), *arguments], stdin=subprocess.PIPE, stdout=subprocess.PIPE, **how
        )
        self.lines = queue.Queue()
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        for line in self.process.stdout:
            self.lines.put(line.decode("ascii").removesuffix("\n"))
        self.lines.put(None)

    def send(self, *lines):
        self.send_raw("".join(line + "\n" for line in lines).encode())

    def send_raw(self, data):
        self.process.stdin.write(data)
        self.process.stdin.flush()

    def line(self):
        return self.lines.get(timeout=self.patience)

    def is_silent(self):
        try:
            return self.lines.get(timeout=SILENCE) is None
        except queue.Empty:
            return True

    def up_to_bestmove(self):
        lines = []
        while not lines or not lines[-1].startswith("bestmove "):
            lines.append(self.line())
            assert lines[-1] is not None, "the process ended without a bestmove"
        return lines

    def ends(self):
        return self.process.wait(timeout=self.patience)

    def runs(self):
        return self.process.poll() is None
