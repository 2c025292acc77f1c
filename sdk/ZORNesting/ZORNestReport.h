// Reports of layouts, for people.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QImage>
#include <QStringList>

#include <memory>

class ZORNestLayout;

/// The HTML report of a layout and the pictures of its sheets. Reports of jobs come with ZORNestNestingResponse.
///
///     ZORNestReport report(layout);
///     report.SetRunTime(60);
///     file.write(report.Write());
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORNESTING_EXPORT ZORNestReport
{
public:
    /// Measures the parts; outlines that take more than a second of processor time in all are drawn as their hulls.
    explicit ZORNestReport(const ZORNestLayout& layout);
    ~ZORNestReport();
    Q_DISABLE_COPY_MOVE(ZORNestReport)

    /// Sets what the parts are cut from.
    /// \param thickness  in millimeters; 0, as at first: not known
    void SetMaterial(const QString& name, double thickness);
    /// \param seconds  0 at first
    void SetRunTime(double seconds);
    /// Sets why the run has ended; empty at first.
    void SetEnding(const QString& ending);
    /// Sets the remarks that precede those of the layout.
    void SetRemarks(const QStringList& remarks);

    /// Writes the report as UTF-8 within what QTextDocument shows, pictures included, readable on dark and on light
    /// backgrounds.
    QByteArray Write() const;

    /// Draws a sheet with its parts, to scale; long ones in several rows. The parts bear the numbers that they have in
    /// the tables of the report, where there is a QGuiApplication to provide fonts. Mirrored ones are hatched.
    /// \param sheet  from 0; not checked
    /// \param width  in pixels
    QImage DrawSheet(qsizetype sheet, int width) const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
