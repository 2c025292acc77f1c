#include "nesting/ZORTestNestNestingResultDlg.h"

#include "support/BenchTest.h"

#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORNesting/ZORNestResultWriter.h>
#include <ZORNesting/ZORNestVisOptions.h>
#include <ZORVisualization/ZORVisRep.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QAction>
#include <QBuffer>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {

using Segment = ZORNestResultSegment;

/// A result file of one stack of sheets of this length, with a disc in its corner.
QByteArray MakeSheet(double length)
{
    ZORNestResultItem item(QStringLiteral("disc"));
    item.AddShape(
        ZORNestResultShape({Segment::CreateCircle(Segment::ArcClockwise, {20, 10, 0}, {10, 10, 0})}));
    ZORNestResult result(ZORNestResult::Nesting);
    result.SetSheet({{0, 0, 0}, {length, 100, 0}});
    result.SetStackSize(7); // shown in the report only
    result.AddItem(item);
    QBuffer buffer;
    EXPECT_TRUE(buffer.open(QIODevice::WriteOnly));
    EXPECT_GT(ZORNestResultWriter(&buffer).Write(result), 0);
    return buffer.data();
}

void DeleteLater()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

class ZORTestNestNestingResultDlgTest : public BenchTest
{
protected:
    ~ZORTestNestNestingResultDlgTest() override { delete results; }

    void OpenResults() { results = new ZORTestNestNestingResultDlg(nullptr, GetEnvironment()); }
    QComboBox* Combo() const { return results->findChild<QComboBox*>("_SheetCombo"); }
    QTextEdit* Report() const { return results->findChild<QTextEdit*>("_ReportEdit"); }
    /// The one object of the dialog in the 3D view.
    ZORVisVirtualObject* Object() const { return GetFeatEnvironment()->GetVirtualObjects().value(0); }
    /// Length of what is drawn; -1 without a drawing.
    double GetDrawnLength() const
    {
        const ZORMathBoundingBox box =
            Object()->GetRep() ? Object()->GetRep()->GetBoundingBox() : ZORMathBoundingBox();
        return box.IsEmpty() ? -1 : box.GetUpperPoint().GetX() - box.GetLowerPoint().GetX();
    }

    QPointer<ZORTestNestNestingResultDlg> results;
};

TEST_F(ZORTestNestNestingResultDlgTest, FormShowsSheetsAboveTheReport)
{
    OpenResults();
    EXPECT_EQ("ZORTestNestNestingResultDlg", results->objectName());
    EXPECT_EQ("Results", results->windowTitle());
    EXPECT_EQ(QSize(528, 505), results->size());
    EXPECT_NE(nullptr, qobject_cast<QVBoxLayout*>(results->layout()));
    QStringList labels;
    for (const QLabel* label : results->findChildren<QLabel*>())
        labels.append(label->text());
    EXPECT_EQ(QStringList({"View Sheet:", "Report:"}), labels);
    ASSERT_NE(nullptr, Combo());
    EXPECT_EQ(0, Combo()->count());
    ASSERT_NE(nullptr, Report());
    EXPECT_TRUE(Report()->acceptRichText());
    EXPECT_FALSE(results->isModal());
    EXPECT_GE(results->metaObject()->indexOfSlot("OnSheetSelected()"), 0);
}

TEST_F(ZORTestNestNestingResultDlgTest, IsAWindowWithoutParent)
{
    auto* parent = new QWidget;
    results = new ZORTestNestNestingResultDlg(parent, GetEnvironment());
    EXPECT_EQ(nullptr, results->parent());
    EXPECT_TRUE(results->isWindow());
    delete parent;
    EXPECT_NE(nullptr, results.data());
}

TEST_F(ZORTestNestNestingResultDlgTest, ListsTheSheetsByTheirNumbers)
{
    OpenResults();
    results->SetData({}, {MakeSheet(200), MakeSheet(300), MakeSheet(400)});
    ASSERT_EQ(3, Combo()->count());
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(QString::number(i), Combo()->itemText(i));
        EXPECT_TRUE(Combo()->itemIcon(i).isNull());
        EXPECT_FALSE(Combo()->itemData(i).isValid());
    }
    EXPECT_EQ(0, Combo()->currentIndex());
}

