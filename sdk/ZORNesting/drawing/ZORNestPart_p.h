// Parts that are found in drawings.

#pragma once

#include "ZORNestChain_p.h"

struct ZORNestDrawnText
{
    ZORNestPlanePoint start;
    ZORNestPlanePoint end; ///< where the source puts a second point, else the start
    QString text;
    QString font;
    double height = 0;
    double angle = 0; ///< radians
    double width = 1;
    double tilt = 0;       ///< radians
    int justification = 0; ///< ZORNestResultSegment::TextJustification
    ZORNestLook look;
};

/// A part: one outline with what lies within it.
struct ZORNestPart
{
    struct Shape
    {
        ZORNestChain chain;
        int father = -1; ///< index of the shape around this one
        bool isHole = false;
        bool isMark = false; ///< drawn on the part, not cut
    };

    QString name;
    QString assembly;    ///< what the source groups the part under; may be empty
    QList<Shape> shapes; ///< the outline first, counter-clockwise; holes clockwise
    QList<ZORNestDrawnText> texts;
};
