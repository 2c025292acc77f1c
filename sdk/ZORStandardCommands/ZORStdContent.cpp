#include "ZORStdContent.h"

#include "ZORStdObjects.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
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

ZORStdContent::ZORStdContent(ZORFeatEnvironment* environment, QWidget* parent)
    : QWidget(parent)
    , m_container(environment->GetContainer())
    , m_form(new QFormLayout(this))
{
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
}

void ZORStdContent::UpdateRows() {}

void ZORStdContent::Check()
{
    UpdateRows();
    const QString problem = FindProblem();
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

void ZORStdContent::SetRowVisible(QWidget* row, bool isVisible)
{
    m_form->setRowVisible(row, isVisible);
}

void ZORStdContent::AddLabel(const QString& label)
{
    m_labelEdit = new QLineEdit(label, this);
    m_labelEdit->setObjectName(QLatin1String("_LabelEdit"));
    AddRow(tr("Label:"), m_labelEdit, m_labelEdit);
    connect(m_labelEdit, &QLineEdit::textChanged, this, &ZORStdContent::Check);
}

void ZORStdContent::AddFolder()
{
    m_folderCombo = AddObjects("_FolderCombo", tr("Folder:"), IsFolder, tr("Composites"));
}

ZORStdObjectCombo* ZORStdContent::AddObjects(const char* objectName, const QString& text,
                                             const ZORStdObjectCombo::Filter& filter, const QString& noneText)
{
    auto* const combo = new ZORStdObjectCombo(m_container, filter, noneText, this);
    combo->setObjectName(QLatin1String(objectName));
    AddRow(text, combo, combo);
    connect(combo, &ZORStdObjectCombo::ObjectChanged, this, &ZORStdContent::Check);
    return combo;
}

void ZORStdContent::AddCreator(ZORStdObjectCombo* combo, const char* objectName, const QByteArray& actionId)
{
    auto* const row = new QWidget(this);
    auto* const button = new QPushButton(tr("New..."), row);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false); // Enter is OK
    auto* const line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    auto* const label = qobject_cast<QLabel*>(m_form->labelForField(combo));
    button->setAccessibleName(tr("New: %1").arg(label->text().remove(u':')));
    delete m_form->replaceWidget(combo, row);
    line->addWidget(combo, 1);
    line->addWidget(button);
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
        spin->setAccessibleName(QString(text).remove(u':') + u' ' + axis);
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
