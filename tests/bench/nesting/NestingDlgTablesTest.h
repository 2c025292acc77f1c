// The nesting dialog with answers to what its tables ask.

#pragma once

#include "NestingDlgTest.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>

class NestingDlgTablesTest : public NestingDlgTest
{
protected:
    /// Takes \a paths at once in the next file dialog; \a afterwards runs before the dialog's caller sees them.
    void AnswerFiles(const QStringList& paths, const std::function<void()>& afterwards = {})
    {
        answers.Answer("QFileDialog", [paths, afterwards](QDialog* shown) {
            auto* files = qobject_cast<QFileDialog*>(shown);
            EXPECT_EQ(QFileDialog::ExistingFiles, files->fileMode());
            files->findChild<QLineEdit*>()->setText('"' + paths.join("\" \"") + '"');
            files->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
            if (afterwards)
                afterwards();
        });
    }
    /// Answers the queries for the width and the name of a roll.
    void AnswerRoll(double width, const QString& name)
    {
        answers.Answer("QInputDialog", [width](QDialog* shown) {
            qobject_cast<QInputDialog*>(shown)->setDoubleValue(width);
            shown->accept();
        });
        answers.AnswerText(name);
    }
    static QStringList GetHeaders(const QTableWidget* table)
    {
        QStringList headers;
        for (int column = 0; column < table->columnCount(); ++column)
            headers.append(table->horizontalHeaderItem(column)->text());
        return headers;
    }
};
