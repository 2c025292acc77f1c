// Files that are broken, hostile, odd or big, and what the import makes of them.

#include "ContourImportTest.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>

#include <random>
#include <sys/stat.h>

namespace {

const QByteArray Contour = "<OuterContour><Pt>X=1 Y=2 Z=3</Pt></OuterContour>";

class ZORTestImportCatiaXMLFilesTest : public ContourImportTest
{
protected:
    /// What the dialog lists for a file of this content; closes the dialog again.
    QStringList ListOf(const QByteArray& content)
    {
        OpenWith(content);
        const QStringList entries = Entries();
        PressCancel();
        return entries;
    }
    QStringList OneContour() const { return {"OuterContour"}; }
};

TEST_F(ZORTestImportCatiaXMLFilesTest, FileThatCannotBeOpenedIsReportedWithoutAParent)
{
    const QString pipe = GetPath("pipe.xml");
    ASSERT_EQ(0, mkfifo(pipe.toLocal8Bit().constData(), 0600));
    for (const QString& bad : {GetPath("missing.xml"), QFileInfo(path).absolutePath(), pipe}) {
        GetSettings()->setValue(SettingsKey, bad);
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

TEST_F(ZORTestImportCatiaXMLFilesTest, FileThatVanishesWhileItIsChosenLeavesTheListAsItIs)
{
    OpenWith("<a>" + Contour + "</a>");
    const QString second = GetPath("second.xml");
    WriteFile(second, "<a/>");
    answers.AnswerFile(second, [&] { QFile::remove(second); });
    Click("_XmlBtn", dialog);
    EXPECT_EQ(QStringList({"Cannot open the file for reading."}), boxes.TakeErrors());
    EXPECT_EQ(second, EditText());
    EXPECT_EQ(QVariant(second), GetSettings()->value(SettingsKey)) << "remembered before it is loaded";
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{1, 2, 3}}}), ImportAll()) << "the document is still the old one";
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

TEST_F(ZORTestImportCatiaXMLFilesTest, DocumentTypesThatDefineEntitiesAreRefused)
{
    const QByteArray refused[] = {
        "<!DOCTYPE a [<!ENTITY e 'x'>]>",
        "<!DOCTYPE a [ <!ENTITY e SYSTEM 'file:///etc/hostname'> ]>",
        "<!DOCTYPE a [<!ENTITY % p 'x'>]>",
        "<!DOCTYPE a SYSTEM '<!--' [<!ENTITY e 'x'>]>",
        "<!DOCTYPE a [<!-- ]> --><!ENTITY e 'x'>]>",
        "<!DOCTYPE a [<?pi ]> ?><!ATTLIST a b CDATA ']>'><!ENTITY e 'x'>]>",
    };
    for (const QByteArray& type : refused) {
        EXPECT_EQ(QStringList(), ListOf(type + "<a>" + Contour + "</a>")) << type.toStdString();
        EXPECT_EQ(QStringList(), ListOf(type + "<a>" + Contour + "&e;</a>")) << type.toStdString();
    }
    const QByteArray accepted[] = {
        "<!DOCTYPE a>",
        "<!DOCTYPE a SYSTEM 'file:///etc/passwd'>",
        "<!DOCTYPE a PUBLIC '-//x//ENTITY' 'http://127.0.0.1:1/x.dtd' []>",
        "<!DOCTYPE a [<!ELEMENT a ANY><!ATTLIST a b CDATA '>'><!-- <!ENTITY e 'x'> -->]>",
        "<!-- <!DOCTYPE a [<!ENTITY e 'x'>]> -->",
        "<?pi <!ENTITY ?>",
    };
    for (const QByteArray& type : accepted) {
        EXPECT_EQ(OneContour(), ListOf(type + "<a><![CDATA[<!ENTITY ]]>&amp;&#65;" + Contour + "</a>"))
            << type.toStdString();
    }
}

