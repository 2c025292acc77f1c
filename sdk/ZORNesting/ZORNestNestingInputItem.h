// A part of a nesting job.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QSharedDataPointer>
#include <QString>

class ZORNestNestingInputItemData;

/// A translated part, how often it is needed, and how it may lie. A value: copies share their data until one of them is
/// changed, and the contents even then, O(1). One that was moved from may only be assigned or destroyed.
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
    ZORNestNestingInputItem(const ZORNestNestingInputItem& other);
    ZORNestNestingInputItem(ZORNestNestingInputItem&& other) noexcept;
    ZORNestNestingInputItem& operator=(const ZORNestNestingInputItem& other);
    ZORNestNestingInputItem& operator=(ZORNestNestingInputItem&& other) noexcept;
    ~ZORNestNestingInputItem();
    void swap(ZORNestNestingInputItem& other) noexcept { d.swap(other.d); }

    QString GetName() const;
    QByteArray GetContents() const;

    int GetQuantity() const;
    /// \param quantity  less than 1: none
    void SetQuantity(int quantity);
    bool IsMirrored() const;
    /// Whether the part that is needed is the mirror image of the drawn one.
    void SetMirrored(bool isMirrored);
    double GetOrientation() const;
    /// \param angle  radians, counter-clockwise, by which the part, after mirroring if it is mirrored, is
    /// turned to lie along the grain (the length of the sheet)
    void SetOrientation(double angle);
    bool IsFlippable() const;
    /// Whether the part may be cut with either face up. The other face takes the negative turns, so that its
    /// grain lies along the sheet's as well. Without effect on single-sided material.
    void SetFlippable(bool isFlippable);

    /// Whether the part may be turned by 90 (180, 270) degrees from its orientation.
    bool IsGrain90Set() const;
    void SetGrain90(bool isSet);
    bool IsGrain180Set() const;
    void SetGrain180(bool isSet);
    bool IsGrain270Set() const;
    void SetGrain270(bool isSet);

    double GetMaxDeviation() const;
    /// \param angle  radians, by which the part may be turned either way from its allowed directions; 0: that
    /// of the job holds
    void SetMaxDeviation(double angle);
    /// Radians between the angles within the deviation; 0, as it always is: that of the job holds.
    double GetDeviationIncrement() const;

    int GetPriority() const;
    /// \param priority  parts of higher priority are placed first where there are too few sheets for all
    void SetPriority(int priority);

    /// (name, quantity)
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestNestingInputItem& item);

private:
    QSharedDataPointer<ZORNestNestingInputItemData> d;
};

Q_DECLARE_SHARED(ZORNestNestingInputItem)
