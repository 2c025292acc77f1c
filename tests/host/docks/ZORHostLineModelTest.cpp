#include "docks/ZORHostLineModel.h"

#include "HostTest.h"
#include "docks/ZORHostLineQueue.h"
#include "support/WarningCatcher.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTextDocument>

#include <random>
#include <thread>

namespace {

ZORHostLine Line(int number)
{
    return {number % 3, {QString::number(number), QStringLiteral("text %1").arg(number)}};
}

TEST(ZORHostLineModelTest, KeepsTheLastLinesWhateverTheBatches)
{
    ZORHostLineModel model({"Number", "Text"}, 100, nullptr);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::mt19937 random(7);
    int next = 0;
    for (int batch = 0; batch < 200; ++batch) {
        QList<ZORHostLine> lines;
        const int size = int(random() % (batch % 20 == 0 ? 300 : 30));
        for (int i = 0; i < size; ++i)
            lines.append(Line(next++));
        model.Append(lines);
        const int expected = std::min(next, 100);
        ASSERT_EQ(expected, model.rowCount());
        ASSERT_EQ(next - expected, model.GetNumDropped());
        for (int row = 0; row < expected; ++row)
            ASSERT_EQ(QString::number(next - expected + row), model.GetLine(row).cells[0]);
    }
    model.Clear();
    EXPECT_EQ(0, model.rowCount());
    EXPECT_EQ(0, model.GetNumDropped());
}

TEST(ZORHostLineModelTest, ABatchCostsOneInsertionSignal)
{
    ZORHostLineModel model({"Number", "Text"}, 1000, nullptr);
    const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    model.Append({Line(1), Line(2), Line(3)});
    EXPECT_EQ(1, inserted.size());
    model.Append({});
    EXPECT_EQ(1, inserted.size());
}

TEST(ZORHostLineModelTest, SilentlyGivesNothingForTheCellOfAViewWithoutCurrentOne)
{
    ZORHostLineModel model({"Number", "Text"}, 10, nullptr);
    model.Append({Line(1)});
    const WarningCatcher warnings;
    EXPECT_FALSE(model.data({}, Qt::DisplayRole).isValid());
    EXPECT_EQ(QStringList(), warnings.GetLines());
}

TEST(ZORHostLineModelTest, LineBreaksAreShownInOneLineAndKeptInTheToolTip)
{
    ZORHostLineModel model({"Text"}, 10, nullptr);
    model.Append({{0, {"a\nb"}}});
    EXPECT_EQ(QString("a") + QChar(0x23ce) + "b", model.index(0, 0).data().toString());
    EXPECT_EQ(QString("a\nb"), model.index(0, 0).data(Qt::ToolTipRole).toString());
}

TEST(ZORHostLineQueueTest, LinesOfManyThreadsArriveInFewBatchesAndInOrderOfTheirThread)
{
    ZORHostLineQueue queue(100'000);
    QList<ZORHostLine> all;
    int batches = 0;
    QObject::connect(&queue, &ZORHostLineQueue::Delivered, &queue, [&](const QList<ZORHostLine>& lines) {
        all += lines;
        ++batches;
    });
    constexpr int kPerThread = 5000;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&queue, t] {
            for (int i = 0; i < kPerThread; ++i)
                queue.Add({t, {QString::number(i)}});
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    ASSERT_TRUE(QTest::qWaitFor([&all] { return all.size() == 4 * kPerThread; }, 10'000));
    EXPECT_LE(batches, 2);
    int next[4] = {};
    for (const ZORHostLine& line : all)
        ASSERT_EQ(QString::number(next[line.level]++), line.cells[0]);
}

TEST(ZORHostLineQueueTest, WaitingLinesAreBounded)
{
    ZORHostLineQueue queue(10);
    QList<ZORHostLine> all;
    QObject::connect(&queue, &ZORHostLineQueue::Delivered, &queue,
                     [&](const QList<ZORHostLine>& lines) { all += lines; });
    for (int i = 0; i < 1000; ++i)
        queue.Add(Line(i));
    queue.Flush();
    ASSERT_EQ(10, all.size());
    EXPECT_EQ(QString("990"), all.constFirst().cells[0]);
    EXPECT_EQ(QString("999"), all.constLast().cells[0]);
}

TEST(ZORHostLineModelTest, ToolTipsShowTagsLiterally)
{
    ZORHostLineModel model({"Text"}, 10, nullptr);
    const QString text = QStringLiteral("geometry '<img src=\"/dev/zero\">' is gone");
    model.Append({{0, {text}}});
    QTextDocument document;
    document.setHtml(model.index(0, 0).data(Qt::ToolTipRole).toString());
    EXPECT_EQ(text, document.toPlainText());
}

} // namespace
