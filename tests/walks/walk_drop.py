"""Files dragged out of another program and dropped onto the window."""
import itertools

from part import PartView
from walker import MAIN_WINDOW

SOURCE = "DragSource"
START = 24  # pixels: more than the distance where a drag starts


def drag_files(w, files, to):
    """Drags files to a point of the screen, waits until the host says what it will do, and returns the source and that."""
    source = w.launch([w.options.drag_source, *map(str, files)])
    window = w.wait(
        "the source is in front", lambda state: state.active() and state.window(SOURCE), state=source.ask
    )
    middle = window.center()
    w.xdotool(*w.point(middle), "mousedown", 1)
    w.move((middle[0] + START, middle[1]))
    offsets = itertools.cycle((0, 3))

    def move_on():  # the drag starts when the source has noticed the first step
        w.move((to[0] + next(offsets), to[1]))
        return w.state()

    banner = w.wait(
        "the host says what it will do", lambda state: state.window(MAIN_WINDOW).widget(name="_DropBanner"), state=move_on
    )
    w.wait_for_rest()
    w.keep("dragged")
    return source, banner


def wait_for_answer(w, source, expected):
    answer = w.wait(
        "the source knows the answer",
        lambda state: next((label.text for label in state.window(SOURCE).all if label.text in ("taken", "refused")), None),
        state=source.ask,
    )
    w.check(answer == expected, f"the files are {answer}")
    source.close()


def drop(w, files, to, expected):
    source, banner = drag_files(w, files, to)
    w.xdotool("mouseup", 1)
    wait_for_answer(w, source, expected)
    w.wait("the banner goes", lambda state: not state.window(MAIN_WINDOW).widget(name="_DropBanner"))
    return banner.text


def drop_unknown(w, to):
    """What is no file of a known kind is refused, or gets one message with its name."""
    file = w.home / "notes.txt"
    file.write_text("nothing that the program knows\n", encoding="utf-8")
    source, banner = drag_files(w, [file], to)
    w.check(file.name in banner.text, f"the banner does not name the file: {banner.text}")
    w.xdotool("mouseup", 1)
    if "Cannot read" not in banner.text:
        box = w.wait_for_window("QMessageBox")
        text = " ".join(label.text or "" for label in box.widgets(kind="QLabel"))
        w.check(file.name in text, f"the message does not name the file: {text}")
        w.keep("message")
        w.key("Return")
        w.wait_for_no_window("QMessageBox")
    source.close()


def walk(w):
    w.start()
    middle = w.wait_for_window(MAIN_WINDOW).widget(name="_CentralWidget").center()
    wing = w.options.samples / "wing_skin.stl"
    text = drop(w, [wing], middle, "taken")
    w.check("Open" in text and wing.name in text, f"the banner over an empty document says {text}")
    view = PartView(w)
    view.wait_for_part("dropped")
    text = drop(w, [wing, w.options.samples / "contours.xml"], middle, "taken")
    w.check("Import" in text, f"the banner over a document with contents says {text}")
    w.wait_for_title("marks the import", lambda title: "*" in title)
    view.wait_for_part("dropped again")
    drop_unknown(w, middle)
    empty = w.home / "empty.stl"
    empty.write_bytes(b"")
    text = drop(w, [empty], middle, "refused")
    w.check("Cannot read" in text and empty.name in text, f"the banner over an empty file says {text}")
    view.wait_for_part("refused")
