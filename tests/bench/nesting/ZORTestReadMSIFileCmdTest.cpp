#include "nesting/ZORTestReadMSIFileCmd.h"

#include "ResultOfEverything.h"
#include "console/ZORTestMainDialog.h"
#include "core/ZORTestCommandRegistry.h"
#include "support/BenchTest.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORDebug/ZORDebugVizObject.h>
#include <ZORNesting/ZORNestResultWriter.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>

#include <QAction>
#include <QFile>
#include <QMetaClassInfo>

namespace {

using Segment = ZORNestResultSegment;

QStringList* debugLines = nullptr; // receives the debug messages while a LogCatcher lives

void CollectDebugLine(QtMsgType type, const QMessageLogContext& context, const QString& line)
{
    if (type == QtDebugMsg && qstrcmp(context.category, "default") == 0)
        debugLines->append(line);
}

class LogCatcher
{
public:
    LogCatcher()
        : m_former(qInstallMessageHandler(&CollectDebugLine))
    {
        debugLines = &m_lines;
    }
    ~LogCatcher() { qInstallMessageHandler(m_former); }
    Q_DISABLE_COPY_MOVE(LogCatcher)

    const QStringList& GetLines() const { return m_lines; }

private:
    QStringList m_lines;
    const QtMessageHandler m_former;
};

class ZORTestReadMSIFileCmdTest : public BenchTest
{
protected:
    ZORTestReadMSIFileCmdTest() { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }
    ~ZORTestReadMSIFileCmdTest() override { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }

    /// Runs the command on a file and gives the messages that it logged.
    QStringList DumpFile(const QString& file)
    {
        answers.AnswerFile(file);
        const LogCatcher log;
        Open("ZORTestReadMSIFileCmd");
        return log.GetLines();
    }
    QStringList Dump(const ZORNestResult& result)
    {
        EXPECT_GT(ZORNestResultWriter(path).Write(result), 0);
        return DumpFile(path);
    }
    const QString path = GetPath("sheet.msi");
};

/// \param expected  begins with a line break, every line ends with one
void ExpectLines(const char* expected, const QStringList& lines)
{
    QStringList wanted = QString::fromUtf8(expected).split(QLatin1Char('\n'));
    wanted.removeFirst();
    wanted.removeLast();
    for (qsizetype i = 0; i < std::max(wanted.size(), lines.size()); ++i)
        EXPECT_EQ(wanted.value(i), lines.value(i)) << "line " << i;
}

TEST_F(ZORTestReadMSIFileCmdTest, ClassTellsItsEstablishedLabelAndTypes)
{
    const QMetaObject& metaObject = ZORTestReadMSIFileCmd::staticMetaObject;
    EXPECT_STREQ("Import STL Surface", metaObject.classInfo(metaObject.indexOfClassInfo("label")).value());
    EXPECT_EQ(QList<QByteArray>({"ZORGeoSurface"}), ZORTestCommandRegistry::CreatedTypes(&metaObject));
}

TEST_F(ZORTestReadMSIFileCmdTest, AsksForTheFileWithoutParent)
{
    Dump(ZORNestResult(ZORNestResult::Nesting));
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("Select MSI file to read"), shown[0].title);
    EXPECT_EQ(QStringList({"MSI Files (*.msi)"}), shown[0].filters);
    EXPECT_EQ(nullptr, shown[0].parent);
    EXPECT_FALSE(shown[0].isSaving);
}

TEST_F(ZORTestReadMSIFileCmdTest, ACancelledDialogWritesAndDrawsNothing)
{
    answers.CancelFile();
    const LogCatcher log;
    Open("ZORTestReadMSIFileCmd");
    EXPECT_EQ(QStringList(), log.GetLines());
    EXPECT_EQ(0, ZORDebugVizContainer::GetContainer()->GetNumObjects());
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ZORTestReadMSIFileCmdTest, WhatCannotBeReadHasTheFiveLinesOfTheHeader)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("G0 X1");
    file.close();
    QStringList lines = DumpFile(path);
    ASSERT_EQ(5, lines.size());
    EXPECT_EQ(QStringLiteral("Result file:  \"%1\"").arg(path), lines.takeFirst());
    ExpectLines(R"dump(
	Number of Items:  0
	Type of result:  nesting
	Items Dump below
	========================================================
)dump",
                lines);
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestReadMSIFileCmdTest, OnlyTypeOneIsATranslation)
{
    for (const int type : {0, 1, 2, -1, 77}) {
        const QStringList lines = Dump(ZORNestResult(ZORNestResult::ResultType(type)));
        EXPECT_EQ(QLatin1String(type == 1 ? "\tType of result:  translation" : "\tType of result:  nesting"),
                  lines.value(2));
    }
}

TEST_F(ZORTestReadMSIFileCmdTest, DumpsEverythingLineByLine)
{
    QStringList lines = Dump(CreateResultOfEverything());
    EXPECT_EQ(QStringLiteral("Result file:  \"%1\"").arg(path), lines.takeFirst());
    ExpectLines(kDumpOfEverything, lines);
    EXPECT_EQ(0, GetContainer()->GetNumGeometry());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestReadMSIFileCmdTest, DrawsEverySegmentInItsColour)
{
    const ZORNestResult result = CreateResultOfEverything();
    Dump(result);
    auto* const drawings = ZORDebugVizContainer::GetContainer();
    int number = 0;
    for (const ZORNestResultShape* shape : result.GetItems().constFirst()->GetShapes()) {
        for (const Segment& segment : shape->GetSegments()) {
            SCOPED_TRACE(number);
            const ZORDebugVizObject* const drawing = drawings->GetObject(number++);
            ASSERT_NE(nullptr, drawing);
            EXPECT_EQ(QString(), drawing->GetLabel());
            const auto* const graphics = dynamic_cast<const ZORVisRepGraphics*>(drawing->GetRep());
            ASSERT_EQ(segment.GetPoints(0.001).size() < 2, graphics == nullptr);
            if (!graphics)
                continue;
            EXPECT_EQ(ZORVisOptions::Solid, graphics->GetOptions().GetLineStyle());
            const QColor color = segment.GetColor();
            EXPECT_EQ(color.isValid() ? QColor(color.rgb()) : QColor(0, 0, 0),
                      graphics->GetOptions().GetColor());
            ASSERT_EQ(1, graphics->GetPrimitives().size());
            const auto* const polyline =
                dynamic_cast<const ZORVisPolylinePrimitive*>(graphics->GetPrimitives().constFirst());
            ASSERT_NE(nullptr, polyline);
            EXPECT_EQ(ZORVisPolylinePrimitive::Chain, polyline->GetStructure());
            EXPECT_EQ(segment.GetPoints(0.001), polyline->GetPoints());
        }
    }
    EXPECT_EQ(17, number);
    EXPECT_EQ(17, drawings->GetNumObjects());
}

TEST_F(ZORTestReadMSIFileCmdTest, RunsFromTheMenu)
{
    OpenConsole();
    answers.CancelFile();
    MenuAction("actionRead_MSI_File")->trigger();
    EXPECT_EQ(QString("Select MSI file to read"), answers.Take().value(0).title);
}

} // namespace
