#include "ZORStdPlyModel.h"

#include <ZORComposites/ZORCompMaterial.h>
#include <ZORSystem/ZORSysValue.h>

#include <QLocale>

#include <cmath>

namespace {

QString ToText(double value)
{
    return QLocale().toString(value, 'g', 10);
}

} // namespace

ZORStdPlyModel::ZORStdPlyModel(const QIcon& warning, QObject* parent)
    : ZORStdTableModel(Angle + 1, warning, parent)
{
}

ZORStdPlyModel::~ZORStdPlyModel() = default;

int ZORStdPlyModel::GetNumRows() const
{
    return int(m_plies.size());
}

QString ZORStdPlyModel::GetTitle(int column) const
{
    return column == Material ? tr("Material") : tr("Angle");
}

QVariant ZORStdPlyModel::GetCell(int row, int column, int role) const
{
    const Ply& ply = m_plies[size_t(row)];
    if (column == Material) {
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            return ply.material ? ply.material->GetLabel() : QString();
        if (role == Qt::DecorationRole && !ply.material)
            return GetWarning();
        return {};
    }
    if (role == Qt::EditRole)
        return ply.angle;
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::DisplayRole)
        return ToText(ply.angle / ZORSysValue::GetUnitFactor(ZORSysValue::Degree)) + QChar(0xb0);
    return {};
}

bool ZORStdPlyModel::SetCell(int row, int column, const QVariant& value)
{
    if (column != Angle || !std::isfinite(value.toDouble()))
        return false;
    m_plies[size_t(row)].angle = value.toDouble();
    EmitRowChanged(row);
    return true;
}

void ZORStdPlyModel::AddPly(const Ply& ply)
{
    beginInsertRows({}, rowCount(), rowCount());
    m_plies.push_back(ply);
    endInsertRows();
}

void ZORStdPlyModel::RemovePly(int row)
{
    beginRemoveRows({}, row, row);
    m_plies.erase(m_plies.begin() + row);
    endRemoveRows();
}

void ZORStdPlyModel::SwapWithNext(int row)
{
    std::swap(m_plies[size_t(row)], m_plies[size_t(row) + 1]);
    EmitRowChanged(row);
    EmitRowChanged(row + 1);
}

void ZORStdPlyModel::Mirror()
{
    if (m_plies.empty())
        return;
    const int count = rowCount();
    beginInsertRows({}, count, 2 * count - 1);
    for (int row = count - 1; row >= 0; --row) {
        Ply copy = m_plies[size_t(row)];
        copy.isOriginal = false;
        m_plies.push_back(copy);
    }
    endInsertRows();
}

void ZORStdPlyModel::SetMaterial(int row, ZORCompMaterial* material)
{
    m_plies[size_t(row)].material = material;
    EmitRowChanged(row);
}

void ZORStdPlyModel::RefreshMaterials()
{
    if (!m_plies.empty())
        emit dataChanged(index(0, Material), index(rowCount() - 1, Material));
}

void ZORStdPlyModel::EmitRowChanged(int row)
{
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

QString ZORStdPlyModel::FindProblem() const
{
    for (size_t row = 0; row < m_plies.size(); ++row) {
        if (!m_plies[row].material)
            return tr("Ply %1: choose a material.").arg(row + 1);
    }
    return {};
}

QString ZORStdPlyModel::GetSummary() const
{
    double thickness = 0;
    for (const Ply& ply : m_plies)
        thickness += ply.material ? ply.material->GetProperties().thickness : std::nan("");
    const QString plies = m_plies.size() == 1 ? tr("1 ply") : tr("%1 plies").arg(m_plies.size());
    if (m_plies.empty())
        return plies;
    return std::isnan(thickness) ? tr("%1, thickness unknown").arg(plies)
                                 : tr("%1, %2 mm thick").arg(plies, ToText(thickness));
}
