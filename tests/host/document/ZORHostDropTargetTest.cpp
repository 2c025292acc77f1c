// Tests of files that are dragged onto the window.

#include "DocumentTest.h"
#include "view/ZORHostView3D.h"

#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QUrl>

namespace {

constexpr Qt::DropActions kAll = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

class ZORHostDropTargetTest : public DocumentTest
{
protected:
    /// Drags files into the window.
    /// \return the action that the window wants; IgnoreAction when it refuses them
    Qt::DropAction Drag(const QStringList& files, Qt::DropActions possible = kAll)
    {
        QList<QUrl> urls;
        for (const QString& file : files)
            urls.append(file.contains("://") ? QUrl(file) : QUrl::fromLocalFile(file));
        data.setUrls(urls);
        QDragEnterEvent enter({50, 50}, possible, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &enter);
        QDragMoveEvent move({60, 60}, possible, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &move);
        return move.isAccepted() ? move.dropAction() : Qt::IgnoreAction;
    }
    void Drop(Qt::DropActions possible = kAll)
    {
        QDropEvent drop({60, 60}, possible, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &drop);
        QCoreApplication::processEvents();
    }
    QLabel* GetBanner() { return window.findChild<QLabel*>("_DropBanner"); }

    QMimeData data;
};

TEST_F(ZORHostDropTargetTest, TheFirstFileIsOpenedAndTheNextAreImported)
{
    const QString part = WriteTetrahedron("part.stl");
    EXPECT_EQ(Qt::LinkAction, Drag({part}));
    EXPECT_TRUE(GetBanner()->isVisible());
    EXPECT_EQ(QString("Open 'part.stl'"), GetBanner()->text());
    EXPECT_EQ(0, CountGeometries());
    Drop();
    EXPECT_FALSE(GetBanner()->isVisible());
    EXPECT_EQ(1, CountGeometries());
    EXPECT_FALSE(GetDocument().IsModified());
    EXPECT_EQ(Qt::CopyAction, Drag({part, part}));
    EXPECT_EQ(QString("Import 'part.stl', 'part.stl'"), GetBanner()->text());
    Drop();
    EXPECT_EQ(3, CountGeometries());
    EXPECT_TRUE(GetDocument().IsModified());
}

TEST_F(ZORHostDropTargetTest, NothingIsEverMoved)
{
    const QString part = WriteTetrahedron("part.stl");
    EXPECT_EQ(Qt::IgnoreAction, Drag({part}, Qt::MoveAction));
    EXPECT_EQ(Qt::CopyAction, Drag({part}, Qt::MoveAction | Qt::CopyAction));
    EXPECT_EQ(Qt::LinkAction, Drag({part}, Qt::MoveAction | Qt::LinkAction));
}

TEST_F(ZORHostDropTargetTest, FilesThatCannotBeReadAreRefusedByName)
{
    for (const QString& bad : {WriteFile("empty%1.stl", {}), GetPath("."), GetPath("missing.stl"),
                               QStringLiteral("https://example.org/part.stl")}) {
        EXPECT_EQ(Qt::IgnoreAction, Drag({bad})) << bad.toStdString();
        EXPECT_TRUE(GetBanner()->isVisible());
        EXPECT_TRUE(GetBanner()->text().startsWith("Cannot read '")) << GetBanner()->text().toStdString();
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(&window, &leave);
        EXPECT_FALSE(GetBanner()->isVisible());
    }
    EXPECT_EQ(Qt::LinkAction, Drag({GetPath("empty%1.stl"), WriteTetrahedron("part.stl")}));
    EXPECT_EQ(QString("Open 'part.stl'\nCannot read 'empty%1.stl'"), GetBanner()->text());
    Drop();
    EXPECT_EQ(1, CountGeometries());
    EXPECT_EQ(QStringList("These files cannot be read: 'empty%1.stl'"), boxes.TakeErrors());
}

TEST_F(ZORHostDropTargetTest, TextIsNotAFile)
{
    data.setText("part.stl");
    QDragEnterEvent enter({50, 50}, kAll, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(&window, &enter);
    EXPECT_FALSE(enter.isAccepted());
    EXPECT_FALSE(GetBanner()->isVisible());
}

TEST_F(ZORHostDropTargetTest, ManyFilesWithLongNamesFitIntoTheBanner)
{
    QStringList files;
    for (int i = 0; i < 8; ++i)
        files.append(WriteTetrahedron(QString(200, 'x') + QString::number(i) + ".stl"));
    Drag(files);
    EXPECT_TRUE(window.GetView()->rect().contains(GetBanner()->geometry()));
    EXPECT_TRUE(GetBanner()->text().contains(QChar(0x2026)));
}

} // namespace
