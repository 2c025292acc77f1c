#include "exchange/ZORTestImportCatiaXMLCurvesDlg.h"

#include "ContourImportTest.h"
#include "console/ZORTestMainDialog.h"

#include <QFileInfo>
#include <QLabel>
#include <QMetaClassInfo>
#include <QPushButton>
#include <QTest>

namespace {

class ZORTestImportCatiaXMLCurvesDlgTest : public ContourImportTest
{
protected:
    /// The point made of the text of one "Pt".
    ZORMathPoint ReadPoint(const QByteArray& text, const QByteArray& unit = "mm")
    {
        GetContainer()->Clear();
        OpenWith("<a><Length>" + unit + "</Length><OuterContour><Pt>" + text + "</Pt></OuterContour></a>");
        const QList<QList<ZORMathPoint>> curves = ImportAll();
        EXPECT_EQ(1, curves.size());
        EXPECT_EQ(1, curves.value(0).size());
        return curves.value(0).value(0);
    }
};

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, FormShowsFileAndContours)
{
    ASSERT_NE(nullptr, Open("ZORTestImportCatiaXMLCurvesDlg"));
    const QMetaObject* metaObject = dialog->metaObject();
    const auto info = [metaObject](const char* key) {
        return QString::fromUtf8(metaObject->classInfo(metaObject->indexOfClassInfo(key)).value());
    };
    EXPECT_EQ(QString("Import CATIA XML Curves"), info("label"));
    EXPECT_EQ(QString("ZORGeoCurve"), info("createdTypes"));
    EXPECT_EQ(QString("Import CATIA XML Curves"), dialog->windowTitle());
    EXPECT_EQ(QString("XML File: "), dialog->findChild<QLabel*>("_XmlLbl")->text());
    EXPECT_EQ(QString("Available Curves:"), dialog->findChild<QLabel*>("_CurveLbl")->text());
    EXPECT_EQ(QString("..."), dialog->findChild<QPushButton*>("_XmlBtn")->text());
    EXPECT_EQ(QString(), EditText());
    EXPECT_EQ(0, List()->count());
    EXPECT_EQ(QAbstractItemView::MultiSelection, List()->selectionMode());
    EXPECT_GE(metaObject->indexOfSlot("OnXmlClicked()"), 0);
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, ButtonAsksForAFileRemembersAndLoadsIt)
{
    WriteFile(path, "<a NAME='A'><b NAME='B'><OuterContour/></b></a>");
    ASSERT_NE(nullptr, Open("ZORTestImportCatiaXMLCurvesDlg"));
    const QWidget* const parent = dialog.data();
    Choose(path);
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("Open XML file"), shown[0].title);
    EXPECT_EQ(QStringList({"XML files (*.xml)"}), shown[0].filters);
    EXPECT_FALSE(shown[0].isSaving);
    EXPECT_EQ(parent, shown[0].parent);
    EXPECT_EQ(path, EditText());
    EXPECT_EQ(QVariant(path), GetSettings()->value(kSettingsKey));
    EXPECT_EQ(QStringList(QLatin1String(kSettingsKey)), GetSettings()->allKeys());
    EXPECT_EQ(QStringList({"A/B/OuterContour"}), Entries());
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, CancelledFileDialogChangesNothing)
{
    OpenWith("<a><OuterContour/></a>");
    answers.CancelFile();
    Click("_XmlBtn", dialog);
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QFileInfo(path).absolutePath(), shown[0].directory);
    EXPECT_EQ(QString("contours.xml"), shown[0].fileName) << "it starts from the text of the edit";
    EXPECT_EQ(path, EditText());
    EXPECT_EQ(1, List()->count());
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, ReopeningListsTheContoursOfTheLastFileAtOnce)
{
    WriteFile(path, "<a><OuterContour/><OuterContour/></a>");
    ASSERT_NE(nullptr, Open("ZORTestImportCatiaXMLCurvesDlg"));
    Choose(path);
    PressCancel();
    ASSERT_NE(nullptr, Open("ZORTestImportCatiaXMLCurvesDlg"));
    EXPECT_EQ(path, EditText());
    EXPECT_EQ(2, List()->count());
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, NamesComeFromTheElementsAroundUpToTheFirstWithout)
{
    OpenWith("<root><a NAME='A'><b NAME='B'><OuterContour/></b></a>"
             "<OuterContour NAME='own'/>"
             "<p NAME='P'><q><r NAME='R'><OuterContour/></r></q></p>"
             "<e NAME=''><OuterContour/></e>"
             "<u NAME='&#xDC;&amp;/x'><OuterContour/></u>"
             "<n name='lower'><OuterContour/></n></root>");
    EXPECT_EQ(QStringList({"A/B/OuterContour", "OuterContour", "R/OuterContour", "/OuterContour",
                           QString::fromUtf8("\xc3\x9c&/x/OuterContour"), "OuterContour"}),
              Entries());
    for (int i = 0; i < List()->count(); ++i)
        EXPECT_EQ(QVariant(i), List()->item(i)->data(Qt::UserRole));
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, ContoursMayBeTheRootOrLieInEachOther)
{
    OpenWith(
        "<OuterContour NAME='O'><Pt>1 2 3</Pt><OuterContour><Pt>4 5 6</Pt></OuterContour></OuterContour>");
    EXPECT_EQ(QStringList({"OuterContour", "O/OuterContour"}), Entries());
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{1, 2, 3}}, {{4, 5, 6}}}), ImportAll()) << "direct children only";
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, PointsAreReadWithOrWithoutKeys)
{
    EXPECT_EQ(ZORMathPoint(1, 2, 3), ReadPoint("X=1 Y=2 Z=3"));
    EXPECT_EQ(ZORMathPoint(1, 2, 3), ReadPoint("1 2 3"));
    EXPECT_EQ(ZORMathPoint(1, 2, 3), ReadPoint("1  2 3")) << "blanks are simplified first";
    EXPECT_EQ(ZORMathPoint(1, 2, 3), ReadPoint("\n\t X=1 \r\n Y=2 \t\t Z=3\n"));
    EXPECT_EQ(ZORMathPoint(1, 2, 3), ReadPoint("Z=1 Y=2 X=3")) << "keys are not looked at";
    EXPECT_EQ(ZORMathPoint(3, 0, 3), ReadPoint("a=b=3 Y= 3 4")) << "the last = of a part counts";
    EXPECT_EQ(ZORMathPoint(-1.5e2, .25, 7), ReadPoint("X=-1.5e2 Y=.25 Z=+7 W=9 more"));
    EXPECT_EQ(ZORMathPoint(0, 2, 0), ReadPoint("abc 2 1,5"));
    EXPECT_EQ(ZORMathPoint(1, 2, 3), ReadPoint("1 <!-- c -->2<![CDATA[ 3]]>"));
    EXPECT_EQ(ZORMathPoint(1, 2, 3), ReadPoint("1&#32;2&#x20;3"));
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, MissingPartsCountAsZero)
{
    EXPECT_EQ(ZORMathPoint(1, 2, 0), ReadPoint("X=1 Y=2"));
    EXPECT_EQ(ZORMathPoint(1, 0, 0), ReadPoint("1"));
    EXPECT_EQ(ZORMathPoint(0, 0, 0), ReadPoint(""));
    EXPECT_EQ(ZORMathPoint(0, 0, 0), ReadPoint("   "));
    EXPECT_EQ(ZORMathPoint(0, 0, 0), ReadPoint("= = ="));
    EXPECT_EQ(ZORMathPoint(0, 0, 0), ReadPoint("<x/>"));
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, InchesAreScaledToMillimetres)
{
    EXPECT_TRUE(IsNear(ZORMathPoint(25.4, 50.8, 76.2), ReadPoint("X=1 Y=2 Z=3", "in")));
    for (const char* other : {"mm", "IN", " in", "inch", "", "m"})
        EXPECT_EQ(ZORMathPoint(1, 2, 3), ReadPoint("X=1 Y=2 Z=3", other)) << '"' << other << '"';
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, OnlyTheFirstLengthElementCountsWhereverItStands)
{
    OpenWith(
        "<a><OuterContour><Pt>1 0 0</Pt></OuterContour><b><Length>in</Length></b><Length>mm</Length></a>");
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{25.4, 0, 0}}}), ImportAll());
    GetContainer()->Clear();
    OpenWith("<a><Length>mm</Length><Length>in</Length><OuterContour><Pt>1 0 0</Pt></OuterContour></a>");
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{1, 0, 0}}}), ImportAll());
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, OnlyDirectChildrenOfTheExactTagArePoints)
{
    OpenWith("<a><OuterContour><Pt>1 0 0</Pt><pt>2 0 0</pt>text<g><Pt>3 0 0</Pt></g><Pts>4 0 0</Pts>"
             "<Pt>5 0 0</Pt></OuterContour><Outercontour><Pt>6 0 0</Pt></Outercontour></a>");
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{1, 0, 0}, {5, 0, 0}}}), ImportAll());
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, SelectedContoursAloneAreImported)
{
    OpenWith("<a><OuterContour><Pt>1 0 0</Pt></OuterContour><OuterContour><Pt>2 0 0</Pt></OuterContour>"
             "<OuterContour><Pt>3 0 0</Pt></OuterContour></a>");
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                      List()->visualItemRect(List()->item(0)).center());
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                      List()->visualItemRect(List()->item(2)).center());
    EXPECT_EQ(2, List()->selectedItems().size()) << "each click toggles";
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                      List()->visualItemRect(List()->item(0)).center());
    EXPECT_EQ(QStringList({"ZORGeoPolyline::ZORGeoPolyline(<>, [1], true)", "ZORGeoGeometry::Initialize()"}),
              TraceCalls([this] { PressOk(); }));
    ASSERT_EQ(1, GetContainer()->GetNumGeometry());
    EXPECT_EQ(ZORMathPoint(3, 0, 0),
              qobject_cast<ZORGeoPolyline*>(GetContainer()->GetGeometryByIndex(0))->GetPoint(0));
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, NothingSelectedCreatesNothingAndSucceeds)
{
    OpenWith("<a><OuterContour><Pt>1 0 0</Pt></OuterContour></a>");
    PressOk();
    EXPECT_EQ(0, GetContainer()->GetNumGeometry());
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, ContourWithoutPointsGivesAnEmptyPolyline)
{
    OpenWith("<a><OuterContour/></a>");
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{}}), ImportAll());
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, EqualPointsAreKept)
{
    OpenWith("<a><OuterContour><Pt>1 0 0</Pt><Pt>1 0 0</Pt></OuterContour></a>");
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{1, 0, 0}, {1, 0, 0}}}), ImportAll());
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, SecondFileAppendsAndOldEntriesReadTheNewDocument)
{
    OpenWith("<a NAME='Old'><OuterContour><Pt>1 0 0</Pt></OuterContour><OuterContour><Pt>2 0 "
             "0</Pt></OuterContour></a>");
    const QString second = GetPath("second.xml");
    WriteFile(second, "<a NAME='New'><OuterContour><Pt>7 0 0</Pt></OuterContour></a>");
    Choose(second);
    EXPECT_EQ(QStringList({"Old/OuterContour", "Old/OuterContour", "New/OuterContour"}), Entries());
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{7, 0, 0}}, {}, {{7, 0, 0}}}), ImportAll())
        << "an index that the new document does not have gives no points";
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, ScaleOfAFileInInchesStays)
{
    OpenWith("<a><Length>in</Length></a>");
    for (const char* unit : {"<Length>mm</Length>", ""}) {
        const QString second = GetPath("second.xml");
        QFile::remove(second);
        WriteFile(second, QByteArray("<a>") + unit + "<OuterContour><Pt>1 0 0</Pt></OuterContour></a>");
        Choose(second);
    }
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{25.4, 0, 0}}, {{25.4, 0, 0}}}), ImportAll());
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, CoordinatesThatAreNotFiniteEndTheImportWithTheMessageOfTheSdk)
{
    OpenWith("<a><OuterContour><Pt>1 0 0</Pt></OuterContour><OuterContour><Pt>1 0 0</Pt><Pt>0 inf 0</Pt>"
             "</OuterContour></a>");
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{1, 0, 0}}}), ImportAll());
    EXPECT_EQ(QStringList({"point 1 of the curve is not finite or too far away"}), boxes.TakeErrors());
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, TwoDialogsHaveDocumentsOfTheirOwn)
{
    OpenWith("<a><OuterContour><Pt>1 0 0</Pt></OuterContour></a>");
    const QPointer<ZORTestDialog> first = dialog;
    OpenWith("<a><OuterContour><Pt>2 0 0</Pt></OuterContour></a>");
    ImportAll();
    dialog = first;
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{2, 0, 0}}, {{1, 0, 0}}}), ImportAll());
}

TEST_F(ZORTestImportCatiaXMLCurvesDlgTest, ConsoleOpensItFromItsMenu)
{
    OpenConsole();
    GetSettings()->setValue(kSettingsKey, GetPath("missing.xml"));
    ASSERT_NE(nullptr, TriggerMenu("_ImportCatiaXMLAction"));
    const QList<MessageBoxCatcher::Box> expected{
        {QMessageBox::Critical, "Error", "Cannot open the file for reading.", QMessageBox::Ok, nullptr}};
    EXPECT_EQ(expected, boxes.Take()) << "without a parent all the same";
    EXPECT_STREQ("ZORTestImportCatiaXMLCurvesDlg", dialog->metaObject()->className());
    EXPECT_EQ(console.data(), dialog->parentWidget());
}

} // namespace
