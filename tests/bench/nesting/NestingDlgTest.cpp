#include "NestingDlgTest.h"

#include "nesting/ZORTestNestNestingResultDlg.h"

#include <ZORNesting/ZORNestResultWriter.h>

#include <QApplication>
#include <QFileInfo>

NestingDlgTest::~NestingDlgTest()
{
    qDeleteAll(GetResults());
}

QString NestingDlgTest::WritePart(const QString& name, double length, double width)
{
    return WritePart(name, {{0, 0, 0}, {length, 0, 0}, {length, width, 0}, {0, width, 0}});
}

QString NestingDlgTest::WritePart(const QString& name, const QList<ZORMathPoint>& corners)
{
    using Segment = ZORNestResultSegment;
    QList<Segment> outline;
    for (qsizetype i = 0; i < corners.size(); ++i) {
        Segment side = Segment::CreateLine(corners[i], corners[(i + 1) % corners.size()]);
        side.SetLayer(Segment::Nest);
        outline.append(side);
    }
    ZORNestResultItem item(QFileInfo(name).baseName());
    item.AddShape(ZORNestResultShape(outline));
    ZORNestResult result(ZORNestResult::Translation);
    result.AddItem(item);
    EXPECT_GT(ZORNestResultWriter(GetPath(name)).Write(result), 0);
    return GetPath(name);
}

QVariantList NestingDlgTest::GetRow(const QTableWidget* table, int row)
{
    QVariantList values;
    for (int column = 0; column < table->columnCount(); ++column)
        values.append(table->item(row, column)->data(Qt::EditRole));
    return values;
}

void NestingDlgTest::AppendRow(QTableWidget* table, const QVariantList& values)
{
    const int row = table->rowCount();
    table->insertRow(row);
    for (int column = 0; column < values.size(); ++column) {
        auto* cell = new QTableWidgetItem;
        cell->setData(Qt::EditRole, values[column]);
        table->setItem(row, column, cell);
    }
}

void NestingDlgTest::AddItem(const QString& path, int quantity)
{
    AppendRow(Items(), {QFileInfo(path).baseName(), quantity, false, 0.0, false, false, false, false, 0.0,
                        0.0, 0, path});
}

void NestingDlgTest::AddRoll(double width)
{
    AppendRow(Sheets(), {"roll", 1, width, "inf", true, 0.0, 0.0, 0.0, 0.0, 0.0});
}

void NestingDlgTest::AddSheet(double width, double length, int quantity)
{
    AppendRow(Sheets(), {"sheet", quantity, width, length, false, 0.0, 0.0, 0.0, 0.0, 0.0});
}

QList<ZORTestNestNestingResultDlg*> NestingDlgTest::GetResults()
{
    QList<ZORTestNestNestingResultDlg*> results;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* result = qobject_cast<ZORTestNestNestingResultDlg*>(window))
            results.append(result);
    }
    return results;
}
