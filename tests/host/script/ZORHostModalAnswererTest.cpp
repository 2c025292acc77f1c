// How scripts answer dialogs and message boxes.

#include "ScriptTest.h"

#include <ZORGeometry/ZORGeoSurface.h>

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace {

using ZORHostModalAnswererTest = ScriptTest;

TEST_F(ZORHostModalAnswererTest, AnswersFileDialogs)
{
    const QString existing = WriteFile("in.stl", "x");
    QString opened;
    QString saved;
    window.Add("Open", [&] { opened = QFileDialog::getOpenFileName(&window, "Open it"); });
    window.Add("Save", [&] { saved = QFileDialog::getSaveFileName(&window, "Save it"); });
    variables = {{"IN", existing}, {"NEW", GetPath("new.stl")}};
    EXPECT_TRUE(
        Play({"in Playground", "answer file ${IN}", "trigger Open", "answer file ${NEW}", "trigger Save"}))
        << report.toStdString();
    EXPECT_EQ(existing, opened);
    EXPECT_EQ(GetPath("new.stl"), saved);
    EXPECT_TRUE(Play({"in Playground", "answer file ${IN}", "answer box Yes", "trigger Save"}))
        << report.toStdString();
    EXPECT_EQ(existing, saved);
    EXPECT_TRUE(Play({"in Playground", "answer cancel", "trigger Open"})) << report.toStdString();
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(ZORHostModalAnswererTest, ChoosesTheFilterOfAFileDialog)
{
    QString filter;
    window.Add("Open", [&] {
        QFileDialog::getOpenFileName(&window, "Open it", {}, "First (*.stl);;Second (*.stl *.x)", &filter);
    });
    variables = {{"IN", WriteFile("in.stl", "x")}};
    EXPECT_TRUE(Play({"in Playground", "answer file ${IN} \"Second (*.stl *.x)\"", "trigger Open"}))
        << report.toStdString();
    EXPECT_EQ(QString("Second (*.stl *.x)"), filter);
    EXPECT_EQ(QString("test.zorscript:3: answer of line 2: the file dialog has no filter 'Third', but: "
                      "First (*.stl), Second (*.stl *.x)"),
              FailureOf({"in Playground", "answer file ${IN} Third", "trigger Open"}));
}

TEST_F(ZORHostModalAnswererTest, AnswersInputAndColourDialogs)
{
    QString item;
    QString text;
    QColor color;
    window.Add("Item", [&] {
        item = QInputDialog::getItem(&window, "Select Units", "Units", {"mm", "in"}, 0, false);
    });
    window.Add("Text", [&] { text = QInputDialog::getText(&window, "Name", "Name"); });
    window.Add("Color", [&] { color = QColorDialog::getColor(Qt::white, &window, "Surface Color"); });
    EXPECT_TRUE(Play({"in Playground", "answer item in", "trigger Item", "answer text hello", "trigger Text",
                      "answer color \"#204060\"", "trigger Color"}))
        << report.toStdString();
    EXPECT_EQ(QString("in"), item);
    EXPECT_EQ(QString("hello"), text);
    EXPECT_EQ(QColor(0x20, 0x40, 0x60), color);
    EXPECT_TRUE(Play({"in Playground", "answer item", "trigger Item"}));
    EXPECT_EQ(QString("mm"), item);
    EXPECT_EQ(
        QString(
            "test.zorscript:3: answer of line 2: the query 'Select Units' has no choice 'ft', but: mm, in"),
        FailureOf({"in Playground", "answer item ft", "trigger Item"}));
    EXPECT_EQ(QString("test.zorscript:3: answer of line 2: 'bluish' is no colour"),
              FailureOf({"in Playground", "answer color bluish", "trigger Color"}));
}

TEST_F(ZORHostModalAnswererTest, AnswersMessageBoxesByButtonAndText)
{
    window.Add("Box", [this] { QMessageBox::critical(&window, "Error", "no way"); });
    EXPECT_TRUE(Play({"in Playground", "answer box OK \"no way\"", "trigger Box"})) << report.toStdString();
    EXPECT_EQ(QString("test.zorscript:3: answer of line 2: the box says 'no way', not 'some way'"),
              FailureOf({"in Playground", "answer box OK \"some way\"", "trigger Box"}));
    EXPECT_EQ(QString("test.zorscript:3: answer of line 2: the box 'no way' has no button 'Retry'"),
              FailureOf({"in Playground", "answer box Retry", "trigger Box"}));
}

TEST_F(ZORHostModalAnswererTest, AnUnexpectedBoxIsClosedAndEndsTheScript)
{
    window.Add("Box", [this] { QMessageBox::critical(&window, "Error", "no way"); });
    EXPECT_EQ(QString("test.zorscript:2: unexpected dialog 'Error' (QMessageBox): no way"),
              FailureOf({"in Playground", "trigger Box", "set _Edit reached"}));
    EXPECT_EQ(nullptr, QApplication::activeModalWidget());
    EXPECT_NE(QString("reached"), window.findChild<QLineEdit*>("_Edit")->text());
}

TEST_F(ZORHostModalAnswererTest, AnAnswerOfTheWrongKindEndsTheScript)
{
    window.Add("Box", [this] { QMessageBox::critical(&window, "Error", "no way"); });
    EXPECT_EQ(QString("test.zorscript:3: answer of line 2: the answer 'file' does not fit the dialog 'Error' "
                      "(QMessageBox): no way"),
              FailureOf({"in Playground", "answer file x", "trigger Box"}));
}

TEST_F(ZORHostModalAnswererTest, AnAnswerNobodyAskedForFails)
{
    EXPECT_EQ(QString("test.zorscript:1: no dialog asked for this answer"), FailureOf({"answer cancel"}));
}

TEST_F(ZORHostModalAnswererTest, PlaysStepsInAModalForm)
{
    QString result;
    window.Add("Form", [&] {
        QDialog dialog(&window);
        dialog.setWindowTitle("Options");
        auto* form = new QFormLayout(&dialog);
        auto* check = new QCheckBox("Draw as wireframe");
        form->addRow(check);
        auto* color = new QPushButton("Color");
        form->addRow(color);
        QObject::connect(color, &QPushButton::clicked, &dialog, [answer = &result, parent = &dialog] {
            *answer += QColorDialog::getColor(Qt::white, parent).name();
        });
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        form->addRow(buttons);
        QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
        if (dialog.exec() == QDialog::Accepted)
            result += check->isChecked() ? QString(" wireframe") : QString(" shaded");
    });
    EXPECT_TRUE(Play({"in Playground", "answer form Options", "set \"Draw as wireframe\" on",
                      "answer color \"#010203\"", "click Color", "expect value \"Draw as wireframe\" is on",
                      "click OK", "end", "trigger Form", "set _Edit reached"}))
        << report.toStdString();
    EXPECT_EQ(QString("#010203 wireframe"), result);
    EXPECT_EQ(QString("reached"), window.findChild<QLineEdit*>("_Edit")->text());

    result.clear();
    EXPECT_EQ(QString("test.zorscript:2: the dialog 'Options' is still open at the end of its block"),
              FailureOf({"in Playground", "answer form Options", "end", "trigger Form"}));
    EXPECT_TRUE(result.isEmpty());
    EXPECT_TRUE(FailureOf({"in Playground", "answer form Other", "end", "trigger Form"})
                    .contains("expected the dialog 'Other', not 'Options'"));
    EXPECT_EQ(QString("test.zorscript:3: no widget 'Nothing' in 'Options'"),
              FailureOf({"in Playground", "answer form Options", "click Nothing", "end", "trigger Form"}));
    EXPECT_TRUE(result.isEmpty());
}

TEST_F(ZORHostModalAnswererTest, TheTimeoutEndsTheScriptAlsoInAModalDialog)
{
    EXPECT_EQ(QString("test.zorscript:3: the script took longer than 0.2 s"),
              FailureOf({"in Playground", "timeout 0.2", "wait 100 rows _Table is 9"}));
    window.Add("Form", [this] {
        QDialog dialog(&window);
        dialog.setWindowTitle("Stuck");
        dialog.exec();
    });
    EXPECT_EQ(QString("test.zorscript:4: the script took longer than 0.2 s"),
              FailureOf({"in Playground", "timeout 0.2", "answer form Stuck", "wait 100 title is x", "end",
                         "trigger Form"}));
    EXPECT_EQ(nullptr, QApplication::activeModalWidget());
}

} // namespace
