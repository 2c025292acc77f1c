#include "ZORStdMaterialModel.h"

#include "ZORStdObjects.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORSystem/ZORSysException.h>

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace {

using Properties = ZORCompMaterialProperties;

constexpr double kDensityFactor = 1e12; // tonnes per cubic millimetre to kilograms per cubic metre

// As the numbers of the properties are ordered.
struct NumberColumn
{
    const char* title;
    double factor; // from the internal to the shown unit
    bool mayBeZero;
    bool mayBeNegative;
};
constexpr NumberColumn kNumberColumns[Properties::NumNumbers] = {
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "Thickness (mm)"), 1, false, false},
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "Density (kg/m\u00b3)"), kDensityFactor, false, false},
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "E1 (MPa)"), 1, false, false},
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "E2 (MPa)"), 1, false, false},
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "G12 (MPa)"), 1, false, false},
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "G23 (MPa)"), 1, false, false},
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "ν12"), 1, true, true},
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "Permeability 1 (m\u00b2)"), 1, true, false},
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "Permeability 2 (m\u00b2)"), 1, true, false},
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "Permeability 3 (m\u00b2)"), 1, true, false},
    {QT_TRANSLATE_NOOP("ZORStdMaterialModel", "Roll width (mm)"), 1, false, false},
};

double& NumberOf(Properties& properties, int column)
{
    return properties.*Properties::Numbers[column - ZORStdMaterialModel::FirstNumber].member;
}

double NumberOf(const Properties& properties, int column)
{
    return properties.*Properties::Numbers[column - ZORStdMaterialModel::FirstNumber].member;
}

const NumberColumn& ColumnOf(int column)
{
    return kNumberColumns[column - ZORStdMaterialModel::FirstNumber];
}

QString ToText(double value)
{
    if (std::isnan(value))
        return {};
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale.toString(value, 'g', 10);
}

// A point is a decimal separator in every locale. Not a number for an empty text.
double ToNumber(const QString& text, bool& isNumber)
{
    isNumber = true;
    if (text.isEmpty())
        return Properties::Unknown;
    double value = QLocale::c().toDouble(text, &isNumber);
    if (!isNumber)
        value = QLocale().toDouble(text, &isNumber);
    isNumber = isNumber && std::isfinite(value);
    return value;
}

ZORCompMaterialLibrary* FindLibrary(const ZORFeatContainer& container)
{
    for (ZORFeatRoot* root : container.GetFeatureRoots()) {
        if (const auto* composites = qobject_cast<const ZORCompRoot*>(root))
            return ZORCompMaterialLibrary::Find(composites);
    }
    return nullptr;
}

} // namespace

ZORStdMaterialModel::ZORStdMaterialModel(ZORFeatContainer* container, const QIcon& warning, QObject* parent)
    : ZORStdTableModel(FirstNumber + Properties::NumNumbers, warning, parent)
    , m_container(container)
{
    const ZORCompMaterialLibrary* const library = FindLibrary(*container);
    if (!library)
        return;
    for (ZORCompMaterial* material : library->GetMaterials())
        m_rows.push_back({material,
                          material->GetLabel(),
                          material->GetLabel(),
                          material->GetProperties(),
                          material->GetProperties(),
                          {}});
}

ZORStdMaterialModel::~ZORStdMaterialModel() = default;

int ZORStdMaterialModel::GetNumRows() const
{
    return int(m_rows.size());
}

QString ZORStdMaterialModel::GetTitle(int column) const
{
    if (column == Name)
        return tr("Name");
    return column == Type ? tr("Type") : tr(ColumnOf(column).title);
}

QVariant ZORStdMaterialModel::GetCell(int row, int column, int role) const
{
    const QString problem = FindCellProblem(row, column);
    if (role == Qt::ToolTipRole)
        return ZORCmnPlainText::ToToolTip(problem);
    if (role == Qt::DecorationRole && !problem.isEmpty())
        return GetWarning();
    if (role == Qt::TextAlignmentRole && column >= FirstNumber)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    const Row& cells = m_rows[size_t(row)];
    if (column == Name)
        return cells.name;
    if (column == Type)
        return cells.properties.type;
    const auto invalid = cells.invalid.find(column);
    return invalid != cells.invalid.end()
               ? *invalid
               : ToText(NumberOf(cells.properties, column) * ColumnOf(column).factor);
}

bool ZORStdMaterialModel::SetCell(int row, int column, const QVariant& value)
{
    const QString text = value.toString().trimmed();
    if (text == GetCell(row, column, Qt::EditRole).toString())
        return false;
    Row& cells = m_rows[size_t(row)];
    if (column == Name) {
        cells.name = text;
    } else if (column == Type) {
        cells.properties.type = text;
    } else {
        bool isNumber = false;
        const double number = ToNumber(text, isNumber);
        cells.invalid.remove(column);
        if (isNumber)
            NumberOf(cells.properties, column) = number / ColumnOf(column).factor;
        else
            cells.invalid.insert(column, text);
    }
    // Names concern each other.
    emit dataChanged(index(0, column), index(rowCount() - 1, column));
    return true;
}

