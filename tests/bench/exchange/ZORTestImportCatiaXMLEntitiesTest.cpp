// Files that declare entities or reach the bounds of the import.

#include "ContourImportTest.h"
#include "support/OpenWatch.h"

#include <QStringEncoder>

namespace {

class ZORTestImportCatiaXMLEntitiesTest : public ContourImportTest
{
protected:
    /// A document whose document type has these declarations.
    static QByteArray Document(const QByteArray& declarations, const QByteArray& content)
    {
        return "<!DOCTYPE a [" + declarations + "]><a>" + content + "</a>";
    }
    static QByteArray Nest(int depth, const QByteArray& inner)
    {
        return QByteArray("<g>").repeated(depth) + inner + QByteArray("</g>").repeated(depth);
    }
    /// The points of all contours of a file of this content.
    QList<QList<ZORMathPoint>> Import(const QByteArray& content)
    {
        GetContainer()->Clear();
        OpenWith(content);
        return ImportAll();
    }
};

TEST_F(ZORTestImportCatiaXMLEntitiesTest, EntitiesStandInNamesTextsAndForMarkup)
{
    EXPECT_EQ(QStringList({QString::fromUtf8("45\xc2\xb0/OuterContour")}),
              ListOf("<!DOCTYPE a [<!ENTITY deg \"&#176;\">]><a NAME='45&deg;'><OuterContour/></a>"));
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{25.4, 0, 50.8}}}),
              Import(Document("<!ENTITY unit 'in'><!ENTITY two 'Z=2'>",
                              "<Length>&unit;</Length><OuterContour><Pt>1 0 &two;</Pt></OuterContour>")));
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{1, 2, 3}}, {{1, 2, 3}}}),
              Import(Document("<!ENTITY contour '" + Contour + "'>", "&contour;<g>&contour;</g>")));
}

TEST_F(ZORTestImportCatiaXMLEntitiesTest, EntitiesMayContainOthersAndAttributesHaveDefaults)
{
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{7, 8, 78}}}),
              Import(Document("<!ENTITY all 'X=&x; Y=&y; Z=&x;&y;'><!ENTITY x '7'><!ENTITY y \"8\">",
                              "<OuterContour><Pt>&all;</Pt></OuterContour>")));
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{5, 0, 0}}}),
              Import(Document("<!ENTITY % more '<!ENTITY x \"5\">'>%more;",
                              "<OuterContour><Pt>&x; 0 0</Pt></OuterContour>")));
    EXPECT_EQ(
        (QList<QList<ZORMathPoint>>{{{1, 0, 0}}}),
        Import(Document("<!ENTITY x '1'><!ENTITY x '2'>", "<OuterContour><Pt>&x; 0 0</Pt></OuterContour>")))
        << "the first declaration counts";
    EXPECT_EQ(QStringList({"wing/OuterContour"}),
              ListOf("<!DOCTYPE a [<!ENTITY e 'wing'><!ATTLIST b NAME CDATA '&e;'>]><a><b>" + Contour
                     + "</b></a>"));
}

TEST_F(ZORTestImportCatiaXMLEntitiesTest, EntitiesAreReadInAllEncodings)
{
    const QString text =
        QString::fromLatin1(Document("<!ENTITY e '4'>", "<OuterContour><Pt>&e; 0 0</Pt></OuterContour>"));
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{4, 0, 0}}}),
              Import("<?xml version='1.0' encoding='ISO-8859-1'?>" + text.toLatin1()));
    for (const auto encoding : {QStringConverter::Utf8, QStringConverter::Utf16LE, QStringConverter::Utf16BE,
                                QStringConverter::Utf32LE, QStringConverter::Utf32BE}) {
        QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
        EXPECT_EQ((QList<QList<ZORMathPoint>>{{{4, 0, 0}}}), Import(encoder(text))) << encoding;
    }
}

TEST_F(ZORTestImportCatiaXMLEntitiesTest, UndefinedAndRecursiveEntitiesAreMalformed)
{
    const QByteArray use = Contour + QByteArray("&e;");
    const QByteArray refused[] = {
        Document("<!ENTITY f 'x'>", use),
        Document("<!ENTITY e '&f;'>", use),
        Document("<!ENTITY e '&e;'>", use),
        Document("<!ENTITY e '&f;'><!ENTITY f 'x&e;'>", use),
        Document("<!ENTITY e '<b>'>", use),
        Document("<!ENTITY e '</a><a>'>", use),
        Document("<!ENTITY e '<'>", use),
        Document("<!ENTITY e 'x'", use),
        Document("<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM 'x' NDATA n>", use),
        Document("<!ENTITY % e 'x'>", use),
        Document("%e;<!ENTITY e 'x'>", use),
        Document("<!ENTITY % e '&#37;e;'>%e;", Contour),
        Document("<!ENTITY e 'x'>", Contour + QByteArray("<b c='&f;'/>")),
        "<!DOCTYPE a [<!ENTITY % e ']>&#60;a>'> %e;" + Contour + "</a>",
    };
    for (const QByteArray& content : refused)
        EXPECT_EQ(QStringList(), ListOf(content)) << content.toStdString();
}