TEST_F(ZORTestImportCatiaXMLFilesTest, EntitiesThatExpandWithoutBoundCostNothing)
{
    QByteArray nested = "<!DOCTYPE a [<!ENTITY e0 'lol'>";
    for (int i = 1; i < 20; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ';';
        nested += "<!ENTITY e" + QByteArray::number(i) + " '" + inner.repeated(10) + "'>";
    }
    nested += "]><a>" + Contour + "&e19;</a>";
    const QByteArray many = "<!DOCTYPE a [<!ENTITY e '" + QByteArray(4000, 'x') + "'>]><a>" + Contour
                            + QByteArray("&e;").repeated(1000000) + "</a>";
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(QStringList(), ListOf(nested));
    EXPECT_EQ(QStringList(), ListOf(many)) << "4 GB of text";
    EXPECT_LT(timer.elapsed(), 30000);
}

TEST_F(ZORTestImportCatiaXMLFilesTest, MarkupThatTheParserWouldChokeOnIsRefused)
{
    const auto nest = [](int depth) {
        return QByteArray("<g>").repeated(depth) + Contour + QByteArray("</g>").repeated(depth);
    };
    EXPECT_EQ(OneContour(), ListOf(nest(200)));
    EXPECT_EQ(QStringList(), ListOf(nest(300)));
    EXPECT_EQ(QStringList(), ListOf(nest(1000000))) << "would overflow the stack";

    const auto decorate = [](int numAttributes) {
        QByteArray content = "<a";
        for (int i = 0; i < numAttributes; ++i)
            content += " n" + QByteArray::number(i) + "='='";
        return content + ">" + Contour + "</a>";
    };
    EXPECT_EQ(OneContour(), ListOf(decorate(256)));
    EXPECT_EQ(QStringList(), ListOf(decorate(257)));
    EXPECT_EQ(QStringList(), ListOf(decorate(1000000))) << "would take hours";
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
        QStringEncoder refused(encoding, QStringConverter::Flag::WriteBom);
        EXPECT_EQ(QStringList(), ListOf(refused("<!DOCTYPE a [<!ENTITY e ''>]>" + text))) << encoding;
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

TEST_F(ZORTestImportCatiaXMLFilesTest, TimeGrowsLinearlyWithTheContours)
{
    const auto measure = [this](int numContours) {
        const QByteArray content = "<a>" + Contour.repeated(numContours) + "</a>";
        QElapsedTimer timer;
        timer.start();
        OpenWith(content);
        EXPECT_EQ(numContours, List()->count());
        EXPECT_EQ(numContours, ImportAll().size());
        GetContainer()->Clear();
        return double(timer.nsecsElapsed()) / numContours;
    };
    measure(1000);
    const double few = measure(2000);
    const double many = measure(40000);
    EXPECT_LT(many, 8 * few) << "nanoseconds per contour";
}

TEST_F(ZORTestImportCatiaXMLFilesTest, SurvivesRandomlyDamagedFiles)
{
    QByteArray whole = "<?xml version='1.0' encoding='UTF-8'?><!DOCTYPE a [<!ELEMENT a ANY>]>"
                       "<a NAME='A'><Length>in</Length><!-- c --><b NAME='B &amp; C'>";
    for (int i = 0; i < 5; ++i)
        whole += "<OuterContour><Pt>X=1.5 Y=-2e3 Z=3</Pt><Pt>4 5</Pt><![CDATA[x]]></OuterContour>";
    whole += "</b></a>";

    std::mt19937 random(4711);
    const auto below = [&random](qsizetype bound) { return qsizetype(random() % size_t(bound)); };
    const QByteArray tokens[] = {
        "<",    ">", "\"",   "'",    "&",          "<!--", "]]>",  "<![CDATA[",
        "&#0;", "=", "<Pt>", "</a>", "<!DOCTYPE ", "]>",   "\xff", QByteArray("\0", 1)};
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
