#!/usr/bin/env python3
"""Tests of tools/check_translations.py: every rule finds its violation, and a clean tree passes.

    check_translations_test.py <lupdate>
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECKER = pathlib.Path(__file__).resolve().parents[2] / "tools" / "check_translations.py"
LUPDATE = sys.argv.pop()

CLEAN = {
    # The word "class" in a comment is not a class.
    "sdk/ZORSystem/ZORSysA.h": """
        /// Of a class that translates.
        class ZORSYSTEM_EXPORT ZORSysA
        {
            Q_DECLARE_TR_FUNCTIONS(ZORSysA)
        public:
            QString Get() const;
        };
        """,
    "sdk/ZORSystem/ZORSysA.cpp": r"""
        #include "ZORSysA.h"
        static QString Name() { return ZORSysA::tr("caf\u00e9 'a' \"b\""); }
        // tr("in a comment")
        QString ZORSysA::Get() const { return tr("in two " "pieces") + tr("a") + tr("a"); }
        """,
    "host/ZORHostB.h": """
        class ZORHostB : public QMainWindow
        {
            Q_OBJECT
            Q_CLASSINFO("label", QT_TR_NOOP("Title"))
            Q_CLASSINFO("other", "no text")
        };
        """,
    "host/ZORHostB.cpp": """
        #include "ZORHostB.h"
        static const char* const names[] = {QT_TRANSLATE_NOOP("ZORHostB", "of a table")};
        void ZORHostB::Check(const char* text) { Show(tr(text)); }
        void ZORHostB::Run(QPainter& painter)
        {
            Check(QT_TR_NOOP("passed on"));
            Show(tr(names[0]));
            painter.translate(1, 2);
            setText(QStringLiteral("%1 (%2)"));
            setText(settings.value("key"));
            setText(kind == QLatin1String("Length") ? tr("a") : other);
            setWindowTitle(QCoreApplication::translate(metaObject()->className(), title));
        }
        """,
    "host/ZORHostB.ui": """<?xml version="1.0" encoding="UTF-8"?>
        <ui version="4.0"><class>ZORHostC</class><widget class="QWidget" name="ZORHostC">
        <property name="windowTitle"><string>Form</string></property>
        <property name="toolTip"><string notr="true">raw</string></property></widget></ui>
        """,
}


def run(changes):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in {**CLEAN, **changes}.items():
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text.strip() + "\n")
        command = [sys.executable, CHECKER, folder, LUPDATE]
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        return result.returncode, result.stdout + result.stderr


class CheckTranslationsTest(unittest.TestCase):
    def test_clean_tree_passes(self):
        self.assertEqual((0, "8 texts are marked, lupdate finds 8 in 3 classes\n"), run({}))

    def assert_found(self, text, message, name="host/ZORHostD.cpp"):
        code, output = run({name: text})
        self.assertEqual(1, code, output)
        self.assertIn(message, output)

    def test_literal_context(self):
        text = 'QString Name() { return QCoreApplication::translate("ZORHostB", "text"); }'
        self.assert_found(text, "host/ZORHostD.cpp:1: a text belongs to the tr() of its class")

    def test_helper_that_translates(self):
        text = """
            #include "ZORHostB.h"
            static const char* const marked = QT_TRANSLATE_NOOP("ZORHostB", "marked");
            static QString Tr(int, const char* text) { return ZORHostB::tr(text); }
            static QString Name() { return Tr(1, "hidden") + Tr(1, marked); }
            """
        self.assert_found(text, "ZORHostD.cpp:4: Tr() translates this text, so it needs QT_TR_NOOP()")

    def test_table_without_marks(self):
        text = '#include "ZORHostB.h"\nstatic QString Name(int i) { return ZORHostB::tr(names[i]); }'
        self.assert_found(text, "ZORHostD.cpp:2: nothing marks the texts of tr(names [ i ])")

    def test_choice_within_tr(self):
        text = 'static QString Name(bool on) { return ZORHostB::tr(on ? "on" : "off"); }'
        self.assert_found('#include "ZORHostB.h"\n' + text, "ZORHostD.cpp:2: the text of tr() is one literal")

    def test_text_that_lupdate_misses(self):
        text = """
            #include "ZORHostB.h"
            using Alias = ZORHostB;
            QString Alias::Name() { return tr("hidden"); }
            """
        self.assert_found(text, "ZORHostD.cpp:3: lupdate does not find 'hidden'")

    def test_warning_of_lupdate(self):
        text = 'class Plain { QString Name() { return tr("text"); } };'
        self.assert_found(text, "Class 'Plain' lacks Q_OBJECT macro")

    def test_unknown_context(self):
        text = 'static const char* const name = QT_TRANSLATE_NOOP("ZORHostX", "text");'
        self.assert_found(text, "host/ZORHostD.cpp: no class of the context 'ZORHostX' has tr()")

    def test_title_without_mark(self):
        text = 'class ZORHostD : public QDialog { Q_OBJECT\n Q_CLASSINFO("label", "Title") };'
        self.assert_found(text, 'ZORHostD.h:2: the class information "label" is a title', "host/ZORHostD.h")

    def test_shown_text_without_mark(self):
        for text in (
            'label->setText("Name");',
            'new QLabel(QStringLiteral("Name: %1").arg(1));',
            'menu->addAction("&Open", this);',
            'QMessageBox::critical(w, "Error", message);',
            'QInputDialog::getItem(w, "Title", tr("a"), items);',
            'QFileDialog::getOpenFileName(w, "Open the file");',
            'combo->addItem("First choice");',
            'tabs->setTabText(0, "Page one");',
            'throw ZORSysException("plain text of an error");',
            'tree->setHeaderLabels({tr("a"), "One thing"});',
            'label->setText(name + " parts are left");',
        ):
            with self.subTest(text):
                self.assert_found(f"void Run() {{ {text} }}", "shows a text that is not marked")


if __name__ == "__main__":
    unittest.main()
