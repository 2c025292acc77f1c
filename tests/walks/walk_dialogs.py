"""Tab through every dialog: everything is reached, the buttons come last, and Escape closes the dialog."""
from part import PartView
from walk_document import import_sample
from walk_menus import CONSOLE, LEAVES_THE_PROGRAM, close_new_windows, list_entries, new_windows, wait_for_windows
from walker import MAIN_WINDOW

MOST_STEPS = 120
BUTTON_TEXTS = {"OK", "Cancel", "Close", "Apply", "Help", "Yes", "No", "Save", "Discard"}


def is_button(widget):
    return widget.is_a("QPushButton") and widget.plain in BUTTON_TEXTS


def is_target(widget):
    """Whether Tab should reach the widget. Of radio buttons in a group it reaches the one that is on."""
    if not (widget.tab and widget.enabled and widget.seen) or widget.proxy:
        return False
    return not widget.is_a("QRadioButton") or widget.checked


def focused(state, dialog):
    """Returns the widget of the dialog with the focus; None where it has not."""
    window = next((other for other in state.windows if other.id == dialog.id), None)
    return window and next((widget for widget in window.all if widget.id == state.focus), None)


def tab_through(w, dialog, title):
    """Returns the widgets in the order in which Tab reaches them, the one with the focus first."""
    order = [w.wait(f"{title} gets the focus", lambda state: focused(state, dialog))]
    for _ in range(MOST_STEPS):
        before = order[-1]
        w.key("Tab")
        now = focused(w.state(), dialog)
        if now and now.id == before.id:
            w.check(before.is_a("QTextEdit") or before.is_a("QAbstractItemView") or len(order) == 1, f"{title}: Tab stays in {before}")
            w.key("ctrl+Tab")
            now = focused(w.state(), dialog)
        if not now or now.id == before.id:
            w.check(len(order) == 1 and now, f"{title}: Tab leads from {before} {'nowhere' if now else 'out of the dialog'}")
            return order
        if now.id == order[0].id:
            return order
        order.append(now)
    w.check(False, f"{title}: Tab never returns to {order[0]}")
    return order


def check_order(w, title, dialog, order):
    reached = {widget.id for widget in order}
    for widget in dialog.all:
        if is_target(widget):
            w.check(widget.id in reached, f"{title}: Tab does not reach {widget}")
    kinds = [is_button(widget) for widget in order]
    if True in kinds and False in kinds:
        w.check(not kinds[0], f"{title}: the focus starts in the button {order[0].plain}")
        # The focus may start behind a check box, which then follows the buttons.
        turns = sum(kinds[i] and not kinds[(i + 1) % len(kinds)] for i in range(len(kinds)))
        w.check(turns == 1, f"{title}: fields between the buttons: {', '.join(map(str, order))}")


def visit(w, window, path):
    before = {other.id for other in wait_for_windows(w)}
    w.choose(*path, window=window)
    w.wait("the menu closes", lambda state: not state.menu())
    opened = new_windows(w, before)
    dialogs = [other for other in opened if other.is_a("QDialog") and not other.is_a("QFileDialog")]
    if dialogs:
        title = " > ".join(path)
        order = tab_through(w, dialogs[-1], title)
        check_order(w, title, next(o for o in w.state().windows if o.id == dialogs[-1].id), order)
        w.keep("-".join(path).replace(" ", "_").replace(".", ""))
    close_new_windows(w, before, path)
    return len(dialogs)


def visit_dialogs(w, window):
    return sum(
        visit(w, window, path)
        for path, entry in list_entries(w, window)
        if entry.enabled and not entry.checkable and path[-1] not in LEAVES_THE_PROGRAM
    )


def walk_host(w):
    w.start()
    w.choose("File", "Open Samples", "wing_skin.stl")
    PartView(w).wait_for_part("opened")
    import_sample(w)  # so that New and Close ask, and Escape keeps the part
    count = visit_dialogs(w, MAIN_WINDOW)
    w.check(count > 9, f"there are only {count} dialogs")


def walk_console(w):
    w.start(w.options.samples / "wing_skin.stl")
    w.choose("Test", "SDK Test")
    count = visit_dialogs(w, CONSOLE)
    w.check(count > 25, f"there are only {count} dialogs")
