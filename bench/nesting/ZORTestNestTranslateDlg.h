// Test dialog "Translate for Nesting".

#pragma once

#include "core/ZORTestDialog.h"

#include <QList>
#include <QString>

#include <memory>

class ZORNestTranslationProcessor;
class ZORNestTranslationResponse;
namespace Ui {
class ZORTestNestTranslateDlg;
}

/// Translates source files into part files for nesting and copies those into a directory.
///
/// Files. Every file of the list is a job of the provider that is chosen when "Translate" is pressed. Its
/// part files are copied under names that are free; files that are there already stay. Progress. One step a
/// job, whether it succeeds or fails; a message tells when all are done. The log tells why a job has failed.
/// Closing.   OK and Cancel do the same: they end the dialog and what it still translates.
class ZORTestNestTranslateDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Translate for Nesting"))

public:
    Q_INVOKABLE explicit ZORTestNestTranslateDlg(ZORTestEnvironment* environment);
    ~ZORTestNestTranslateDlg() override;

    bool Apply() override;

public slots:
    void OnAddClicked();
    void OnRemoveClicked();
    void OnTranslateClicked();
    /// To be connected to the status of the job of a response, which is the sender.
    void OnStatusUpdated();

private:
    const std::unique_ptr<Ui::ZORTestNestTranslateDlg> m_ui;
    const std::unique_ptr<ZORNestTranslationProcessor> m_processor;
    QString m_outputDirectory;
    QList<ZORNestTranslationResponse*> m_responses; // of the last batch, in the order of the list; not owned
};
