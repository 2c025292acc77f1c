"""A person in front of the program: looks, points, types, and says what is wrong."""
import pathlib
import subprocess

from program import Program, ProgramEnded, WalkFailure, pause
from screen import Screen

PATIENCE = 1000  # polls of 20 ms until a state has to be there
DRAG_STEPS = 8
MAIN_WINDOW = "ZORHostMainWindow"
POLLS_OF_REST = 5


class Walker:
    """Holds the screen and the running program. Faults that do not end the walk are collected."""

    def __init__(self, options, name):
        self.options, self.name = options, name
        self.screen = Screen()
        self.home = pathlib.Path(options.home)
        self.pictures = pathlib.Path(options.pictures)
        self.pictures.mkdir(parents=True, exist_ok=True)
        self.program = None
        self.programs = []
        self.faults = []
        self.number = 0
        for old in self.pictures.glob(f"{name}-*"):
            old.unlink()

    # The program.

    def start(self, *arguments, plugins=True):
        """Starts the host and waits until its window is active. A second start keeps settings and home."""
        return self.start_until(MAIN_WINDOW, *arguments, plugins=plugins)

    def start_until(self, window, *arguments, plugins=True):
        """Starts the host and waits until one of its windows is active."""
        command = [self.options.host, f"--settings={self.home}/host.ini", f"--theme={self.options.theme}"]
        if not plugins:
            command.append("--no-default-plugins")
        self.program = self.launch(command + [str(argument) for argument in arguments])
        return self.wait_for_window(window)

    def launch(self, command):
        """Starts a program and returns it once it answers."""
        environment = {"QT_SCALE_FACTOR": self.options.scale, "ZOR_SAMPLES": str(self.options.samples)}
        program = Program(command, self.home, self.options.witness, environment)
        self.programs.append(program)
        self.wait("the program answers", lambda _: program.connects(), state=lambda: None)
        return program

    def state(self):
        return self.program.ask()

    def wait(self, what, condition, state=None, patience=PATIENCE):
        """Returns what condition(state) returns as soon as that is true; a failure that names what else."""
        look = state or self.state
        for _ in range(patience):
            result = condition(look())
            if result:
                return result
            pause()
        raise WalkFailure(f"it never happens: {what}")

    def wait_for_window(self, what):
        def is_active(state):
            window = state.window(what)
            return window if window and window.active else None

        return self.wait(f"the window {what} is active", is_active)

    def wait_for_no_window(self, what):
        self.wait(f"the window {what} has gone", lambda state: not state.window(what))

    def activate(self, what):
        """Brings a window to the front, as a task bar does."""
        window = self.wait(f"there is a window {what}", lambda state: state.window(what))
        if not window.active:
            self.xdotool("windowactivate", window.number)
        return self.wait_for_window(what)

    def wait_for_end(self):
        code = self.program.wait_for_end(PATIENCE)
        if code is None:
            raise WalkFailure("the program does not end")
        return code

    def check(self, condition, message):
        """Notes a fault and goes on."""
        if not condition:
            self.faults.append(message)
            self.keep(f"fault{len(self.faults)}")
            print(f"fault: {message}", flush=True)

    def wait_until_gone(self, window):
        """Waits for the end of this window; others of its class may stay."""
        self.wait(f"{window} has gone", lambda state: all(other.id != window.id for other in state.windows))

    def title(self):
        """Returns the title of the main window as the window manager knows it."""
        number = self.state().window(MAIN_WINDOW).number
        command = ["xdotool", "getwindowname", str(number)]
        return subprocess.run(command, check=True, timeout=60, capture_output=True, text=True).stdout.strip()

    def wait_for_title(self, what, condition):
        return self.wait(f"the title {what}", lambda title: title if condition(title) else None, state=self.title)

    # Mouse and keys.

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], check=True, timeout=60, stdout=subprocess.DEVNULL)

    def send(self, *arguments, inputs=1):
        """Lets xdotool press so many keys or click so often, and waits until the program has got that."""
        before = self.state().received
        self.xdotool(*arguments)
        try:
            self.wait(
                f"the program gets {' '.join(map(str, arguments))}", lambda state: state.received >= before + inputs
            )
            self.state()  # what follows from the input at once, such as a selection, is done as well
        except ProgramEnded:
            pass  # the walk says whether it may

    def key(self, *keys):
        self.send("key", *keys, inputs=len(keys))

    def type(self, text):
        self.send("type", "--delay", "1", text, inputs=len(text))

    def point(self, at):
        if not self.screen.holds(*at):
            raise WalkFailure(f"{at} is beyond the screen")
        return "mousemove", at[0], at[1]

    def move(self, at):
        self.xdotool(*self.point(at))

    def click(self, where, button=1, times=1):
        """Clicks at a point or in the middle of a widget or an entry."""
        at = where if isinstance(where, tuple) else self.reach(where).center()
        self.send(*self.point(at), "click", "--repeat", times, "--delay", 40, button, inputs=times)

    def reach(self, widget):
        """Moves the window of a widget that is beyond the screen, as window managers let one do with Alt and the mouse."""
        if self.screen.holds(*widget.center()) or not widget.id:
            return widget

        def find(state):
            return next((window, inner) for window in state.windows for inner in window.all if inner.id == widget.id)

        window, before = find(self.state())
        self.check(window.has_fixed_size(), f"{widget} of {window} is beyond the screen")
        x, y = before.center()
        beyond = max(0, x - self.screen.width * 3 // 4), max(0, y - self.screen.height * 3 // 4)
        self.xdotool("windowmove", window.number, window.place[0] - beyond[0], window.place[1] - beyond[1])
        return self.wait(
            f"{window} moves", lambda state: find(state)[1] if self.screen.holds(*find(state)[1].center()) else None
        )

    def drag(self, start, end, button=1):
        steps = [self.point(start), ("mousedown", button)]
        for step in range(1, DRAG_STEPS + 1):
            steps.append(self.point(tuple(a + (b - a) * step // DRAG_STEPS for a, b in zip(start, end))))
        self.send(*[word for step in steps for word in step], "mouseup", button)

    # Menus, boxes and fields.

    def open_menu(self, *texts, window=MAIN_WINDOW):
        """Opens menus one in the other and returns the innermost one."""
        menu = self.activate(window).widget(kind="QMenuBar")
        for text in texts:
            self.click(self.entry(menu, text))
            menu = self.wait(
                f"the menu {text} opens",
                lambda state, former=menu.id: state.menu() if state.popup and state.popup != former else None,
            )
        return menu

    def entry(self, menu, text):
        found = [entry for entry in menu.parts("entries") if entry.text in (text, text + "...")]
        if not found:
            texts = ", ".join(entry.text for entry in menu.parts("entries"))
            raise WalkFailure(f"the menu has no entry '{text}' but {texts}")
        return found[0]

    def choose(self, *texts, window=MAIN_WINDOW):
        """Clicks an entry of a menu."""
        self.click(self.entry(self.open_menu(*texts[:-1], window=window), texts[-1]))

    def find(self, window=None, **wanted):
        """Waits for a widget of the active window, or of the window named."""

        def found(state):
            where = state.window(window) if window else state.active()
            widgets = [widget for widget in where.widgets(**wanted) if widget.seen] if where else ()
            return widgets[0] if widgets else None

        return self.wait(f"there is {wanted} in {window or 'the active window'}", found)

    def press(self, text, window=None):
        """Clicks a button by its text without mnemonic."""
        self.click(self.find(window, kind="QAbstractButton", text=text))

    def fill(self, field, text):
        """Replaces the text of a field."""
        self.click(field)
        self.key("ctrl+a")
        self.type(str(text))

    def choose_item(self, combo, text):
        """Opens a combo box and clicks an item."""
        self.click(combo)
        popup = self.wait("the list of the combo box opens", lambda state: state.popup and state.window("QComboBoxPrivateContainer"))
        rows = [row for row in popup.widget(kind="QAbstractItemView").parts("rows") if row.texts[0] == text]
        if not rows:
            raise WalkFailure(f"{combo} has no item '{text}'")
        self.click(self.cell(rows[0]))
        self.wait(f"{combo} shows {text}", lambda state: self.value_of(state, combo) == text)

    def value_of(self, state, widget):
        """Returns the text of a widget, as it is now."""
        now = [inner for window in state.windows for inner in window.all if inner.id == widget.id]
        return now and (now[0].currentText or now[0].text or now[0].plainText)

    def cell(self, row, column=0):
        """Returns the middle of a cell."""
        x, y, width, height = row.places[column]
        return x + width // 2, y + height // 2

    def click_row(self, text, window=None, column=0, times=1, **wanted):
        """Clicks a cell of the row of a list, table or tree that has the text in some column."""

        def found(state):
            where = state.window(window) if window else state.active()
            views = where.widgets(**(wanted or {"kind": "QAbstractItemView"})) if where else ()
            return next((row for view in views for row in view.parts("rows") if text in row.texts), None)

        self.click(self.cell(self.wait(f"there is a row '{text}'", found), column), times=times)

    def choose_file(self, path, title="QFileDialog"):
        """Types the path into the file dialog that is open, and waits until that has gone."""
        dialog = self.wait_for_window(title)
        field = dialog.widget(name="fileNameEdit")

        def is_answered(state):
            gone = all(dialog.id != window.id for window in state.windows)
            return gone or self.value_of(state, field) != str(path)

        # The list of completions opens whenever a folder has been read: it may swallow a part of the text, or take the Return.
        for _ in range(5):
            self.fill(field, path)
            if self.value_of(self.state(), field) != str(path):
                continue
            self.key("Return")
            self.wait("the file dialog closes", is_answered)
            if not any(dialog.id == window.id for window in self.state().windows):
                return
        raise WalkFailure(f"the file dialog does not take {path}")

    # Pictures.

    def look(self, widget=None):
        return self.screen.look(tuple(widget.place) if widget else None)

    def keep(self, what, picture=None):
        """Keeps a picture for the sheet of all pictures."""
        self.number += 1
        (picture or self.screen.look()).save(self.pictures / f"{self.name}-{self.number:02}-{what}.png")

    def wait_for_picture(self, place, what, condition, polls=200):
        """Returns the picture of a place as soon as condition(picture) holds."""
        return self.wait(
            what,
            lambda picture: picture if condition(picture) else None,
            state=lambda: self.screen.look(place),
            patience=polls,
        )

    def wait_for_rest(self, place=None):
        """Returns the picture of a place once it stays the same for some polls."""
        same, last = 0, self.screen.look(place)
        for _ in range(PATIENCE):
            self.state()
            pause()
            now = self.screen.look(place)
            same, last = (same + 1 if now == last else 0), now
            if same == POLLS_OF_REST:
                return now
        raise WalkFailure("the screen never rests")

    def wait_for_file(self, path):
        self.wait(f"there is the file {path.name}", lambda _: path.exists() and path.stat().st_size > 0)

    # The end of a walk.

    def note_failure(self, error):
        print(f"failure: {error}", flush=True)
        self.faults.append(str(error))
        self.keep("failure")
        if self.program and self.program.runs() and self.program.link:
            try:
                windows = [f"{window} {window.title!r} {window.place}" for window in self.state().windows]
                print("windows: " + "; ".join(windows))
            except WalkFailure as second:
                print(second)

    def print_logs(self):
        for program in self.programs:
            text = program.log_path.read_text(encoding="utf-8", errors="replace")
            print(f"--- {program.log_path.name}\n{text}")

    def close(self):
        for program in self.programs:
            program.close()
