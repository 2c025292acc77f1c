#include "objects/ZORHostPropertiesDialog.h"

#include "objects/ZORHostObjectProperties.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

/// More of a value is never seen.
constexpr int kLongestValue = 300;

/// Changes come in bursts, and values of large surfaces take time.
constexpr int kRefreshMilliseconds = 150;

} // namespace

ZORHostPropertiesDialog::ZORHostPropertiesDialog(const QList<ZORGeoGeometry*>& objects, QWidget* parent)
    : QDialog(parent)
    , m_objects(objects.begin(), objects.end())
    , m_values(new QTreeWidget(this))
{
    setObjectName("_PropertiesDialog");
    setWindowTitle(tr("Properties"));
    resize(460, 380);
    m_values->setObjectName("_PropertiesTree");
    m_values->setAccessibleName(tr("Values"));
    m_values->setRootIsDecorated(false);
    m_values->setAlternatingRowColors(true);
    m_values->setHeaderLabels({tr("Property"), tr("Value")});
    m_values->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* const copy = buttons->addButton(tr("C&opy"), QDialogButtonBox::ActionRole);
    copy->setObjectName("_CopyButton");
    copy->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    copy->setToolTip(tr("Copies all values to the clipboard"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_values);
    layout->addWidget(buttons);
    connect(copy, &QPushButton::clicked, this, &ZORHostPropertiesDialog::Copy);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(kRefreshMilliseconds);
    connect(&m_refresh, &QTimer::timeout, this, &ZORHostPropertiesDialog::Fill);
    const auto refresh = [this] {
        if (!m_refresh.isActive())
            m_refresh.start();
    };
    connect(objects.first()->GetContainer(), &ZORGeoContainer::ContentChanged, this, refresh);
    connect(objects.first()->GetContainer(), &QObject::destroyed, this, refresh);
    Fill();
}

void ZORHostPropertiesDialog::Fill()
{
    m_objects.removeAll(QPointer<ZORGeoGeometry>());
    if (m_objects.isEmpty()) {
        close();
        return;
    }
    m_values->clear();
    for (const ZORHostProperty& property : ZORHostPropertiesOf({m_objects.begin(), m_objects.end()})) {
        const QString value = property.value.left(kLongestValue).simplified();
        auto* const item = new QTreeWidgetItem(m_values, {property.name, value});
        item->setToolTip(1, ZORCmnPlainText::ToToolTip(value));
        item->setData(1, Qt::UserRole, property.value);
    }
    m_values->setCurrentItem(m_values->topLevelItem(0));
}

void ZORHostPropertiesDialog::Copy() const
{
    QString text;
    for (int row = 0; row < m_values->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* const item = m_values->topLevelItem(row);
        text += item->text(0) + u'\t' + item->data(1, Qt::UserRole).toString() + u'\n';
    }
    QGuiApplication::clipboard()->setText(text);
}
