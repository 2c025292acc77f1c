#include "ZORStdContent.h"

#include "ZORStdObjects.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommonUI/ZORCmnPickButton.h>
#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathVector.h>

#include <QAction>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

// Folders to put things into, but for the composites root: not the ones that hold only parts of a layup, or
// materials.
bool IsFolder(const ZORGeoGeometry& object)
{
    const bool isRoot =
        qobject_cast<const ZORFeatRoot*>(&object) && !qobject_cast<const ZORCompRoot*>(&object);
    return isRoot || object.metaObject() == &ZORFeatFolder::staticMetaObject;
}

} // namespace

ZORStdContent::ZORStdContent(ZORFeatEnvironment* environment, ZORFeatObject* edited, QWidget* parent)
    : QWidget(parent)
    , m_container(environment->GetContainer())
    , m_form(new QFormLayout(this))
    , m_edited(edited)
    , m_isEditing(edited)
{
    if (edited)
        connect(edited, &QObject::destroyed, this, &ZORStdContent::Check);
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
}

void ZORStdContent::UpdateRows() {}

void ZORStdContent::Change() {}

void ZORStdContent::Apply()
{
    if (!m_isEditing) {
        Create();
        return;
    }
    Change();
    if (m_labelEdit && m_edited && m_edited->GetLabel() != GetLabel())
        m_edited->SetLabel(GetLabel());
}

QString ZORStdContent::FindDeletion() const
{
    return m_isEditing && !m_edited ? tr("'%1' has been deleted.").arg(m_editedLabel) : QString();
}

void ZORStdContent::Check()
{
    UpdateRows();
    const QString deletion = FindDeletion();
    const QString problem = deletion.isEmpty() ? FindProblem() : deletion;
    if (problem == m_problem)
        return;
    m_problem = problem;
    emit ProblemChanged(problem);
}

void ZORStdContent::AddRow(const QString& text, QWidget* row, QWidget* buddy)
{
    auto* const label = new QLabel(text, this);
    label->setBuddy(buddy);
    m_form->addRow(label, row);
}

void ZORStdContent::SetRowVisible(QWidget* field, bool isVisible)
{
    m_form->setRowVisible(m_form->indexOf(field) >= 0 ? field : field->parentWidget(), isVisible);
}

// As people read it, without the mnemonic and the colon.
QString ZORStdContent::GetRowText(const QWidget* row) const
{
    const auto* const label = qobject_cast<const QLabel*>(m_form->labelForField(const_cast<QWidget*>(row)));
    return label ? label->text().remove(u':').remove(u'&') : QString();
}

void ZORStdContent::AddLabel(const QString& wanted)
{
    m_editedLabel = m_edited ? m_edited->GetLabel() : QString();
    m_labelEdit = new QLineEdit(m_edited ? m_editedLabel : ZORStdUniqueLabel(*m_container, wanted), this);
    m_labelEdit->setObjectName(QLatin1String("_LabelEdit"));
    AddRow(tr("&Label:"), m_labelEdit, m_labelEdit);
    connect(m_labelEdit, &QLineEdit::textChanged, this, &ZORStdContent::Check);
    if (!m_edited)
        return;
    connect(m_edited, &ZORFeatObject::LabelChanged, this, [this](const QString& label) {
        const bool isUnchanged = m_labelEdit->text() == m_editedLabel;
        m_editedLabel = label;
        if (isUnchanged)
            m_labelEdit->setText(label);
    });
}

void ZORStdContent::AddFolder()
{
    if (!m_isEditing)
        m_folderCombo = AddObjects("_FolderCombo", tr("&Folder:"), IsFolder, tr("Composites"));
}

ZORStdObjectCombo* ZORStdContent::AddObjects(const char* objectName, const QString& text,
                                             const ZORStdObjectCombo::Filter& filter, const QString& noneText,
                                             const Picking& picking)
{
    auto* const row = new QWidget(this);
    auto* const line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    auto* const combo = new ZORStdObjectCombo(m_container, filter, noneText, row);
    combo->setObjectName(QLatin1String(objectName));
    line->addWidget(combo, 1);
    AddRow(text, row, combo);
    connect(combo, &ZORStdObjectCombo::ObjectChanged, this, &ZORStdContent::Check);
    if (!picking.kinds)
        return combo;
    ZORCmnPickButton* const button = AddPicker(
        combo, QString(combo->objectName()).replace(QLatin1String("Combo"), QLatin1String("PickBtn")),
        picking);
    button->GetRequest()->SetFilter(
        [combo](const ZORGeoGeometry& object) { return combo->Find(&object) != nullptr; });
    connect(button, &ZORCmnPickButton::Picked, combo,
            [combo](const ZORCmdPick& pick) { combo->Select(combo->Find(pick.object)); });
    return combo;
}

ZORStdObjectCombo* ZORStdContent::AddPoints(const char* objectName, const QString& text,
                                            const QString& noneText)
{
    return AddObjects(objectName, text, ZORStdObjectCombo::ShapeFilter(ZORStdObjectCombo::Points), noneText,
                      {ZORCmdPickRequest::Points, tr("Click a point in the view")});
}

ZORStdObjectCombo* ZORStdContent::AddSurfaces(const char* objectName, const QString& text,
                                              const QString& noneText)
{
    return AddObjects(objectName, text, ZORStdObjectCombo::ShapeFilter(ZORStdObjectCombo::Surfaces), noneText,
                      {ZORCmdPickRequest::Surfaces, tr("Click a surface in the view")});
}

