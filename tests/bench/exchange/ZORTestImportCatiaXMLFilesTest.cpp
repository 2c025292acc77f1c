// Files that are broken, hostile, odd or big, and what the import makes of them.

#include "ContourImportTest.h"
#include "support/HostileFiles.h"
#include "support/MemoryLimit.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStringEncoder>

#include <random>

namespace {

using ZORTestImportCatiaXMLFilesTest = ContourImportTest;

TEST_F(ZORTestImportCatiaXMLFilesTest, FileThatCannotBeOpenedIsReportedWithoutAParent)
{
    const QString pipe = HostileFiles::MakePipe(QFileInfo(path).absolutePath(), "pipe.xml");
    for (const QString& bad : {GetPath("missing.xml"), QFileInfo(path).absolutePath(), pipe}) {
        GetSettings()->setValue(kSettingsKey, bad);
        ASSERT_NE(nullptr, Open("ZORTestImportCatiaXMLCurvesDlg")) << bad.toStdString();
        const QList<MessageBoxCatcher::Box> shown = boxes.Take();
        ASSERT_EQ(1, shown.size()) << bad.toStdString();
        EXPECT_EQ(QMessageBox::Critical, shown[0].icon);
        EXPECT_EQ(QString("Error"), shown[0].title);
        EXPECT_EQ(QString("Cannot open the file for reading."), shown[0].text);
        EXPECT_EQ(QMessageBox::StandardButtons(QMessageBox::Ok), shown[0].buttons);
        EXPECT_EQ(nullptr, shown[0].parent);
        EXPECT_EQ(bad, EditText()) << "the dialog can be used all the same";
        EXPECT_EQ(0, List()->count());
        PressCancel();
    }
}

TEST_F(ZORTestImportCatiaXMLFilesTest, EnormousFileOfZerosIsMalformed)
{
    const QString folder = QFileInfo(path).absolutePath();
    GetSettings()->setValue(kSettingsKey, HostileFiles::MakeZeros(folder, qint64(4) << 30, "zeros.xml"));
    ASSERT_NE(nullptr, Open("ZORTestImportCatiaXMLCurvesDlg"));
    EXPECT_EQ(QStringList(), boxes.TakeErrors());
    EXPECT_EQ(0, List()->count());
}

TEST_F(ZORTestImportCatiaXMLFilesTest, FileThatKeepsGrowingEnds)
{
    const HostileFiles::GrowingFile file(QFileInfo(path).absolutePath(), QByteArray(1 << 20, ' '));
    GetSettings()->setValue(kSettingsKey, file.GetPath());
    for (int i = 0; i < 3; ++i) {
        ASSERT_NE(nullptr, Open("ZORTestImportCatiaXMLCurvesDlg"));
        EXPECT_EQ(QStringList(), boxes.TakeErrors());
        EXPECT_EQ(0, List()->count());
        PressCancel();
    }
}

TEST_F(ZORTestImportCatiaXMLFilesTest, FileThatVanishesWhileItIsChosenLeavesTheListAsItIs)
{
    OpenWith("<a>" + Contour + "</a>");
    const QString second = GetPath("second.xml");
    WriteFile(second, "<a/>");
    answers.AnswerFile(second, [&] { QFile::remove(second); });
    Click("_XmlBtn", dialog);
    EXPECT_EQ(QStringList({"Cannot open the file for reading."}), boxes.TakeErrors());
    EXPECT_EQ(second, EditText());
    EXPECT_EQ(QVariant(second), GetSettings()->value(kSettingsKey)) << "remembered before it is loaded";
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{1, 2, 3}}}), ImportAll()) << "the document is still the old one";
}

TEST_F(ZORTestImportCatiaXMLFilesTest, FileThatDoesNotFitIntoTheMemoryIsReported)
{
    ZOR_REQUIRE_MEMORY_LIMITS();
    QFile::remove(path);
    constexpr int kNumContours = 100'000;
    WriteFile(path, "<a>" + Contour.repeated(kNumContours) + "</a>");
    GetSettings()->setValue(kSettingsKey, path);
    enum Outcome { Loaded = 1, Reported };
    const auto load = [this]() -> int {
        Open("ZORTestImportCatiaXMLCurvesDlg");
        const QStringList errors = boxes.TakeErrors();
        const int numListed = List()->count();
        if (!QGuiApplication::overrideCursor() && errors.isEmpty() && numListed == kNumContours)
            return Loaded;
        const QStringList expected("not enough memory to read '" + path + "'");
        return !QGuiApplication::overrideCursor() && errors == expected && numListed == 0 ? Reported : 0;
    };
    // What earlier tests released serves as well, so only the least limits are sure to be too low.
    for (const qint64 room : {13'000'000, 20'000'000})
        EXPECT_EQ(Reported, RunWithMemory(room, load)) << "with " << room << " bytes";
    for (const qint64 room : {40'000'000, 60'000'000, 100'000'000, 140'000'000}) {
        const int outcome = RunWithMemory(room, load);
        EXPECT_TRUE(outcome == Reported || outcome == Loaded) << outcome << " with " << room << " bytes";
    }
    EXPECT_EQ(Loaded, RunWithMemory(1'000'000'000, load));
}

TEST_F(ZORTestImportCatiaXMLFilesTest, MalformedFilesGiveNoContoursAndNoMessage)
{
    const QByteArray malformed[] = {
        "",
        " ",
        "no markup at all",
        "<a>" + Contour,
        "<a>" + Contour + "</b>",
        "<a>" + Contour + "</a><b/>",
        "<a>" + Contour + "</a>trailing",
        "<a>" + Contour + "<c x=1/></a>",
        "<a>" + Contour + "&unknown;</a>",
        "<a>" + Contour + QByteArray("\0", 1) + "</a>",
        "<a>" + Contour + "\xff\xfe</a>",
        "<?xml version='1.0' encoding='no-such-encoding'?><a>" + Contour + "</a>",
        QByteArray(1000, '\0'),
        QByteArray(1000, '<'),
    };
    for (const QByteArray& content : malformed)
        EXPECT_EQ(QStringList(), ListOf(content)) << content.left(80).toStdString();
}

TEST_F(ZORTestImportCatiaXMLFilesTest, MalformedSecondFileEmptiesTheDocumentBehindTheEntries)
{
    OpenWith("<a>" + Contour + "</a>");
    const QString second = GetPath("second.xml");
    WriteFile(second, "<a>" + Contour);
    answers.AnswerFile(second);
    Click("_XmlBtn", dialog);
    EXPECT_EQ(OneContour(), Entries());
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{}}), ImportAll());
}

