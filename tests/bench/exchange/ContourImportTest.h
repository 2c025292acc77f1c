// Fixture of the tests that import contours from XML files.

#pragma once

#include "StlFiles.h"
#include "core/ZORTestDialog.h"
#include "support/BenchTest.h"
#include "support/ItemTexts.h"

#include <ZORGeometry/ZORGeoPolyline.h>

#include <QFile>
#include <QLineEdit>
#include <QListWidget>

/// Opens the import dialog on files of given content and reads back what it lists and creates.
class ContourImportTest : public BenchTest
{
protected:
    static constexpr const char* kSettingsKey = "Debug/ImportCatiaXML/File";
    static inline const QByteArray Contour = "<OuterContour><Pt>X=1 Y=2 Z=3</Pt></OuterContour>";

    ContourImportTest()
        : path(GetPath("contours.xml"))
    {
    }

    /// Opens the dialog on a file of this content, by way of the settings.
    void OpenWith(const QByteArray& content)
    {
        QFile::remove(path);
        WriteFile(path, content);
        GetSettings()->setValue(kSettingsKey, path);
        ASSERT_NE(nullptr, Open("ZORTestImportCatiaXMLCurvesDlg"));
    }
    /// Returns what the dialog lists for a file of this content; closes the dialog again.
    QStringList ListOf(const QByteArray& content)
    {
        OpenWith(content);
        const QStringList entries = Entries();
        PressCancel();
        return entries;
    }
    void Choose(const QString& fileName)
    {
        answers.AnswerFile(fileName);
        Click("_XmlBtn", dialog);
    }
    QListWidget* List() const { return dialog->findChild<QListWidget*>("_CurveList"); }
    QString EditText() const { return dialog->findChild<QLineEdit*>("_XmlEdit")->text(); }
    static QStringList OneContour() { return {QStringLiteral("OuterContour")}; }
    QStringList Entries() const { return GetTexts(List()); }
    /// Selects all entries and presses OK; the curves that are in the container then.
    QList<QList<ZORMathPoint>> ImportAll()
    {
        List()->selectAll();
        PressOk();
        QList<QList<ZORMathPoint>> curves;
        for (int i = 0; i < GetContainer()->GetNumGeometry(); ++i) {
            const auto* curve = qobject_cast<const ZORGeoPolyline*>(GetContainer()->GetGeometryByIndex(i));
            EXPECT_NE(nullptr, curve);
            QList<ZORMathPoint> points;
            for (int k = 0; curve && k < curve->GetNumPoints(); ++k)
                points.append(curve->GetPoint(k));
            curves.append(points);
        }
        return curves;
    }

    const QString path;
};
