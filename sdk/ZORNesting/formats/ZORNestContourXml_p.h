// Reads contour files (XML).

#pragma once

#include "drawing/ZORNestPlane_p.h"

#include <QCoreApplication>
#include <QList>
#include <QString>

/// The outlines of a contour file: of every element "OuterContour" the points of its children "Pt", in the
/// plane of x and y. A first element "Length" with the text "in" makes the numbers inches; they are
/// millimetres otherwise.
class ZORNestContourXml
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestContourXml)

public:
    struct Contour
    {
        QString name; ///< "A/B" of the named elements around it, innermost last; may be empty
        QList<ZORNestPlanePoint> points; ///< millimetres
        QList<double> heights;           ///< of the points, millimeters
        double zMin = 0, zMax = 0;       ///< of the numbers in the file
    };

    /// \throws ZORSysException "line %1: ..."; see ZORNestXml
    static QList<Contour> Read(const QByteArray& bytes);
};
