// A kind of sheet of a nesting job.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QString>

/// Sheets of one size, or a roll. A value.
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

    QString GetName() const { return m_name; }
    double GetWidth() const { return m_width; }
    double GetLength() const { return m_length; }

    int GetQuantity() const { return m_quantity; }
    /// \param quantity  number of sheets; less than 1: none. A roll never ends, one is enough.
    void SetQuantity(int quantity);

    /// What no part may lie on along an edge: left and right those across the length, bottom and top those along it.
    /// That on the right of a roll lies behind the last part.
    double GetLeftTrim() const { return m_leftTrim; }
    void SetLeftTrim(double width);
    double GetRightTrim() const { return m_rightTrim; }
    void SetRightTrim(double width);
    double GetTopTrim() const { return m_topTrim; }
    void SetTopTrim(double width);
    double GetBottomTrim() const { return m_bottomTrim; }
    void SetBottomTrim(double width);

    double GetCost() const { return m_cost; }
    /// \param cost  of a sheet, or of a millimetre of a roll. Where no kind of a job has a cost, area is the cost.
    void SetCost(double cost);

    /// (name, width, length, quantity)
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out,
                                                 const ZORNestNestingInputPackaging& packaging);

private:
    QString m_name;
    double m_width;
    double m_length;
    int m_quantity = 1;
    double m_leftTrim = 0;
    double m_rightTrim = 0;
    double m_topTrim = 0;
    double m_bottomTrim = 0;
    double m_cost = 0;
};
