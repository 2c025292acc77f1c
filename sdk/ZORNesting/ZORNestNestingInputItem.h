// A part of a nesting job.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QString>

/// A translated part, how often it is needed, and how it may lie. A value; copies share the contents.
///
/// Every value is kept as it is given. What a job cannot use (contents that cannot be read, a negative
/// quantity, a number that is not finite) its report names.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestNestingInputItem
{
public:
    /// One copy, priority 0, along the grain in the orientation of its drawing, no deviation, not mirrored.
    /// Never throws; the contents are read when the job runs.
    /// \param contents  of a result file (*.msi). Where it holds several items, each of them is a part of its
    /// own, with the settings of this one.
    ZORNestNestingInputItem(const QString& name, const QByteArray& contents);

    QString GetName() const { return m_name; }
    QByteArray GetContents() const { return m_contents; }

    int GetQuantity() const { return m_quantity; }
    /// \param quantity  less than 1: none
    void SetQuantity(int quantity);
    bool IsMirrored() const { return m_isMirrored; }
    /// Whether the part that is needed is the mirror image of the drawn one.
    void SetMirrored(bool isMirrored);
    double GetOrientation() const { return m_orientation; }
    /// \param angle  radians, counter-clockwise, by which the part, after mirroring if it is mirrored, is
    /// turned to lie along the grain (the length of the sheet)
    void SetOrientation(double angle);
    bool IsFlippable() const { return m_isFlippable; }
    /// Whether the part may be cut with either face up. The other face takes the negative turns, so that its
    /// grain lies along the sheet's as well. Without effect on single-sided material.
    void SetFlippable(bool isFlippable);

    /// Whether the part may be turned by 90 (180, 270) degrees from its orientation.
    bool IsGrain90Set() const { return m_isGrain90Set; }
    void SetGrain90(bool isSet);
    bool IsGrain180Set() const { return m_isGrain180Set; }
    void SetGrain180(bool isSet);
    bool IsGrain270Set() const { return m_isGrain270Set; }
    void SetGrain270(bool isSet);

    double GetMaxDeviation() const { return m_maxDeviation; }
    /// \param angle  radians, by which the part may be turned either way from its allowed directions; 0: that
    /// of the job holds
    void SetMaxDeviation(double angle);
    /// Radians between the angles within the deviation; 0, as it always is: that of the job holds.
    double GetDeviationIncrement() const { return m_deviationIncrement; }

    int GetPriority() const { return m_priority; }
    /// \param priority  parts of higher priority are placed first where there are too few sheets for all
    void SetPriority(int priority);

    /// (name, quantity)
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestNestingInputItem& item);

private:
    QString m_name;
    QByteArray m_contents;
    int m_quantity = 1;
    bool m_isMirrored = false;
    double m_orientation = 0;
    bool m_isFlippable = false;
    bool m_isGrain90Set = false;
    bool m_isGrain180Set = false;
    bool m_isGrain270Set = false;
    double m_maxDeviation = 0;
    double m_deviationIncrement = 0;
    int m_priority = 0;
};
