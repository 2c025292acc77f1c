#!/usr/bin/env python3
"""Walks through the host with a real mouse and keyboard, on the screen of tools/with_display.sh.

    ZOR_SCREEN=1024x700 tools/with_display.sh tests/walks/run_walk.py --build build/dev --theme light --scale 1 WALK...

Walks are the functions of the modules below; without a name all of them run. Pictures are kept in
<build>/walk_pictures/<theme>-<scale>x-<width>x<height>.
"""
import argparse
import pathlib
import sys
import tempfile

import walk_dialogs
import walk_document
import walk_drop
import walk_first
import walk_forms
import walk_menus
import walk_pick
import walk_view
from program import WalkFailure
from screen import Screen
from walker import Walker

WALKS = {
    "first": walk_first.walk,
    "dialogs": walk_dialogs.walk_host,
    "console_dialogs": walk_dialogs.walk_console,
    "forms": walk_forms.walk,
    "document": walk_document.walk_document,
    "drop": walk_drop.walk,
    "recovery": walk_document.walk_recovery,
    "view": walk_view.walk,
    "pick": walk_pick.walk,
    "menus": walk_menus.walk_host,
    "console_menus": walk_menus.walk_console,
}


def parse():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--theme", choices=("light", "dark"), default="light")
    parser.add_argument("--scale", default="1")
    parser.add_argument("--verbose", action="store_true", help="print what the programs say also if all is well")
    parser.add_argument("walks", nargs="*")
    options = parser.parse_args()
    build = options.build.resolve()
    options.host = str(build / "bin" / "zorhost")
    options.samples = build / "samples"
    options.witness = build / "tests" / "walks" / "plugins"
    options.drag_source = str(build / "bin" / "walk_drag_source")
    screen = Screen()
    options.pictures = build / "walk_pictures" / f"{options.theme}-{options.scale}x-{screen.width}x{screen.height}"
    return options


def run(name, options):
    """Returns whether the walk found no fault."""
    with tempfile.TemporaryDirectory(prefix="walk-") as home:
        options.home = home
        walker = Walker(options, name)
        try:
            WALKS[name](walker)
        except WalkFailure as error:
            walker.note_failure(error)
        finally:
            walker.close()
        if walker.faults or options.verbose:
            walker.print_logs()
        print(f"{name}: {len(walker.faults)} faults, {walker.number} pictures", flush=True)
        return not walker.faults


def main():
    options = parse()
    unknown = set(options.walks) - set(WALKS)
    if unknown:
        sys.exit(f"unknown walks: {', '.join(sorted(unknown))}; there are {', '.join(WALKS)}")
    results = [run(name, options) for name in options.walks or WALKS]
    sys.exit(0 if all(results) else 1)


if __name__ == "__main__":
    main()
