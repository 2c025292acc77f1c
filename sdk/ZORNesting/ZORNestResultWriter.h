// Writes nesting result files.

#pragma once

#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestResultIOBase.h>
#include <ZORNesting/ZORNestingGlobal.h>

#include <QCoreApplication>

/// Writes a result to a file or a device. Equal results give equal bytes, on every machine with the same
/// version of zstd: what was read is written as it was.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORNESTING_EXPORT ZORNestResultWriter final : public ZORNestResultIOBase
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestResultWriter)

public:
    explicit ZORNestResultWriter(const QString& path);
    /// \param device  open for writing; not taken over
    explicit ZORNestResultWriter(QIODevice* device);
    ~ZORNestResultWriter() override;

    /// Writes a file as ZORSysReplacedFile does: when writing fails, a file that was there before stays.
    /// \return number of bytes, or -1 when the result is invalid or cannot be written; GetFailure() gives the reason
    ///         then, and so does a warning in the log. Never throws.
    qint64 Write(const ZORNestResult& result);

private:
    void WriteBytes(const QByteArray& bytes) const;
};
