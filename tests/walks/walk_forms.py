"""Types into the forms of commands as people do: over what is selected, by clicks beside a number, and by mnemonics."""
FORM = "Create Rosette"
EDIT_FORM = "Edit Rosette"
LABEL = "Axes of the skin"  # with blanks, which must not press OK


def shows(w, name, text):
    field = w.find(FORM, name=name)
    w.wait(f"{name} shows {text}", lambda state: w.value_of(state, field) == text)


def click_before(w, name):
    """Clicks in front of the number of a spin box."""
    x, y, _, height = w.find(FORM, name=name).place
    w.click((x + 5, y + height // 2))


def enter_numbers(w):
    click_before(w, "_OriginXSpin")
    w.type("1000")
    w.key("Tab")
    shows(w, "_OriginXSpin", "1000 mm")
    w.type("25")
    w.key("Tab")
    shows(w, "_OriginYSpin", "25 mm")
    w.key("alt+x")
    w.type("3")
    w.key("Tab")
    shows(w, "_XAxisXSpin", "3")


def lists(name):
    return lambda state: any(name in row.texts for view in state.active().widgets(name="_Tree") for row in view.parts("rows"))


def edit(w):
    """Opens the form again by a double click in the browser."""
    w.click_row(LABEL, name="_Tree", times=2)
    w.wait_for_window(EDIT_FORM)
    shown = w.find(EDIT_FORM, name="_OriginXSpin")
    w.check(shown.text == "1000 mm", f"the form shows {shown.text}")
    w.type("Main axes")
    w.keep("edited")
    w.xdotool("key", "Return")
    w.wait_for_no_window(EDIT_FORM)
    w.wait("the browser lists the new label", lists("Main axes"))


def walk(w):
    w.start()
    w.choose("Composites", FORM)
    w.wait_for_window(FORM)
    w.wait("the label has the focus", lambda state: (focus := state.focused()) and focus.name == "_LabelEdit")
    w.type(LABEL)
    shows(w, "_LabelEdit", LABEL)
    enter_numbers(w)
    w.keep("filled")
    w.xdotool("key", "Return")  # its release may find no window: the form closes by the press
    w.wait_for_no_window(FORM)
    w.wait("the browser lists the rosette", lists(LABEL))
    w.keep("created")
    edit(w)
