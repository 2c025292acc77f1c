// Test dialog "Import CATIA XML Curves".

#pragma once

#include "core/ZORTestDialog.h"

#include <QDomDocument>

#include <memory>

class QFile;
class ZORMathSetOfPoints;
namespace Ui {
class ZORTestImportCatiaXMLCurvesDlg;
}

/// Lists the contours of an XML file and adds the selected ones to the container as polylines.
///
/// What is read.  Every element "OuterContour" is a contour; its children "Pt" are the points, each a text such
///                as "X=1 Y=2 Z=3" (the keys are not looked at; what is missing or no number counts as 0). The
///                attributes "NAME" of the elements around it name it, outermost first. The unit is inches
///                when the first element "Length" has the text "in", else that of the file before, at
///                first millimetres.
/// Files.         A file that is malformed, defines entities, nests elements too deep or has too many
///                attributes in one gives no contours and no message. Another file adds its contours to the
///                list; the older entries then stand for the contours of the new file with their numbers.
/// Cost.          Linear in the size of the file; the document is kept in memory.
///
/// Settings group "Debug/ImportCatiaXML": "File" (path of the last file).
class ZORTestImportCatiaXMLCurvesDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Import CATIA XML Curves"))
    Q_CLASSINFO("createdTypes", "ZORGeoCurve")

public:
    Q_INVOKABLE explicit ZORTestImportCatiaXMLCurvesDlg(ZORTestEnvironment* environment);
    ~ZORTestImportCatiaXMLCurvesDlg() override;

    bool Apply() override;

public slots:
    /// Asks for a file, remembers and loads it.
    void OnXmlClicked();

private:
    void Load();
    void Read(QFile& file);
    void Parse(QFile& file);
    QDomNodeList FindContours() const;
    ZORMathSetOfPoints ReadPoints(const QDomNode& contour) const;

    const std::unique_ptr<Ui::ZORTestImportCatiaXMLCurvesDlg> m_ui;
    QDomDocument m_document;
    double m_lengthScale = 1.0; // millimetres in a length unit of the file
};
