"""Selecting in the 3D view and picking for a dialog: the part stays visible, and each gesture shows."""
from part import PartView
from walk_view import same_outline
from walker import MAIN_WINDOW

HIGHLIGHTED = 0.01  # share of the view that changes its color at least when a part is highlighted


def changed(view, before):
    """Returns whether a picture differs in so many pixels that the part has another color."""
    return lambda picture: picture.differences(before) > HIGHLIGHTED * picture.width * picture.height


def alike(view, before):
    return lambda picture: not changed(view, before)(picture)


def drag_with(w, keys, start, end):
    """Drags with keys held down."""
    held = [word for key in keys for word in ("keydown", key)]
    let_go = [word for key in reversed(keys) for word in ("keyup", key)]
    middle = tuple((a + b) // 2 for a, b in zip(start, end))
    w.send(*held, *w.point(start), "mousedown", 1, *w.point(middle), *w.point(end), "mouseup", 1, *let_go, inputs=1 + len(keys))


def select(w, view, usual):
    """Selects by click, Ctrl and band; the part keeps its outline and its shading."""
    w.click(view.spot())
    w.move(view.beside())
    view.wait_for_part("selected by a click")
    chosen = w.wait_for_picture(view.place, "the selected part has another color", changed(view, usual))
    w.check(same_outline(view, usual)(chosen), "selecting changes the outline of the part")
    spot = view.spot()
    w.send("keydown", "ctrl", *w.point(spot), "click", 1, "keyup", "ctrl", inputs=2)
    w.move(view.beside())
    w.wait_for_picture(view.place, "Ctrl takes the part out of the selection", alike(view, usual))
    x, y, width, height = view.place
    corners = (x + 20, y + 20), (x + width - 20, y + height - 20)
    drag_with(w, ["ctrl"], *corners)
    w.move(view.beside())
    w.wait_for_picture(view.place, "a band selects the part", changed(view, usual))
    view.wait_for_part("selected by a band")
    w.key("Escape")
    w.wait_for_picture(view.place, "Escape selects nothing", alike(view, usual))


def filter_kinds(w, view, usual):
    """With a filter of curves, a surface cannot be selected."""
    combo = w.find(MAIN_WINDOW, name="_SelectionFilterCombo")
    w.choose_item(combo, "Curves")
    w.click(view.spot())
    w.move(view.beside())
    w.wait_for_rest(view.place)
    w.check(alike(view, usual)(view.look()), "the filter of curves lets a surface through")
    w.choose_item(combo, "All objects")
    w.click(view.beside())


def pick(w, view, usual):
    """Picks the origin of a rosette; the dialog stays usable, and Escape cancels the pick alone."""
    w.choose("Composites", "Create Rosette")
    dialog = w.wait_for_window("ZORHostDialogFrame")
    w.xdotool("windowmove", "--sync", dialog.number, 0, view.place[1] + view.place[3] - 60)  # off the part
    dialog = w.wait("the dialog has moved", lambda state: lower(state, view))
    button = dialog.widget(name="_OriginPointBtn")
    w.check(button, "the dialog of a rosette has a button to pick its origin")
    spins = [widget.id for widget in dialog.all if widget.is_a("ZORCmnUnitSpinBox") or widget.is_a("QDoubleSpinBox")]
    before = [w.value_of(w.state(), widget) for widget in dialog.all if widget.id in spins]
    w.click(button)
    w.find(MAIN_WINDOW, name="_PickPrompt")
    w.key("Escape")
    w.wait("the prompt goes", lambda state: not prompt(state))
    w.check(w.state().window("ZORHostDialogFrame"), "Escape closes the dialog instead of ending the pick")
    w.wait_for_window("ZORHostDialogFrame")
    w.click(button)
    w.wait("the prompt comes back", prompt)
    spot = view.spot()
    w.move(spot)
    w.wait_for_rest(view.place)
    w.keep("picking")
    w.click(spot)
    w.wait("the prompt goes", lambda state: not prompt(state))
    dialog = w.wait_for_window("ZORHostDialogFrame")
    after = [w.value_of(w.state(), widget) for widget in dialog.all if widget.id in spins]
    w.check(before != after, f"the picked point is not in the dialog: {after}")
    w.keep("picked")
    w.key("Escape")
    w.wait_for_no_window("ZORHostDialogFrame")


def draw(w, view, usual):
    """Draws a polyline over the part by three clicks, of which one is taken back."""
    names = {row.texts[0] for row in w.find(MAIN_WINDOW, name="_Tree").parts("rows")}
    w.choose("Wireframe", "Create Polyline")
    w.wait("the prompt comes", prompt)
    x, y = view.spot()
    shift = view.place[3] // 40
    before = view.look()
    for step, at in enumerate(((x - 3 * shift, y + shift), (x, y), (x + 4 * shift, y - shift))):
        w.click(at)
        if step == 1:
            w.key("BackSpace")
    w.wait_for_picture(view.place, "the path is drawn", lambda picture: picture.differences(before) > 20)
    w.keep("drawing")
    w.key("Return")
    w.wait("the prompt goes", lambda state: not prompt(state))

    def has_new_row(state):
        rows = state.window(MAIN_WINDOW).widgets(name="_Tree")[0].parts("rows")
        return {row.texts[0] for row in rows} - names

    w.wait("the tree lists the polyline", has_new_row)
    w.move(view.beside())
    w.wait_for_picture(view.place, "the polyline is seen on the part", lambda picture: 20 < picture.differences(usual) < 4000)
    w.keep("drawn")


def lower(state, view):
    """Returns the dialog once it is below the middle of the view."""
    dialog = state.window("ZORHostDialogFrame")
    return dialog if dialog.place[1] > view.place[1] + view.place[3] // 2 else None


def prompt(state):
    window = state.window(MAIN_WINDOW)
    return window and any(widget.seen for widget in window.widgets(name="_PickPrompt"))


def walk(w):
    w.start()
    w.choose("File", "Open Samples", "wing_skin.stl")
    view = PartView(w)
    view.wait_for_part("opened")
    w.click(view.beside())
    usual = view.wait_for_part("usual")
    select(w, view, usual)
    filter_kinds(w, view, usual)
    pick(w, view, usual)
    draw(w, view, usual)
