// Test dialog "Nesting Test".

#pragma once

#include "core/ZORTestDialog.h"

#include <QList>

#include <memory>

class QAbstractButton;
class ZORNestNestingInput;
class ZORNestNestingInputItem;
class ZORNestNestingInputPackaging;
class ZORNestNestingProcessor;
namespace Ui {
class ZORTestNestNestingDlg;
}

/// Nests part files on sheets and rolls, and shows what came of it in a window of its own.
///
/// Tables.   They are the only store: a run reads its parts and sheets from their rows, and the part files
///           anew. Angles are in degrees here and in radians in the SDK and in the settings.
/// Runs.     Every "Compute" is a run of its own beside those that are not done. "Stop" and "Cancel" mean
///           all of them; "Cancel" and closing end the dialog and what it runs. Runs that complete open a
///           ZORTestNestNestingResultDlg, others show nothing.
/// Errors.   The slots throw when they are called; pressing a button shows the message instead.
///
/// Settings group "Debug/ZORTestNestNestingDlg": the material and the parameters of the last run, not the tables.
class ZORTestNestNestingDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Translate for Nesting"))

public:
    Q_INVOKABLE explicit ZORTestNestNestingDlg(ZORTestEnvironment* environment);
    ~ZORTestNestNestingDlg() override;

    bool Apply() override;

public slots: // their names and order are established
    /// Asks for part files and appends a row for each.
    /// \throws ZORSysFileOpenException for the first file that cannot be opened; those before it stay
    void OnAddItemClicked();
    void OnRemoveItemClicked();
    /// Asks for width and name of a roll and appends it. Cancelling a query gives 0 and an empty name.
    void OnAddPacakgeClicked();
    void OnRemovePackageClicked();
    /// Starts a run, and remembers its parameters.
    /// \throws ZORSysException "can't open file" for a part file; nothing is started then
    void OnComputeClicked();
    /// Lets every run end with the best that it has.
    void OnStopClicked();
    /// Gives up every run.
    void OnCancelClicked();
    /// \param ratio  0 to 1; the very beginning fills the bar
    void OnProgressUpdate(double ratio);
    /// To be connected to the status of a response, which is the sender.
    void OnStatusChange();

private:
    void Connect(const QAbstractButton* button, void (ZORTestNestNestingDlg::*slot)());
    void ReadSettings();
    void AppendItem(const ZORNestNestingInputItem& item, const QString& path);
    void AppendPackaging(const ZORNestNestingInputPackaging& packaging);
    ZORNestNestingInputItem GetItem(int row) const;
    ZORNestNestingInputPackaging GetPackaging(int row) const;
    ZORNestNestingInput GetInput(const QList<ZORNestNestingInputItem>& items,
                                 const QList<ZORNestNestingInputPackaging>& packagings) const;
    ZORNestNestingInput GetRememberedInput() const;

    const std::unique_ptr<Ui::ZORTestNestNestingDlg> m_ui;
    ZORNestNestingProcessor* const m_processor; // a child
};
