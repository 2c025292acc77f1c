// Tests of the random user itself: what it does not notice is not tested by it.

#include "RandomUserAction.h"
#include "RandomUserMinimizer.h"
#include "support/Printers.h"

#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QList<RandomUserAction> MakeActions(const QStringList& kinds)
{
    QList<RandomUserAction> actions;
    for (const QString& kind : kinds)
        actions.append({kind, {}});
    return actions;
}

TEST(RandomUserActionTest, SurvivesItsText)
{
    const RandomUserAction action = {
        "enter", {"Window#0", "", "a\tb\n\\ \u00e4", QString::fromUtf8("\xf0\x9d\x84\x9e")}};
    EXPECT_EQ(action, RandomUserAction::FromLine(action.ToLine()));
    EXPECT_FALSE(action.ToLine().contains(u'\n'));
    EXPECT_EQ(4, action.ToLine().count(u'\t'));
}

TEST(RandomUserActionTest, SurvivesAFile)
{
    const QTemporaryDir folder;
    const QList<RandomUserAction> actions = {{"press", {"Ctrl+N"}}, {"wait", {"5"}}};
    ASSERT_TRUE(WriteRandomUserActions(folder.filePath("list"), actions));
    EXPECT_EQ(actions, ReadRandomUserActions(folder.filePath("list")));
    EXPECT_TRUE(ReadRandomUserActions(folder.filePath("missing")).isEmpty());
}

QList<RandomUserAction> CountTo(int count)
{
    QList<RandomUserAction> actions;
    for (int i = 0; i < count; ++i)
        actions.append({QString::number(i), {}});
    return actions;
}

constexpr qsizetype kNoLimit = 1'000'000; // actions

TEST(RandomUserMinimizerTest, KeepsWhatTheFailureNeedsInItsOrder)
{
    const auto fails = [](const QList<RandomUserAction>& actions) {
        return actions.contains({"97", {}}) && actions.contains({"3", {}}) && actions.contains({"50", {}});
    };
    RandomUserMinimizer minimizer(fails, 1000, kNoLimit);
    EXPECT_EQ(MakeActions({"3", "50", "97"}), minimizer.Minimize(CountTo(100)));
}

