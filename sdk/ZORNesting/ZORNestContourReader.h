// Reads the outlines of contour files.

#pragma once

#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORNesting/ZORNestingGlobal.h>

#include <QCoreApplication>
#include <QList>
#include <QString>

class QFileDevice;

/// An outline of a contour file, as it is in the file.
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORNESTING_EXPORT ZORNestContour
{
    /// "A/B" of the named elements around it, innermost last, 4,000 characters at most; may be empty.
    QString name;
    /// Millimeters; the first point is not repeated unless the file does so.
    ZORMathSetOfPoints points;
};

/// Reads contour files (XML), from which the provider "contour-xml" makes parts.
/// Thread safety: thread-safe.
class ZORNESTING_EXPORT ZORNestContourReader
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestContourReader)

public:
    /// Reads a file from its position to its end: of every element "OuterContour" the points of its children "Pt". A first
    /// element "Length" with the text "in" makes the numbers inches; they are millimeters otherwise. O(size).
    /// \param file  open for reading
    /// \throws ZORSysFileException "the file is larger than 256 MB", "read error: %1"; ZORSysException "line %1: %2",
    ///         "there is no contour in the file"
    static QList<ZORNestContour> Read(QFileDevice& file);
};
