// Reads nesting result files.

#pragma once

#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestResultIOBase.h>
#include <ZORNesting/ZORNestingGlobal.h>

#include <QCoreApplication>

/// Reads a result from a file or a device. Never throws: what cannot be read is an invalid, empty result.
/// Thread safety: reentrant; one thread at a time per object.
class ZORNESTING_EXPORT ZORNestResultReader final : public ZORNestResultIOBase
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestResultReader)

public:
    explicit ZORNestResultReader(const QString& path);
    /// \param device  open for reading, read from its position to its end; not taken over. Null, or a device that
    ///                is not open, cannot be read.
    explicit ZORNestResultReader(QIODevice* device);
    ~ZORNestResultReader() override;

    /// Takes no more memory than a fixed multiple of the file's length, whatever is in it. O(length)
    /// \param format  receives the format that was found; may be null
    ZORNestResult Read(FileFormat* format);

private:
    ZORNestResult ReadDocument() const;
};
