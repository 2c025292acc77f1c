"""The first walk of README.md, step by step."""
from part import PartView
from walker import MAIN_WINDOW

CONSOLE = "ZORTestMainDialog"
TRANSLATE = "ZORTestNestTranslateDlg"
NEST = "ZORTestNestNestingDlg"
REPORT = "ZORTestNestNestingResultDlg"
NESTING_PATIENCE = 3000  # polls of 20 ms


def answer_item(w, text):
    box = w.wait_for_window("QInputDialog")
    combo = box.widget(kind="QComboBox")
    if combo.currentText != text:
        w.choose_item(combo, text)
    w.press("OK", "QInputDialog")
    w.wait_until_gone(box)


def import_surface(w):
    w.choose("Geometry", "Import Surface STL", window=CONSOLE)
    w.choose_file(w.options.samples / "wing_skin.stl")
    answer_item(w, "mm")
    w.wait("the table lists the surface", lambda state: state.window(CONSOLE).widget(name="_ContTable").rowCount == 1)
    texts = w.find(CONSOLE, name="_ContTable").parts("rows")[0].texts
    w.check(texts == ["Surface.1", "0"], f"the row of the surface shows {texts}")
    w.keep("imported")


def visualize(w):
    w.click_row("Surface.1", CONSOLE, name="_ContTable")
    w.press("Visualize", CONSOLE)
    dialog = w.wait_for_window("Surface Visualization Options")
    w.keep("options")
    w.press("OK", dialog.title)
    w.wait_for_no_window(dialog.title)
    w.activate(MAIN_WINDOW)
    view = PartView(w)
    shown = view.wait_for_part("visualized")
    x, y, width, height = view.place
    middle = x + width // 2, y + height // 2
    for button, what in ((1, "turns"), (3, "moves")):
        before = view.look()
        w.drag(middle, (middle[0] + 60, middle[1] + 30), button)
        w.wait_for_picture(view.place, f"a drag {what} the part", lambda picture, old=before: picture != old)
    w.click(middle, button=5)
    w.key("f")
    fitted = view.wait_for_part("fitted")
    w.check(fitted != shown, "the view is as before although the part was turned")
    w.choose("Help", "Mouse and Keys")
    close_help(w, "mouse-and-keys")


def close_help(w, name):
    window = w.wait_for_window("ZORHostHelpWindow")
    w.keep(name)
    w.key("Escape")
    w.wait_until_gone(window)


def export_surface(w):
    w.choose("Geometry", "Export Surface STL", window=CONSOLE)
    w.wait_for_window("Export Surface STL File")
    w.choose_item(w.find(name="_Combo"), "Surface.1")
    w.press("OK")
    file = w.home / "written.stl"
    w.choose_file(file)
    answer_item(w, "mm")
    answer_item(w, "binary STL")
    w.wait_for_file(file)
    w.wait_for_no_window("Export Surface STL File")


def finish(w, title, objects):
    """Presses OK and waits until the table of the console lists so many objects."""
    w.keep(title.replace(" ", "-"))
    w.press("OK")
    w.wait_for_no_window(title)
    w.wait(f"{title} makes an object", lambda state: state.window(CONSOLE).widget(name="_ContTable").rowCount == objects)


def shoot_geodesic(w):
    w.choose("Geometry", "Create Cartesian Point", window=CONSOLE)
    dialog = w.wait_for_window("Create Cartesian Point")
    for spin, value in zip(dialog.widgets(kind="QDoubleSpinBox"), ("1382.61", "3600", "900")):
        w.fill(spin, value)
    finish(w, "Create Cartesian Point", 2)
    w.choose("Geometry", "Project Point to Surface", window=CONSOLE)
    w.wait_for_window("Project Point to Surface")
    finish(w, "Project Point to Surface", 3)
    w.choose("Geometry", "Create Geodesic Curve", window=CONSOLE)
    w.wait_for_window("Create Geodesic")
    w.choose_item(w.find(name="_Combo"), "PointOnSurface.1")  # the start point comes first
    w.click(w.find(name="_EndLenCheck"))
    w.fill(w.find(name="_EndLenSpin"), "700")
    finish(w, "Create Geodesic", 4)


def save_container(w):
    file = w.home / "walk.ZORCont"
    w.choose("File", "Save Container", window=CONSOLE)
    w.choose_file(file)
    w.wait_for_file(file)
    w.choose("File", "Open")
    w.choose_file(file)
    w.wait_for_window("QMessageBox")  # about the changes, since the console saves copies
    w.press("Discard")
    w.wait_for_title("names the container", lambda title: file.name in title)
    rows = w.find(MAIN_WINDOW, name="_Tree").parts("rows")
    w.check(sum(row.depth == 1 for row in rows) == 4, f"the host opens {len(rows)} rows of the console's container")
    PartView(w).wait_for_part("container")


