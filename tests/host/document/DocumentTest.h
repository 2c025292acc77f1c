// Fixture of the tests of documents: a main window whose dialogs are answered.

#pragma once

#include "HostTest.h"
#include "docks/ZORHostLineQueue.h"
#include "document/ZORHostDocument.h"
#include "document/ZORHostDocumentCommands.h"
#include "plugins/ZORHostPluginManager.h"
#include "support/DialogAnswerer.h"
#include "support/FileContent.h"
#include "support/MessageBoxCatcher.h"
#include "window/ZORHostMainWindow.h"

#include <ZORFeature/ZORFeatContainer.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QTimer>

class DocumentTest : public HostTest
{
protected:
    DocumentTest() { window.show(); }

    ZORHostDocumentCommands& GetCommands() { return *window.GetDocumentCommands(); }
    ZORHostDocument& GetDocument() { return *GetCommands().GetDocument(); }
    int CountGeometries() const { return GetEnvironment()->GetContainer()->GetNumGeometry(); }
    void Trigger(const char* action) { window.findChild<QAction*>(QLatin1String(action))->trigger(); }
    /// Saves a new document under a name of the temporary folder.
    QString SaveAs(const QString& name)
    {
        answers.AnswerFile(GetPath(name));
        EXPECT_TRUE(GetCommands().SaveAs());
        return GetPath(name);
    }
    /// Presses the button of that text in the next message box.
    static void PressText(const QString& text)
    {
        QTimer::singleShot(0, qApp, [text] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(nullptr, box);
            for (QAbstractButton* button : box->buttons()) {
                if (button->text().remove(u'&') == text) {
                    button->click();
                    return;
                }
            }
            ADD_FAILURE() << "no button " << text.toStdString();
        });
    }

    MessageBoxCatcher boxes;
    DialogAnswerer answers;
    ZORHostLineQueue log{100};
    ZORHostPluginManager plugins;
    ZORHostMainWindow window{&plugins, &log};
};
