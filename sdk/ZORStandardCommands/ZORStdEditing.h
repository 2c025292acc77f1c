// Open editors of table cells.

#pragma once

class QAbstractItemView;

/// Commits and closes the editor of the current cell, if one is open. Needed before rows are removed, moved or edited
/// by a program: Qt keeps a table in its editing state when the edited row vanishes, and refuses to open a second
/// editor. A click on a button takes the focus and ends an edit by itself, but keys and scripts do not.
void ZORStdFinishEditing(QAbstractItemView* view);
