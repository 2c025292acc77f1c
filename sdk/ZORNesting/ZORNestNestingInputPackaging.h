// A kind of sheet of a nesting job.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QSharedDataPointer>
#include <QString>

class ZORNestNestingInputPackagingData;

/// Sheets of one size, or a roll. A value: copies share their data until one of them is changed, O(1). One that was moved
/// from may only be assigned or destroyed.
///
/// A sheet lies with its length along x and its width along y, its lower left corner at the origin. Millimetres.
/// Every value is kept as it is given; a job reports sheets without usable area and numbers that it cannot use.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestNestingInputPackaging
{
public:
    /// One sheet without trims and cost.
    /// \param length  not a number: a roll, whose used length is kept short
    ZORNestNestingInputPackaging(const QString& name, double width, double length);
    ZORNestNestingInputPackaging(const ZORNestNestingInputPackaging& other);
    ZORNestNestingInputPackaging(ZORNestNestingInputPackaging&& other) noexcept;
    ZORNestNestingInputPackaging& operator=(const ZORNestNestingInputPackaging& other);
    ZORNestNestingInputPackaging& operator=(ZORNestNestingInputPackaging&& other) noexcept;
    ~ZORNestNestingInputPackaging();
    void swap(ZORNestNestingInputPackaging& other) noexcept { d.swap(other.d); }

    QString GetName() const;
    double GetWidth() const;
    double GetLength() const;

    int GetQuantity() const;
    /// \param quantity  number of sheets; less than 1: none. A roll never ends, one is enough.
    void SetQuantity(int quantity);

    /// What no part may lie on along an edge: left and right those across the length, bottom and top those along it.
    /// That on the right of a roll lies behind the last part.
    double GetLeftTrim() const;
    void SetLeftTrim(double width);
    double GetRightTrim() const;
    void SetRightTrim(double width);
    double GetTopTrim() const;
    void SetTopTrim(double width);
    double GetBottomTrim() const;
    void SetBottomTrim(double width);

    double GetCost() const;
    /// \param cost  of a sheet, or of a millimetre of a roll. Where no kind of a job has a cost, area is the cost.
    void SetCost(double cost);

    /// (name, width, length, quantity)
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out,
                                                 const ZORNestNestingInputPackaging& packaging);

private:
    QSharedDataPointer<ZORNestNestingInputPackagingData> d;
};

Q_DECLARE_SHARED(ZORNestNestingInputPackaging)
