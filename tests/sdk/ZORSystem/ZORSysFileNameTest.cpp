// Tests of ZORSysFileName.

#include <ZORSystem/ZORSysFileName.h>

#include <gtest/gtest.h>

TEST(ZORSysFileNameTest, ShortStemsStayAsTheyAre)
{
    EXPECT_EQ("", ZORSysFileName::Cut("", 4));
    EXPECT_EQ("a ", ZORSysFileName::Cut("a ", 4));
    const QString most(251, u'a');
    EXPECT_EQ(most, ZORSysFileName::Cut(most, 4));
}

TEST(ZORSysFileNameTest, LongStemsAreCutBetweenCharacters)
{
    for (const char32_t* character : {U"a", U"\u00e9", U"\u4e2d", U"\U0001F600"}) {
        const QString one = QString::fromUcs4(character);
        const qsizetype bytes = one.toUtf8().size();
        for (const qsizetype reserved : {0, 1, 2, 3, 4, 100, 254}) {
            const QString cut = ZORSysFileName::Cut(one.repeated(300), reserved);
            EXPECT_EQ(one.repeated((255 - reserved) / bytes), cut) << bytes << ' ' << reserved;
        }
    }
}

TEST(ZORSysFileNameTest, NothingRemainsWhereNothingFits)
{
    EXPECT_EQ("", ZORSysFileName::Cut("abc", 255));
    EXPECT_EQ("", ZORSysFileName::Cut("abc", 1000));
    EXPECT_EQ("", ZORSysFileName::Cut(QString(300, u' '), 4));
}

TEST(ZORSysFileNameTest, NoBlankIsLeftAtTheEnd)
{
    EXPECT_EQ(QString(240, u'a'), ZORSysFileName::Cut(QString(240, u'a') + QString(20, u' '), 4));
}
