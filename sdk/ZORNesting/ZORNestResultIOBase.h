// Base of what reads and writes nesting result files.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QCoreApplication>
#include <QString>

#include <memory>

class QIODevice;

/// Where a result is read from or written to, and why that failed. docs/result-files.md tells the format.
/// Thread safety: reentrant; one thread at a time per object.
class ZORNESTING_EXPORT ZORNestResultIOBase
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestResultIOBase)

public:
    enum FileFormat : int {
        UnknownFormat = 0, ///< the file cannot be read
        MsiFormat = 1      ///< *.msi
    };

    virtual ~ZORNestResultIOBase();
    Q_DISABLE_COPY_MOVE(ZORNestResultIOBase)

    /// The path as it was given; empty for a device.
    QString GetFilePath() const;
    /// Why the last call failed, as a sentence for users; empty when it did not.
    QString GetFailure() const;

protected:
    explicit ZORNestResultIOBase(const QString& path);
    /// \param device  not taken over; must outlive this
    explicit ZORNestResultIOBase(QIODevice* device);

    QIODevice* GetDevice() const;
    /// GetFilePath(), for a call without a device.
    /// \throws ZORSysFileException "the path of the result file is empty"
    const QString& RequirePath() const;
    void SetFailure(const QString& failure);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
