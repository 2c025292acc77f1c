#include "docks/ZORHostApiDock.h"

#include "docks/ZORHostLineModel.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>

ZORHostApiDock::ZORHostApiDock(QWidget* parent)
    : ZORHostLineDock(tr("API calls"), "_Api", {tr("Time"), tr("Call")}, kCapacity, parent)
    , m_queue(kCapacity)
{
    m_recordChk = new QCheckBox(tr("Record"), this);
    m_recordChk->setObjectName("_ApiRecordChk");
    m_recordChk->setToolTip(tr("Lists the calls into the SDK with their arguments"));
    GetControls()->addWidget(m_recordChk);
    m_hint = MakeHint();
    InsertHint(m_hint);
    connect(GetModel(), &QAbstractItemModel::rowsInserted, this, &ZORHostApiDock::UpdateHint);
    connect(GetModel(), &QAbstractItemModel::rowsRemoved, this, &ZORHostApiDock::UpdateHint);
    connect(GetModel(), &QAbstractItemModel::modelReset, this, &ZORHostApiDock::UpdateHint);
    GetTable()->header()->resizeSection(0, QFontMetrics(GetTable()->font()).horizontalAdvance("000.0 ms  "));

    connect(m_recordChk, &QCheckBox::toggled, this, &ZORHostApiDock::OnRecordToggled);
    connect(&m_queue, &ZORHostLineQueue::Delivered, this,
            [this](const QList<ZORHostLine>& lines) { GetModel()->Append(lines); });
    // Direct: the queue takes lines from any thread and needs no event a line.
    connect(
        ZORSysApiTrace::GetInstance(), &ZORSysApiTrace::CallTraced, this,
        [this](const QByteArray& line, qint64 nanoseconds) {
            m_queue.Add({0, {FormatDuration(nanoseconds), QString::fromUtf8(line)}});
        },
        Qt::DirectConnection);
}

ZORHostApiDock::~ZORHostApiDock()
{
    ZORSysApiTrace::GetInstance()->SetEnabled(false);
    ZORSysApiTrace::GetInstance()->disconnect(this);
}

void ZORHostApiDock::Flush()
{
    m_queue.Flush();
}

QString ZORHostApiDock::FormatDuration(qint64 nanoseconds)
{
    double value = double(nanoseconds);
    if (value < 1000)
        return QStringLiteral("%1 ns").arg(nanoseconds);
    const char* const units[] = {"ns", "\u00b5s", "ms", "s"};
    int unit = 0;
    // 999.5 would be shown as 1000.
    for (; value >= 999.5 && unit < 3; ++unit)
        value /= 1000;
    const int decimals = value < 9.995 ? 2 : value < 99.95 ? 1 : 0;
    return QString::number(value, 'f', decimals) + u' ' + QString::fromUtf8(units[unit]);
}

QWidget* ZORHostApiDock::MakeHint()
{
    auto* const hint = new QWidget(this);
    hint->setObjectName("_ApiHint");
    auto* const row = new QHBoxLayout(hint);
    row->setContentsMargins(0, 0, 0, 0);
    auto* const label = new QLabel(tr("Calls are not recorded."), hint);
    label->setObjectName("_ApiHintLbl");
    row->addWidget(label, 1);
    auto* const start = new QPushButton(tr("Start Recording"), hint);
    start->setObjectName("_ApiStartBtn");
    start->setToolTip(m_recordChk->toolTip());
    connect(start, &QPushButton::clicked, this, [this] {
        m_recordChk->setChecked(true);
        m_recordChk->setFocus(); // the button with the focus is about to vanish
    });
    row->addWidget(start);
    return hint;
}

void ZORHostApiDock::UpdateHint()
{
    m_hint->setVisible(!m_recordChk->isChecked() && GetModel()->rowCount() == 0);
}

void ZORHostApiDock::OnRecordToggled(bool on)
{
    UpdateHint();
    ZORSysApiTrace::GetInstance()->SetEnabled(on);
    if (!on)
        Flush();
}
