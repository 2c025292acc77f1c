// How a source file is to be translated.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QSharedDataPointer>

class ZORNestTranslationInputData;

/// Settings of one translation. A value: copies share their data until one of them is changed, O(1). One that was moved
/// from may only be assigned or destroyed.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORNESTING_EXPORT ZORNestTranslationInput
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestTranslationInput)

public:
    /// The numbers are established.
    enum FileType : int {
        PartFile = 0,      ///< a nesting result file (*.msi) of type translation, with one part
        ProviderSource = 6 ///< whatever the pre-translation provider reads
    };

    /// From a provider's source to part files; without provider as yet; tolerances 0.01 mm.
    ZORNestTranslationInput();
    ZORNestTranslationInput(const ZORNestTranslationInput& other);
    ZORNestTranslationInput(ZORNestTranslationInput&& other) noexcept;
    ZORNestTranslationInput& operator=(const ZORNestTranslationInput& other);
    ZORNestTranslationInput& operator=(ZORNestTranslationInput&& other) noexcept;
    ~ZORNestTranslationInput();
    void swap(ZORNestTranslationInput& other) noexcept { d.swap(other.d); }

    FileType GetInputFileType() const;
    /// Only ProviderSource can be translated: jobs of every other type fail.
    void SetInputFileType(FileType type);
    FileType GetOutputFileType() const;
    /// Only PartFile can be made: jobs of every other type fail.
    void SetOutputFileType(FileType type);

    QByteArray GetPreTranslateProvider() const;
    /// \param providerId  see ZORNestSourceProvider::GetProviderId(); jobs with an unknown one fail
    void SetPreTranslateProvider(const QByteArray& providerId);

    /// Largest gap between the ends of curves that still make one outline, in millimetres.
    double GetJoinTolerance() const;
    /// \throws ZORSysException "tolerance has to be a number from %1 to %2" outside of 0 to 1000
    void SetJoinTolerance(double tolerance);
    /// Largest distance between a curve that is neither line nor arc and the arcs that stand in for it, in
    /// millimetres.
    double GetCurveTolerance() const;
    /// \throws ZORSysException "tolerance has to be a number from %1 to %2" outside of 1e-6 to 1000
    void SetCurveTolerance(double tolerance);

    friend ZORNESTING_EXPORT void ZorTraceAppend(QByteArray& out, const ZORNestTranslationInput& input);

private:
    QSharedDataPointer<ZORNestTranslationInputData> d;
};

Q_DECLARE_SHARED(ZORNestTranslationInput)
