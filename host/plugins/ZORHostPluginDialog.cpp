#include "plugins/ZORHostPluginDialog.h"

#include "plugins/ZORHostPluginManager.h"

#include <ZORCommonUI/ZORCmnPlainText.h>

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int kPathColumn = 4;

QString StateText(ZORHostPlugin::State state)
{
    switch (state) {
    case ZORHostPlugin::State::Loaded:
        return ZORHostPluginDialog::tr("Loaded");
    case ZORHostPlugin::State::Unloaded:
        return ZORHostPluginDialog::tr("Unloaded");
    case ZORHostPlugin::State::Failed:
        break;
    }
    return ZORHostPluginDialog::tr("Not loaded");
}

/// Lists the folders of the search path.
QLabel* MakePathLabel(QWidget* parent)
{
    QStringList folders;
    const QStringList searchPath = ZORHostPluginManager::GetSearchPath();
    for (const QString& folder : searchPath) {
        const QString shown = QDir::toNativeSeparators(folder);
        folders.append(QDir(folder).exists() ? shown
                                             : ZORHostPluginDialog::tr("%1 (does not exist)").arg(shown));
    }
    auto* path =
        new QLabel(ZORHostPluginDialog::tr(
                       "Folders that are searched (more with the environment variable ZOR_PLUGIN_PATH):")
                       + u'\n' + folders.join(u'\n'),
                   parent);
    path->setObjectName("_PluginPathLbl");
    path->setTextFormat(Qt::PlainText);
    path->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    path->setWordWrap(true);
    return path;
}

} // namespace

ZORHostPluginDialog::ZORHostPluginDialog(ZORHostPluginManager* manager, QWidget* parent)
    : QDialog(parent)
    , m_manager(manager)
{
    setObjectName("_PluginDialog");
    setWindowTitle(tr("Plug-ins"));
    resize(860, 420);
    auto* column = new QVBoxLayout(this);

    m_table = new QTableWidget(0, kPathColumn + 1, this);
    m_table->setObjectName("_PluginTable");
    m_table->setAccessibleName(tr("Plug-ins"));
    m_table->setHorizontalHeaderLabels({tr("Name"), tr("Version"), tr("State"), tr("Reason"), tr("Path")});
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->setWordWrap(true);
    m_table->verticalHeader()->hide();
    m_table->viewport()->installEventFilter(this);
    column->addWidget(m_table);

    column->addWidget(MakePathLabel(this));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->setObjectName("_ButtonBox");
    QPushButton* loadBtn = buttons->addButton(tr("&Load..."), QDialogButtonBox::ActionRole);
    loadBtn->setObjectName("_PluginLoadBtn");
    m_unloadBtn = buttons->addButton(tr("&Unload"), QDialogButtonBox::ActionRole);
    m_unloadBtn->setObjectName("_PluginUnloadBtn");
    loadBtn->setAutoDefault(false);
    m_unloadBtn->setAutoDefault(false);
    column->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(loadBtn, &QPushButton::clicked, this, &ZORHostPluginDialog::OnLoadClicked);
    connect(m_unloadBtn, &QPushButton::clicked, this, &ZORHostPluginDialog::OnUnloadClicked);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &ZORHostPluginDialog::UpdateButtons);
    connect(manager, &ZORHostPluginManager::Changed, this, &ZORHostPluginDialog::Refresh);
    Refresh();
}

void ZORHostPluginDialog::Refresh()
{
    const QString selected = GetSelectedPath();
    const QList<ZORHostPlugin>& plugins = m_manager->GetPlugins();
    m_table->setRowCount(int(plugins.size()));
    for (int row = 0; row < plugins.size(); ++row) {
        const ZORHostPlugin& plugin = plugins[row];
        const QString path = QDir::toNativeSeparators(plugin.path);
        const QStringList cells = {plugin.name, plugin.version, StateText(plugin.state), plugin.reason, path};
        for (int cell = 0; cell < cells.size(); ++cell) {
            auto* item = new QTableWidgetItem(cells[cell]);
            item->setToolTip(ZORCmnPlainText::ToToolTip(cells[cell]));
            m_table->setItem(row, cell, item);
        }
        if (plugin.path == selected)
            m_table->selectRow(row);
    }
    m_table->resizeColumnsToContents();
    constexpr int kReasonColumn = kPathColumn - 1;
    m_table->setColumnWidth(kReasonColumn, std::min(m_table->columnWidth(kReasonColumn), 360));
    m_table->resizeRowsToContents();
    FitPathColumn();
    UpdateButtons();
}

// A stretched section would be as wide as its text or as the rest of the table, depending on what came last.
void ZORHostPluginDialog::FitPathColumn()
{
    m_table->resizeColumnToContents(kPathColumn);
    const int contents = m_table->columnWidth(kPathColumn);
    const int others = m_table->horizontalHeader()->length() - contents;
    m_table->setColumnWidth(kPathColumn, std::max(contents, m_table->viewport()->width() - others));
}

bool ZORHostPluginDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_table->viewport() && event->type() == QEvent::Resize)
        FitPathColumn();
    return QDialog::eventFilter(watched, event);
}

QString ZORHostPluginDialog::GetSelectedPath() const
{
    const int row = m_table->currentRow();
    return row >= 0 && row < m_manager->GetPlugins().size() ? m_manager->GetPlugins()[row].path : QString();
}

void ZORHostPluginDialog::UpdateButtons()
{
    const int row = m_table->currentRow();
    const QList<ZORHostPlugin>& plugins = m_manager->GetPlugins();
    m_unloadBtn->setEnabled(row >= 0 && row < plugins.size()
                            && plugins[row].state == ZORHostPlugin::State::Loaded);
}

void ZORHostPluginDialog::OnLoadClicked()
{
    const QString file = QFileDialog::getOpenFileName(this, tr("Load Plug-in"), QString(),
                                                      tr("Plug-ins (*.so);;All files (*)"));
    if (!file.isEmpty())
        m_manager->Load(file);
}

void ZORHostPluginDialog::OnUnloadClicked()
{
    const QString path = GetSelectedPath();
    if (!path.isEmpty())
        m_manager->Unload(path);
}
