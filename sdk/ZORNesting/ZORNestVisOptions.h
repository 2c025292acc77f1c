// What is shown of a nesting result.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QSharedDataPointer>

class ZORNestVisOptionsData;

/// Display options of nesting results; everything is shown at first. A value: copies share their data until one of them
/// is changed, O(1). One that was moved from may only be assigned or destroyed.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestVisOptions
{
public:
    /// Bits of the filters: what a bit stands for is shown when it is set. The layers are those of
    /// ZORNestResultSegment.
    enum Filter : int {
        Sheet = 1,        ///< border of the sheet
        Fill = 2,         ///< areas within closed outlines, without those of holes
        Outlines = 4,     ///< layers Automatic, Nest and NonNestable
        TabMarks = 8,     ///< layers Tabs, AutoNibble and AutoBridge
        Etching = 16,     ///< layers EtchBox and EtchingData
        Leads = 32,       ///< layers LeadIn and LeadOut
        Strings = 64,     ///< layers LineString and GridString
        GrainMarks = 128, ///< layer Grain
        Extras = 256,     ///< layer Extra, and numbers that are no layer
        Texts = 512,      ///< texts of every layer whose own bit is set
        Labels = 1024     ///< names of the items
    };
    static constexpr int allFilters = 65535;

    ZORNestVisOptions();
    ZORNestVisOptions(const ZORNestVisOptions& other);
    ZORNestVisOptions(ZORNestVisOptions&& other) noexcept;
    ZORNestVisOptions& operator=(const ZORNestVisOptions& other);
    ZORNestVisOptions& operator=(ZORNestVisOptions&& other) noexcept;
    ~ZORNestVisOptions();
    void swap(ZORNestVisOptions& other) noexcept { d.swap(other.d); }

    /// \param bits  bits without a meaning are kept
    void SetFilters(int bits);
    int GetFilters() const;
    bool IsShown(Filter filter) const { return (GetFilters() & filter) != 0; }

    /// Equal bits.
    friend ZORNESTING_EXPORT bool operator==(const ZORNestVisOptions& a, const ZORNestVisOptions& b);
    /// The bits.
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestVisOptions& options);

private:
    QSharedDataPointer<ZORNestVisOptionsData> d;
};

Q_DECLARE_SHARED(ZORNestVisOptions)
