// Tests of ZORCmnUnitSpinBox.

#include "support/Printers.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>

#include <QApplication>
#include <QFocusEvent>
#include <QLineEdit>
#include <QLocale>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

class ZORCmnUnitSpinBoxTest : public testing::Test
{
protected:
    ZORCmnUnitSpinBoxTest() { box->setLocale(QLocale::c()); }

    // Replaces the text as a user does.
    void Type(const QString& text)
    {
        box->selectAll();
        QTest::keyClicks(box.get(), text);
        QTest::keyClick(box.get(), Qt::Key_Return);
    }
    QString TextOf(double internal)
    {
        box->SetInternalValue(internal);
        return box->text();
    }

    const std::unique_ptr<ZORCmnUnitSpinBox> box = std::make_unique<ZORCmnUnitSpinBox>();
};

TEST_F(ZORCmnUnitSpinBoxTest, WithoutAMagnitudeValuesAreAsTheyAre)
{
    EXPECT_EQ("0", box->text());
    EXPECT_EQ("2.5", TextOf(2.5));
    EXPECT_EQ(2.5, box->GetInternalValue());
    EXPECT_EQ(QString(), box->suffix());
    EXPECT_EQ(-1e9, box->minimum());
    EXPECT_EQ(1e9, box->maximum());
}

TEST_F(ZORCmnUnitSpinBoxTest, LengthsAreMillimetres)
{
    box->setProperty("magnitude", "Length");
    EXPECT_EQ("12.5 mm", TextOf(12.5));
    EXPECT_EQ(12.5, box->GetInternalValue());
}

TEST_F(ZORCmnUnitSpinBoxTest, AnglesAreShownInDegreesAndKeptInRadians)
{
    box->setProperty("magnitude", "Angle");
    EXPECT_EQ(QString("45\u00b0"), TextOf(0.7853981633974483));
    EXPECT_EQ(0.7853981633974483, box->GetInternalValue());
    Type("-180");
    EXPECT_DOUBLE_EQ(-kPi, box->GetInternalValue());
    EXPECT_EQ(-180, box->value());
}

TEST_F(ZORCmnUnitSpinBoxTest, MagnitudeSetLaterKeepsTheInternalValue)
{
    box->SetInternalValue(2);
    box->setProperty("magnitude", "Angle");
    EXPECT_NEAR(2, box->GetInternalValue(), 1e-8);
    EXPECT_NEAR(360 / kPi, box->value(), 1e-6);
    box->setProperty("magnitude", "Length");
    EXPECT_NEAR(2, box->GetInternalValue(), 1e-6);
    EXPECT_EQ(" mm", box->suffix());
    box->setProperty("magnitude", "Weight");
    EXPECT_EQ(QString(), box->suffix());
    box->setProperty("magnitude", QVariant());
    EXPECT_EQ(QString(), box->suffix());
    EXPECT_NEAR(2, box->GetInternalValue(), 1e-6);
}

TEST_F(ZORCmnUnitSpinBoxTest, ShowingAValueDoesNotRoundIt)
{
    box->setProperty("magnitude", "Angle");
    for (const double angle : {1e-9, 0.1, 1 / 3.0, -2.718281828459045, 1e5 / 3}) {
        box->SetInternalValue(angle);
        EXPECT_EQ(angle, box->GetInternalValue());
        box->setProperty("magnitude", "Length");
        EXPECT_EQ(angle, box->GetInternalValue());
        box->setProperty("magnitude", "Angle");
        EXPECT_EQ(angle, box->GetInternalValue());
    }
    box->setValue(90);
    EXPECT_DOUBLE_EQ(kPi / 2, box->GetInternalValue());
    box->SetInternalValue(1e12);
    EXPECT_EQ(box->maximum() * (kPi / 180), box->GetInternalValue());
}

TEST_F(ZORCmnUnitSpinBoxTest, OtherPropertiesChangeNothing)
{
    box->setProperty("magnitude", "Angle");
    box->setProperty("note", "Length");
    EXPECT_EQ(QString("\u00b0"), box->suffix());
}

TEST_F(ZORCmnUnitSpinBoxTest, TrailingZerosAreNotShown)
{
    const QList<std::pair<double, QString>> rows = {{0, "0"},
                                                    {-0.0, "0"},
                                                    {1, "1"},
                                                    {100, "100"},
                                                    {0.1, "0.1"},
                                                    {-1.50, "-1.5"},
                                                    {0.000001, "0.000001"},
                                                    {1.0000001, "1"},
                                                    {-0.0000001, "0"},
                                                    {123456.789012, "123456.789012"},
                                                    {1000000, "1000000"}};
    for (const auto& [value, text] : rows)
        EXPECT_EQ(text, TextOf(value));
}

TEST_F(ZORCmnUnitSpinBoxTest, ValuesOutsideTheRangeAreClamped)
{
    box->SetInternalValue(1e12);
    EXPECT_EQ(1e9, box->GetInternalValue());
    box->SetInternalValue(-kInfinity);
    EXPECT_EQ(-1e9, box->GetInternalValue());
    box->SetInternalValue(kInfinity);
    EXPECT_EQ(1e9, box->GetInternalValue());
    box->setRange(-1, 1);
    EXPECT_EQ(1, box->GetInternalValue());
}

TEST_F(ZORCmnUnitSpinBoxTest, NotANumberIsIgnored)
{
    box->SetInternalValue(5);
    box->SetInternalValue(kNotANumber);
    EXPECT_EQ(5, box->GetInternalValue());
    Type("nan");
    EXPECT_EQ(5, box->GetInternalValue());
}

