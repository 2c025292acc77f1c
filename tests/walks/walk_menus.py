"""Opens every entry of every menu once; what opens fits onto the screen and goes away again."""
from program import WalkFailure
from part import PartView
from walk_document import import_sample
from walker import MAIN_WINDOW

CONSOLE = "ZORTestMainDialog"
MOST_WINDOWS = 12  # that one entry opens, one after the other
REST = 3  # polls without a change of the windows
LEAVES_THE_PROGRAM = {"Quit"}


def list_entries(w, window, texts=()):
    """Returns the texts of all entries behind an open menu path, as paths."""
    menu = w.open_menu(*texts, window=window) if texts else w.activate(window).widget(kind="QMenuBar")
    entries = menu.parts("entries")
    w.check(not texts or entries, f"the menu {' > '.join(texts)} is empty")
    for entry in entries:
        w.check(w.screen.holds(*entry.center()), f"the entry {entry.text} is beyond the screen")
    if texts:
        close_menus(w)
    paths = []
    for entry in entries:
        path = (*texts, entry.text)
        if entry.menu and entry.enabled:
            paths += list_entries(w, window, path)
        elif not entry.menu:
            paths.append((path, entry))
    return paths


def close_menus(w):
    for _ in range(5):
        if not w.state().popup:
            return
        w.key("Escape")
    w.wait("the menus close", lambda state: not state.popup)


def wait_for_windows(w):
    """Returns the windows once neither their number nor the active one changes."""
    seen = []

    def rests(state):
        seen.append((state.popup, [(window.id, window.active) for window in state.windows]))
        recent = seen[-REST:]
        return state.windows if len(recent) == REST and recent.count(recent[0]) == REST else None

    return w.wait("the windows rest", rests)


def fits(w, window):
    x, y, width, height = window.place
    return window.has_fixed_size() or x >= 0 <= y and x + width <= w.screen.width and y + height <= w.screen.height


def new_windows(w, before):
    """Returns the windows that were not there before, once they rest; the one on top is the last."""
    state_windows = wait_for_windows(w)
    modal = w.state().modal
    return sorted((other for other in state_windows if other.id not in before), key=lambda other: other.id == modal)


def close_new_windows(w, before, path):
    """Closes what an entry has opened and what comes after, as a person would who wants none of it."""
    tries = {}
    for _ in range(MOST_WINDOWS):
        left = new_windows(w, before)
        if not left:
            return
        window = left[-1]
        tries[window.id] = tries.get(window.id, 0) + 1
        w.xdotool("windowactivate", "--sync", window.number)
        w.xdotool("key", "Escape" if tries[window.id] < 3 else "alt+F4")
    raise WalkFailure(f"what {' > '.join(path)} opens does not close: {left[-1]}")


def open_entry(w, window, path):
    before = {other.id for other in wait_for_windows(w)}
    w.choose(*path, window=window)
    w.wait("the menu closes", lambda state: not (state.menu() and state.menu().id == state.popup))
    opened = new_windows(w, before)
    for other in opened:
        w.check(fits(w, other), f"{' > '.join(path)}: {other} does not fit onto the screen: {other.place}")
    if opened:
        w.wait_for_rest(tuple(opened[-1].place))
        w.keep("-".join(path).replace(" ", "_").replace(".", "").replace("/", "_"))
    close_new_windows(w, before, path)


def open_entries(w, window):
    """Opens all entries of a window and returns how many there are."""
    paths = list_entries(w, window)
    for path, entry in paths:
        if not entry.enabled or path[-1] in LEAVES_THE_PROGRAM:
            continue
        open_entry(w, window, path)
        if entry.checkable and entry.checked:
            open_entry(w, window, path)  # shows again what the first time has hidden
    return len(paths)


def walk_host(w):
    w.start()
    w.choose("File", "Open Samples", "wing_skin.stl")
    PartView(w).wait_for_part("opened")
    import_sample(w)  # so that New and Close ask, and Escape keeps the part
    count = open_entries(w, MAIN_WINDOW)
    w.check(count > 25, f"the host has only {count} entries")
    w.wait_for_window(MAIN_WINDOW)


def walk_console(w):
    w.start(w.options.samples / "wing_skin.stl")
    w.choose("Test", "SDK Test")
    count = open_entries(w, CONSOLE)
    w.check(count > 45, f"the console has only {count} entries")
