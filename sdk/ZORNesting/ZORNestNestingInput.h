// A nesting job.

#pragma once

#include <ZORNesting/ZORNestBaseFeature.h>
#include <ZORNesting/ZORNestNestingInputItem.h>
#include <ZORNesting/ZORNestNestingInputPackaging.h>
#include <ZORNesting/ZORNestingGlobal.h>

#include <QList>
#include <QString>

/// The parts to nest, the sheets to nest them on, and what holds for all of them. A value.
///
/// Every value is kept as it is given; the report of the job names what it could not use. docs/nesting.md tells
/// how the values act together.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestNestingInput
{
public:
    /// Material that may be used with either face up and along the grain only, sheets as listed, no separation,
    /// frame, deviation, stacks or limits of time.
    /// \param thickness  of the material, millimetres; told in the report only, as is the id
    ZORNestNestingInput(const QString& materialId, double thickness,
                        const QList<ZORNestNestingInputItem>& items,
                        const QList<ZORNestNestingInputPackaging>& packagings);

    QString GetMaterialID() const { return m_materialId; }
    double GetMaterialThickness() const { return m_materialThickness; }
    QList<ZORNestNestingInputItem> GetItems() const { return m_items; }
    QList<ZORNestNestingInputPackaging> GetPackagings() const { return m_packagings; }

    double GetMaxDeviation() const { return m_maxDeviation; }
    /// \param angle  radians; holds for parts without a deviation of their own
    void SetMaxDeviation(double angle);
    double GetDeviationIncrement() const { return m_deviationIncrement; }
    /// \param angle  radians between the angles that parts may take within the deviation; 0: any angle
    void SetDeviationIncrement(double angle);
    bool IsSingleSidedMaterial() const { return m_isSingleSided; }
    /// Whether all parts are cut with the same face up: flippable ones are not flipped.
    void SetSingleSidedMaterial(bool isSingleSided);

    /// Whether every part may be turned by 90 (180, 270) degrees from its orientation.
    bool IsGrain90Set() const { return m_isGrain90Set; }
    void SetGrain90(bool isSet);
    bool IsGrain180Set() const { return m_isGrain180Set; }
    void SetGrain180(bool isSet);
    bool IsGrain270Set() const { return m_isGrain270Set; }
    void SetGrain270(bool isSet);

    double GetItemSeparation() const { return m_itemSeparation; }
    /// \param distance  millimetres that parts keep from each other
    void SetItemSeparation(double distance);
    double GetFrameWidth() const { return m_frameWidth; }
    /// \param width  millimetres that parts keep from the trims of their sheet
    void SetFrameWidth(double width);
    ZORNestBaseFeature::PackagingUsageRule GetPackagingUsageRule() const { return m_packagingUsageRule; }
    /// \param rule  other numbers than those of the enumeration are taken as AsListed
    void SetPackagingUsageRule(ZORNestBaseFeature::PackagingUsageRule rule);

    double GetMaxRunTime() const { return m_maxRunTime; }
    /// \param seconds  after which the job ends with what it has; 0: once nothing is gained any more
    void SetMaxRunTime(double seconds);
    double GetMinRunTime() const { return m_minRunTime; }
    /// \param seconds  before which the job does not end for lack of progress; the maximum comes first
    void SetMinRunTime(double seconds);
    int GetStackSize() const { return m_stackSize; }
    /// \param size  most sheets that are cut at once; less than 2: no stacks
    void SetStackSize(int size);

    quint64 GetSeed() const { return m_seed; }
    /// \param seed  of the random numbers of the search; 1 at first
    void SetSeed(quint64 seed);
    qint64 GetMaxSteps() const { return m_maxSteps; }
    /// Ends the job after a number of moves of parts instead of a time, and runs it on one thread: equal jobs
    /// then have equal layouts.
    /// \param steps  0 (as at first): the limits of time hold
    void SetMaxSteps(qint64 steps);

    /// (material, number of items, number of packagings)
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestNestingInput& input);

private:
    QString m_materialId;
    double m_materialThickness;
    QList<ZORNestNestingInputItem> m_items;
    QList<ZORNestNestingInputPackaging> m_packagings;
    double m_maxDeviation = 0;
    double m_deviationIncrement = 0;
    bool m_isSingleSided = false;
    bool m_isGrain90Set = false;
    bool m_isGrain180Set = false;
    bool m_isGrain270Set = false;
    double m_itemSeparation = 0;
    double m_frameWidth = 0;
    ZORNestBaseFeature::PackagingUsageRule m_packagingUsageRule = ZORNestBaseFeature::AsListed;
    double m_maxRunTime = 0;
    double m_minRunTime = 0;
    int m_stackSize = 0;
    quint64 m_seed = 1;
    qint64 m_maxSteps = 0;
};
