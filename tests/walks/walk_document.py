"""Save, quit with and without changes, and recovery after the program was killed."""
from part import PartView
from program import WalkFailure
from walker import MAIN_WINDOW

NAME = "skin"
SUFFIX = ".ZORCont"
RECOVERY = "_RecoveryDialog"


def quit_without_question(w, how):
    how()
    code = w.wait_for_end()
    w.check(code == 0, f"the program ends with {code}")


def ask_to_quit(w, how, name):
    """Quits with unsaved changes and returns the question, which names the document and proposes Save."""
    how()
    box = w.wait_for_window("QMessageBox")
    text = " ".join(label.text or "" for label in box.widgets(kind="QLabel"))
    w.check(name in text, f"the question does not name {name}: {text}")
    buttons = {button.plain for button in box.widgets(kind="QPushButton")}
    w.check(buttons == {"Save", "Discard", "Cancel"}, f"the question has the buttons {buttons}")
    focused = w.wait("the question has the focus", lambda state: state.focused())
    w.check(focused.plain == "Save", f"the question proposes {focused}")
    w.keep("question")
    return box


def import_sample(w):
    w.choose("File", "Import...")
    w.choose_file(w.options.samples / "wing_skin.stl")
    return w.wait_for_title("marks the change", lambda title: "*" in title)


def count_surfaces(w):
    rows = w.find(MAIN_WINDOW, name="_Tree").parts("rows")
    return sum(row.depth == 1 for row in rows)


def save_untitled(w):
    w.choose("File", "Open Samples", "wing_skin.stl")
    PartView(w).wait_for_part("opened")
    w.check(NAME + SUFFIX not in w.title(), f"a foreign file gives its document a file: {w.title()}")
    w.choose("File", "Save")
    w.choose_file(w.home / NAME)
    file = w.home / (NAME + SUFFIX)
    w.wait_for_file(file)
    w.wait_for_title("names the file and has no mark", lambda title: file.name in title and "*" not in title)
    w.keep("saved")
    return file


def walk_document(w):
    w.start()
    quit_without_question(w, lambda: w.choose("File", "Quit"))

    w.start()
    file = save_untitled(w)
    saved = file.read_bytes()
    import_sample(w)
    w.keep("modified")
    ask_to_quit(w, lambda: w.key("ctrl+q"), file.name)
    w.key("Escape")
    w.wait_for_no_window("QMessageBox")
    w.wait_for_window(MAIN_WINDOW)
    ask_to_quit(w, lambda: w.xdotool("key", "alt+F4"), file.name)
    quit_without_question(w, lambda: w.press("Discard"))
    w.check(file.read_bytes() == saved, "Discard changes the file")

    w.start(file)
    PartView(w).wait_for_part("opened again")
    w.wait_for_title("names the file", lambda title: file.name in title and "*" not in title)
    w.check(count_surfaces(w) == 1, "the file that was saved before the change has another number of surfaces")
    import_sample(w)
    ask_to_quit(w, lambda: w.choose("File", "Quit"), file.name)
    quit_without_question(w, lambda: w.key("Return"))
    w.check(file.read_bytes() != saved, "Save does not change the file")

    w.start()
    w.choose("File", "Open Recent", recent_entry(w, file))
    PartView(w).wait_for_part("opened from the recent files")
    w.wait("both surfaces are there", lambda _: count_surfaces(w) == 2)
    quit_without_question(w, lambda: w.xdotool("key", "alt+F4"))


def recent_entry(w, file):
    entries = w.open_menu("File", "Open Recent").parts("entries")
    w.keep("recent-files")
    w.key("Escape", "Escape", "Escape")
    w.wait("the menus close", lambda state: not state.popup)
    found = [entry.text for entry in entries if file.name in entry.text]
    if not found:
        raise WalkFailure(f"the recent files do not list {file.name}")
    return found[0]


def walk_recovery(w):
    w.start()
    file = save_untitled(w)
    saved = file.read_bytes()
    import_sample(w)
    rescued = w.home / "data"
    w.program.ask("hurry _AutosaveTimer")
    copies = w.wait(
        "a copy is saved automatically", lambda _: [path for path in rescued.rglob("*" + SUFFIX) if path.stat().st_size > 0]
    )
    w.check(len(copies) == 1, f"there are {len(copies)} copies")
    w.program.kill()
    w.check(file.read_bytes() == saved, "the copy is written over the user's file")

    w.start_until(RECOVERY)
    w.check(any(file.name in row.texts for row in w.find(RECOVERY, name="_RecoveryTable").parts("rows")), "the copy is not listed")
    w.keep("recovery")
    w.press("Recover", RECOVERY)
    w.wait_for_no_window(RECOVERY)
    PartView(w).wait_for_part("recovered")
    w.check(count_surfaces(w) == 2, "the recovered document has another number of surfaces")
    w.wait_for_title("marks what was recovered", lambda title: "*" in title)
    ask_to_quit(w, lambda: w.choose("File", "Quit"), "")
    quit_without_question(w, lambda: w.press("Discard"))
    w.check(file.read_bytes() == saved, "recovery changes the user's file")

    w.start()
    w.check(not w.state().window(RECOVERY), "what was discarded is offered again")
    quit_without_question(w, lambda: w.choose("File", "Quit"))