TEST(RandomUserMinimizerTest, TriesTheEndOfALongListFirst)
{
    QList<qsizetype> sizes;
    const auto fails = [&sizes](const QList<RandomUserAction>& actions) {
        sizes.append(actions.size());
        return actions.contains({"9900", {}}) && actions.contains({"9990", {}});
    };
    RandomUserMinimizer minimizer(fails, 1000, kNoLimit);
    EXPECT_EQ(MakeActions({"9900", "9990"}), minimizer.Minimize(CountTo(10'000)));
    EXPECT_EQ(QList<qsizetype>({50, 200, 100}), sizes.first(3));
}

TEST(RandomUserMinimizerTest, NeedsNothingForAFailureWithoutActions)
{
    const auto fails = [](const QList<RandomUserAction>&) { return true; };
    EXPECT_EQ(MakeActions({}), RandomUserMinimizer(fails, 100, kNoLimit).Minimize(CountTo(3)));
    EXPECT_EQ(MakeActions({}), RandomUserMinimizer(fails, 100, kNoLimit).Minimize({}));
}

TEST(RandomUserMinimizerTest, GivesNothingForAFailureThatIsNotRepeated)
{
    QList<qsizetype> sizes;
    const auto fails = [&sizes](const QList<RandomUserAction>& actions) {
        sizes.append(actions.size());
        return false;
    };
    EXPECT_FALSE(RandomUserMinimizer(fails, 100, kNoLimit).Minimize(CountTo(250)));
    EXPECT_EQ(QList<qsizetype>({50, 200, 250}), sizes);
}

TEST(RandomUserMinimizerTest, StopsAfterTheTrials)
{
    int numTrials = 0;
    const auto fails = [&numTrials](const QList<RandomUserAction>& actions) {
        ++numTrials;
        return actions.size() == 3;
    };
    EXPECT_EQ(CountTo(3), RandomUserMinimizer(fails, 2, kNoLimit).Minimize(CountTo(3)));
    EXPECT_EQ(2, numTrials);
    EXPECT_FALSE(RandomUserMinimizer(fails, 0, kNoLimit).Minimize(CountTo(3)));
    EXPECT_EQ(2, numTrials);
}

TEST(RandomUserMinimizerTest, StopsWhenTheActionsAreUsedUp)
{
    qsizetype numActions = 0;
    const auto fails = [&numActions](const QList<RandomUserAction>& actions) {
        numActions += actions.size();
        return actions.contains({"0", {}});
    };
    EXPECT_FALSE(RandomUserMinimizer(fails, 1000, 1000).Minimize(CountTo(1000)));
    EXPECT_LE(numActions, 1000);
    numActions = 0;
    const auto actions = RandomUserMinimizer(fails, 1000, 4000).Minimize(CountTo(1000));
    ASSERT_TRUE(actions);
    EXPECT_TRUE(actions->contains({"0", {}}));
    EXPECT_LT(actions->size(), 1000);
    EXPECT_LE(numActions, 4000);
}

TEST(RandomUserReplayTest, EndsWithItsListWhateverTheHours)
{
    const QTemporaryDir folder;
    const QString list = folder.filePath("list");
    ASSERT_TRUE(WriteRandomUserActions(list, {{"wait", {"1"}}, {"wait", {"1"}}}));
    QProcess process;
    process.start(ZOR_RANDOM_USER,
                  {"--replay", list, "--hours", "1", "--memory-every", "1", "--trials", "0"});
    ASSERT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(0, process.exitCode());
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    EXPECT_TRUE(output.contains("replay: 2 actions")) << output.toStdString();
    EXPECT_FALSE(output.contains("3 actions")) << output.toStdString();
    EXPECT_TRUE(output.contains(" geometries in ")) << output.toStdString();
}

/// Repeats a list in front of a plug-in whose action fails in one way.
class RandomUserFaultTest : public testing::TestWithParam<std::pair<const char*, const char*>>
{
protected:
    /// What the random user prints about \a actions.
    QString Replay(const QList<RandomUserAction>& actions)
    {
        EXPECT_TRUE(WriteRandomUserActions(m_folder.filePath("list"), actions));
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("ZOR_TEST_FAULT", QLatin1String(GetParam().first));
        process.setProcessEnvironment(environment);
        process.start(ZOR_RANDOM_USER, {"--replay", m_folder.filePath("list"), "--trials", "40",
                                        "--plugin-file", ZOR_FAULTY_PLUGIN});
        EXPECT_TRUE(process.waitForFinished(120'000));
        m_exitCode = process.exitCode();
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    QTemporaryDir m_folder;
    int m_exitCode = -1;
};

INSTANTIATE_TEST_SUITE_P(
    Faults, RandomUserFaultTest,
    testing::Values(std::pair{"warning", "FAILURE: message: planted warning"},
                    std::pair{"exception", "FAILURE: message: Unhandled error: planted exception"},
                    std::pair{"crash", "crash: signal"}, std::pair{"cursor", "FAILURE: wait cursor left"},
                    std::pair{"window", "FAILURE: window left after the end: QLabel"},
                    std::pair{"stay", "FAILURE: window not deleted after close: FaultyWindow"},
                    std::pair{"reference", "FAILURE: document does not survive a file"},
                    std::pair{"hidden", "FAILURE: the program goes on without a window"}),
    [](const auto& tested) { return tested.param.first; });

TEST_P(RandomUserFaultTest, IsReportedWithTheActionsThatItTakes)
{
    const RandomUserAction cause = {"menu", {"ZORHostMainWindow#0", "Zorvane Host > Faulty > Fail"}};
    const RandomUserAction about = {"menu",
                                    {"ZORHostMainWindow#0", "Zorvane Host > Help > About Zorvane Host"}};
    QList<RandomUserAction> actions = {about, cause};
    if (GetParam().first == QByteArray("stay"))
        actions.append(RandomUserAction{"close", {"FaultyWindow#0"}});
    for (int i = 0; i < 25; ++i)
        actions.append(RandomUserAction{"wait", {"1"}});
    const QString output = Replay(actions);
    EXPECT_EQ(1, m_exitCode);
    EXPECT_TRUE(output.contains(QLatin1String("FAILED: ") + QLatin1String(GetParam().second)))
        << output.toStdString();
    const QString list = output.section("minimal list of", 1);
    EXPECT_TRUE(list.contains(cause.ToLine())) << output.toStdString();
    EXPECT_FALSE(list.contains(about.ToLine())) << output.toStdString();
}

} // namespace
