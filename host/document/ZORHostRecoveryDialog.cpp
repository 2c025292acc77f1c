#include "document/ZORHostRecoveryDialog.h"

#include "document/ZORHostDocumentCommands.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

ZORHostRecoveryDialog::ZORHostRecoveryDialog(const QList<ZORHostRescue::Entry>& entries,
                                             ZORHostDocumentCommands* commands, QWidget* parent)
    : QDialog(parent)
    , m_entries(entries)
    , m_commands(commands)
{
    setObjectName("_RecoveryDialog");
    setWindowTitle(tr("Recover Documents"));
    auto* column = new QVBoxLayout(this);
    auto* text = new QLabel(
        tr("These documents have unsaved changes from sessions that ended unexpectedly. The files that "
           "they belong to are unchanged."),
        this);
    text->setObjectName("_RecoveryLbl");
    text->setWordWrap(true);
    column->addWidget(text);
    m_table = new QTableWidget(0, 3, this);
    m_table->setObjectName("_RecoveryTable");
    m_table->setAccessibleName(tr("Documents that can be recovered"));
    m_table->setHorizontalHeaderLabels({tr("Document"), tr("Saved"), tr("Size")});
    m_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    column->addWidget(m_table);
    auto* buttons = new QDialogButtonBox(this);
    m_recoverBtn = buttons->addButton(tr("&Recover"), QDialogButtonBox::AcceptRole);
    m_recoverBtn->setObjectName("_RecoverBtn");
    m_recoverBtn->setToolTip(tr("Opens the document; its file is written only when you save it"));
    m_recoverBtn->setDefault(true);
    m_discardBtn = buttons->addButton(tr("&Discard"), QDialogButtonBox::DestructiveRole);
    m_discardBtn->setObjectName("_DiscardBtn");
    m_discardBtn->setToolTip(tr("Removes the unsaved changes for good"));
    QPushButton* later = buttons->addButton(tr("&Later"), QDialogButtonBox::RejectRole);
    later->setObjectName("_LaterBtn");
    later->setToolTip(tr("Leaves everything as it is; File > Recover Documents shows the list again"));
    column->addWidget(buttons);
    connect(m_recoverBtn, &QPushButton::clicked, this, &ZORHostRecoveryDialog::OnRecoverClicked);
    connect(m_discardBtn, &QPushButton::clicked, this, &ZORHostRecoveryDialog::OnDiscardClicked);
    connect(later, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_table, &QTableWidget::doubleClicked, this, &ZORHostRecoveryDialog::OnRecoverClicked);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &ZORHostRecoveryDialog::UpdateButtons);
    resize(560, 320);
    Fill();
}

void ZORHostRecoveryDialog::Fill()
{
    m_table->setRowCount(int(m_entries.size()));
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const ZORHostRescue::Entry& entry = m_entries[row];
        const bool isUntitled = entry.document.isEmpty();
        auto* name = new QTableWidgetItem(isUntitled ? tr("Untitled") : QFileInfo(entry.document).fileName());
        name->setToolTip(
            ZORCmnPlainText::ToToolTip(QDir::toNativeSeparators(isUntitled ? entry.path : entry.document)));
        m_table->setItem(row, 0, name);
        m_table->setItem(row, 1, new QTableWidgetItem(QLocale().toString(entry.time, QLocale::ShortFormat)));
        m_table->setItem(row, 2,
                         new QTableWidgetItem(ZORSysMemory::FormatSize(QFileInfo(entry.path).size())));
    }
    m_table->resizeColumnsToContents();
    if (!m_entries.isEmpty())
        m_table->selectRow(0);
    UpdateButtons();
}

void ZORHostRecoveryDialog::UpdateButtons()
{
    const qsizetype count = m_table->selectionModel()->selectedRows().size();
    m_recoverBtn->setEnabled(count == 1);
    m_discardBtn->setEnabled(count > 0);
}

void ZORHostRecoveryDialog::OnRecoverClicked()
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    if (rows.size() == 1 && m_commands->Recover(m_entries[rows.constFirst().row()]))
        accept();
}

void ZORHostRecoveryDialog::OnDiscardClicked()
{
    QList<int> rows;
    for (const QModelIndex& index : m_table->selectionModel()->selectedRows())
        rows.append(index.row());
    const auto answer = ZORCmnPlainText::ShowBox(
        QMessageBox::Question, this, tr("Discard Documents"),
        tr("Remove the unsaved changes of %n document(s) for good?", nullptr, int(rows.size())),
        QMessageBox::Discard | QMessageBox::Cancel);
    if (answer != QMessageBox::Discard)
        return;
    std::sort(rows.begin(), rows.end(), std::greater<>());
    for (const int row : std::as_const(rows))
        ZORHostRescue::Discard(m_entries.takeAt(row));
    Fill();
    if (m_entries.isEmpty())
        accept();
}
