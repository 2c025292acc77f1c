#include "actions/ZORHostSelectionFilterCombo.h"

#include "HostTest.h"
#include "view/ZORHostSelection.h"

namespace {

class ZORHostSelectionFilterComboTest : public HostTest
{
protected:
    ZORHostSelection selection;
};

TEST_F(ZORHostSelectionFilterComboTest, ChoosesAndShowsTheFilter)
{
    ZORHostSelectionFilterCombo combo(&selection, nullptr);
    EXPECT_EQ(QString("All objects"), combo.currentText());
    combo.show();
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(QString("Points"), combo.currentText());
    EXPECT_EQ(ZORHostObjectKinds(ZORHostObjectKind::Point), selection.GetFilter());
    selection.SetFilter(ZORHostObjectKind::Surface);
    EXPECT_EQ(QString("Surfaces"), combo.currentText());
    selection.SetFilter(ZORHostObjectKind::Surface | ZORHostObjectKind::Curve);
    EXPECT_EQ(-1, combo.currentIndex()) << "no entry says this";
    selection.SetFilter(kZORHostAllObjectKinds);
    EXPECT_EQ(QString("All objects"), combo.currentText());
    EXPECT_FALSE(combo.accessibleName().isEmpty());
}

TEST_F(ZORHostSelectionFilterComboTest, TheSelectionMayDieFirst)
{
    auto other = std::make_unique<ZORHostSelection>();
    ZORHostSelectionFilterCombo combo(other.get(), nullptr);
    other.reset();
    combo.show();
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(1, combo.currentIndex());
}

} // namespace
