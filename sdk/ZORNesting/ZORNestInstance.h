// Nesting instances: JSON documents of items, sheets and parameters.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QSharedDataPointer>
#include <QString>

class ZORNestInstanceData;

/// The job of a benchmark or of a command line, read from a JSON document. A value; copies share their data.
///
/// "items" hold "demand", "shape" and either "allowed_orientations" in degrees or "orientation_deg" with "grain90",
/// "grain180", "grain270", "max_deviation_deg" and "deviation_increment_deg"; an item with neither may be turned
/// freely. A "shape" is
///
///     {"type": "simple_polygon", "data": [[x, y] ...]}
///     {"type": "polygon", "data": {"outer": [[x, y] ...], "inner": [[[x, y] ...] ...]}}
///     {"type": "path", "contours": [{"start": [x, y], "segs": [["L", x, y] | ["A", x, y, cx, cy, "ccw" | "cw"] ...]} ...]}
///
/// in millimeters. Sheets are "strip_height" (one roll), "bins" or "packagings"; "params" hold the separations, the
/// frame, the stack size, "single_sided" and "usage_rule", and what holds for every item of grain and deviation.
/// Quantities are exact: "allow_overproduction" changes nothing. Items and sheets without "id" are numbered from 0.
///
///     const ZORNestInstance instance = ZORNestInstance::Read(bytes, ZORNestInstance::Purpose::Nesting);
///     ZORNestInstanceRun run(instance);
///     run.SetLimit(ZORNestInstanceRun::Clock::Wall, 60);
///     const ZORNestLayout layout = run.Execute();
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestInstance
{
public:
    /// Specifies which faults are accepted and how the others are described.
    enum class Purpose {
        /// Reads the whole document; any fault refuses it. An arc may end off its circle: a straight line leads from
        /// there to its end.
        Nesting,
        /// Reads the names and the outlines of the items, up to the first fault. The distance between the end of an
        /// arc and its circle is at most 1e-4 of the radius. Sheets and parameters are ignored.
        Translation,
    };

    /// Constructs an instance without items and sheets.
    ZORNestInstance();
    ZORNestInstance(const ZORNestInstance& other);
    ZORNestInstance(ZORNestInstance&& other) noexcept;
    ZORNestInstance& operator=(const ZORNestInstance& other);
    ZORNestInstance& operator=(ZORNestInstance&& other) noexcept;
    ~ZORNestInstance();
    void swap(ZORNestInstance& other) noexcept { d.swap(other.d); }

    /// Reads a document. Takes O(n) for n bytes.
    /// \throws ZORSysException for nesting, "%1, at byte %2" of what is not JSON, and the place of a fault with its
    ///         reason, such as "items[3].demand: a number is expected"; for translation, "no JSON: %1 (byte %2)",
    ///         "no nesting instance: 'items' is missing" and "JSON has more than 4000000 lists and objects"
    static ZORNestInstance Read(const QByteArray& document, Purpose purpose);

    /// Returns the name that the document gives to itself; may be empty.
    QString GetName() const;

    qsizetype GetNumItems() const;
    /// Returns the name of an item, or else its id.
    /// \param index  from 0; not checked, as with all indices here
    QString GetItemName(qsizetype index) const;
    /// Returns the id by which layouts name an item; not of an instance that was read for translation.
    int GetItemId(qsizetype index) const;

    /// Returns the number of kinds of sheets.
    qsizetype GetNumPackagings() const;
    QString GetPackagingName(qsizetype index) const;
    /// Returns the id by which layouts name a kind of sheets.
    int GetPackagingId(qsizetype index) const;

    /// Returns what is wrong with the outline of the last item, as a part of a sentence; empty without a fault. Only an
    /// instance that was read for translation has one.
    QString GetFault() const;

    /// Returns the seed of the random numbers of runs, 1 at first.
    quint64 GetSeed() const;
    void SetSeed(quint64 seed);

    /// For the implementation of this library.
    const ZORNestInstanceData& GetData() const { return *d; }
    explicit ZORNestInstance(ZORNestInstanceData* data);

    /// (name, number of items)
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestInstance& instance);

private:
    QSharedDataPointer<ZORNestInstanceData> d;
};

Q_DECLARE_SHARED(ZORNestInstance)