TEST_F(ZORTestImportCatiaXMLEntitiesTest, ExternalEntitiesAreNeverOpened)
{
    const QString external = GetPath("external.xml");
    WriteFile(external, Contour);
    const OpenWatch watch(external);
    QFile file(external);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ASSERT_TRUE(watch.WasOpened()) << "the watch does not work";
    file.close();

    const QByteArray name = external.toUtf8();
    const QByteArray declarations[] = {
        "<!ENTITY e SYSTEM '" + name + "'>",
        "<!ENTITY e SYSTEM 'file://" + name + "'>",
        "<!ENTITY e SYSTEM 'external.xml'>",
        "<!ENTITY e PUBLIC '-//x//y' '" + name + "'>",
        "<!ENTITY % p SYSTEM '" + name + "'>%p;<!ENTITY e SYSTEM 'http://127.0.0.1:1/x'>",
    };
    for (const QByteArray& declaration : declarations)
        EXPECT_EQ(OneContour(), ListOf(Document(declaration, Contour + QByteArray("<b>&e;</b>"))))
            << declaration.toStdString();
    for (const QByteArray& type : {"SYSTEM '" + name + "'", "PUBLIC '-//x//y' 'file://" + name + "' []"})
        EXPECT_EQ(OneContour(), ListOf("<!DOCTYPE a " + type + "><a>" + Contour + "</a>"))
            << type.toStdString();
    EXPECT_FALSE(watch.WasOpened());
}

TEST_F(ZORTestImportCatiaXMLEntitiesTest, EntitiesThatExpandWithoutBoundAreMalformed)
{
    QByteArray nested = "<!ENTITY e0 'lol'>";
    for (int i = 1; i < 20; ++i) {
        const QByteArray inner = "&e" + QByteArray::number(i - 1) + ';';
        nested += "<!ENTITY e" + QByteArray::number(i) + " '" + inner.repeated(10) + "'>";
    }
    EXPECT_EQ(OneContour(), ListOf(Document(nested, Contour + QByteArray("&e3;"))));
    EXPECT_EQ(QStringList(), ListOf(Document(nested, Contour + QByteArray("&e19;"))));
    EXPECT_EQ(QStringList(), ListOf(Document(nested, Contour + QByteArray("<b c='&e19;'/>"))));
    EXPECT_EQ(QStringList(), ListOf(Document("<!ENTITY e '" + QByteArray(4000, 'x') + "'>",
                                             Contour + QByteArray("&e;").repeated(1000000))))
        << "4 GB of text";
    EXPECT_EQ(QStringList(), ListOf(Document("<!ATTLIST b c CDATA '" + QByteArray(1000000, 'x') + "'>",
                                             Contour + QByteArray("<b/>").repeated(100000))))
        << "100 GB of defaults";
}

TEST_F(ZORTestImportCatiaXMLEntitiesTest, ElementsNestUpToTheBound)
{
    // The contour and its point are two levels more.
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{1, 2, 3}}}), Import(Nest(3998, Contour)));
    EXPECT_EQ(QStringList(), ListOf(Nest(3999, Contour)));
    EXPECT_EQ(QStringList(), ListOf(Nest(1000000, Contour))) << "would overflow the stack";
    EXPECT_EQ((QList<QList<ZORMathPoint>>{{{1, 2, 3}}}),
              Import("<OuterContour><Pt>" + Nest(3998, "1 2 3") + "</Pt></OuterContour>"));
    QByteArray names;
    for (int i = 0; i < 3998; ++i)
        names += "<g NAME='n'>";
    EXPECT_EQ(QStringList(QString("n/").repeated(3998) + "OuterContour"),
              ListOf(names + Contour + QByteArray("</g>").repeated(3998)));
    EXPECT_EQ(QStringList(),
              ListOf(Document("<!ENTITY e '" + Nest(2000, "") + "'>", Contour + Nest(2000, "&e;"))));
    EXPECT_EQ(QStringList(),
              ListOf("<!DOCTYPE a [<!ENTITY % d ']>&#60;a>'> %d;" + Nest(1000000, Contour) + "</a>"));
}

TEST_F(ZORTestImportCatiaXMLEntitiesTest, PointsThatContainAllOthersAreReadInTime)
{
    const QByteArray text = QByteArray("<OuterContour><Pt>1 2 3 ").repeated(2000) + QByteArray(200000, 'y')
                            + QByteArray("</Pt></OuterContour>").repeated(2000);
    EXPECT_EQ(2000, Import(text).size());
}

TEST_F(ZORTestImportCatiaXMLEntitiesTest, MarkupInAnotherEncodingThanTheFirstOneIsRefused)
{
    QByteArray content = "<?xml version='1.0' encoding='UTF-16LE'?>";
    content.append(content.size() % 2, ' ');
    QStringEncoder encoder(QStringConverter::Utf16LE);
    content += QByteArray(encoder(QString(200, u' ') + QString::fromLatin1(Nest(1000000, Contour))));
    EXPECT_EQ(QStringList(), ListOf(content)) << "would overflow the stack";
}

TEST_F(ZORTestImportCatiaXMLEntitiesTest, ElementsHaveAttributesUpToTheBound)
{
    const auto decorate = [](int numAttributes) {
        QByteArray content = "<a";
        for (int i = 0; i < numAttributes; ++i)
            content += " n" + QByteArray::number(i) + "='='";
        return content + ">" + Contour + "</a>";
    };
    EXPECT_EQ(OneContour(), ListOf(decorate(4000)));
    EXPECT_EQ(QStringList(), ListOf(decorate(4001)));
    EXPECT_EQ(QStringList(), ListOf(decorate(1000000))) << "would take hours";
}

} // namespace