int ZORStdMaterialModel::AddMaterial()
{
    QString name;
    const auto isTaken = [&name](const Row& row) { return row.name == name; };
    for (int number = 1; name.isEmpty() || std::any_of(m_rows.begin(), m_rows.end(), isTaken); ++number)
        name = tr("Material %1").arg(number);
    const int row = rowCount();
    beginInsertRows({}, row, row);
    m_rows.push_back({nullptr, name, {}, {}, {}, {}});
    endInsertRows();
    return row;
}

void ZORStdMaterialModel::RemoveMaterial(int row)
{
    beginRemoveRows({}, row, row);
    m_removed.append(m_rows[size_t(row)].material);
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
}

QString ZORStdMaterialModel::GetName(int row) const
{
    return m_rows[size_t(row)].name;
}

int ZORStdMaterialModel::FindRow(const ZORCompMaterial* material) const
{
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [material](const Row& cells) {
        return material && cells.material == material;
    });
    return row == m_rows.end() ? -1 : int(row - m_rows.begin());
}

void ZORStdMaterialModel::FollowLibrary()
{
    for (Row& row : m_rows) {
        if (!row.material || row.material->GetLabel() == row.label)
            continue;
        if (row.name == row.label)
            row.name = row.material->GetLabel();
        row.label = row.material->GetLabel();
    }
    if (!m_rows.empty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int ZORStdMaterialModel::CountPlies(int row) const
{
    return CountPlies(m_rows[size_t(row)].material);
}

int ZORStdMaterialModel::CountPlies(const ZORCompMaterial* material) const
{
    int plies = 0;
    for (int i = 0; material && i < m_container->GetNumGeometry(); ++i) {
        const auto* const ply = qobject_cast<const ZORCompPly*>(m_container->GetGeometryByIndex(i));
        plies += ply && ply->GetMaterial() == material;
    }
    return plies;
}

QString ZORStdMaterialModel::FindCellProblem(int row, int column) const
{
    const Row& cells = m_rows[size_t(row)];
    if (column >= FirstNumber)
        return FindNumberProblem(cells, column);
    if (column == Type)
        return {};
    if (!cells.material && !cells.label.isNull())
        return tr("Row %1: the material '%2' has been deleted. Remove the row.")
            .arg(QString::number(row + 1), cells.label);
    if (cells.name.isEmpty())
        return tr("Row %1: enter a name.").arg(row + 1);
    for (int other = 0; other < row; ++other) {
        if (m_rows[size_t(other)].name == cells.name)
            return tr("Row %1: another material is named '%2'.").arg(QString::number(row + 1), cells.name);
    }
    return {};
}

QString ZORStdMaterialModel::FindNumberProblem(const Row& row, int column) const
{
    const NumberColumn& rules = ColumnOf(column);
    const QString title = tr(rules.title);
    if (row.invalid.contains(column))
        return tr("%1 of '%2': enter a number, or nothing.").arg(title, row.name);
    const double value = NumberOf(row.properties, column);
    if (std::isnan(value) || rules.mayBeNegative || value > 0 || (value == 0 && rules.mayBeZero))
        return {};
    return rules.mayBeZero ? tr("%1 of '%2' must not be negative.").arg(title, row.name)
                           : tr("%1 of '%2' must be more than 0.").arg(title, row.name);
}

QString ZORStdMaterialModel::FindProblem() const
{
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            const QString problem = FindCellProblem(row, column);
            if (!problem.isEmpty())
                return problem;
        }
    }
    return {};
}

// The dialog is not modal: plies and materials may have come meanwhile.
void ZORStdMaterialModel::CheckUse() const
{
    for (const QPointer<ZORCompMaterial>& material : m_removed) {
        if (material && CountPlies(material) > 0)
            throw ZORSysException(tr("a ply is made of the removed material '%1'").arg(material->GetLabel()));
    }
    const ZORCompMaterialLibrary* const library = FindLibrary(*m_container);
    if (!library)
        return;
    for (ZORCompMaterial* material : library->GetMaterials()) {
        const auto is = [material](const Row& row) { return row.material == material; };
        const auto hasItsName = [material](const Row& row) { return row.name == material->GetLabel(); };
        if (!m_removed.contains(material) && std::none_of(m_rows.begin(), m_rows.end(), is)
            && std::any_of(m_rows.begin(), m_rows.end(), hasItsName))
            throw ZORSysException(
                tr("the library has another material named '%1' by now").arg(material->GetLabel()));
    }
}

void ZORStdMaterialModel::Apply()
{
    CheckUse();
    ZORStdCreation creation;
    auto* const root =
        qobject_cast<ZORCompRoot*>(creation.AddRoot(m_container, ZORCompRoot::staticMetaObject.className()));
    auto* const library = ZORCompMaterialLibrary::Of(root);
    for (Row& row : m_rows) {
        if (!row.material)
            row.material = creation.Add(new ZORCompMaterial(library), row.name);
        // What was not edited here may have been edited in another dialog.
        if (row.name != row.label)
            row.material->SetLabel(row.name);
        if (!(row.properties == row.shown))
            row.material->SetProperties(row.properties);
    }
    for (const QPointer<ZORCompMaterial>& material : std::as_const(m_removed)) {
        if (material)
            material->Remove();
    }
    creation.Keep();
}
