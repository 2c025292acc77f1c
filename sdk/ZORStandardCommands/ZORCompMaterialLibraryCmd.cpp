#include "ZORCompMaterialLibraryCmd.h"

#include "ZORStdContent.h"
#include "ZORStdEditing.h"
#include "ZORStdMaterialModel.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORFeature/ZORFeatContainer.h>

#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QStyle>
#include <QTableView>

namespace {

class Content final : public ZORStdContent
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompMaterialLibraryCmd)

public:
    Content(ZORFeatEnvironment* environment, ZORFeatObject* edited, QWidget* parent)
        : ZORStdContent(environment, nullptr, parent)
        , m_model(new ZORStdMaterialModel(GetContainer(), style()->standardIcon(QStyle::SP_MessageBoxWarning),
                                          this))
        , m_table(new QTableView(this))
    {
        m_table->setObjectName(QLatin1String("_MaterialTable"));
        m_table->setAccessibleName(tr("Materials"));
        m_table->setModel(m_model);
        m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
        m_table->setSelectionMode(QAbstractItemView::SingleSelection);
        m_table->setTabKeyNavigation(false);
        m_table->verticalHeader()->hide();
        m_table->resizeColumnsToContents();
        WidenColumn(ZORStdMaterialModel::Name, 160); // room for names to come
        WidenColumn(ZORStdMaterialModel::Type, 80);
        m_table->setMinimumSize(720, 240);
        GetForm()->addRow(m_table);
        GetForm()->addRow(MakeButtons());
        connect(m_model, &QAbstractItemModel::dataChanged, this, &Content::Check);
        connect(m_model, &QAbstractItemModel::rowsInserted, this, &Content::Check);
        connect(m_model, &QAbstractItemModel::rowsRemoved, this, &Content::Check);
        connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &Content::Check);
        connect(GetContainer(), &ZORGeoContainer::GeometryRemoved, m_model,
                &ZORStdMaterialModel::FollowLibrary);
        connect(GetContainer(), &ZORFeatContainer::FeatureLabelChanged, m_model,
                &ZORStdMaterialModel::FollowLibrary);
        if (m_model->rowCount() > 0) {
            const int row = m_model->FindRow(qobject_cast<const ZORCompMaterial*>(edited));
            m_table->setCurrentIndex(m_model->index(qMax(0, row), ZORStdMaterialModel::Name));
        }
        Check();
    }

protected:
    void Create() override { m_model->Apply(); }
    void UpdateRows() override { m_removeBtn->setEnabled(m_table->currentIndex().isValid()); }
    QString FindProblem() const override { return m_model->FindProblem(); }

private:
    void WidenColumn(int column, int width)
    {
        m_table->setColumnWidth(column, qMax(width, m_table->columnWidth(column)));
    }
    QLayout* MakeButtons()
    {
        auto* const line = new QHBoxLayout;
        auto* const addBtn = new QPushButton(tr("&Add"), this);
        addBtn->setObjectName(QLatin1String("_AddBtn"));
        m_removeBtn = new QPushButton(tr("&Remove"), this);
        m_removeBtn->setObjectName(QLatin1String("_RemoveBtn"));
        for (QPushButton* button : {addBtn, m_removeBtn}) {
            button->setAutoDefault(false);
            line->addWidget(button);
        }
        line->addStretch();
        connect(addBtn, &QPushButton::clicked, this, &Content::OnAdd);
        connect(m_removeBtn, &QPushButton::clicked, this, &Content::OnRemove);
        return line;
    }
    void OnAdd()
    {
        ZORStdFinishEditing(m_table);
        const QModelIndex name = m_model->index(m_model->AddMaterial(), ZORStdMaterialModel::Name);
        m_table->setCurrentIndex(name);
        m_table->edit(name);
    }
    void OnRemove()
    {
        ZORStdFinishEditing(m_table);
        const int row = m_table->currentIndex().row();
        const int plies = m_model->CountPlies(row);
        if (plies == 0) {
            m_model->RemoveMaterial(row);
            return;
        }
        ZORCmnPlainText::ShowBox(QMessageBox::Warning, this, tr("Material in Use"),
                                 tr("'%1' cannot be removed: plies are made of it (%2).")
                                     .arg(m_model->GetName(row), QString::number(plies)));
    }

    ZORStdMaterialModel* m_model;
    QTableView* m_table;
    QPushButton* m_removeBtn = nullptr;
};

} // namespace

ZORCompMaterialLibraryCmd::ZORCompMaterialLibraryCmd(QObject* parent)
    : ZORStdDialogCommand(parent)
{
}

ZORStdContent* ZORCompMaterialLibraryCmd::MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                                                      QWidget* parent) const
{
    return new Content(environment, edited, parent);
}
