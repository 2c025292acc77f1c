// The keyboard in the dialogs of the SDK's own commands: first focus, Tab, mnemonics, buddies and names.

#include "plugins/StandardCommandsInHost.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHash>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

namespace {

class ZORHostStandardDialogsTest : public StandardCommandsInHost,
                                   public testing::WithParamInterface<const char*>
{
public:
    ZORHostStandardDialogsTest()
    {
        AddBox("Box");
        (new ZORGeoCartesianPoint(GetEnvironment()->GetContainer(), {1, 2, 3}))->Initialize();
    }
    ~ZORHostStandardDialogsTest() override
    {
        if (frame)
            Press(frame, QDialogButtonBox::Cancel);
    }
    void Show()
    {
        frame = Open(GetParam());
        ASSERT_TRUE(frame);
        frame->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(frame));
    }
    /// Shows all rows that a choice can bring.
    QList<QComboBox*> GetChoices() const
    {
        QList<QComboBox*> choices;
        for (const char* name : {"_SurfaceCombo", "_MethodCombo"}) {
            if (auto* const combo = frame->findChild<QComboBox*>(QLatin1String(name)))
                choices.append(combo);
        }
        return choices;
    }
    /// The letters of the labels and buttons, and what has them; duplicates go into \a problems.
    void CollectLetters(QStringList& problems) const
    {
        QHash<QKeySequence, QString> letters;
        const auto collect = [&](const QString& text) {
            const QKeySequence letter = QKeySequence::mnemonic(text);
            if (letter.isEmpty())
                problems.append(text + " has no mnemonic");
            else if (letters.contains(letter))
                problems.append(text + " shares its mnemonic with " + letters[letter]);
            letters[letter] = text;
        };
        for (const QLabel* label : frame->findChildren<QLabel*>()) {
            if (label->isVisible() && label->buddy())
                collect(label->text());
        }
        for (const QAbstractButton* button : frame->findChildren<QAbstractButton*>()) {
            if (button->isVisible() && !button->text().isEmpty())
                collect(button->text());
        }
    }

    QPointer<ZORHostDialogFrame> frame;
};

TEST_P(ZORHostStandardDialogsTest, StartsInItsFirstFieldAndTabEndsWithOkAndCancel)
{
    Show();
    const auto* const focus = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    if (qstrcmp(GetParam(), "ZORCompMaterialLibraryCmd.Edit") == 0) {
        EXPECT_TRUE(qobject_cast<QTableView*>(QApplication::focusWidget()));
    } else {
        ASSERT_NE(focus, nullptr);
        EXPECT_EQ(focus->objectName(), QString("_LabelEdit"));
        EXPECT_EQ(focus->selectedText(), focus->text());
    }
    const auto* const box = frame->findChild<QDialogButtonBox*>("_ButtonBox");
    QStringList order;
    QWidget* const first = QApplication::focusWidget();
    do {
        order.append(QLatin1String(box->isAncestorOf(QApplication::focusWidget()) ? "button" : "field"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && order.size() < 99);
    const bool isOkEnabled = box->button(QDialogButtonBox::Ok)->isEnabled();
    EXPECT_EQ(order.count("button"), isOkEnabled ? 2 : 1);
    EXPECT_EQ(order.lastIndexOf("field"), order.size() - order.count("button") - 1)
        << order.join(' ').toStdString();
    EXPECT_TRUE(box->button(QDialogButtonBox::Ok)->isDefault());
}

TEST_P(ZORHostStandardDialogsTest, EveryRowHasItsMnemonicAndEveryWidgetAName)
{
    Show();
    QStringList problems;
    CollectLetters(problems);
    for (QComboBox* choice : GetChoices()) {
        choice->setCurrentIndex(choice->count() - 1);
        CollectLetters(problems);
    }
    for (QWidget* widget : frame->findChildren<QWidget*>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisible() || widget->focusProxy())
            continue;
        QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(widget);
        if (!interface || interface->text(QAccessible::Name).trimmed().isEmpty())
            problems.append(widget->objectName() + " has no accessible name");
    }
    EXPECT_EQ(problems, QStringList()) << problems.join("\n").toStdString();
}

TEST_P(ZORHostStandardDialogsTest, TypedNumbersReplaceTheOldOnes)
{
    Show();
    for (QDoubleSpinBox* spin : frame->findChildren<QDoubleSpinBox*>()) {
        if (!spin->isVisible() || !spin->isEnabled())
            continue;
        spin->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(spin, "17");
        QTest::keyClick(spin, Qt::Key_Tab);
        EXPECT_EQ(spin->value(), 17) << spin->objectName().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(All, ZORHostStandardDialogsTest,
                         testing::Values("ZORCompLayupCmd.Create", "ZORCompMaterialLibraryCmd.Edit",
                                         "ZORCompRosetteCmd.Create", "ZORCompStrategyCmd.Create",
                                         "ZORWFProjectionCmd.Create", "ZORTPCourseCmd.Create"));

} // namespace
