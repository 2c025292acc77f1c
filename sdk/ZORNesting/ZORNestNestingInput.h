// A nesting job.

#pragma once

#include <ZORNesting/ZORNestBaseFeature.h>
#include <ZORNesting/ZORNestNestingInputItem.h>
#include <ZORNesting/ZORNestNestingInputPackaging.h>
#include <ZORNesting/ZORNestingGlobal.h>

#include <QList>
#include <QSharedDataPointer>
#include <QString>

class ZORNestNestingInputData;

/// The parts to nest, the sheets to nest them on, and what holds for all of them. A value: copies share their data until
/// one of them is changed, O(1). One that was moved from may only be assigned or destroyed.
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
    ZORNestNestingInput(const ZORNestNestingInput& other);
    ZORNestNestingInput(ZORNestNestingInput&& other) noexcept;
    ZORNestNestingInput& operator=(const ZORNestNestingInput& other);
    ZORNestNestingInput& operator=(ZORNestNestingInput&& other) noexcept;
    ~ZORNestNestingInput();
    void swap(ZORNestNestingInput& other) noexcept { d.swap(other.d); }

    QString GetMaterialID() const;
    double GetMaterialThickness() const;
    QList<ZORNestNestingInputItem> GetItems() const;
    QList<ZORNestNestingInputPackaging> GetPackagings() const;

    double GetMaxDeviation() const;
    /// \param angle  radians; holds for parts without a deviation of their own
    void SetMaxDeviation(double angle);
    double GetDeviationIncrement() const;
    /// \param angle  radians between the angles that parts may take within the deviation; 0: any angle
    void SetDeviationIncrement(double angle);
    bool IsSingleSidedMaterial() const;
    /// Whether all parts are cut with the same face up: flippable ones are not flipped.
    void SetSingleSidedMaterial(bool isSingleSided);

    /// Whether every part may be turned by 90 (180, 270) degrees from its orientation.
    bool IsGrain90Set() const;
    void SetGrain90(bool isSet);
    bool IsGrain180Set() const;
    void SetGrain180(bool isSet);
    bool IsGrain270Set() const;
    void SetGrain270(bool isSet);

    double GetItemSeparation() const;
    /// \param distance  millimetres that parts keep from each other
    void SetItemSeparation(double distance);
    double GetFrameWidth() const;
    /// \param width  millimetres that parts keep from the trims of their sheet
    void SetFrameWidth(double width);
    ZORNestBaseFeature::PackagingUsageRule GetPackagingUsageRule() const;
    /// \param rule  other numbers than those of the enumeration are taken as AsListed
    void SetPackagingUsageRule(ZORNestBaseFeature::PackagingUsageRule rule);

    double GetMaxRunTime() const;
    /// \param seconds  after which the job ends with what it has; 0: once nothing is gained any more
    void SetMaxRunTime(double seconds);
    double GetMinRunTime() const;
    /// \param seconds  before which the job does not end for lack of progress; the maximum comes first
    void SetMinRunTime(double seconds);
    int GetStackSize() const;
    /// \param size  most sheets that are cut at once; less than 2: no stacks
    void SetStackSize(int size);

    quint64 GetSeed() const;
    /// \param seed  of the random numbers of the search; 1 at first
    void SetSeed(quint64 seed);
    qint64 GetMaxSteps() const;
    /// Ends the job after a number of moves of parts instead of a time, and runs it on one thread: equal jobs
    /// then have equal layouts.
    /// \param steps  0 (as at first): the limits of time hold
    void SetMaxSteps(qint64 steps);

    /// (material, number of items, number of packagings)
    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestNestingInput& input);

private:
    QSharedDataPointer<ZORNestNestingInputData> d;
};

Q_DECLARE_SHARED(ZORNestNestingInput)