TEST_F(ZORTestImportCatiaXMLFilesTest, AllEncodingsOfTheParserAreRead)
{
    const QString text =
        QString::fromUtf8("<a NAME='\xc3\x9c'><OuterContour><Pt>1 2 3</Pt></OuterContour></a>");
    const QStringList expected{QString::fromUtf8("\xc3\x9c/OuterContour")};
    EXPECT_EQ(expected, ListOf(text.toUtf8()));
    EXPECT_EQ(expected, ListOf("\xef\xbb\xbf" + text.toUtf8()));
    EXPECT_EQ(expected, ListOf("<?xml version='1.0' encoding='ISO-8859-1'?>" + text.toLatin1()));
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE,
                                QStringConverter::Utf32LE, QStringConverter::Utf32BE}) {
        QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
        EXPECT_EQ(expected, ListOf(encoder(text))) << encoding;
    }
}

TEST_F(ZORTestImportCatiaXMLFilesTest, MarkupAcrossTheBlocksOfReadingIsUnderstood)
{
    // Whatever piece of the markup lies across the border of two blocks of 64 KiB.
    const QByteArray markup = "<!-- > --><![CDATA[ ]] ]]><b c='>' d=\"/\"/><?pi ?>" + Contour;
    for (qsizetype shift = 0; shift < markup.size(); ++shift) {
        const QByteArray filler((1 << 16) - 3 - shift, ' ');
        ASSERT_EQ(OneContour(), ListOf("<a>" + filler + markup + "</a>")) << shift;
    }
}

TEST_F(ZORTestImportCatiaXMLFilesTest, ManyContoursAreListedAndImported)
{
    constexpr int kContours = 40000;
    OpenWith("<a>" + Contour.repeated(kContours) + "</a>");
    EXPECT_EQ(kContours, List()->count());
    EXPECT_EQ(kContours, ImportAll().size());
}

TEST_F(ZORTestImportCatiaXMLFilesTest, SurvivesRandomlyDamagedFiles)
{
    QByteArray whole = "<?xml version='1.0' encoding='UTF-8'?><!DOCTYPE a [<!ELEMENT a ANY>"
                       "<!ENTITY e '-2e3'><!ENTITY f 'C &e;'><!ATTLIST b N CDATA 'x'>]>"
                       "<a NAME='A'><Length>in</Length><!-- c --><b NAME='B &amp; &f;'>";
    for (int i = 0; i < 5; ++i)
        whole += "<OuterContour><Pt>X=1.5 Y=&e; Z=3</Pt><Pt>4 5</Pt><![CDATA[x]]></OuterContour>";
    whole += "</b></a>";

    std::mt19937 random(4711);
    const auto below = [&random](qsizetype bound) { return qsizetype(random() % size_t(bound)); };
    const QByteArray tokens[] = {"<",
                                 ">",
                                 "\"",
                                 "'",
                                 "&",
                                 "<!--",
                                 "]]>",
                                 "<![CDATA[",
                                 "&#0;",
                                 "=",
                                 "<Pt>",
                                 "</a>",
                                 "<!DOCTYPE ",
                                 "]>",
                                 "\xff",
                                 QByteArray("\0", 1),
                                 "&e;",
                                 "&f;",
                                 "%e;",
                                 "<!ENTITY e '",
                                 "<!ATTLIST a NAME CDATA '",
                                 "&#60;"};
    int numListed = 0;
    for (int round = 0; round < 1500; ++round) {
        QByteArray content = whole;
        if (round % 3 == 0)
            content.truncate(below(content.size()));
        for (qsizetype edits = below(4); edits > 0 && !content.isEmpty(); --edits) {
            const qsizetype place = below(content.size());
            switch (below(3)) {
            case 0:
                content[place] = char(below(256));
                break;
            case 1:
                content.remove(place, below(20));
                break;
            default:
                content.insert(place, tokens[below(std::size(tokens))]);
            }
        }
        OpenWith(content);
        numListed += List()->count();
        EXPECT_LE(List()->count(), 6) << content.toStdString();
        ImportAll();
        const QStringList errors = boxes.TakeErrors();
        EXPECT_LE(errors.size(), 1);
        GetContainer()->Clear();
    }
    EXPECT_GT(numListed, 500) << "some damage leaves the file readable";
}

} // namespace
