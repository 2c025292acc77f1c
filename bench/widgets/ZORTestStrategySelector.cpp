#include "widgets/ZORTestStrategySelector.h"

#include "core/ZORTestCommandRegistry.h"
#include "core/ZORTestEnvironment.h"
#include "ui_ZORTestGeometrySelector.h"
#include "widgets/ZORTestObjectEntries.h"

#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>

#include <QVariant>

namespace {

ZORCompStrategy* GetTestHandle()
{
    // An established value that nobody dereferences.
    return reinterpret_cast<ZORCompStrategy*>(quintptr(0x234234234)); // NOLINT(performance-no-int-to-ptr)
}

} // namespace

ZORTestStrategySelector::ZORTestStrategySelector(QWidget* parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::ZORTestGeometrySelector>())
{
    setObjectName(QLatin1String("ZORTestStrategySelector")); // the form leaves names that are there
    m_ui->setupUi(this);
    m_ui->_List->hide();
    connect(m_ui->_Button, &QPushButton::clicked, this, &ZORTestStrategySelector::OnBrowseClicked);
}

ZORTestStrategySelector::~ZORTestStrategySelector() = default;

void ZORTestStrategySelector::SetEnvironment(ZORTestEnvironment* environment)
{
    m_environment = environment;
    const QString label = property("label").toString();
    m_ui->_Label->setText(label);
    m_ui->horizontalLayout->setAlignment(m_ui->_Label, Qt::Alignment());
    m_ui->_Button->setAccessibleName(tr("Browse: %1").arg(label.trimmed()));
    OnReload();
}

bool ZORTestStrategySelector::IsTestHandle(const ZORCompStrategy* strategy)
{
    return strategy == GetTestHandle();
}

ZORCompStrategy* ZORTestStrategySelector::GetSelectedStrategy() const
{
    return ZORTestObjectEntries::GetCurrent<ZORCompStrategy>(m_ui->_Combo);
}

void ZORTestStrategySelector::OnReload()
{
    m_ui->_Combo->clear();
    m_ui->_Combo->addItem(tr("mt Strategy test"), QVariant::fromValue(GetTestHandle()));
    ZORFeatContainer* const container = m_environment->GetEnvironment()->GetContainer();
    const auto* root =
        qobject_cast<ZORCompRoot*>(container->GetFeatureRoot(ZORCompRoot::staticMetaObject.className()));
    if (!root)
        return;
    const QList<ZORFeatObject*> children = root->GetAllChildren();
    for (ZORFeatObject* child : children) {
        auto* strategy = qobject_cast<ZORCompStrategy*>(child);
        if (!strategy)
            continue;
        ZORTestObjectEntries::Append(m_ui->_Combo, strategy->GetLabel(), strategy);
    }
}

void ZORTestStrategySelector::OnBrowseClicked()
{
    ZORTestCommandRegistry::Instance(); // no command creates strategies
}