TEST_F(ZORTestNestNestingResultDlgTest, ShowsTheReportAsHtmlFromItsBeginning)
{
    OpenResults();
    QByteArray report = "<h1>R\xc3\xa9sum\xc3\xa9</h1><table><tr><td>3 parts</td></tr></table>";
    for (int i = 0; i < 100; ++i)
        report += "<p>line</p>";
    results->SetData(report, {});
    EXPECT_TRUE(Report()->toPlainText().startsWith(QStringLiteral("R\u00e9sum\u00e9\n")));
    EXPECT_TRUE(Report()->toPlainText().contains("3 parts"));
    EXPECT_GT(Report()->document()->firstBlock().charFormat().fontWeight(), int(QFont::Normal));
    results->show();
    QCoreApplication::processEvents();
    EXPECT_EQ(0, Report()->textCursor().position());

    results->SetData("<p>second</p>", {});
    EXPECT_EQ("second", Report()->toPlainText().trimmed());
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// A report with two pictures, the second one half as wide as the first.
QByteArray MakeReport()
{
    QByteArray report = "<p>Nesting report</p>";
    for (const char* width : {"400", "200"}) {
        QImage image(40, 20, QImage::Format_RGB32);
        image.fill(Qt::red);
        QBuffer buffer;
        EXPECT_TRUE(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "PNG"));
        report += QByteArray("<p><img width=\"") + width + "\" height=\"100\" src=\"data:image/png;base64,"
                  + buffer.data().toBase64() + "\"></p>";
    }
    return report;
}

/// Width and height of the pictures of a document, in the order of the text.
QList<QSizeF> GetPictureSizes(const QTextDocument& document)
{
    QList<QSizeF> sizes;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
            const QTextImageFormat format = piece.fragment().charFormat().toImageFormat();
            if (format.isValid())
                sizes.append({format.width(), format.height()});
        }
    }
    return sizes;
}

TEST_F(ZORTestNestNestingResultDlgTest, PicturesGrowAndShrinkWithTheWindow)
{
    OpenResults();
    results->show();
    results->SetData(MakeReport(), {});
    for (const int width : {528, 1500, 300, 900}) {
        results->resize(width, 505);
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return Report()->width() > width - 40 && Report()->width() < width; }));
        const QList<QSizeF> sizes = GetPictureSizes(*Report()->document());
        ASSERT_EQ(2, sizes.size());
        EXPECT_LT(sizes[0].width(), Report()->viewport()->width());
        EXPECT_GT(sizes[0].width(), Report()->viewport()->width() - 40);
        EXPECT_NEAR(sizes[0].width() / 2, sizes[1].width(), 0.01);
        EXPECT_NEAR(sizes[0].width() / 4, sizes[0].height(), 0.01);
        EXPECT_EQ(0, Report()->horizontalScrollBar()->maximum());
    }
}

TEST_F(ZORTestNestNestingResultDlgTest, TheReportIsSavedAsPdfOrHtml)
{
    OpenResults();
    results->SetData(MakeReport(), {});
    auto* const save = results->findChild<QAction*>("_SaveReportAction");
    ASSERT_NE(nullptr, save);
    answers.AnswerFile(GetPath("report.html"));
    save->trigger();
    EXPECT_EQ(MakeReport(), ReadFile(GetPath("report.html")));
    answers.AnswerFile(GetPath("report"));
    save->trigger();
    EXPECT_TRUE(ReadFile(GetPath("report.pdf")).startsWith("%PDF-"));
    EXPECT_GT(ReadFile(GetPath("report.pdf")).size(), 1000);
    answers.CancelFile();
    save->trigger();
    QDir().mkpath(GetPath("vanishing"));
    answers.AnswerFile(GetPath("vanishing/report.pdf"),
                       [this] { QDir(GetPath("vanishing")).removeRecursively(); });
    save->trigger();
    const QStringList errors = boxes.TakeErrors();
    ASSERT_EQ(1, errors.size());
    EXPECT_TRUE(errors[0].startsWith("Cannot write '" + GetPath("vanishing/report.pdf") + "': "));
}

TEST_F(ZORTestNestNestingResultDlgTest, DrawsTheChosenSheetInPlaceOfTheOneBefore)
{
    OpenResults();
    ASSERT_EQ(1, GetFeatEnvironment()->GetNumVirtualObjects());
    EXPECT_EQ(nullptr, Object()->GetRep());
    results->SetData({}, {MakeSheet(200), MakeSheet(300)});
    EXPECT_NEAR(200, GetDrawnLength(), 1e-6);
    Combo()->setCurrentIndex(1);
    EXPECT_NEAR(300, GetDrawnLength(), 1e-6);
    Combo()->setCurrentIndex(0);
    EXPECT_NEAR(200, GetDrawnLength(), 1e-6);
    EXPECT_EQ(1, GetFeatEnvironment()->GetNumVirtualObjects());
}

