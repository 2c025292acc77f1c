#include "actions/ZORHostMnemonics.h"

#include <QAction>

#include <gtest/gtest.h>

namespace {

TEST(ZORHostMnemonicsTest, FindsTheLetterBehindASingleAmpersand)
{
    EXPECT_EQ(QChar('O'), ZORHostMnemonics::Find("&Open"));
    EXPECT_EQ(QChar('X'), ZORHostMnemonics::Find("A && B e&xit"));
    for (const char* text : {"", "Open", "A && B", "&&", "end&"})
        EXPECT_TRUE(ZORHostMnemonics::Find(QLatin1String(text)).isNull()) << text;
}

TEST(ZORHostMnemonicsTest, TakesTheFirstLetterOfAWordBeforeOthers)
{
    EXPECT_EQ("&Tool Path", ZORHostMnemonics::Add("Tool Path", {}));
    EXPECT_EQ("Tool &Path", ZORHostMnemonics::Add("Tool Path", {'T'}));
    EXPECT_EQ("T&ool Path", ZORHostMnemonics::Add("Tool Path", {'T', 'P'}));
    EXPECT_EQ("(&3D)", ZORHostMnemonics::Add("(3D)", {}));
}

TEST(ZORHostMnemonicsTest, LeavesTextsThatHaveOneOrFindNone)
{
    EXPECT_EQ("Te&st", ZORHostMnemonics::Add("Te&st", {}));
    EXPECT_EQ("tt", ZORHostMnemonics::Add("tt", {'T'}));
    EXPECT_EQ("...", ZORHostMnemonics::Add("...", {}));
    EXPECT_EQ("", ZORHostMnemonics::Add("", {}));
}

TEST(ZORHostMnemonicsTest, AnActionGetsOneThatItsNeighborsLack)
{
    QAction first("&Create");
    QAction second("Create Course");
    ZORHostMnemonics::Assign(&second, {&first, &second});
    EXPECT_EQ("C&reate Course", second.text());
    ZORHostMnemonics::Assign(&second, {&first, &second});
    EXPECT_EQ("C&reate Course", second.text());
}

} // namespace
