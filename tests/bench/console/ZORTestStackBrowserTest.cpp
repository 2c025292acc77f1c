#include "console/ZORTestStackBrowser.h"

#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"

#include <ZORSystem/ZORSysStackMonitor.h>

#include <QComboBox>
#include <QPlainTextEdit>

namespace {

class ZORTestStackBrowserTest : public BenchTest
{
protected:
    ZORTestStackBrowserTest() { ZORSysStackMonitor::GetStackMonitor()->ClearAllTraces(); }
    ~ZORTestStackBrowserTest() override { ZORSysStackMonitor::GetStackMonitor()->ClearAllTraces(); }

    static void Record(const char* label)
    {
        ZORSysStackMonitor::GetStackMonitor()->Record(QLatin1String(label));
    }

    QComboBox* GetLabelCombo() { return InConsole<QComboBox>("_StackMonLabelCmb"); }
    QString GetText() { return InConsole<QPlainTextEdit>("_StackMonEdit")->toPlainText(); }
    QStringList GetLabels() { return GetItems(GetLabelCombo()); }
    QStringList GetTraces() { return GetItems(InConsole<QComboBox>("_StackMonTraceCmb")); }

private:
    static QStringList GetItems(const QComboBox* combo)
    {
        QStringList items;
        for (int index = 0; index < combo->count(); ++index)
            items.append(combo->itemText(index));
        return items;
    }
};

TEST_F(ZORTestStackBrowserTest, OffersAllLabelsAloneWhenNothingWasRecorded)
{
    OpenConsole();
    EXPECT_EQ(QStringList{"<all labels>"}, GetLabels());
    EXPECT_EQ(0, GetLabelCombo()->currentIndex());
    EXPECT_TRUE(GetTraces().isEmpty());
    Click("_StackMonRefreshBtn");
    EXPECT_EQ(QStringList{"<all labels>"}, GetLabels());
    EXPECT_TRUE(GetTraces().isEmpty());
    EXPECT_EQ(QString(), GetText());
}

TEST_F(ZORTestStackBrowserTest, NumbersTheTracesWithinTheirLabel)
{
    Record("b");
    Record("a");
    Record("b");
    OpenConsole();
    EXPECT_EQ((QStringList{"<all labels>", "b", "a"}), GetLabels());
    EXPECT_EQ((QStringList{"b.1", "b.2", "a.1"}), GetTraces());
    GetLabelCombo()->setCurrentIndex(1);
    EXPECT_EQ((QStringList{"b.1", "b.2"}), GetTraces());
    GetLabelCombo()->setCurrentIndex(2);
    EXPECT_EQ(QStringList{"a.1"}, GetTraces());
    GetLabelCombo()->setCurrentIndex(0);
    EXPECT_EQ(3, GetTraces().size());
}

TEST_F(ZORTestStackBrowserTest, ShowsTheTextOfTheCurrentTrace)
{
    Record("a");
    Record("b");
    OpenConsole();
    auto* combo = InConsole<QComboBox>("_StackMonTraceCmb");
    const ZORSysStackMonitor* monitor = ZORSysStackMonitor::GetStackMonitor();
    const QString first = monitor->GetStackTraces("a").constFirst().ToSTring(QString(), 0);
    const QString second = monitor->GetStackTraces("b").constFirst().ToSTring(QString(), 0);
    ASSERT_FALSE(first.isEmpty());
    EXPECT_EQ(first.trimmed(), GetText().trimmed());
    combo->setCurrentIndex(1);
    EXPECT_EQ(second.trimmed(), GetText().trimmed());
    EXPECT_EQ(second, combo->currentData().toString());
}

TEST_F(ZORTestStackBrowserTest, FindsNewTracesOnRefreshOnly)
{
    OpenConsole();
    Record("a");
    EXPECT_EQ(1, GetLabels().size());
    Click("_StackMonRefreshBtn");
    EXPECT_EQ((QStringList{"<all labels>", "a"}), GetLabels());
    EXPECT_EQ(QStringList{"a.1"}, GetTraces());
}

TEST_F(ZORTestStackBrowserTest, ClearsTheCurrentLabelOnly)
{
    Record("a");
    Record("b");
    OpenConsole();
    GetLabelCombo()->setCurrentIndex(1);
    Click("_StackMonClearLabelTracesBtn");
    EXPECT_EQ((QStringList{"<all labels>", "b"}), GetLabels());
    EXPECT_EQ(0, GetLabelCombo()->currentIndex());
    EXPECT_EQ(QStringList{"b.1"}, GetTraces());
}

TEST_F(ZORTestStackBrowserTest, ClearsEveryLabelWhenAllAreChosen)
{
    Record("a");
    Record("b");
    OpenConsole();
    Click("_StackMonClearLabelTracesBtn");
    EXPECT_TRUE(ZORSysStackMonitor::GetStackMonitor()->GetStackTraces("a").isEmpty());
    EXPECT_TRUE(ZORSysStackMonitor::GetStackMonitor()->GetStackTraces("b").isEmpty());
    EXPECT_TRUE(GetTraces().isEmpty());
    EXPECT_EQ(QString(), GetText());
}

TEST_F(ZORTestStackBrowserTest, ClearsAllTracesWhateverIsChosen)
{
    Record("a");
    Record("b");
    OpenConsole();
    GetLabelCombo()->setCurrentIndex(2);
    Click("_StackMonClearAllTracesBtn");
    EXPECT_TRUE(ZORSysStackMonitor::GetStackMonitor()->GetLabels().isEmpty());
    EXPECT_EQ(QStringList{"<all labels>"}, GetLabels());
    EXPECT_TRUE(GetTraces().isEmpty());
}

} // namespace
