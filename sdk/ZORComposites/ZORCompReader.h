// Reads composites source files.

#pragma once

#include <ZORComposites/ZORCompDocument.h>
#include <ZORComposites/ZORCompReadReport.h>
#include <ZORComposites/ZORCompositesGlobal.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QList>
#include <QString>

#include <memory>

class ZORCompReadProcessor;

/// A composites source file in one of the formats of the registry, see ZORCompFormat.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompReader
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompReader)

public:
    /// The identifiers of all formats, in the order of their registration: "compost-json", "layup-xml", then those
    /// of other libraries.
    static QList<QByteArray> GetSupportedFormats();
    /// The entries of a file dialog for a format: "CompoST Layup (*.json)".
    /// \throws ZORSysException "composites format '%1' is unknown"
    static QList<QString> GetFormatFileExtensions(const QByteArray& format);

    /// \throws ZORSysException "composites format '%1' is unknown"
    ZORCompReader(const QString& file, const QByteArray& format);
    ~ZORCompReader();

    /// Reads the whole file and hands it to the processor, which makes the features in Finalize(). O(size).
    /// \throws ZORSysException "read processor is null"; ZORSysFileOpenException for a file that cannot be opened;
    ///         ZORSysFileException "cannot read '%1': %2" for anything wrong in it, with the place there, "the file
    ///         is larger than %1 bytes" among others. The processor is as before then.
    void Read(ZORCompReadProcessor* processor) const;
    /// Reads the whole file without a container, in any thread: the first half of Read(). O(size).
    /// \param report  receives what is kept and warnings
    /// \throws ZORSysException as Read()
    ZORCompDocument Parse(ZORCompReadReport& report) const;

private:
    template<typename Function>
    void ReadWith(const Function& function) const;

    class Private;
    const std::unique_ptr<Private> d;
};
