#include "docks/ZORHostLogDock.h"

#include "docks/ZORHostLineFilter.h"
#include "docks/ZORHostLineModel.h"
#include "docks/ZORHostLineQueue.h"
#include "docks/ZORHostLog.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QTreeView>

namespace {

constexpr int kCategoryColumn = 2;

} // namespace

ZORHostLogDock::ZORHostLogDock(ZORHostLineQueue* queue, QWidget* parent)
    : ZORHostLineDock(tr("Log"), "_Log", {tr("Time"), tr("Level"), tr("Category"), tr("Message")},
                      ZORHostLog::kCapacity, parent)
{
    m_levelCombo = new QComboBox(this);
    m_levelCombo->setObjectName("_LogLevelCombo");
    m_levelCombo->setAccessibleName(tr("Least level"));
    m_levelCombo->setToolTip(tr("Shows messages of this level and above"));
    m_levelCombo->addItem(tr("All levels"), ZORHostLog::Debug);
    m_levelCombo->addItem(tr("Info and above"), ZORHostLog::Info);
    m_levelCombo->addItem(tr("Warnings and errors"), ZORHostLog::Warning);
    m_levelCombo->addItem(tr("Errors"), ZORHostLog::Critical);
    GetControls()->addWidget(m_levelCombo);

    m_categoryCombo = new QComboBox(this);
    m_categoryCombo->setObjectName("_LogCategoryCombo");
    m_categoryCombo->setAccessibleName(tr("Category"));
    m_categoryCombo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_categoryCombo->addItem(tr("All categories"));
    GetControls()->addWidget(m_categoryCombo);

    // Beside the browser, on the narrowest screens.
    for (QComboBox* combo : {m_levelCombo, m_categoryCombo})
        combo->setMinimumWidth(fontMetrics().averageCharWidth() * 8);

    QHeaderView* header = GetTable()->header();
    const QFontMetrics metrics(GetTable()->font());
    header->resizeSection(0, metrics.horizontalAdvance("00:00:00.000  "));
    header->resizeSection(1, metrics.horizontalAdvance("Warning   "));
    header->resizeSection(kCategoryColumn, metrics.horizontalAdvance("zor.visualization  "));

    connect(m_levelCombo, &QComboBox::currentIndexChanged, this,
            [this] { GetFilter()->SetMinimumLevel(m_levelCombo->currentData().toInt()); });
    connect(m_categoryCombo, &QComboBox::currentIndexChanged, this, [this](int index) {
        GetFilter()->SetColumnValue(kCategoryColumn, index > 0 ? m_categoryCombo->currentText() : QString());
    });
    connect(queue, &ZORHostLineQueue::Delivered, this, &ZORHostLogDock::OnDelivered);
    queue->Flush();
}

void ZORHostLogDock::OnDelivered(const QList<ZORHostLine>& lines)
{
    for (const ZORHostLine& line : lines) {
        const QString category = line.cells.value(kCategoryColumn);
        if (!category.isEmpty() && m_categoryCombo->findText(category) < 0)
            m_categoryCombo->addItem(category);
    }
    GetModel()->Append(lines);
}
