#include "exchange/ZORTestImportCatiaXMLCurvesDlg.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestErrorBox.h"
#include "core/ZORTestRegistration.h"
#include "core/ZORTestSettingsGroup.h"
#include "exchange/ZORTestMemoryWatch.h"
#include "ui_ZORTestImportCatiaXMLCurvesDlg.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysXmlGuard.h>

#include <QFileDialog>
#include <QMessageBox>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <new>

ZOR_TEST_REGISTER(ZORTestImportCatiaXMLCurvesDlg)

namespace {

/// Shows that the program is busy until destroyed, also by an exception.
class WaitCursor
{
public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(WaitCursor)
};

constexpr qint64 kBytesOfEntry = 1000; // the item, its values, and what the view and its selection keep of it
constexpr qint64 kBytesOfNodes = 100;  // of the document, for a byte of a file of empty elements

/// "A/B/OuterContour": the names of the elements around a contour, up to the first one without.
QString GetName(const QDomNode& contour)
{
    QStringList names{QLatin1String("OuterContour")};
    for (QDomElement parent = contour.parentNode().toElement(); parent.hasAttribute(QLatin1String("NAME"));
         parent = parent.parentNode().toElement())
        names.append(parent.attribute(QLatin1String("NAME")));
    std::reverse(names.begin(), names.end()); // prepending moves a long name once for each element
    return names.join(QLatin1Char('/'));
}

/// Returns the node behind \a node in document order, within \a root; null behind the last one.
QDomNode GetNext(QDomNode node, const QDomNode& root)
{
    if (node.hasChildNodes())
        return node.firstChild();
    while (!node.isNull() && node != root && node.nextSibling().isNull())
        node = node.parentNode();
    return node == root ? QDomNode() : node.nextSibling();
}

/// Returns the text of an element up to the end of its third word. Elements may nest deep, each with a text
/// that contains those of all the others.
QString ReadWords(const QDomElement& element)
{
    QString text;
    int numWords = 0;
    bool isInWord = false;
    for (QDomNode node = GetNext(element, element); !node.isNull(); node = GetNext(node, element)) {
        const QString part = node.isText() ? node.nodeValue() : QString();
        for (const QChar character : part) {
            numWords += !isInWord && !character.isSpace() ? 1 : 0;
            isInWord = !character.isSpace();
            if (numWords > 3)
                return text;
            text.append(character);
        }
    }
    return text;
}

/// "X=1 Y=2 Z=3", with any or no keys.
ZORMathPoint ParsePoint(QStringView text)
{
    std::array<double, 3> coordinates{};
    qsizetype begin = 0;
    for (double& coordinate : coordinates) {
        while (begin < text.size() && text[begin].isSpace())
            ++begin;
        qsizetype end = begin;
        while (end < text.size() && !text[end].isSpace())
            ++end;
        const QStringView part = text.sliced(begin, end - begin);
        coordinate = part.sliced(part.lastIndexOf(u'=') + 1).toDouble();
        begin = end;
    }
    return {coordinates[0], coordinates[1], coordinates[2]};
}

} // namespace

ZORTestImportCatiaXMLCurvesDlg::ZORTestImportCatiaXMLCurvesDlg(ZORTestEnvironment* environment)
    : ZORTestDialog(environment)
    , m_ui(std::make_unique<Ui::ZORTestImportCatiaXMLCurvesDlg>())
{
    m_ui->setupUi(this);
    connect(m_ui->_XmlBtn, &QPushButton::clicked, this, &ZORTestImportCatiaXMLCurvesDlg::OnXmlClicked);

    QString fileName;
    {
        const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("ImportCatiaXML"));
        fileName = settings->value("File").toString();
    }
    if (!fileName.isEmpty()) {
        m_ui->_XmlEdit->setText(fileName);
        Load();
    }
}

ZORTestImportCatiaXMLCurvesDlg::~ZORTestImportCatiaXMLCurvesDlg() = default;

