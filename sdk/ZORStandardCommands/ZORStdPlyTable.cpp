#include "ZORStdPlyTable.h"

#include "ZORStdEditing.h"
#include "ZORStdObjectCombo.h"
#include "ZORStdObjects.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORFeature/ZORFeatContainer.h>

#include <QAction>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTableView>

namespace {

class Delegate final : public QStyledItemDelegate
{
    Q_DECLARE_TR_FUNCTIONS(ZORStdPlyTable)

public:
    Delegate(ZORFeatContainer* container, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_container(container)
    {
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override
    {
        if (index.column() == ZORStdPlyModel::Material) {
            auto* const combo = new ZORStdObjectCombo(
                m_container, ZORStdObjectCombo::ClassFilter<ZORCompMaterial>(), tr("Choose"), parent);
            combo->setAccessibleName(tr("Material"));
            combo->setAutoFillBackground(true);
            return combo;
        }
        auto* const spin = new ZORCmnUnitSpinBox(parent);
        spin->setProperty("magnitude", QLatin1String("Angle"));
        spin->setAccessibleName(tr("Angle"));
        return spin;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        if (auto* combo = qobject_cast<ZORStdObjectCombo*>(editor))
            combo->Select(ModelOf(index)->GetPlies()[size_t(index.row())].material);
        else
            static_cast<ZORCmnUnitSpinBox*>(editor)->SetInternalValue(index.data(Qt::EditRole).toDouble());
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override
    {
        if (auto* combo = qobject_cast<ZORStdObjectCombo*>(editor)) {
            ModelOf(index)->SetMaterial(index.row(), combo->Get<ZORCompMaterial>());
            return;
        }
        auto* const spin = static_cast<ZORCmnUnitSpinBox*>(editor);
        spin->interpretText();
        model->setData(index, spin->GetInternalValue(), Qt::EditRole);
    }

private:
    static ZORStdPlyModel* ModelOf(const QModelIndex& index)
    {
        return static_cast<ZORStdPlyModel*>(const_cast<QAbstractItemModel*>(index.model()));
    }

    ZORFeatContainer* const m_container; // not owned
};

ZORCompMaterial* FindFirstMaterial(const ZORFeatContainer& container)
{
    for (int i = 0; i < container.GetNumGeometry(); ++i) {
        if (auto* material = qobject_cast<ZORCompMaterial*>(container.GetGeometryByIndex(i)))
            return material;
    }
    return nullptr;
}

} // namespace

ZORStdPlyTable::ZORStdPlyTable(ZORFeatContainer* container, QWidget* parent)
    : QWidget(parent)
    , m_container(container)
    , m_model(new ZORStdPlyModel(style()->standardIcon(QStyle::SP_MessageBoxWarning), this))
    , m_view(new QTableView(this))
    , m_summaryLbl(new QLabel(this))
{
    m_view->setObjectName(QLatin1String("_PlyTable"));
    m_view->setAccessibleName(tr("Plies"));
    m_view->setModel(m_model);
    m_view->setItemDelegate(new Delegate(container, this));
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    // Not by becoming current: the Tab key would never leave the table.
    m_view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked
                            | QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    m_view->setTabKeyNavigation(false);
    m_view->horizontalHeader()->setSectionResizeMode(ZORStdPlyModel::Material, QHeaderView::Stretch);
    m_view->setColumnWidth(ZORStdPlyModel::Angle, 130); // room for the editor
    m_view->setMinimumHeight(180);
    setFocusProxy(m_view);
    m_summaryLbl->setObjectName(QLatin1String("_SummaryLbl"));
    m_summaryLbl->setTextFormat(Qt::PlainText);

    auto* const buttons = new QVBoxLayout;
    AddButton(buttons, "_AddPlyBtn", tr("&Add"), &ZORStdPlyTable::OnAdd);
    m_removeBtn = AddButton(buttons, "_RemovePlyBtn", tr("&Remove"), &ZORStdPlyTable::OnRemove);
    m_upBtn = AddButton(buttons, "_PlyUpBtn", tr("&Up"), &ZORStdPlyTable::OnUp);
    m_downBtn = AddButton(buttons, "_PlyDownBtn", tr("&Down"), &ZORStdPlyTable::OnDown);
    m_mirrorBtn = AddButton(buttons, "_MirrorBtn", tr("&Mirror"), &ZORStdPlyTable::OnMirror);
    m_mirrorBtn->setToolTip(tr("Appends the plies in reverse order"));
    AddButton(buttons, "_MaterialsBtn", tr("Ma&terials..."), &ZORStdPlyTable::OnMaterials);
    buttons->addStretch();
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(m_view, 0, 0);
    grid->addLayout(buttons, 0, 1);
    grid->addWidget(m_summaryLbl, 1, 0, 1, 2);

    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(m_model, signal, this, &ZORStdPlyTable::Update);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &ZORStdPlyTable::Update);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &ZORStdPlyTable::Update);
    connect(container, &ZORGeoContainer::GeometryRemoved, m_model, &ZORStdPlyModel::RefreshMaterials);
    connect(container, &ZORFeatContainer::FeatureLabelChanged, m_model, &ZORStdPlyModel::RefreshMaterials);
    Update();
}

ZORStdPlyTable::~ZORStdPlyTable() = default;

void ZORStdPlyTable::SetPlies(const QList<ZORCompPly*>& plies)
{
    for (ZORCompPly* ply : plies)
        m_model->AddPly({ply->GetMaterial(), ply->GetAngle(), ply, true});
}

QPushButton* ZORStdPlyTable::AddButton(QLayout* column, const char* objectName, const QString& text,
                                       void (ZORStdPlyTable::*slot)())
{
    auto* const button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false); // Enter is OK
    column->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, slot] {
        ZORStdFinishEditing(m_view);
        (this->*slot)();
    });
    return button;
}

int ZORStdPlyTable::GetRow() const
{
    return m_view->currentIndex().row();
}

void ZORStdPlyTable::Update()
{
    const int row = GetRow();
    m_removeBtn->setEnabled(row >= 0);
    m_upBtn->setEnabled(row > 0);
    m_downBtn->setEnabled(row >= 0 && row + 1 < m_model->rowCount());
    m_mirrorBtn->setEnabled(m_model->rowCount() > 0);
    m_summaryLbl->setText(m_model->GetSummary());
    emit Changed();
}

void ZORStdPlyTable::OnAdd()
{
    const std::vector<ZORStdPlyModel::Ply>& plies = m_model->GetPlies();
    m_model->AddPly({plies.empty() ? FindFirstMaterial(*m_container) : plies.back().material.data()});
    const QModelIndex angle = m_model->index(m_model->rowCount() - 1, ZORStdPlyModel::Angle);
    m_view->setCurrentIndex(angle);
    m_view->edit(angle);
}

void ZORStdPlyTable::OnRemove()
{
    m_model->RemovePly(GetRow());
    Update(); // the row of the selected ply may be another one
}

void ZORStdPlyTable::OnUp()
{
    Move(GetRow() - 1, GetRow() - 1);
}

void ZORStdPlyTable::OnDown()
{
    Move(GetRow(), GetRow() + 1);
}

void ZORStdPlyTable::Move(int first, int selected)
{
    m_model->SwapWithNext(first);
    m_view->setCurrentIndex(m_model->index(selected, m_view->currentIndex().column()));
}

void ZORStdPlyTable::OnMirror()
{
    m_model->Mirror();
}

void ZORStdPlyTable::OnMaterials()
{
    if (QAction* action = ZORCmdController::GetController()->GetAction("ZORCompMaterialLibraryCmd.Edit"))
        action->trigger();
}
