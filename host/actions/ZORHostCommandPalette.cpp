#include "actions/ZORHostCommandPalette.h"

#include <ZORCommand/ZORCmdController.h>

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

/// Smaller is better; negative: no hit.
int Rank(const ZORHostActionEntry& entry, const QString& query, const QStringList& words)
{
    for (const QString& word : words) {
        if (!entry.text.contains(word, Qt::CaseInsensitive)
            && !entry.path.contains(word, Qt::CaseInsensitive))
            return -1;
    }
    if (entry.text.startsWith(query, Qt::CaseInsensitive))
        return 0;
    return entry.text.contains(query, Qt::CaseInsensitive) ? 1 : 2;
}

/// The index of the entry that a row shows.
int GetIndex(const QTreeWidgetItem* item)
{
    return item->data(0, Qt::UserRole).toInt();
}

} // namespace

ZORHostCommandPalette::ZORHostCommandPalette(QWidget* parent)
    : QDialog(parent)
{
    setObjectName("_CommandPalette");
    setWindowTitle(tr("Command Palette"));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(620, 420);

    auto* column = new QVBoxLayout(this);
    m_edit = new QLineEdit(this);
    m_edit->setObjectName("_PaletteEdit");
    m_edit->setPlaceholderText(tr("Type a part of a command"));
    m_edit->setAccessibleName(tr("Command"));
    m_edit->installEventFilter(this);
    column->addWidget(m_edit);
    m_list = new QTreeWidget(this);
    m_list->setObjectName("_PaletteList");
    m_list->setAccessibleName(tr("Commands"));
    m_list->setColumnCount(3);
    m_list->setHeaderLabels({tr("Command"), tr("Menu"), tr("Shortcut")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    m_list->header()->setStretchLastSection(false);
    column->addWidget(m_list);

    connect(m_edit, &QLineEdit::textChanged, this, &ZORHostCommandPalette::Refresh);
    connect(m_edit, &QLineEdit::returnPressed, this, &ZORHostCommandPalette::TriggerCurrent);
    connect(m_list, &QTreeWidget::itemActivated, this, &ZORHostCommandPalette::TriggerCurrent);
    // Later than the menus, in which the action is to be found.
    connect(ZORCmdController::GetController(), &ZORCmdController::ActionPublished, this,
            &ZORHostCommandPalette::Reload, Qt::QueuedConnection);
    Reload();
}

void ZORHostCommandPalette::Reload()
{
    m_entries = ZORHostCollectActions();
    m_entries.removeIf([](const ZORHostActionEntry& entry) { return !entry.IsTriggerable(); });
    for (const ZORHostActionEntry& entry : std::as_const(m_entries))
        connect(entry.action, &QObject::destroyed, this, &ZORHostCommandPalette::RemoveGone,
                Qt::UniqueConnection);
    Refresh();
}

void ZORHostCommandPalette::Refresh()
{
    const QString query = m_edit->text().trimmed();
    const QStringList words = query.split(u' ', Qt::SkipEmptyParts);
    QList<std::pair<int, int>> hits; // rank, index
    for (int i = 0; i < m_entries.size(); ++i) {
        const int rank = Rank(m_entries[i], query, words);
        if (rank >= 0)
            hits.append({rank, i});
    }
    std::sort(hits.begin(), hits.end());
    m_list->clear();
    for (const auto& [rank, index] : std::as_const(hits)) {
        const ZORHostActionEntry& entry = m_entries[index];
        if (!entry.action)
            continue; // its window has closed meanwhile
        auto* item = new QTreeWidgetItem(
            m_list, {entry.text, entry.path, entry.action->shortcut().toString(QKeySequence::NativeText)});
        item->setIcon(0, entry.action->icon());
        item->setToolTip(1, entry.path);
        item->setData(0, Qt::UserRole, index);
    }
    m_list->setCurrentItem(m_list->topLevelItem(0));
}

void ZORHostCommandPalette::RemoveGone()
{
    for (int row = m_list->topLevelItemCount() - 1; row >= 0; --row) {
        if (!m_entries[GetIndex(m_list->topLevelItem(row))].action)
            delete m_list->takeTopLevelItem(row);
    }
}

void ZORHostCommandPalette::TriggerCurrent()
{
    const QTreeWidgetItem* item = m_list->currentItem();
    if (!item)
        return;
    const QPointer<QAction> action = m_entries[GetIndex(item)].action;
    close();
    if (action)
        action->trigger();
}

bool ZORHostCommandPalette::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_edit && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            // The list is steered from the line edit, which keeps the focus.
            QApplication::sendEvent(m_list, event);
            return true;
        default:
            break;
        }
    }
    return QDialog::eventFilter(watched, event);
}
