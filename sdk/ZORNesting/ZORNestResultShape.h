// Outline or mark of an item of a nesting result.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORNesting/ZORNestResultSegment.h>
#include <ZORNesting/ZORNestingGlobal.h>

#include <QList>
#include <QSharedDataPointer>

class ZORNestResultShapeData;

/// Segments that belong together, as a rule one outline. A value; copies share their data.
///
/// The outline of a shape are its lines, arcs and splines, in one or more chains, without those on the layers
/// LeadIn and LeadOut. A chain whose end is its start (to ZORNestResultSegment::joinTolerance) is closed.
/// Measures are exact: closed forms with arcs as arcs, in the x-y plane, accurate to some units in the last
/// place of the shape's size.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestResultShape
{
public:
    /// GetRawShapeFather() of a shape that lies in no other.
    static constexpr qint16 noFather = -1;

    /// A shape without segments.
    ZORNestResultShape();
    /// O(segments)
    explicit ZORNestResultShape(const QList<ZORNestResultSegment>& segments);
    ZORNestResultShape(const ZORNestResultShape& other);
    ZORNestResultShape(ZORNestResultShape&& other) noexcept;
    ZORNestResultShape& operator=(const ZORNestResultShape& other);
    ZORNestResultShape& operator=(ZORNestResultShape&& other) noexcept;
    ~ZORNestResultShape();
    void swap(ZORNestResultShape& other) noexcept { d.swap(other.d); }

    QList<ZORNestResultSegment> GetSegments() const;

    /// The sum of what the closed chains enclose, whatever their directions; holes are shapes of their own.
    double GetArea() const;
    /// Length of the outline, open chains included.
    double GetPerimeter() const;
    /// Around all segments, texts with their start and end; empty without segments.
    ZORMathBoundingBox GetBoundingBox() const;
    /// Of the enclosed area; of the outline's length where no area is enclosed; the middle of the box where there
    /// is no length either. At height 0.
    ZORMathPoint GetCenterOfMass() const;

    /// Place in the item's list of the shape in which this one lies, from 0; noFather (as at first) for none.
    qint16 GetRawShapeFather() const;
    void SetRawShapeFather(qint16 father);
    /// 1 where the shape is a hole, else 0 (as at first); other numbers of files are kept.
    qint16 GetShapeHole() const;
    void SetShapeHole(qint16 hole);
    /// A number of the source, 0 at first.
    qint16 GetShapeStatus() const;
    void SetShapeStatus(qint16 status);

    /// Same segments and numbers.
    friend ZORNESTING_EXPORT bool operator==(const ZORNestResultShape& a, const ZORNestResultShape& b);
    /// [n], n segments
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestResultShape& shape);

private:
    QSharedDataPointer<ZORNestResultShapeData> d;
};

Q_DECLARE_SHARED(ZORNestResultShape)
