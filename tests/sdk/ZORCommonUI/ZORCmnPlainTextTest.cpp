// Tests of ZORCmnPlainText.

#include "support/OpenWatch.h"
#include "support/Printers.h"

#include <ZORCommonUI/ZORCmnPlainText.h>

#include <QAbstractButton>
#include <QApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>

namespace {

/// A name that makes Qt load a picture wherever it takes a text for HTML.
class ZORCmnPlainTextTest : public testing::Test
{
protected:
    ZORCmnPlainTextTest()
    {
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(Qt::red);
        EXPECT_TRUE(image.save(picture));
    }

    const QTemporaryDir folder;
    const QString picture = folder.filePath(QStringLiteral("picture.png"));
    const QString hostile = QStringLiteral("geometry '<img src=\"%1\">' is gone & lost").arg(picture);
};

TEST_F(ZORCmnPlainTextTest, PlainToolTipsStayAsTheyAre)
{
    for (const QString& text : {QString(), QString("Wing"), QString("a\nb"), QString("1 < 2 & 3")})
        EXPECT_EQ(text, ZORCmnPlainText::ToToolTip(text));
}

TEST_F(ZORCmnPlainTextTest, ToolTipsShowTagsLiterallyAndOpenNothing)
{
    const OpenWatch watch(folder.path());
    QTextDocument document;
    document.setHtml(ZORCmnPlainText::ToToolTip(hostile));
    EXPECT_EQ(hostile, document.toPlainText());
    QWidget widget;
    widget.show();
    QToolTip::showText(QPoint(10, 10), ZORCmnPlainText::ToToolTip(hostile), &widget);
    QApplication::processEvents();
    EXPECT_EQ(ZORCmnPlainText::ToToolTip(hostile), QToolTip::text());
    QToolTip::hideText();
    EXPECT_FALSE(watch.WasOpened());
}

TEST_F(ZORCmnPlainTextTest, BoxesShowTagsLiterallyAndOpenNothing)
{
    const OpenWatch watch(folder.path());
    QString shown;
    QTimer::singleShot(0, [&shown] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(nullptr, box);
        shown = box->text();
        EXPECT_EQ(QMessageBox::Warning, box->icon());
        EXPECT_EQ(QString("Title"), box->windowTitle());
        QApplication::processEvents(); // paints
        box->button(QMessageBox::No)->click();
    });
    EXPECT_EQ(QMessageBox::No, ZORCmnPlainText::ShowBox(QMessageBox::Warning, nullptr, "Title", hostile,
                                                        QMessageBox::Yes | QMessageBox::No));
    EXPECT_EQ(hostile, shown);
    EXPECT_FALSE(watch.WasOpened());
}

} // namespace
