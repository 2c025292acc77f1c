// Tests of ZORCmnPickButton.

#include "support/PickAnswerer.h"
#include "support/Printers.h"

#include <ZORCommonUI/ZORCmnPickButton.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>

#include <QDialog>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

/// A dialog with a field and the button that picks for it.
class ZORCmnPickButtonTest : public testing::Test
{
protected:
    ZORCmnPickButtonTest()
    {
        point->Initialize();
        auto* const column = new QVBoxLayout(dialog.get());
        for (QWidget* widget : std::initializer_list<QWidget*>{field, button, other})
            column->addWidget(widget);
        QObject::connect(button, &ZORCmnPickButton::Picked,
                         [this](const ZORCmdPick& pick) { picked = pick.object; });
        dialog->show();
        dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        other->setFocus();
    }
    ZORCmdPickRequest* GetRequest() const { return button->GetRequest(); }

    ZORGeoContainer container;
    ZORGeoCartesianPoint* const point = new ZORGeoCartesianPoint(&container, {1, 2, 3});
    std::optional<PickAnswerer> answerer{std::in_place};
    std::unique_ptr<QDialog> dialog = std::make_unique<QDialog>();
    QLineEdit* const field = new QLineEdit(dialog.get());
    ZORCmnPickButton* const button = new ZORCmnPickButton(ZORCmdPickRequest::Points, "Click a point", field);
    QLineEdit* const other = new QLineEdit(dialog.get());
    ZORGeoGeometry* picked = nullptr;
};

TEST_F(ZORCmnPickButtonTest, PicksAndReturnsToItsField)
{
    EXPECT_EQ(button->toolTip(), QString("Click a point"));
    EXPECT_FALSE(button->accessibleName().isEmpty());
    EXPECT_FALSE(button->icon().isNull());
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(button->isChecked());
    ASSERT_EQ(answerer->request, GetRequest());
    EXPECT_TRUE(GetRequest()->Answer({point, {1, 2, 3}, {}}));
    EXPECT_EQ(picked, point);
    EXPECT_FALSE(button->isChecked());
    EXPECT_TRUE(field->hasFocus());
}

TEST_F(ZORCmnPickButtonTest, SecondPressCancels)
{
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_TRUE(GetRequest()->IsActive());
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_FALSE(GetRequest()->IsActive());
    EXPECT_FALSE(button->isChecked());
    EXPECT_EQ(picked, nullptr);
}

TEST_F(ZORCmnPickButtonTest, EscapeCancelsThePickBeforeItClosesTheDialog)
{
    button->click();
    QTest::keyClick(other, Qt::Key_Escape);
    EXPECT_FALSE(GetRequest()->IsActive());
    EXPECT_TRUE(dialog->isVisible());
    QTest::keyClick(other, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(ZORCmnPickButtonTest, HiddenOrDestroyedDialogEndsThePick)
{
    button->click();
    dialog->hide();
    EXPECT_FALSE(GetRequest()->IsActive());
    dialog->show();
    EXPECT_FALSE(button->isChecked());
    button->click();
    EXPECT_NE(answerer->request, nullptr);
    dialog.reset();
    EXPECT_EQ(answerer->request, nullptr);
}

TEST_F(ZORCmnPickButtonTest, AnotherButtonTakesOver)
{
    ZORCmnPickButton second(ZORCmdPickRequest::Curves, "Click a curve", other);
    button->click();
    second.click();
    EXPECT_FALSE(button->isChecked());
    EXPECT_TRUE(second.isChecked());
    EXPECT_EQ(answerer->request, second.GetRequest());
}

TEST_F(ZORCmnPickButtonTest, IsHiddenWithoutAViewToPickIn)
{
    button->click();
    answerer.reset();
    EXPECT_FALSE(button->isChecked());
    EXPECT_TRUE(button->isHidden());
    answerer.emplace();
    EXPECT_TRUE(button->isVisible());
}

} // namespace
