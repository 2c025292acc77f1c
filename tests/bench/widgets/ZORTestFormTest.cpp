#include "widgets/ZORTestForm.h"

#include "SelectorProbes.h"
#include "support/BenchTest.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace {

class ZORTestFormTest : public BenchTest
{
};

TEST_F(ZORTestFormTest, TitleIsTheLabelOfTheClass)
{
    const ProbePointDlg form(GetEnvironment());
    EXPECT_EQ(QString("Probe Point Dialog"), form.windowTitle());
}

TEST_F(ZORTestFormTest, TitleMayDifferFromTheLabel)
{
    QDialog window;
    ZORTestForm form(&window);
    EXPECT_EQ(QString(), window.windowTitle()) << "no label, no title";
    form.SetTitle("Other");
    EXPECT_EQ(QString("Other"), window.windowTitle());
}

TEST_F(ZORTestFormTest, RowsStandInTheOrderOfTheCalls)
{
    QDialog window;
    ZORTestForm form(&window);
    auto* first = form.AddSelector("_FirstSel", "First: ", "ZORGeoPoint");
    auto* second = form.AddSelector("_SecondSel", "Second: ", "ZORGeoCurve");
    auto* buttonBox = form.AddButtonBox();

    EXPECT_EQ(QString("_FirstSel"), first->objectName());
    EXPECT_EQ(QString("First: "), first->property("label").toString());
    EXPECT_EQ(QByteArray("ZORGeoPoint"), first->property("geoType").toByteArray());
    EXPECT_EQ(QString("_ButtonBox"), buttonBox->objectName());
    EXPECT_EQ(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, buttonBox->standardButtons());

    window.show();
    EXPECT_GT(first->height(), 0);
    EXPECT_LE(first->geometry().bottom(), second->y());
    EXPECT_LE(second->geometry().bottom(), buttonBox->y());
}

TEST_F(ZORTestFormTest, ConsecutiveFieldsShareAGrid)
{
    QDialog window;
    ZORTestForm form(&window);
    auto* length = form.AddUnitSpinBox("_LengthSpin", "Length: ", "Length");
    auto* text = form.AddLineEdit("_TextEdit", "Text: ");
    auto* selector = form.AddSelector("_PointSel", "Point: ", "ZORGeoPoint");
    auto* angle = form.AddUnitSpinBox("_AngleSpin", "Angle", "Angle");
    form.AddButtonBox();

    EXPECT_EQ(QString("_LengthSpin"), length->objectName());
    EXPECT_EQ(QString(" mm"), length->suffix());
    EXPECT_EQ(QString("_TextEdit"), text->objectName());
    EXPECT_EQ(QString("Angle"), angle->property("magnitude").toString());
    window.show();
    EXPECT_EQ(length->x(), text->x());
    EXPECT_EQ(length->width(), text->width());
    EXPECT_LT(length->y(), text->y());
    EXPECT_LT(text->y(), selector->y());
    EXPECT_LT(selector->y(), angle->y());

    const auto captions = window.findChildren<QLabel*>(QString("_Label"), Qt::FindDirectChildrenOnly);
    ASSERT_EQ(3, captions.size());
    EXPECT_EQ(QString("Length: "), captions[0]->text());
    EXPECT_EQ(length, captions[0]->buddy());
    EXPECT_EQ(text, captions[1]->buddy());
    EXPECT_EQ(angle, captions[2]->buddy());
}

TEST_F(ZORTestFormTest, EnterPressesOk)
{
    ASSERT_NE(nullptr, Open("ProbeSelectionDlg"));
    const auto* buttonBox = dialog->findChild<QDialogButtonBox*>("_ButtonBox");
    EXPECT_TRUE(buttonBox->button(QDialogButtonBox::Ok)->isDefault());
    QTest::keyClick(dialog->findChild<QComboBox*>("_Combo"), Qt::Key_Return);
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

} // namespace
