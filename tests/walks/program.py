"""A running Qt program, and what its witness says about its windows."""
import json
import os
import select
import signal
import socket
import subprocess

POLL = 0.02  # seconds
FIXED_SIZE = "ZORTest"  # how the names of classes begin whose windows have fixed sizes


class WalkFailure(Exception):
    """What a person would complain about."""


class ProgramEnded(WalkFailure):
    """The program has ended while the walk needed it."""


class Widget:
    """A visible widget, an entry of a menu, or a tab: the values that WidgetDescription.cpp lists."""

    def __init__(self, values):
        self.values = values

    def __getattr__(self, name):
        return self.values.get(name)

    def is_a(self, class_name):
        return class_name in self.values.get("classes", ())

    def parts(self, what, text=None):
        """Returns the entries, tabs or rows; those of a text only."""
        parts = [Widget(values) for values in self.values.get(what) or ()]
        return [part for part in parts if text is None or part.text == text]

    def center(self):
        x, y, width, height = self.place
        return x + width // 2, y + height // 2

    def __str__(self):
        return f"{self.values.get('classes', ['?'])[0]} '{self.name or self.text or self.title or ''}'"


class Window(Widget):
    """A visible window; menus, boxes and the windows of the program alike."""

    def __init__(self, values):
        super().__init__({**values["widgets"][0], **values})
        self.all = [Widget(inner) for inner in values["widgets"]]

    def has_fixed_size(self):
        """Whether it belongs to the test bench, whose windows may be larger than a screen."""
        return any(name.startswith(FIXED_SIZE) for name in self.classes)

    def widgets(self, name=None, kind=None, text=None):
        """Returns the widgets of an object name, class, and text without mnemonic."""
        return [
            widget
            for widget in self.all
            if (name is None or widget.name == name)
            and (kind is None or widget.is_a(kind))
            and (text is None or text in (widget.text, widget.plain, widget.title))
        ]

    def widget(self, **wanted):
        found = self.widgets(**wanted)
        return found[0] if found else None


class State:
    """All visible windows at one moment."""

    def __init__(self, values):
        self.received, self.focus = values["received"], values["focus"]
        self.popup, self.modal = values["popup"], values["modal"]
        self.windows = [Window(window) for window in values["windows"]]

    def window(self, what):
        """Returns the visible window of a class, an object name or a title; None where there is none."""
        for window in self.windows:
            if window.is_a(what) or what == window.name or what == window.title:
                return window
        return None

    def active(self):
        return next((window for window in self.windows if window.active), None)

    def menu(self):
        """Returns the menu that is open, the innermost one."""
        return next((window for window in self.windows if window.id == self.popup and window.is_a("QMenu")), None)

    def focused(self):
        return next((widget for window in self.windows for widget in window.all if widget.id == self.focus), None)


class Program:
    """A process with a witness. Its files, settings and what it prints are in the folder that is its home."""

    count = 0

    def __init__(self, command, home, witness, environment):
        Program.count += 1
        self.socket_path = os.path.join(os.environ["XDG_RUNTIME_DIR"], f"witness{Program.count}")
        self.log_path = home / f"log{Program.count}.txt"
        whole = dict(
            os.environ,
            HOME=str(home),
            XDG_CONFIG_HOME=str(home / "config"),
            XDG_DATA_HOME=str(home / "data"),
            XDG_CACHE_HOME=str(home / "cache"),
            QT_PLUGIN_PATH=str(witness),
            QT_QPA_GENERIC_PLUGINS=f"walkwitness:{self.socket_path}",
            QT_HASH_SEED="0",
            **environment,
        )
        with open(self.log_path, "wb") as log:
            self.process = subprocess.Popen(command, env=whole, cwd=home, stdout=log, stderr=log, stdin=subprocess.DEVNULL)
        self.link = None
        self.buffer = b""

    def runs(self):
        return self.process.poll() is None

    def connects(self):
        """Connects to the witness where it listens already."""
        if not self.runs():
            raise ProgramEnded(f"the program ended at its start with {self.process.returncode}")
        link = socket.socket(socket.AF_UNIX)
        try:
            link.connect(self.socket_path)
        except OSError:
            link.close()
            return False
        link.settimeout(60)
        self.link = link
        return True

    def ask(self, request=""):
        """Returns the State once the event loop of the program runs. A request "hurry NAME" lets a timer expire."""
        try:
            self.link.sendall(request.encode() + b"\n")
            while b"\n" not in self.buffer:
                received = self.link.recv(1 << 20)
                if not received:
                    raise ConnectionError("the witness has gone")
                self.buffer += received
        except (ConnectionError, BrokenPipeError) as error:
            raise ProgramEnded("the program has ended") from error
        except socket.timeout as error:
            raise WalkFailure("the program does not answer for a minute") from error
        line, _, self.buffer = self.buffer.partition(b"\n")
        return State(json.loads(line))

    def wait_for_end(self, polls):
        """Returns the exit code; None if the program does not end."""
        for _ in range(polls):
            if not self.runs():
                return self.process.returncode
            pause()
        return None

    def kill(self):
        """Ends the program as a crash does, without a chance to save anything."""
        self.process.send_signal(signal.SIGKILL)
        self.process.wait()

    def close(self):
        if self.runs():
            self.kill()
        if self.link:
            self.link.close()


def pause():
    """Waits until it is worth to look again."""
    select.select([], [], [], POLL)
