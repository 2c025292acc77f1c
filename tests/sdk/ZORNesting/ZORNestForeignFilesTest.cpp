// Sources and reports that name other files: none of those is opened.

#include "DxfText.h"
#include "NestedLayout.h"
#include "TranslationTest.h"
#include "support/OpenWatch.h"

#include <ZORNesting/ZORNestReport.h>

#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTextDocument>

namespace {

/// A file of each provider, and one beside it that it names.
class ZORNestForeignFilesTest : public TranslationTest
{
protected:
    ZORNestForeignFilesTest()
        : TranslationTest("")
    {
        QFile file(outside);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<svg xmlns='http://www.w3.org/2000/svg'><path id='a' d='M0 0H1V1Z'/></svg>");
    }

    /// Translates a content in which %1 stands for the path of the other file.
    void TranslateNaming(const QByteArray& providerId, QByteArray content)
    {
        class Runner : public TranslationTest
        {
        public:
            explicit Runner(const QByteArray& id)
                : TranslationTest(id)
            {
            }
            void TestBody() override {}
            using TranslationTest::Translate;
        } runner(providerId);
        const OpenWatch watch(outside);
        runner.Translate(content.replace("%1", QFile::encodeName(outside)));
        EXPECT_FALSE(watch.WasOpened()) << content.constData();
    }

    const QString outside = directory.filePath(QStringLiteral("outside.svg"));
};

TEST_F(ZORNestForeignFilesTest, SvgImagesStylesAndReferencesAreNotLoaded)
{
    for (const char* inside :
         {"<image xlink:href='%1' width='9' height='9'/>", "<image href='file://%1' width='9' height='9'/>",
          "<use xlink:href='%1#a'/>", "<use href='file://%1#a'/>", "<style>@import url('%1');</style>",
          "<style>@import url(file://%1);</style>", "<script href='%1'/>",
          "<foreignObject><iframe src='%1'/></foreignObject>",
          "<path d='M0 0H9V9Z' style='fill:url(%1#a)'/>"})
        TranslateNaming("svg",
                        "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
                        "width='9mm' height='9mm'>"
                            + QByteArray(inside) + "<path d='M0 0H5V5Z'/></svg>");
    TranslateNaming("svg", "<?xml-stylesheet href='%1'?><svg xmlns='http://www.w3.org/2000/svg'/>");
}

TEST_F(ZORNestForeignFilesTest, ExternalEntitiesAndTypesAreNotLoaded)
{
    for (const char* providerId : {"svg", "contour-xml"}) {
        const QByteArray root = qstrcmp(providerId, "svg") == 0 ? "svg" : "r";
        TranslateNaming(providerId, "<!DOCTYPE " + root + " SYSTEM '%1'><" + root + "/>");
        TranslateNaming(providerId, "<!DOCTYPE " + root + " PUBLIC 'x' 'file://%1'><" + root + "/>");
        TranslateNaming(providerId,
                        "<!DOCTYPE " + root + " [<!ENTITY e SYSTEM '%1'>]><" + root + ">&e;</" + root + ">");
        TranslateNaming(providerId, "<!DOCTYPE " + root + " [<!ENTITY % e SYSTEM '%1'> %e;]><" + root + "/>");
    }
}

TEST_F(ZORNestForeignFilesTest, DxfReferencesAndImagesAreNotLoaded)
{
    TranslateNaming("dxf",
                    Lines("0|SECTION|2|BLOCKS|0|BLOCK|2|X|70|4|10|0|20|0|1|%1|3|X|0|ENDBLK|0|ENDSEC|"
                          "0|SECTION|2|ENTITIES|0|INSERT|2|X|8|0|10|0|20|0|"
                          "0|IMAGE|8|0|10|0|20|0|340|A1|0|CIRCLE|8|0|10|0|20|0|40|5|0|ENDSEC|"
                          "0|SECTION|2|OBJECTS|0|IMAGEDEF|5|A1|1|%1|0|PDFDEFINITION|1|%1|0|ENDSEC|0|EOF|"));
}

TEST_F(ZORNestForeignFilesTest, ReportsShowNamesLiterallyAndLoadNothing)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString picture = directory.filePath(QStringLiteral("picture.png"));
    ASSERT_TRUE(image.save(picture));
    const QString hostile =
        QStringLiteral("\"'><img src=\"%1\"><script>alert(1)</script>&lt;%2").arg(picture);
    ZORNestSolver::Item item;
    item.name = hostile.toStdString();
    item.contours = {ZORNestSolver::MakeContour({{0, 0}, {40, 0}, {40, 10}, {0, 10}})};
    ZORNestSolver::SheetKind sheet;
    sheet.name = hostile.toStdString();
    sheet.width = 50;
    sheet.length = 100;
    ZORNestSolver::Job job;
    job.items = {item, item};
    job.kinds = {sheet};
    ZORNestSolver::Solution solution;
    solution.sheets.push_back({0, 100, 1, {{0, {false, 0, {0, 0}}}}});
    solution.unplaced.push_back({1, 1, hostile.toStdString()});
    solution.remarks.push_back(hostile.toStdString());
    ZORNestReport nestingReport(MakeLayout(job, solution));
    nestingReport.SetMaterial(hostile, 0);
    nestingReport.SetEnding(hostile);
    nestingReport.SetRemarks({hostile});
    const QString html = QString::fromUtf8(nestingReport.Write());

    const OpenWatch watch(directory.path());
    QTextDocument document;
    document.setHtml(html);
    EXPECT_GT(document.size().height(), 0);
    EXPECT_FALSE(watch.WasOpened());
    constexpr int kNumNames = 8; // material, end, part twice, reason, two remarks, sheet
    EXPECT_EQ(kNumNames, document.toPlainText().count(hostile));
    // Its only pictures are in the text itself, and there is nothing to click or to run.
    static const QRegularExpression reference(
        "(src|href|url|action|on\\w+)\\s*+[=(]\\s*+[\"']?+(?!data:image/png;base64,)",
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression inTags("<[^>]*>");
    for (auto tags = inTags.globalMatch(html); tags.hasNext();) {
        const QString tag = tags.next().captured();
        EXPECT_FALSE(tag.contains(reference)) << qPrintable(tag.left(200));
        EXPECT_FALSE(tag.startsWith("<script"));
    }
}

} // namespace
