// Writing objects of the document into files.

#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>

class QWidget;
class ZORGeoGeometry;

/// Writes chosen objects: into a container file with everything that they use, or their surfaces into an STL file.
///
/// Thread safety: main thread only.
class ZORHostObjectExport
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostObjectExport)

public:
    enum class Format { Container, BinaryStl, AsciiStl };

    /// Returns the formats that the objects can be written in: STL where a surface is drawn for them.
    static QList<Format> GetFormats(const QList<ZORGeoGeometry*>& objects);

    /// Writes the objects. A former file of that name stays as it was on failure.
    /// \param objects  of one container, not empty
    /// \throws ZORSysException  as the writers do
    static void Write(const QList<ZORGeoGeometry*>& objects, const QString& fileName, Format format);

    /// Asks for the file and writes it. Errors are boxes.
    /// \return a message about what was written; empty when the user has canceled or it has failed
    static QString Run(const QList<ZORGeoGeometry*>& objects, QWidget* window);

private:
    static void WriteContainer(const QList<ZORGeoGeometry*>& objects, const QString& fileName);
    static void WriteStl(const QList<ZORGeoGeometry*>& objects, const QString& fileName, Format format);
    static QString GetFilter(Format format);
    static QString GetSuffix(Format format);
};
