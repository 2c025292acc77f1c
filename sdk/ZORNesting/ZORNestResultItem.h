// Part of a nesting result.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>
#include <ZORNesting/ZORNestResultShape.h>
#include <ZORNesting/ZORNestingGlobal.h>

#include <QCoreApplication>
#include <QList>
#include <QSharedDataPointer>
#include <QString>

class ZORNestResultItemData;

/// A part that was translated, or that lies on a sheet. A value; copies share their data and their shapes.
///
/// The shapes are given as the part lies, in the coordinates of the sheet. Position, orientation and mirroring
/// tell how it came there from the coordinates of the part: mirrored (x to -x), then turned about the origin,
/// then moved by the position. Numbers that are not finite throw ZORSysException "a number of the item is not
/// finite".
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestResultItem
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestResultItem)

public:
    explicit ZORNestResultItem(const QString& name = QString());
    ZORNestResultItem(const ZORNestResultItem& other);
    ZORNestResultItem(ZORNestResultItem&& other) noexcept;
    ZORNestResultItem& operator=(const ZORNestResultItem& other);
    ZORNestResultItem& operator=(ZORNestResultItem&& other) noexcept;
    ~ZORNestResultItem();
    void swap(ZORNestResultItem& other) noexcept { d.swap(other.d); }

    QString GetName() const;
    QString GetPartName() const;
    void SetPartName(const QString& name);
    QString GetAssemblyName() const;
    void SetAssemblyName(const QString& name);
    QString GetSubassemblyName() const;
    void SetSubassemblyName(const QString& name);
    QString GetJobName() const;
    void SetJobName(const QString& name);
    QString GetComment() const;
    void SetComment(const QString& comment);

    ZORMathPoint GetPosition() const;
    void SetPosition(const ZORMathPoint& position);
    /// Radians, counter-clockwise.
    double GetOrientation() const;
    void SetOrientation(double angle);
    bool IsMirrored() const;
    void SetMirrored(bool mirrored);

    /// The pointers stay the same in all copies of this item, and live as long as one of them. O(1)
    QList<const ZORNestResultShape*> GetShapes() const;
    void AddShape(const ZORNestResultShape& shape);

    /// Same texts, numbers and shapes.
    friend ZORNESTING_EXPORT bool operator==(const ZORNestResultItem& a, const ZORNestResultItem& b);
    /// The name.
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestResultItem& item);

private:
    QSharedDataPointer<ZORNestResultItemData> d;
};

Q_DECLARE_SHARED(ZORNestResultItem)
