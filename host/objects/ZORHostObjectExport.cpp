#include "objects/ZORHostObjectExport.h"

#include "objects/ZORHostObjectRemoval.h"
#include "objects/ZORHostObjectSet.h"
#include "view/ZORHostDisplayName.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoHolders.h>
#include <ZORGeometry/ZORGeoStlWriter.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QApplication>
#include <QBuffer>
#include <QFileDialog>
#include <QFileInfo>
#include <QSet>

namespace {

QList<const ZORGeoSurface*> SurfacesOf(const QList<ZORGeoGeometry*>& objects)
{
    QList<const ZORGeoSurface*> surfaces;
    for (const ZORGeoGeometry* drawn : ZORHostDrawnObjects(objects)) {
        if (const auto* surface = ZORFeatShapeOf<ZORGeoSurface>(drawn))
            surfaces.append(surface);
    }
    return surfaces;
}

/// Returns which objects of a container belong to the chosen ones, by index: what they use, and the features above.
QSet<int> IndicesToKeep(const ZORFeatContainer& container, const QList<ZORGeoGeometry*>& objects)
{
    const int count = container.GetNumGeometry();
    QHash<const ZORGeoGeometry*, int> indices;
    for (int i = 0; i < count; ++i)
        indices.insert(container.GetGeometryByIndex(i), i);
    const ZORGeoHolders holders(container);
    QHash<const ZORGeoGeometry*, QList<const ZORGeoGeometry*>> used;
    for (int i = 0; i < count; ++i) {
        const ZORGeoGeometry* const geometry = container.GetGeometryByIndex(i);
        for (const ZORGeoGeometry* holder : holders.GetHolders(*geometry))
            used[holder].append(geometry);
        if (const auto* feature = qobject_cast<const ZORFeatObject*>(geometry);
            feature && feature->GetParentFeature())
            used[geometry].append(feature->GetParentFeature());
    }
    const QList<ZORGeoGeometry*> chosen = ZORHostObjectsWithParts(objects);
    QList<const ZORGeoGeometry*> open(chosen.begin(), chosen.end());
    QSet<int> kept;
    while (!open.isEmpty()) {
        const ZORGeoGeometry* const geometry = open.takeLast();
        if (kept.contains(indices.value(geometry)))
            continue;
        kept.insert(indices.value(geometry));
        open += used.value(geometry);
        if (qobject_cast<const ZORFeatGeometry*>(geometry)) { // a feature is whole or not there
            for (const ZORGeoGeometry* part :
                 static_cast<const ZORFeatGeometry*>(geometry)->GetOwnedGeometry())
                open.append(part);
        }
    }
    return kept;
}

} // namespace

QList<ZORHostObjectExport::Format> ZORHostObjectExport::GetFormats(const QList<ZORGeoGeometry*>& objects)
{
    if (SurfacesOf(objects).isEmpty())
        return {Format::Container};
    return {Format::BinaryStl, Format::AsciiStl, Format::Container};
}

void ZORHostObjectExport::Write(const QList<ZORGeoGeometry*>& objects, const QString& fileName, Format format)
{
    if (format == Format::Container)
        WriteContainer(objects, fileName);
    else
        WriteStl(objects, fileName, format);
}

// A copy of the document, out of which everything else is removed: names, styles and references stay as they are.
void ZORHostObjectExport::WriteContainer(const QList<ZORGeoGeometry*>& objects, const QString& fileName)
{
    const auto& container = *qobject_cast<const ZORFeatContainer*>(objects.first()->GetContainer());
    QBuffer bytes;
    bytes.open(QIODevice::ReadWrite);
    container.Save(bytes);
    bytes.seek(0);
    ZORFeatContainer copy;
    copy.Load(bytes);
    const QSet<int> kept = IndicesToKeep(container, objects);
    QList<ZORGeoGeometry*> others;
    for (int i = 0; i < copy.GetNumGeometry(); ++i) {
        if (!kept.contains(i))
            others.append(copy.GetGeometryByIndex(i));
    }
    ZORHostObjectRemoval::Remove(others);
    ZORSysReplacedFile file(fileName);
    file.Open();
    copy.Save(file.GetDevice());
    if (!file.Commit())
        throw ZORSysFileException(tr("cannot write file '%1': %2").arg(fileName, file.GetErrorString()));
}

void ZORHostObjectExport::WriteStl(const QList<ZORGeoGeometry*>& objects, const QString& fileName,
                                   Format format)
{
    const QList<const ZORGeoSurface*> surfaces = SurfacesOf(objects);
    const auto stlFormat = format == Format::AsciiStl ? ZORGeoStlWriter::Ascii : ZORGeoStlWriter::Binary;
    QString path = fileName;
    if (surfaces.size() == 1) {
        ZORGeoStlWriter(path, surfaces.first(), stlFormat).Write(ZORSysValue::Millimeter);
        return;
    }
    QList<ZORMathPoint> vertices;
    QList<ZORGeoSurface::Corners> triangles;
    for (const ZORGeoSurface* surface : surfaces) {
        const int first = int(vertices.size());
        vertices += surface->GetVertexArray();
        for (const auto& [a, b, c] : surface->GetCornerArray())
            triangles.append({first + a, first + b, first + c});
    }
    const ZORGeoSurface all(nullptr, vertices, triangles);
    ZORGeoStlWriter(path, &all, stlFormat).Write(ZORSysValue::Millimeter);
}

QString ZORHostObjectExport::GetFilter(Format format)
{
    switch (format) {
    case Format::Container:
        return tr("Container files (*.ZORCont)");
    case Format::BinaryStl:
        return tr("STL files, binary (*.stl)");
    case Format::AsciiStl:
        break;
    }
    return tr("STL files, text (*.stl)");
}

QString ZORHostObjectExport::GetSuffix(Format format)
{
    return format == Format::Container ? QStringLiteral("ZORCont") : QStringLiteral("stl");
}

QString ZORHostObjectExport::Run(const QList<ZORGeoGeometry*>& objects, QWidget* window)
{
    if (objects.isEmpty())
        return {};
    QStringList filters;
    const QList<Format> formats = GetFormats(objects);
    for (const Format format : formats)
        filters.append(GetFilter(format));
    QFileDialog dialog(window, tr("Export"));
    dialog.setObjectName("_ExportDialog");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(filters);
    dialog.setDefaultSuffix(GetSuffix(formats.first()));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        dialog.setDefaultSuffix(GetSuffix(formats.value(filters.indexOf(filter))));
    });
    QList<QPointer<ZORGeoGeometry>> chosen(objects.begin(), objects.end());
    if (dialog.exec() != QDialog::Accepted)
        return {};
    chosen.removeAll(QPointer<ZORGeoGeometry>()); // the dialog runs the event loop
    if (chosen.isEmpty())
        return {};
    const QString file = dialog.selectedFiles().value(0);
    const Format format = formats.value(std::max<qsizetype>(0, filters.indexOf(dialog.selectedNameFilter())));
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QString error;
    try {
        Write({chosen.begin(), chosen.end()}, file, format);
    } catch (const ZORSysException& exception) {
        error = exception.GetMessage();
    }
    QApplication::restoreOverrideCursor();
    if (error.isEmpty())
        return tr("Exported %1").arg(QFileInfo(file).fileName());
    ZORCmnPlainText::ShowBox(QMessageBox::Critical, window, tr("Error"),
                             tr("The objects could not be exported to '%1': %2").arg(file, error));
    return {};
}
