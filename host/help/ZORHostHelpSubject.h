// What the help is wanted on.

#pragma once

#include "help/ZORHostHelpPages.h"

class QAction;
class QWidget;

/// The help on a widget: a place in the pages, or a text about its window where no page has one.
struct ZORHostHelpSubject
{
    ZORHostHelpPlace place;
    QString text; // Markdown; empty where there is a place, or nothing is known

    /// Goes up from \a widget to its window, and on to the window's parent for boxes that are not of this program.
    static ZORHostHelpSubject Find(const QWidget* widget);
    /// The section about a menu entry, or its tool tip and keys; empty for null.
    static QString DescribeAction(const QAction* action);
};
