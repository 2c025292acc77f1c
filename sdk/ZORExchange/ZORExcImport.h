// Reads a file of any known kind into a container.

#pragma once

#include <ZORExchange/ZORExcFileKind.h>
#include <ZORExchange/ZORExchangeGlobal.h>
#include <ZORSystem/ZORSysValue.h>

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class ZORFeatContainer;
class ZORGeoGeometry;

/// One file on its way into a container, in two halves: Prepare() reads it, which may take long and happens in any thread,
/// Commit() adds what it holds, in the thread of the container.
///
///     ZORExcImport import(path);
///     if (import.Prepare(report)) // in a thread
///         import.Commit(container); // in the thread of the container
///
/// | kind of file | what it becomes                                                          | names                  |
/// |--------------|--------------------------------------------------------------------------|------------------------|
/// | STL          | a surface for each solid                                                 | "file", "file/solid"   |
/// | contours     | a polyline for each outline, as it is in the file                        | "file", "file/name"    |
/// | result       | a polyline for each chain of an item; arcs to 0.01 mm, texts are skipped | "file", "file/item"    |
/// | layup        | its features; a layup without a name is named after the file             | those in the file      |
/// | container    | its objects                                                              | those in the file      |
///
/// Names are those of the file without its suffix, and of what it holds where it holds several; they become unique in the
/// container.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZOREXCHANGE_EXPORT ZORExcImport
{
    Q_DECLARE_TR_FUNCTIONS(ZORExcImport)

public:
    explicit ZORExcImport(const QString& fileName);
    ~ZORExcImport();
    Q_DISABLE_COPY_MOVE(ZORExcImport)

    /// Sets the unit of an STL file, which has none; millimeters at first.
    /// \throws ZORSysException "unit is no unit of length"
    void SetUnit(ZORSysValue::Unit unit);

    /// Reads the file.
    /// \param report  called in the same thread with the part that is done, 0 to 1, never less than before; returns false to
    ///                cancel. What it throws passes through. An empty function reports nothing
    /// \return false when canceled; there is nothing to commit then
    /// \throws ZORSysFileOpenException for a file that cannot be opened; ZORSysFileException "not enough memory to read
    ///         '%1'", "cannot read '%1': %2" with what the reader says, "cannot read '%1': the file is empty", "cannot read
    ///         '%1': it is not a container, STL, contour, layup or nesting result file"
    bool Prepare(const std::function<bool(double)>& report = {});

    /// Returns what kind of file Prepare() found; Empty before.
    ZORExcFileKind::Kind GetKind() const;
    /// Returns the size of the file in bytes when Prepare() opened it; 0 before.
    qint64 GetFileSize() const;

    /// Adds what the file holds: all of it or, when an exception is thrown, nothing. To be called once, after Prepare().
    /// ZORSysFileNotices passes on what was left out.
    /// \return what was added and still is in the container, in its order; owned by the container
    /// \throws ZORSysException "container is null", "nothing was prepared"; ZORSysFileException "cannot read '%1': %2"
    QList<ZORGeoGeometry*> Commit(ZORFeatContainer* container);

    /// Returns what was left out, a lower-case sentence each; complete after Commit().
    QStringList GetLosses() const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
