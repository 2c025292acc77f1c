// Layouts of nesting instances.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QList>
#include <QSharedDataPointer>
#include <QString>
#include <QStringList>

#include <optional>

class ZORNestInstance;
class ZORNestLayoutData;

/// What a ZORNestInstanceRun has found: sheets with their parts, and what is not placed. A value; copies share their data.
/// Lengths are in millimeters; indices count from 0 and are not checked.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestLayout
{
public:
    /// Constructs a layout without sheets.
    ZORNestLayout();
    ZORNestLayout(const ZORNestLayout& other);
    ZORNestLayout(ZORNestLayout&& other) noexcept;
    ZORNestLayout& operator=(const ZORNestLayout& other);
    ZORNestLayout& operator=(ZORNestLayout&& other) noexcept;
    ~ZORNestLayout();
    void swap(ZORNestLayout& other) noexcept { d.swap(other.d); }

    /// Returns the instance that was nested.
    ZORNestInstance GetInstance() const;

    qsizetype GetNumSheets() const;
    /// Returns the index of the sheet's packaging in the instance.
    qsizetype GetPackaging(qsizetype sheet) const;
    qsizetype GetNumParts(qsizetype sheet) const;
    /// Returns the used length of a roll, the length of any other sheet.
    double GetUsedLength(qsizetype sheet) const;
    /// Returns the number of equal sheets that are cut at once.
    int GetStack(qsizetype sheet) const;
    /// Returns the length of what a cut right of all parts leaves of the sheet; nothing of a roll.
    std::optional<double> GetRemnantLength(qsizetype sheet) const;
    /// Computes the percentage of each sheet that its parts cover. Measuring parts ends after a second of processor
    /// time; sheets with a part that is not measured then have no density.
    QList<std::optional<double>> MeasureDensities() const;

    /// Returns the number of items with copies that are not placed.
    qsizetype GetNumUnplaced() const;
    /// Returns the index of the item in the instance.
    qsizetype GetUnplacedItem(qsizetype index) const;
    int GetUnplacedCount(qsizetype index) const;
    QString GetUnplacedReason(qsizetype index) const;

    /// Returns what of the instance could not be used as it is, a sentence each.
    QStringList GetRemarks() const;
    /// Returns the sum of the costs of the sheets; their area in square millimeters where no packaging has a cost.
    double GetCost() const;

    /// Proves that the layout is valid, apart from everything that has made it.
    /// \return what is wrong, a sentence each; empty if it is valid
    QStringList FindFaults() const;

    /// Writes a JSON document: "sheets" with their "placements", and what is "unplaced", by the ids of the instance.
    QByteArray WriteJson() const;

    /// For the implementation of this library.
    const ZORNestLayoutData& GetData() const { return *d; }
    explicit ZORNestLayout(ZORNestLayoutData* data);

    /// [n], n sheets
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestLayout& layout);

private:
    QSharedDataPointer<ZORNestLayoutData> d;
};

Q_DECLARE_SHARED(ZORNestLayout)
