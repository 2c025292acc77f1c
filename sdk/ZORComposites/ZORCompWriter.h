// Writes composites source files.

#pragma once

#include <ZORComposites/ZORCompositesGlobal.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

class ZORCompRoot;

/// Writes what is below a composites root in one of the formats of the registry that can write.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompWriter
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompWriter)

public:
    /// The identifiers of the formats that can write, in the order of their registration: "layup-xml" first.
    static QList<QByteArray> GetSupportedFormats();
    /// The entries of a file dialog for a format: "Layup XML (*.xml)".
    /// \throws ZORSysException "composites format '%1' is unknown"
    static QList<QString> GetFormatFileExtensions(const QByteArray& format);

    /// \throws ZORSysException "composites format '%1' is unknown", "composites format '%1' cannot be written"
    ZORCompWriter(const QString& file, const QByteArray& format);
    ~ZORCompWriter();

    /// Writes the materials, and all layups with what they use. A file that is there is replaced once the new one
    /// is complete; it is as before when anything fails. Devices and pipes are written to directly.
    /// \return what source files have no place for: support surfaces, strategies and other features
    /// \throws ZORSysException "composites root is null"; ZORSysFileOpenException for a file that cannot be
    ///         created; ZORSysFileException "cannot write '%1': %2"
    QStringList Write(const ZORCompRoot* root) const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
