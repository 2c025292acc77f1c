#include "script/ZORHostScript.h"

#include "HostTest.h"
#include "script/ZORHostScriptReport.h"
#include "support/HostileFiles.h"
#include "support/MessageOf.h"

#include <ZORSystem/ZORSysFileException.h>

#include <QBuffer>

namespace {

QString ErrorOf(const QString& text)
{
    try {
        ZORHostScript::Parse(text, "a.zorscript");
    } catch (const ZORSysFileException& exception) {
        return exception.GetMessage();
    }
    return {};
}

TEST(ZORHostScriptTest, SplitsWordsQuotesEscapesAndComments)
{
    const std::pair<QString, QStringList> cases[] = {
        {"", {}},
        {"  # only a comment", {}},
        {"trigger  open\tnow", {"trigger", "open", "now"}},
        {R"(set "a b" "")", {"set", "a b", ""}},
        {R"(print "say \"hi\"\n\t\\" # comment)", {"print", "say \"hi\"\n\t\\"}},
        {"color #ff0000", {"color"}},
        {R"(color "#ff0000" a#b)", {"color", "#ff0000", "a#b"}},
        {R"(pre"quoted part"post)", {"prequoted partpost"}},
    };
    for (const auto& [line, words] : cases)
        EXPECT_EQ(words, ZORHostScript::Split(line)) << line.toStdString();
}

TEST(ZORHostScriptTest, ReadsStepsWithTheirLinesAndBlocks)
{
    const ZORHostScript script = ZORHostScript::Parse("# head\n"
                                                      "in Window\r\n"
                                                      "\n"
                                                      "answer form \"Options\"\n"
                                                      "  click OK\n"
                                                      "  answer form Inner\n"
                                                      "    click No\n"
                                                      "  end\n"
                                                      "end\n"
                                                      "trigger Open",
                                                      "name");
    ASSERT_EQ(3, script.GetSteps().size());
    EXPECT_EQ(QString("in"), script.GetSteps()[0].verb);
    EXPECT_EQ(2, script.GetSteps()[0].line);
    EXPECT_EQ(QStringList("Window"), script.GetSteps()[0].arguments);
    const ZORHostScriptStep& form = script.GetSteps()[1];
    EXPECT_EQ(4, form.line);
    ASSERT_EQ(2, form.block.size());
    EXPECT_EQ(QString("click"), form.block[0].verb);
    ASSERT_EQ(1, form.block[1].block.size());
    EXPECT_EQ(7, form.block[1].block[0].line);
    EXPECT_EQ(10, script.GetSteps()[2].line);
}

TEST(ZORHostScriptTest, MistakesAreFoundBeforeAnythingRuns)
{
    const std::pair<QString, QString> cases[] = {
        {"print a\njump b", "a.zorscript:2: unknown step 'jump'"},
        {"print", "a.zorscript:1: too few words after 'print'"},
        {"print a b", "a.zorscript:1: too many words after 'print'"},
        {"print \"a", "a.zorscript:1: a quote is not closed"},
        {"answer knock", "a.zorscript:1: unknown kind of answer 'knock'"},
        {"answer file", "a.zorscript:1: too few words after 'answer file'"},
        {"answer cancel now", "a.zorscript:1: too many words after 'answer cancel'"},
        {"end", "a.zorscript:1: 'end' without 'answer form' or 'repeat'"},
        {"print a\nanswer form A\nprint b", "a.zorscript:2: this 'answer form' has no 'end'"},
        {"repeat I 1 3\nprint b", "a.zorscript:1: this 'repeat' has no 'end'"},
        {"repeat I 1", "a.zorscript:1: too few words after 'repeat'"},
        {"expect rows table", "a.zorscript:1: too few words after 'expect'"},
    };
    for (const auto& [text, message] : cases)
        EXPECT_EQ(message, ErrorOf(text));
    EXPECT_EQ(QString(), ErrorOf("print a\n"));
}

TEST(ZORHostScriptTest, PercentSignsInNamesReachTheMessages)
{
    EXPECT_EQ(QString("a%1b%2.zorscript:1: unknown step '%3'"),
              MessageOf([] { ZORHostScript::Parse("%3", "a%1b%2.zorscript"); }));
    QBuffer out;
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    ZORHostScriptReport report(&out);
    report.Start("a%1b%2.zorscript");
    report.Fail(7, "%3");
    EXPECT_EQ(QByteArray("  FAILED a%1b%2.zorscript:7: %3\n"), out.data());
}

TEST(ZORHostScriptTest, PipesAndEnormousFilesThrow)
{
    const QTemporaryDir folder;
    const QString pipe = HostileFiles::MakePipe(folder.path());
    EXPECT_EQ("cannot open file '" + pipe + "': it is not a regular file",
              MessageOf([&pipe] { ZORHostScript::Load(pipe); }));
    const QString zeros = HostileFiles::MakeZeros(folder.path(), qint64(4) << 30);
    EXPECT_EQ("cannot open file '" + zeros + "': it is larger than 16 MB",
              MessageOf([&zeros] { ZORHostScript::Load(zeros); }));
}

TEST(ZORHostScriptTest, AFileThatKeepsGrowingEnds)
{
    const QTemporaryDir folder;
    const HostileFiles::GrowingFile file(folder.path(), QByteArray(1 << 20, ' ') + "\nprint a\n");
    for (int i = 0; i < 3; ++i)
        EXPECT_LT(ZORHostScript::Load(file.GetPath()).GetSteps().size(), 10);
}

TEST(ZORHostScriptTest, AnErrorOfTheDeviceThrows)
{
    EXPECT_EQ("cannot open file '/proc/self/mem': read error: Input/output error",
              MessageOf([] { ZORHostScript::Load("/proc/self/mem"); }));
}

TEST(ZORHostScriptTest, AMissingFileThrows)
{
    EXPECT_THROW(ZORHostScript::Load("/nowhere/a.zorscript"), ZORSysFileOpenException);
}

} // namespace
