"""What the 3D view shows: a part in front of a background whose color changes from top to bottom alone."""
import collections

from program import WalkFailure
from walker import MAIN_WINDOW

VIEW = "ZORHostView3D"
MARGIN = 4  # pixels: the frame of the focus
TRIAD = 140  # pixels at scale 1: the axes in the lower left corner
SHADES = 12  # colors that a shaded part has at least
SIMILAR = 24  # sum of the differences of red, green and blue


def differ(a, b):
    return sum(abs((a >> shift & 255) - (b >> shift & 255)) for shift in (0, 8, 16)) > SIMILAR


class PartView:
    """The 3D view of the host on the screen."""

    def __init__(self, walker):
        self.walker = walker
        x, y, width, height = walker.find(MAIN_WINDOW, kind=VIEW).place
        screen = walker.screen
        width, height = min(width, screen.width - x), min(height, screen.height - y)
        self.place = (x + MARGIN, y + MARGIN, width - 2 * MARGIN, height - 2 * MARGIN)
        self.triad = int(TRIAD * float(walker.options.scale))

    def rows(self, picture, step=4):
        """Yields y and the x of pixels that do not have the color of most pixels in their row, which are background."""
        words = memoryview(picture.pixels).cast("I")
        for y in range(0, picture.height, step):
            row = words[y * picture.width : (y + 1) * picture.width]
            background = collections.Counter(row[::step]).most_common(1)[0][0]
            first = self.triad if y > picture.height - self.triad else 0
            yield y, [x for x in range(first, picture.width, step) if row[x] != background and differ(row[x], background)]

    def share(self, picture):
        """Returns the share of the view that shows something else than background, from 0 to 1."""
        step = 4
        found = sum(len(columns) for _, columns in self.rows(picture, step))
        return found * step * step / (picture.width * picture.height)

    def shades(self, picture):
        """Returns how many colors what is not background has."""
        words = memoryview(picture.pixels).cast("I")
        return len({words[y * picture.width + x] for y, columns in self.rows(picture) for x in columns})

    def look(self):
        return self.walker.screen.look(self.place)

    def spot(self):
        """Returns a point of the screen on the part, well inside."""
        best = None
        for y, columns in self.rows(self.look()):
            for i in range(4, len(columns) - 4):
                if columns[i + 4] - columns[i - 4] == 32:
                    middle = abs(y - self.place[3] // 2) + abs(columns[i] - self.place[2] // 2)
                    best = min(best or (middle, 0, 0), (middle, columns[i], y))
        if not best:
            raise WalkFailure("the view shows no part to point at")
        return self.place[0] + best[1], self.place[1] + best[2]

    def beside(self):
        """Returns a point of the screen in the view beside the part."""
        return self.place[0] + self.place[2] - 30, self.place[1] + self.place[3] - 30

    def wait_for_part(self, what, least=0.02):
        """Waits until the view shows a shaded part, which does not fill the view."""

        def shows(picture):
            return least < self.share(picture) < 0.9 and self.shades(picture) > SHADES

        picture = self.walker.wait_for_picture(self.place, f"the view shows the part: {what}", shows)
        self.walker.keep(what.replace(" ", "-"))
        return picture