def translate(w):
    """Translates the drawing of the ribs and returns the files of the parts."""
    w.choose("Nesting", "Translate", window=CONSOLE)
    w.wait_for_window(TRANSLATE)
    w.click(w.find(TRANSLATE, name="_AddBtn"))
    w.choose_file(w.options.samples / "ribs.dxf")
    w.choose_item(w.find(TRANSLATE, name="_ProviderCombo"), "DXF drawing")
    w.click(w.find(TRANSLATE, name="_TranslateBtn"))
    folder = w.home / "parts"
    folder.mkdir()
    w.choose_file(folder)
    w.wait_for_window("QMessageBox")
    w.keep("translated")
    w.press("OK", "QMessageBox")
    w.wait_for_window(TRANSLATE)
    w.press("OK", TRANSLATE)
    w.wait_for_no_window(TRANSLATE)
    parts = sorted(folder.glob("*.msi"))
    w.check(len(parts) == 4, f"the drawing has {len(parts)} parts")
    return parts


def draw_part(w, part):
    w.choose("Nesting", "MSI to PNG", window=CONSOLE)
    w.choose_file(part)
    answer_question(w, "1200")  # pixels wide
    answer_question(w, "480")  # pixels high
    picture = w.home / "part.png"
    w.choose_file(picture)
    w.wait_for_file(picture)


def answer_question(w, text):
    box = w.wait_for_window("QInputDialog")
    w.key("ctrl+a")
    w.type(text)
    w.key("Return")
    w.wait_until_gone(box)


def nest(w, parts):
    w.choose("Nesting", "Nest", window=CONSOLE)
    w.wait_for_window(NEST)
    for part in parts:
        w.click(w.find(NEST, name="_AddItemBtn"))
        w.choose_file(part)
        w.wait_for_window(NEST)
    w.click(w.find(NEST, name="_PackagingAddBtn"))
    answer_question(w, "1700")
    answer_question(w, "roll")
    w.wait_for_window(NEST)
    row = w.find(NEST, name="_ItemTable").parts("rows")[0]
    w.click(w.cell(row, row.texts.index("1")), times=2)  # the quantity
    w.key("ctrl+a")
    w.type("2")
    w.key("Return")
    w.wait("the quantity is 2", lambda state: "2" in state.window(NEST).widget(name="_ItemTable").parts("rows")[0].texts)
    w.fill(w.find(NEST, name="_MaxRunTimeSpn"), "2")
    w.keep("nest")
    w.click(w.find(NEST, name="_ComputeBtn"))
    report = w.wait("the report opens", lambda state: state.window(REPORT), patience=NESTING_PATIENCE)
    text = report.widget(name="_ReportEdit").plainText
    w.check("All parts are placed." in text, "the report does not say that all parts are placed")
    w.keep("report")
    file = w.home / "report.pdf"
    w.activate(REPORT)
    w.key("ctrl+s")
    w.choose_file(file)
    w.wait_for_file(file)
    w.activate(MAIN_WINDOW)
    PartView(w).wait_for_part("nested")
    for name in (REPORT, NEST):
        window = w.activate(name)
        w.key("Escape")
        w.wait_until_gone(window)


def record_calls(w):
    w.choose("View", "API calls")
    w.click(w.find(MAIN_WINDOW, name="_ApiStartBtn"))
    w.wait("calls are recorded", lambda state: state.window(MAIN_WINDOW).widget(name="_ApiRecordChk").checked)
    w.choose("Geometry", "Create Cartesian Point", window=CONSOLE)
    w.wait_for_window("Create Cartesian Point")
    w.press("OK")
    w.wait("calls are listed", lambda state: state.window(MAIN_WINDOW).widget(name="_ApiTable").rowCount > 0)
    w.activate(MAIN_WINDOW)
    w.keep("calls")


def explain_dialogs(w):
    for menu, command in (("Composites", "Create Rosette"), ("Wireframe", "Create Projection"), ("Tool Path", "Create Course")):
        w.choose(menu, command)
        dialog = w.wait_for_window("ZORHostDialogFrame")
        w.key("F1")
        close_help(w, "help-" + command.replace(" ", "-"))
        w.activate(dialog.title)
        w.key("Escape")
        w.wait_until_gone(dialog)


def walk(w):
    w.start()
    w.choose("Test", "SDK Test")
    title = w.wait_for_window(CONSOLE).title
    texts = [entry.text for entry in w.open_menu("Window").parts("entries")]
    w.check(any(title in text for text in texts), f"the menu of windows does not list the console: {texts}")
    w.key("Escape", "Escape")
    import_surface(w)
    visualize(w)
    export_surface(w)
    shoot_geodesic(w)
    save_container(w)
    parts = translate(w)
    draw_part(w, parts[0])
    nest(w, parts)
    record_calls(w)
    explain_dialogs(w)