void ZORTestImportCatiaXMLCurvesDlg::OnXmlClicked()
{
    const QString fileName = QFileDialog::getOpenFileName(this, tr("Open XML file"), m_ui->_XmlEdit->text(),
                                                          tr("XML files (*.xml)"));
    if (fileName.isEmpty())
        return;
    {
        const ZORTestSettingsGroup settings(GetEnvironment()->GetSettings(), QLatin1String("ImportCatiaXML"));
        settings->setValue("File", fileName);
    }
    m_ui->_XmlEdit->setText(fileName);
    Load();
}

void ZORTestImportCatiaXMLCurvesDlg::Load()
{
    ZORSysFile file(m_ui->_XmlEdit->text());
    if (!file.open(QIODevice::ReadOnly)) {
        QMessageBox::critical(nullptr, tr("Error"), tr("Cannot open the file for reading."), QMessageBox::Ok);
        return;
    }
    const int numCurves = m_ui->_CurveList->count();
    try {
        Read(file);
    } catch (const std::bad_alloc&) {
        m_document = QDomDocument();
        while (m_ui->_CurveList->count() > numCurves)
            delete m_ui->_CurveList->takeItem(numCurves);
        ZORTestShowErrorBox(nullptr, tr("not enough memory to read '%1'").arg(file.fileName()));
    }
}

void ZORTestImportCatiaXMLCurvesDlg::Read(QFile& file)
{
    const WaitCursor cursor;
    Parse(file);
    const QDomNodeList lengths = m_document.elementsByTagName(QLatin1String("Length"));
    if (ReadWords(lengths.at(0).toElement()) == QLatin1String("in"))
        m_lengthScale = 25.4;

    // Neither the list nor the scale starts anew with another file: both are established.
    const QDomNodeList contours = FindContours();
    const int numContours = contours.length();
    ZORTestMemoryWatch watch;
    for (int i = 0; i < numContours; ++i) {
        const QString name = GetName(contours.at(i));
        watch.Use(kBytesOfEntry + name.size() * qint64(sizeof(QChar)));
        auto* item = new QListWidgetItem(name, m_ui->_CurveList);
        item->setData(Qt::UserRole, i);
    }
}

/// Leaves the document empty when the file cannot be parsed.
void ZORTestImportCatiaXMLCurvesDlg::Parse(QFile& file)
{
    m_document = QDomDocument();
    const ZORSysXmlGuard::Finding finding = ZORSysXmlGuard::Scan(file);
    if (finding.verdict != ZORSysXmlGuard::Verdict::Harmless || !file.seek(0))
        return;
    ZORTestWatchedDevice device(file, kBytesOfNodes);
    QXmlStreamReader reader(&device);
    reader.setNamespaceProcessing(false);
    reader.setEntityExpansionLimit(finding.numExpanded);
    const bool isRead = m_document.setContent(&reader, false);
    if (device.IsMemoryLow())
        throw std::bad_alloc();
    if (!isRead)
        m_document = QDomDocument();
}

/// In document order. One walk over the document; looking up each of the result is cheap as long as the
/// document does not change.
QDomNodeList ZORTestImportCatiaXMLCurvesDlg::FindContours() const
{
    return m_document.elementsByTagName(QLatin1String("OuterContour"));
}

bool ZORTestImportCatiaXMLCurvesDlg::Apply()
{
    ZORGeoContainer* container = GetEnvironment()->GetEnvironment()->GetContainer();
    const QDomNodeList contours = FindContours();
    const QList<QListWidgetItem*> selected = m_ui->_CurveList->selectedItems();
    for (const QListWidgetItem* item : selected) {
        const QDomNode contour = contours.at(item->data(Qt::UserRole).toInt());
        Create<ZORGeoPolyline>(container, ReadPoints(contour), true);
    }
    return true;
}

/// Scaled to millimetres; none for a contour that the document does not have.
ZORMathSetOfPoints ZORTestImportCatiaXMLCurvesDlg::ReadPoints(const QDomNode& contour) const
{
    const QLatin1String tag("Pt");
    ZORMathSetOfPoints points;
    for (QDomElement element = contour.firstChildElement(tag); !element.isNull();
         element = element.nextSiblingElement(tag)) {
        ZORMathPoint point = ParsePoint(ReadWords(element));
        point *= m_lengthScale;
        points.append(point);
    }
    return points;
}
