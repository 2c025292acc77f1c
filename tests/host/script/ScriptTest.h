// A window with one of everything a script can drive, and scripts that drive it.

#pragma once

#include "HostTest.h"
#include "script/ZORHostScriptRunner.h"
#include "view/ZORHostView3D.h"

#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableView>

/// A window with one of everything a script can drive.
class Playground : public QMainWindow
{
public:
    Playground()
    {
        setObjectName("Playground");
        setWindowTitle("Play Ground");
        auto* central = new QWidget(this);
        setCentralWidget(central);
        auto* form = new QFormLayout(central);
        auto* combo = Named(new QComboBox, "_Combo");
        combo->addItems({"one", "two", "three"});
        form->addRow("&Number: ", combo);
        form->addRow("Check", Named(new QCheckBox("Option A"), "_Check"));
        form->addRow("Radio", Named(new QRadioButton("Choice B"), "_Radio"));
        form->addRow("Spin", Named(new QSpinBox, "_Spin"));
        form->addRow("Double", Named(new QDoubleSpinBox, "_Double"));
        form->addRow("Edit", Named(new QLineEdit, "_Edit"));
        auto* disabled = Named(new QLineEdit, "_Disabled");
        disabled->setEnabled(false);
        form->addRow("Disabled", disabled);
        auto* tabs = Named(new QTabWidget, "_Tabs");
        tabs->addTab(new QWidget, "First");
        tabs->addTab(new QWidget, "Second");
        form->addRow(tabs);
        table = Named(new QTableView, "_Table");
        model.setHorizontalHeaderLabels({"Name", "Count"});
        for (const char* name : {"alpha", "beta", "gamma"})
            AddRow(QString::fromLatin1(name));
        table->setModel(&model);
        form->addRow(table);
        button = Named(new QPushButton("&Press"), "_Button");
        form->addRow(button);
        menu = menuBar()->addMenu("&Menu");
        resize(400, 700);
        show();
    }
    template<class Widget>
    Widget* Named(Widget* widget, const char* name)
    {
        widget->setObjectName(QString::fromLatin1(name));
        return widget;
    }
    void AddRow(const QString& name)
    {
        model.appendRow({new QStandardItem(name), new QStandardItem(QString::number(model.rowCount()))});
    }
    QAction* Add(const QString& text, const std::function<void()>& body)
    {
        QAction* action = menu->addAction(text);
        QObject::connect(action, &QAction::triggered, this, body);
        return action;
    }

    QStandardItemModel model;
    QTableView* table;
    QPushButton* button;
    QMenu* menu;
};

class ScriptTest : public HostTest
{
public:
    /// Plays the lines and waits for the end.
    bool Play(const QStringList& lines)
    {
        QBuffer out;
        out.open(QIODevice::WriteOnly);
        ZORHostScriptRunner runner(&view, &out);
        runner.SetVariable("OUT", GetPath("out"));
        for (auto variable = variables.cbegin(); variable != variables.cend(); ++variable)
            runner.SetVariable(variable.key(), variable.value());
        bool success = false;
        bool finished = false;
        QObject::connect(&runner, &ZORHostScriptRunner::Finished, &runner, [&](bool result) {
            success = result;
            finished = true;
        });
        runner.Start(ZORHostScript::Parse(lines.join('\n'), "test.zorscript"));
        EXPECT_TRUE(QTest::qWaitFor([&finished] { return finished; }, 60'000));
        failures = runner.GetFailures();
        report = QString::fromUtf8(out.data());
        return success;
    }
    /// Plays lines that have to fail with exactly one message, and returns that.
    QString FailureOf(const QStringList& lines)
    {
        EXPECT_FALSE(Play(lines));
        EXPECT_EQ(1, failures.size()) << failures.join('\n').toStdString();
        return failures.value(0);
    }

    ZORHostView3D view;
    Playground window;
    QHash<QString, QString> variables;
    QStringList failures;
    QString report;
};
