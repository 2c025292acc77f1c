// The translation dialog with providers, files and folders.

#pragma once

#include "nesting/ZORTestNestTranslateDlg.h"
#include "support/BenchTest.h"
#include "support/ItemTexts.h"

#include <ZORNesting/ZORNestDebugOptions.h>
#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORWorker/ZORWorkContext.h>

#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QListWidget>
#include <QProgressBar>
#include <QSemaphore>
#include <QTest>

constexpr int kPatience = 30000; // ms until a test gives up

/// Translates a file when it is let go, into one part with the file's name.
class GateProvider final : public ZORNestSourceProvider
{
public:
    GateProvider()
        : ZORNestSourceProvider("gate")
    {
        RegisterProvider(this);
    }

    QString GetDisplayName() const override { return "Gate"; }
    void LetGo(int count) { m_semaphore.release(count); }
    QList<ZORNestResult> Translate(const QString& path, const ZORNestTranslationInput& /*input*/,
                                   const ZORWorkContext& context, QStringList* /*report*/) const override
    {
        while (!m_semaphore.tryAcquire(1, 1))
            context.ThrowIfCanceled();
        ZORNestResult result(ZORNestResult::Translation);
        result.AddItem(ZORNestResultItem(QFileInfo(path).completeBaseName()));
        return {result};
    }

private:
    mutable QSemaphore m_semaphore;
};

/// Work directories lie in the folder "work" of the test.
class TranslateDlgTest : public BenchTest
{
protected:
    TranslateDlgTest()
        : m_formerTemporary(qgetenv("TMPDIR"))
    {
        QDir().mkpath(GetPath("out"));
        QDir().mkpath(GetPath("work"));
        qputenv("TMPDIR", GetPath("work").toUtf8());
    }
    ~TranslateDlgTest() override
    {
        delete dialog;
        ZORNestDebugOptions::GetInstance()->SetKeepTranslationWorkDirectories(false);
        if (m_formerTemporary.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", m_formerTemporary);
    }

    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestNestTranslateDlg")); }
    QString Write(const QString& name, const QByteArray& content)
    {
        QFile file(GetPath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    static QByteArray Item(const QByteArray& name)
    {
        return "{\"name\": \"" + name
               + R"(", "shape": {"type": "simple_polygon", "data": [[0, 0], [4, 0], [4, 3]]}})";
    }
    /// A source of the provider "nesting-json" with parts of these names.
    QString WriteSource(const QString& name, const QList<QByteArray>& parts)
    {
        QByteArray items;
        for (const QByteArray& part : parts)
            items += (items.isEmpty() ? "" : ",") + Item(part);
        return Write(name, "{\"items\": [" + items + "]}");
    }
    QListWidget* List() const { return dialog->findChild<QListWidget*>("_FileList"); }
    QProgressBar* Bar() const { return dialog->findChild<QProgressBar*>("_ProgBar"); }
    QComboBox* Combo() const { return dialog->findChild<QComboBox*>("_ProviderCombo"); }
    QStringList Entries() const { return GetTexts(List()); }
    void Add(const QString& path)
    {
        answers.AnswerFile(path);
        Click("_AddBtn", dialog);
    }
    void Translate(const char* provider = "nesting-json")
    {
        Combo()->setCurrentIndex(Combo()->findData(QByteArray(provider)));
        answers.AnswerFile(GetPath("out"));
        Click("_TranslateBtn", dialog);
    }
    bool WaitForBox()
    {
        const bool isThere =
            QTest::qWaitFor([this] { return Bar()->value() == Bar()->maximum(); }, kPatience);
        const QList<MessageBoxCatcher::Box> shown = boxes.Take();
        EXPECT_EQ(1, shown.size());
        if (shown.isEmpty())
            return false;
        EXPECT_EQ(QMessageBox::Information, shown[0].icon);
        EXPECT_EQ("Finished", shown[0].title);
        EXPECT_EQ("Translation has finished", shown[0].text);
        EXPECT_EQ(QMessageBox::Ok, shown[0].buttons);
        EXPECT_EQ(dialog, shown[0].parent);
        return isThere;
    }
    QStringList GetOutput() const { return QDir(GetPath("out")).entryList(QDir::Files, QDir::Name); }
    /// The part files in the work directories, relative to the directory of their job.
    QStringList GetWorkParts() const
    {
        QStringList found;
        QDirIterator files(GetPath("work"), {"*.msi"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = QDir(GetPath("work")).relativeFilePath(files.next());
            const bool isInRoom = file.startsWith("zorjobs-"); // the folder of this process
            found.append(file.section('/', isInRoom ? 2 : 1));
        }
        return found;
    }
    /// The calls that pressing "Translate" makes until it returns.
    QStringList TraceTranslate(const char* provider = "nesting-json")
    {
        return TraceCalls([&] { Translate(provider); });
    }

    GateProvider gate; // outlives the dialog

private:
    const QByteArray m_formerTemporary;
};
