#include "docks/ZORHostLineDock.h"

#include "docks/ZORHostLineFilter.h"
#include "docks/ZORHostLineModel.h"

#include <QAction>
#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeView>

#include <algorithm>

ZORHostLineDock::ZORHostLineDock(const QString& title, const QString& prefix, const QStringList& headers,
                                 int capacity, QWidget* parent)
    : QDockWidget(title, parent)
    , m_model(new ZORHostLineModel(headers, capacity, this))
    , m_filter(new ZORHostLineFilter(this))
{
    setObjectName(prefix + "Dock");
    auto* content = new QWidget(this);
    content->setObjectName(prefix + "DockContents");
    setWidget(content);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(6, 6, 6, 6);
    column->setSpacing(6);
    auto* row = new QHBoxLayout;
    column->addLayout(row);
    m_controls = new QHBoxLayout;
    row->addLayout(m_controls);

    m_filterEdit = new QLineEdit(content);
    m_filterEdit->setObjectName(prefix + "FilterEdit");
    m_filterEdit->setPlaceholderText(tr("Filter"));
    m_filterEdit->setAccessibleName(tr("Filter of %1").arg(title));
    m_filterEdit->setClearButtonEnabled(true);
    m_filterEdit->setMinimumWidth(fontMetrics().averageCharWidth() * 10);
    row->addWidget(m_filterEdit, 1);
    auto* copy = new QPushButton(tr("Copy"), content);
    copy->setObjectName(prefix + "CopyBtn");
    copy->setToolTip(tr("Copies the selected lines, or all visible ones"));
    row->addWidget(copy);
    auto* clear = new QPushButton(tr("Clear"), content);
    clear->setObjectName(prefix + "ClearBtn");
    clear->setToolTip(tr("Removes all lines"));
    row->addWidget(clear);

    for (QPushButton* button : {copy, clear})
        button->setMinimumWidth(fontMetrics().averageCharWidth() * 8);

    m_filter->setSourceModel(m_model);
    m_table = new QTreeView(content);
    m_table->setObjectName(prefix + "Table");
    m_table->setAccessibleName(title);
    m_table->setModel(m_filter);
    m_table->setRootIsDecorated(false);
    m_table->setUniformRowHeights(true);
    m_table->setAlternatingRowColors(true);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_table->header()->setFont(font());
    m_table->header()->setStretchLastSection(true);
    m_table->setMinimumHeight(m_table->fontMetrics().height()
                              * 2); // on small screens the view needs the room
    column->addWidget(m_table);
    auto* copyAction = new QAction(tr("Copy"), m_table);
    copyAction->setObjectName(prefix + "CopyAction");
    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(copyAction);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);

    connect(m_filterEdit, &QLineEdit::textChanged, m_filter, &ZORHostLineFilter::SetText);
    connect(copy, &QPushButton::clicked, this, &ZORHostLineDock::OnCopyClicked);
    connect(copyAction, &QAction::triggered, this, &ZORHostLineDock::OnCopyClicked);
    connect(clear, &QPushButton::clicked, this, &ZORHostLineDock::OnClearClicked);
    // Whether the end is in view has to be known before the rows come.
    connect(m_filter, &QAbstractItemModel::rowsAboutToBeInserted, this, [this] {
        const QScrollBar* bar = m_table->verticalScrollBar();
        m_table->setProperty("atEnd", bar->value() == bar->maximum());
    });
    connect(m_filter, &QAbstractItemModel::rowsInserted, this, [this] {
        if (m_table->property("atEnd").toBool())
            m_table->scrollToBottom();
    });
}

void ZORHostLineDock::InsertHint(QWidget* hint)
{
    auto* const column = static_cast<QVBoxLayout*>(widget()->layout());
    column->insertWidget(column->indexOf(m_table), hint);
}

void ZORHostLineDock::OnCopyClicked()
{
    QModelIndexList rows = m_table->selectionModel()->selectedRows();
    if (rows.isEmpty()) {
        for (int row = 0; row < m_filter->rowCount(); ++row)
            rows.append(m_filter->index(row, 0));
    }
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex& row : std::as_const(rows))
        lines.append(m_model->GetLine(m_filter->mapToSource(row).row()).cells.join(u'\t'));
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

void ZORHostLineDock::OnClearClicked()
{
    m_model->Clear();
}