TEST_F(ZORCmnUnitSpinBoxTest, TypedValueIsAnnounced)
{
    box->setProperty("magnitude", "Length");
    const QSignalSpy changed(box.get(), &QDoubleSpinBox::valueChanged);
    Type("7.25");
    EXPECT_EQ(7.25, box->GetInternalValue());
    ASSERT_FALSE(changed.isEmpty());
    EXPECT_EQ(7.25, changed.constLast().constFirst().toDouble());
    EXPECT_EQ("7.25 mm", box->text());
}

TEST_F(ZORCmnUnitSpinBoxTest, LocaleWithACommaShowsOneAndAcceptsAPoint)
{
    box->setLocale(QLocale(QLocale::German, QLocale::Germany));
    box->setProperty("magnitude", "Length");
    EXPECT_EQ("2,5 mm", TextOf(2.5));
    Type("3,75");
    EXPECT_EQ(3.75, box->GetInternalValue());
    Type("4.125");
    EXPECT_EQ(4.125, box->GetInternalValue());
    EXPECT_EQ("4,125 mm", box->text());
    EXPECT_EQ("1234567,5 mm", TextOf(1234567.5)) << "no separators between thousands";
}

TEST_F(ZORCmnUnitSpinBoxTest, UnfinishedTextGoesBackToTheValue)
{
    box->SetInternalValue(5);
    Type("-");
    EXPECT_EQ(5, box->GetInternalValue());
    EXPECT_EQ("5", box->text());
}

TEST_F(ZORCmnUnitSpinBoxTest, CodeThatKnowsOnlyTheBaseClassWorks)
{
    QDoubleSpinBox* base = box.get();
    box->setProperty("magnitude", "Angle");
    base->setValue(90);
    EXPECT_DOUBLE_EQ(kPi / 2, box->GetInternalValue());
}

/// Two boxes in a window, the second one with a length.
class ZORCmnUnitSpinBoxFocusTest : public testing::Test
{
protected:
    ZORCmnUnitSpinBoxFocusTest()
    {
        auto* const column = new QVBoxLayout(&window);
        for (ZORCmnUnitSpinBox* box : {other, length})
            column->addWidget(box);
        length->setLocale(QLocale::c());
        length->setProperty("magnitude", "Length");
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        other->setFocus();
    }
    void Type(const QString& text)
    {
        QTest::keyClicks(length, text);
        QTest::keyClick(length, Qt::Key_Tab);
    }
    QLineEdit* GetField() const { return length->findChild<QLineEdit*>(); }

    QWidget window;
    ZORCmnUnitSpinBox* const other = new ZORCmnUnitSpinBox(&window);
    ZORCmnUnitSpinBox* const length = new ZORCmnUnitSpinBox(&window);
};

TEST_F(ZORCmnUnitSpinBoxFocusTest, TypingReplacesTheNumberHoweverTheFocusCame)
{
    for (const Qt::FocusReason reason :
         {Qt::TabFocusReason, Qt::BacktabFocusReason, Qt::ShortcutFocusReason, Qt::OtherFocusReason}) {
        length->SetInternalValue(0);
        length->setFocus(reason);
        EXPECT_EQ(GetField()->selectedText(), QString("0")) << reason << ": without the unit";
        Type("1000");
        EXPECT_EQ(length->GetInternalValue(), 1000) << reason;
        other->setFocus();
    }
}

TEST_F(ZORCmnUnitSpinBoxFocusTest, TypingReplacesTheNumberAfterAClickBeforeIt)
{
    QTest::mouseClick(GetField(), Qt::LeftButton, {}, {1, GetField()->height() / 2});
    EXPECT_TRUE(length->hasFocus());
    Type("1000");
    EXPECT_EQ(length->GetInternalValue(), 1000);
}

TEST_F(ZORCmnUnitSpinBoxFocusTest, SecondClickPlacesTheCursor)
{
    length->SetInternalValue(25);
    const QPoint before(1, GetField()->height() / 2);
    QTest::mouseClick(GetField(), Qt::LeftButton, {}, before);
    QTest::mouseClick(GetField(), Qt::LeftButton, {}, before, QApplication::doubleClickInterval() + 1);
    EXPECT_FALSE(GetField()->hasSelectedText());
    Type("1");
    EXPECT_EQ(length->GetInternalValue(), 125);
}

TEST_F(ZORCmnUnitSpinBoxFocusTest, DragSelectsWhatItCovers)
{
    length->SetInternalValue(1234567);
    const int y = GetField()->height() / 2;
    QTest::mousePress(GetField(), Qt::LeftButton, {}, {1, y});
    QTest::mouseMove(GetField(), {1 + GetField()->fontMetrics().horizontalAdvance("1234"), y});
    QTest::mouseRelease(GetField(), Qt::LeftButton, {},
                        {1 + GetField()->fontMetrics().horizontalAdvance("1234"), y});
    EXPECT_TRUE(GetField()->hasSelectedText());
    EXPECT_LT(GetField()->selectedText().size(), 6);
}

TEST_F(ZORCmnUnitSpinBoxFocusTest, ReturnToTheWindowKeepsTheCursor)
{
    length->SetInternalValue(25);
    length->setFocus(Qt::TabFocusReason);
    GetField()->setCursorPosition(1);
    QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(length, &out);
    QFocusEvent in(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(length, &in);
    EXPECT_FALSE(GetField()->hasSelectedText());
}

} // namespace