TEST_F(ZORTestNestNestingResultDlgTest, DrawsEverythingThatFiltersKnow)
{
    OpenResults();
    results->SetData({}, {MakeSheet(200)});
    const QStringList calls =
        TraceCalls([this] { EXPECT_TRUE(QMetaObject::invokeMethod(results, "OnSheetSelected")); });
    ASSERT_GE(calls.size(), 2);
    EXPECT_EQ("ZORNestVisOptions::SetFilters(65535)", calls[0]);
    EXPECT_EQ("ZORNestVisRepFactory::CreateRep([1], 65535)", calls[1]);
}

TEST_F(ZORTestNestNestingResultDlgTest, SheetsThatCannotBeReadAreEntriesWithoutDrawing)
{
    OpenResults();
    results->SetData({}, {"no result", MakeSheet(300), {}});
    ASSERT_EQ(3, Combo()->count());
    EXPECT_EQ(-1, GetDrawnLength());
    Combo()->setCurrentIndex(1);
    EXPECT_NEAR(300, GetDrawnLength(), 1e-6);
    Combo()->setCurrentIndex(2);
    EXPECT_EQ(-1, GetDrawnLength());
}

TEST_F(ZORTestNestNestingResultDlgTest, RunWithoutSheetsHasAnEmptyListAndNoDrawing)
{
    OpenResults();
    results->SetData("<p>nothing to nest</p>", {});
    EXPECT_EQ(0, Combo()->count());
    EXPECT_EQ(nullptr, Object()->GetRep());

    results->SetData({}, {MakeSheet(200)});
    EXPECT_NE(nullptr, Object()->GetRep());
    results->SetData({}, {});
    EXPECT_EQ(0, Combo()->count());
    EXPECT_EQ(nullptr, Object()->GetRep());
}

TEST_F(ZORTestNestNestingResultDlgTest, ClosingDeletesItAndItsDrawing)
{
    OpenResults();
    results->SetData({}, {MakeSheet(200)});
    results->show();
    const QSignalSpy removed(GetFeatEnvironment(), &ZORVisEnvironment::ObjectRemoved);
    const QPointer<ZORVisVirtualObject> object = Object();
    results->close();
    DeleteLater();
    EXPECT_EQ(nullptr, results.data());
    EXPECT_EQ(nullptr, object.data());
    EXPECT_EQ(1, removed.count());
    EXPECT_EQ(0, GetFeatEnvironment()->GetNumVirtualObjects());
}

TEST_F(ZORTestNestNestingResultDlgTest, SeveralDrawBesideEachOther)
{
    OpenResults();
    results->SetData({}, {MakeSheet(200)});
    {
        ZORTestNestNestingResultDlg second(nullptr, GetEnvironment());
        second.SetData({}, {MakeSheet(300)});
        EXPECT_EQ(2, GetFeatEnvironment()->GetNumVirtualObjects());
    }
    EXPECT_EQ(1, GetFeatEnvironment()->GetNumVirtualObjects());
    EXPECT_NEAR(200, GetDrawnLength(), 1e-6);
}

TEST_F(ZORTestNestNestingResultDlgTest, OutlivesEnvironmentAndView)
{
    auto view = std::make_unique<ZORFeatEnvironment>();
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(view.get());
    auto environment = std::make_unique<ZORTestEnvironment>();
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(GetFeatEnvironment());
    results = new ZORTestNestNestingResultDlg(nullptr, environment.get());
    results->SetData("<p>report</p>", {MakeSheet(200), MakeSheet(300)});
    EXPECT_EQ(1, view->GetNumVirtualObjects());
    environment.reset();
    Combo()->setCurrentIndex(1);
    EXPECT_EQ(1, view->GetNumVirtualObjects());
    view.reset();
    Combo()->setCurrentIndex(0);
    EXPECT_EQ("report", Report()->toPlainText().trimmed());
    delete results;
}

TEST_F(ZORTestNestNestingResultDlgTest, ShowsReportsWithoutAView)
{
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(nullptr);
    ZORTestEnvironment environment;
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(GetFeatEnvironment());
    results = new ZORTestNestNestingResultDlg(nullptr, &environment);
    results->SetData("<p>report</p>", {MakeSheet(200)});
    EXPECT_EQ(1, Combo()->count());
    EXPECT_EQ(0, GetFeatEnvironment()->GetNumVirtualObjects());
}

} // namespace
