// The table of the materials of a library while it is edited.

#pragma once

#include "ZORStdTableModel.h"

#include <ZORComposites/ZORCompMaterialProperties.h>

#include <QHash>
#include <QPointer>

#include <vector>

class ZORCompMaterial;
class ZORFeatContainer;

/// A row per material: name, type and the numbers, which are empty where they are unknown. The materials themselves
/// change in Apply() alone; what was not edited keeps its exact value.
class ZORStdMaterialModel final : public ZORStdTableModel
{
    Q_OBJECT

public:
    enum Column { Name, Type, FirstNumber };

    /// \param container  not owned, must outlive the model
    /// \param warning    icon of cells that do not fit
    ZORStdMaterialModel(ZORFeatContainer* container, const QIcon& warning, QObject* parent);
    ~ZORStdMaterialModel() override;

    /// Appends a material of which only a name of its own is known.
    /// \return its row
    int AddMaterial();
    void RemoveMaterial(int row);
    QString GetName(int row) const;
    /// The row of a material; -1 for none.
    int FindRow(const ZORCompMaterial* material) const;
    /// Follows what has happened to the materials: names that were not edited here, and materials that were deleted.
    void FollowLibrary();
    /// How many plies of the container are of the material of a row.
    int CountPlies(int row) const;

    /// What is wrong in the first cell that does not fit; empty for nothing.
    QString FindProblem() const;
    /// Brings the library of the container up to date: materials of removed rows go, those of new rows come. Without
    /// problems only.
    /// \throws ZORSysException when a name or a removed material is in use by now; nothing has changed then
    void Apply();

private:
    struct Row
    {
        QPointer<ZORCompMaterial> material; // null: to be created, or deleted since
        QString name;
        QString label; // of the material when it was shown last; null for a row to be created
        ZORCompMaterialProperties properties;
        ZORCompMaterialProperties shown; // of the material when the row was filled
        QHash<int, QString> invalid;     // texts that are no numbers, by column
    };

    int GetNumRows() const override;
    QString GetTitle(int column) const override;
    QVariant GetCell(int row, int column, int role) const override;
    bool SetCell(int row, int column, const QVariant& value) override;
    int CountPlies(const ZORCompMaterial* material) const;
    QString FindCellProblem(int row, int column) const;
    QString FindNumberProblem(const Row& row, int column) const;
    void CheckUse() const;

    ZORFeatContainer* const m_container; // not owned
    std::vector<Row> m_rows;
    QList<QPointer<ZORCompMaterial>> m_removed;
};
