#include "support/TraceCalls.h"

#include <ZORVisualization/ZORVisVectorFont.h>

#include <gtest/gtest.h>

namespace {

TEST(ZORVisVectorFontTest, NamesAreThoseOfTheFontFilesInOrder)
{
    const QStringList names = {
        "astrology", "cursive",   "cyrilc_1",  "cyrillic",    "futural", "futuram", "gothgbt", "gothgrt",
        "gothiceng", "gothicger", "gothicita", "gothitt",     "greek",   "greekc",  "greeks",  "japanese",
        "markers",   "mathlow",   "mathupp",   "meteorology", "music",   "rowmand", "rowmans", "rowmant",
        "scriptc",   "scripts",   "symbolic",  "timesg",      "timesi",  "timesib", "timesr",  "timesrb"};
    EXPECT_EQ(names, ZORVisVectorFont::GetFontNames());
}

TEST(ZORVisVectorFontTest, EveryNameGivesItsFont)
{
    const QStringList names = ZORVisVectorFont::GetFontNames();
    for (const QString& name : names)
        EXPECT_EQ(name, ZORVisVectorFont(name).GetName());
}

TEST(ZORVisVectorFontTest, UnknownAndEmptyNamesGiveTheFirstFont)
{
    const QString first = ZORVisVectorFont::GetFontNames().constFirst();
    const QStringList names = {QString(), "", "no such font", "FUTURAL", "../futural", "futural.jhf"};
    for (const QString& name : names)
        EXPECT_EQ(first, ZORVisVectorFont(name).GetName()) << name.toStdString();
}

TEST(ZORVisVectorFontTest, ConstructorIsTraced)
{
    EXPECT_EQ(QStringList("ZORVisVectorFont::ZORVisVectorFont(\"greek\")"),
              TraceCalls([] { const ZORVisVectorFont font("greek"); }));
}

} // namespace
