"""The first walk of README.md, step by step."""
from walker import MAIN_WINDOW

CONSOLE = "ZORTestMainDialog"


def import_surface(w):
    w.choose("Geometry", "Import Surface STL", window=CONSOLE)
    w.choose_file(w.options.samples / "wing_skin.stl")
    answer_item(w, "mm")
    w.wait("the table lists the surface", lambda state: len(state.window(CONSOLE).widget(name="_ContTable").parts("rows")) == 1)
    row = w.find(CONSOLE, name="_ContTable").parts("rows")[0]
    w.check("Surface.1" in row.texts and "0" in row.texts, f"the row of the surface shows {row.texts}")
    w.keep("imported")


def answer_item(w, text):
    dialog = w.wait_for_window("QInputDialog")
    combo = dialog.widget(kind="QComboBox")
    if combo.currentText != text:
        w.choose_item(combo, text)
    w.press("OK", "QInputDialog")
    w.wait_for_no_window("QInputDialog")


def visualize(w):
    w.click_row("Surface.1", CONSOLE, name="_ContTable")
    w.press("Visualize", CONSOLE)
    dialog = w.wait_for_window("Surface Visualization Options")
    w.keep("options")
    w.press("OK", dialog.title)
    w.wait_for_no_window(dialog.title)


def walk(w):
    w.start()
    w.choose("Test", "SDK Test")
    w.wait_for_window(CONSOLE)
    import_surface(w)
    visualize(w)
    w.activate(MAIN_WINDOW)
    w.wait_for_rest()
    w.keep("visualized")
