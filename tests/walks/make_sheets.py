#!/usr/bin/env python3
"""Puts the pictures of all walks onto one sheet for each screen.

    make_sheets.py <build folder>/walk_pictures

The sheets are <folder>/<screen>.jpg, with the names of the pictures.
"""
import pathlib
import shutil
import subprocess
import sys

COLUMNS, WIDTH = 6, 420


def main(folder):
    if not shutil.which("montage"):
        print("Without the program montage there are no sheets.")
        return
    for screen in sorted(path for path in folder.iterdir() if path.is_dir()):
        pictures = sorted(screen.glob("*.png"))
        if not pictures:
            continue
        sheet = folder / f"{screen.name}.jpg"
        form = ["-label", "%t", "-tile", f"{COLUMNS}x", "-geometry", "+4+4"]
        small = [f"{picture}[{WIDTH}x]" for picture in pictures]  # made smaller one by one, since all together are too large
        subprocess.run(["montage", *form, *small, str(sheet)], check=True)
        print(f"{len(pictures)} pictures: {sheet}")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
