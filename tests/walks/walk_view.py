"""Clicks, hovers and drags in the 3D view: the picture always shows the part."""
from part import PartView
from walker import MAIN_WINDOW

ALIKE = 0.03  # share of the view by which a mark changes the outline of the part


def same_outline(view, before):
    share = view.share(before)
    return lambda picture: abs(view.share(picture) - share) < ALIKE


def is_marked(view, before):
    """Most of the part has another color than before, which a pointer or a label alone does not change."""
    pixels = view.share(before) * before.width * before.height
    return lambda picture: picture.differences(before) > pixels / 2


def hover_and_click(w, view, opened):
    spot = view.spot()
    w.move(spot)
    w.wait_for_picture(view.place, "hovering marks the part", is_marked(view, opened))
    hovered = view.wait_for_part("hovered")
    w.check(same_outline(view, opened)(hovered), "hovering changes the outline of the part")
    w.click(spot)
    w.wait_for_picture(view.place, "a click marks the part", is_marked(view, hovered))
    clicked = view.wait_for_part("clicked")
    w.check(same_outline(view, opened)(clicked), "a click changes the outline of the part")
    tree = w.wait_for_window(MAIN_WINDOW).widget(kind="ZORFeatBrowserWidget", name="_Browser")
    rows = [row for row in w.find(name="_Tree").parts("rows") if row.selected]
    w.check(tree and len(rows) == 1, "a click selects the part in the tree")
    w.click(spot, times=2)
    view.wait_for_part("clicked twice")
    w.key("Escape")
    w.click(view.beside())
    view.wait_for_part("clicked beside")


def drag(w, view):
    """Drags with every button, as fast as xdotool can, and comes back with a key."""
    x, y, width, height = view.place
    middle = x + width // 2, y + height // 2
    for button, name in ((1, "left"), (2, "middle"), (3, "right")):
        before = view.look()
        w.drag(middle, (middle[0] + width // 12, middle[1] + height // 12), button)
        w.wait_for_picture(view.place, f"the {name} button moves the view", lambda picture, old=before: picture != old)
        view.wait_for_part(f"dragged with the {name} button")
        if w.state().menu():
            w.check(False, f"a drag with the {name} button opens a menu")
            w.key("Escape")


def turn_by_keys(w, view, opened):
    w.key("1")
    w.key("f")
    w.wait_for_picture(view.place, "the keys 1 and F show the first picture again", same_outline(view, opened))
    for key in ("2", "5", "6", "Left", "Up"):
        before = view.look()
        w.key(key)
        w.wait_for_picture(view.place, f"the key {key} turns the view", lambda picture, old=before: picture != old)
    w.key("1")
    w.key("f")
    view.wait_for_part("isometric")


def turn_the_wheel(w, view, opened):
    share = view.share(opened)
    w.move(view.spot())
    w.send("click", "--repeat", 4, "--delay", 30, 5, inputs=4)
    w.wait_for_picture(view.place, "the wheel makes the part smaller", lambda picture: 0 < view.share(picture) < share * 0.8)
    w.keep("smaller")
    w.send("click", "--repeat", 4, "--delay", 30, 4, inputs=4)
    w.wait_for_picture(view.place, "the wheel makes the part larger again", same_outline(view, opened))


def walk(w):
    w.start()
    w.choose("File", "Open Samples", "wing_skin.stl")
    view = PartView(w)
    opened = view.wait_for_part("opened")
    w.click(view.beside())
    hover_and_click(w, view, opened)
    drag(w, view)
    turn_by_keys(w, view, opened)
    turn_the_wheel(w, view, opened)
