// Fixture of the tests of the nesting dialog.

#pragma once

#include "nesting/ZORTestNestNestingDlg.h"
#include "support/BenchTest.h"

#include <ZORNesting/ZORNestNestingProcessor.h>

#include <QProgressBar>
#include <QTableWidget>

class ZORTestNestNestingResultDlg;

/// The dialog and its widgets; closes the windows of results.
class NestingDlgTest : public BenchTest
{
protected:
    ~NestingDlgTest() override;

    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestNestNestingDlg")); }

    template<class Widget>
    Widget* Find(const char* objectName) const
    {
        auto* widget = dialog->findChild<Widget*>(QLatin1String(objectName));
        EXPECT_NE(nullptr, widget) << objectName;
        return widget;
    }
    QTableWidget* Items() const { return Find<QTableWidget>("_ItemTable"); }
    QTableWidget* Sheets() const { return Find<QTableWidget>("_PackagingTable"); }
    QProgressBar* Bar() const { return Find<QProgressBar>("_ProgBar"); }
    ZORNestNestingProcessor* Processor() const { return dialog->findChild<ZORNestNestingProcessor*>(); }
    /// The dialog, for calls of its slots.
    ZORTestNestNestingDlg* Slots() const { return static_cast<ZORTestNestNestingDlg*>(dialog.data()); }

    /// Writes a part file of a rectangle.
    /// \return its path
    QString WritePart(const QString& name, double length = 200, double width = 100);
    /// Writes a part file of a polygon.
    QString WritePart(const QString& name, const QList<ZORMathPoint>& corners);
    static QVariantList GetRow(const QTableWidget* table, int row);
    /// Appends a row of these values; the cells behind them stay empty.
    static void AppendRow(QTableWidget* table, const QVariantList& values);
    /// A row as a file of that path gets it: one copy, nothing else set.
    void AddItem(const QString& path, int quantity = 1);
    void AddRoll(double width);
    void AddSheet(double width, double length, int quantity = 1);

    /// Open windows of results.
    static QList<ZORTestNestNestingResultDlg*> GetResults();
};
