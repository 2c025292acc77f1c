#include "docks/ZORHostLogDock.h"

#include "HostTest.h"
#include "docks/ZORHostLineFilter.h"
#include "docks/ZORHostLineModel.h"
#include "docks/ZORHostLog.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeView>

#include <thread>

namespace {

Q_LOGGING_CATEGORY(lcOne, "zor.one")
Q_LOGGING_CATEGORY(lcTwo, "zor.two")

QStringList s_passedOn;

void Collect(QtMsgType, const QMessageLogContext&, const QString& message)
{
    s_passedOn.append(message);
}

class ZORHostLogDockTest : public HostTest
{
public:
    ZORHostLogDockTest()
        : m_former(qInstallMessageHandler(&Collect))
        , log(std::make_unique<ZORHostLog>())
        , dock(log->GetQueue(), nullptr)
    {
        s_passedOn.clear();
    }
    ~ZORHostLogDockTest() override
    {
        log.reset();
        qInstallMessageHandler(m_former);
    }

    QStringList Messages()
    {
        log->GetQueue()->Flush();
        QStringList texts;
        for (int row = 0; row < dock.GetFilter()->rowCount(); ++row)
            texts.append(dock.GetFilter()->index(row, 3).data().toString());
        return texts;
    }

private:
    QtMessageHandler m_former;

public:
    std::unique_ptr<ZORHostLog> log;
    ZORHostLogDock dock;
};

TEST_F(ZORHostLogDockTest, ShowsMessagesWithLevelAndCategoryAndPassesThemOn)
{
    qCDebug(lcOne) << "first";
    qCWarning(lcTwo) << "second";
    EXPECT_EQ(QStringList({"first", "second"}), Messages());
    EXPECT_EQ(QString("Debug"), dock.GetFilter()->index(0, 1).data().toString());
    EXPECT_EQ(QString("zor.one"), dock.GetFilter()->index(0, 2).data().toString());
    EXPECT_EQ(QString("Warning"), dock.GetFilter()->index(1, 1).data().toString());
    EXPECT_EQ(QStringList({"first", "second"}), s_passedOn);
}

TEST_F(ZORHostLogDockTest, FiltersByLevelCategoryAndText)
{
    qCDebug(lcOne) << "one debug";
    qCWarning(lcOne) << "one warning";
    qCCritical(lcTwo) << "two error";
    Messages();
    auto* level = dock.findChild<QComboBox*>("_LogLevelCombo");
    auto* category = dock.findChild<QComboBox*>("_LogCategoryCombo");
    auto* text = dock.findChild<QLineEdit*>("_LogFilterEdit");
    level->setCurrentText("Warnings and errors");
    EXPECT_EQ(QStringList({"one warning", "two error"}), Messages());
    category->setCurrentText("zor.two");
    EXPECT_EQ(QStringList("two error"), Messages());
    level->setCurrentIndex(0);
    category->setCurrentIndex(0);
    text->setText("WARN");
    EXPECT_EQ(QStringList("one warning"), Messages());
    text->clear();
    EXPECT_EQ(3, Messages().size());
    EXPECT_EQ(3, category->count());
}

TEST_F(ZORHostLogDockTest, CopiesTheVisibleOrTheSelectedLines)
{
    qCInfo(lcOne) << "a";
    qCInfo(lcOne) << "b";
    Messages();
    dock.findChild<QPushButton*>("_LogCopyBtn")->click();
    const QStringList lines = QGuiApplication::clipboard()->text().split('\n');
    ASSERT_EQ(2, lines.size());
    EXPECT_EQ(QStringList({"Info", "zor.one", "a"}), lines[0].split('\t').mid(1));
    auto* table = dock.findChild<QTreeView*>("_LogTable");
    table->selectionModel()->select(dock.GetFilter()->index(1, 0),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    dock.findChild<QPushButton*>("_LogCopyBtn")->click();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().endsWith("\tb"));
    EXPECT_FALSE(QGuiApplication::clipboard()->text().contains('\n'));
}

TEST_F(ZORHostLogDockTest, ClearEmptiesTheList)
{
    qCInfo(lcOne) << "a";
    Messages();
    dock.findChild<QPushButton*>("_LogClearBtn")->click();
    EXPECT_TRUE(Messages().isEmpty());
}

TEST_F(ZORHostLogDockTest, TakesMessagesOfOtherThreads)
{
    std::thread thread([] {
        for (int i = 0; i < 100; ++i)
            qCInfo(lcOne) << i;
    });
    thread.join();
    EXPECT_TRUE(WaitFor([this] { return dock.GetModel()->rowCount() == 100; }));
}

TEST_F(ZORHostLogDockTest, FollowsTheEndOnlyWhileItIsInView)
{
    dock.resize(500, 200);
    dock.show();
    for (int i = 0; i < 200; ++i)
        qCInfo(lcOne) << i;
    Messages();
    QCoreApplication::processEvents();
    QScrollBar* bar = dock.findChild<QTreeView*>("_LogTable")->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    EXPECT_EQ(bar->maximum(), bar->value());
    bar->setValue(5);
    qCInfo(lcOne) << "more";
    Messages();
    QCoreApplication::processEvents();
    EXPECT_EQ(5, bar->value());
}

TEST_F(ZORHostLogDockTest, TheFormerHandlerIsBackAfterwards)
{
    log.reset();
    s_passedOn.clear();
    qCInfo(lcOne) << "afterwards";
    EXPECT_EQ(QStringList("afterwards"), s_passedOn);
}

} // namespace