ZORStdObjectCombo* ZORStdContent::AddRosettes(const QString& text)
{
    return AddObjects("_RosetteCombo", text, ZORStdObjectCombo::ClassFilter<ZORCompRosette>(), tr("None"),
                      {ZORCmdPickRequest::Curves, tr("Click the line of a rosette in the view")});
}

ZORCmnPickButton* ZORStdContent::AddPicker(QWidget* field, const QString& objectName, const Picking& picking)
{
    QWidget* const row = field->parentWidget();
    auto* const button = new ZORCmnPickButton(picking.kinds, picking.prompt, field);
    button->setObjectName(objectName);
    button->setAccessibleName(tr("Pick in the view: %1").arg(GetRowText(row)));
    row->layout()->addWidget(button);
    return button;
}

void ZORStdContent::AddPointPicker(const Triple& triple, const QString& objectName)
{
    ZORCmnPickButton* const button = AddPicker(
        triple.x, objectName,
        {ZORCmdPickRequest::Points | ZORCmdPickRequest::Curves | ZORCmdPickRequest::SurfaceLocations,
         tr("Click a location in the view")});
    connect(button, &ZORCmnPickButton::Picked, this, [triple](const ZORCmdPick& pick) {
        const auto* const point = ZORFeatShapeOf<ZORGeoPoint>(pick.object);
        triple.SetPoint(point ? point->GetMathPoint() : pick.point);
    });
}

void ZORStdContent::AddCreator(ZORStdObjectCombo* combo, const char* objectName, const QByteArray& actionId)
{
    QWidget* const row = combo->parentWidget();
    auto* const button = new QPushButton(tr("&New..."), row);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false); // Enter is OK
    button->setAccessibleName(tr("New: %1").arg(GetRowText(row)));
    row->layout()->addWidget(button);
    connect(button, &QPushButton::clicked, combo, [combo, actionId] {
        QAction* const action = ZORCmdController::GetController()->GetAction(actionId);
        if (!action)
            return;
        combo->SelectNext();
        action->trigger();
    });
}

ZORCmnUnitSpinBox* ZORStdContent::MakeNumber(const QString& objectName, const char* magnitude, double value)
{
    auto* const spin = new ZORCmnUnitSpinBox(this);
    spin->setObjectName(objectName);
    spin->setProperty("magnitude", QLatin1String(magnitude));
    spin->SetInternalValue(value);
    connect(spin, &QDoubleSpinBox::valueChanged, this, &ZORStdContent::Check);
    return spin;
}

ZORCmnUnitSpinBox* ZORStdContent::AddNumber(const char* objectName, const QString& text,
                                            const char* magnitude, double value)
{
    ZORCmnUnitSpinBox* const spin = MakeNumber(QLatin1String(objectName), magnitude, value);
    AddRow(text, spin, spin);
    return spin;
}

QComboBox* ZORStdContent::AddChoice(const char* objectName, const QString& text, const QStringList& choices)
{
    auto* const combo = new QComboBox(this);
    combo->setObjectName(QLatin1String(objectName));
    combo->addItems(choices);
    AddRow(text, combo, combo);
    connect(combo, &QComboBox::currentIndexChanged, this, &ZORStdContent::Check);
    return combo;
}

ZORStdContent::Triple ZORStdContent::AddTriple(const QString& name, const QString& text,
                                               const char* magnitude, const ZORMathVector& value)
{
    Triple triple;
    triple.row = new QWidget(this);
    auto* const line = new QHBoxLayout(triple.row);
    line->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](QChar axis, double coordinate) {
        ZORCmnUnitSpinBox* const spin =
            MakeNumber(name + axis + QLatin1String("Spin"), magnitude, coordinate);
        const bool isLength = qstrcmp(magnitude, "Length") == 0;
        spin->setRange(isLength ? -1e6 : -1e3, isLength ? 1e6 : 1e3); // three of them share a line
        spin->setAccessibleName(QString(text).remove(u':').remove(u'&') + u' ' + axis);
        line->addWidget(spin);
        return spin;
    };
    triple.x = add(u'X', value.GetX());
    triple.y = add(u'Y', value.GetY());
    triple.z = add(u'Z', value.GetZ());
    AddRow(text, triple.row, triple.x);
    return triple;
}

ZORMathPoint ZORStdContent::Triple::GetPoint() const
{
    return {x->GetInternalValue(), y->GetInternalValue(), z->GetInternalValue()};
}

void ZORStdContent::Triple::SetPoint(const ZORMathPoint& point) const
{
    x->SetInternalValue(point.GetX());
    y->SetInternalValue(point.GetY());
    z->SetInternalValue(point.GetZ());
}

ZORMathVector ZORStdContent::Triple::GetVector() const
{
    return {x->GetInternalValue(), y->GetInternalValue(), z->GetInternalValue()};
}

QString ZORStdContent::GetLabel() const
{
    return m_labelEdit->text().trimmed();
}

QString ZORStdContent::FindLabelProblem() const
{
    return GetLabel().isEmpty() ? tr("Enter a label.") : QString();
}

ZORFeatObject* ZORStdContent::GetFolder(ZORStdCreation& creation) const
{
    if (auto* folder = m_folderCombo->Get<ZORFeatObject>())
        return folder;
    return creation.AddRoot(m_container, ZORCompRoot::staticMetaObject.className());
}
