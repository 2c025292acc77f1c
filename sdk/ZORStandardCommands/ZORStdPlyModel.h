// The stack of plies of a layup while it is made.

#pragma once

#include "ZORStdTableModel.h"

#include <ZORComposites/ZORCompPly.h>

#include <QPointer>

#include <vector>

class ZORCompMaterial;

/// A row per ply, the first one lies on the support: material and angle. setData() takes angles in radians; materials are
/// set by SetMaterial().
class ZORStdPlyModel final : public ZORStdTableModel
{
    Q_OBJECT

public:
    enum Column { Material, Angle };

    struct Ply
    {
        QPointer<ZORCompMaterial> material; // null: to be chosen
        double angle = 0;                   // radians
        QPointer<ZORCompPly> ply =
            nullptr;             // whose boundaries and rosette it has; null: none, or removed since
        bool isOriginal = false; // the row is that ply, else a copy of it
    };

    /// \param warning  icon of cells that do not fit
    ZORStdPlyModel(const QIcon& warning, QObject* parent);
    ~ZORStdPlyModel() override;

    const std::vector<Ply>& GetPlies() const { return m_plies; }
    void AddPly(const Ply& ply);
    void RemovePly(int row);
    /// Exchanges a ply with the next one.
    void SwapWithNext(int row);
    /// Appends copies of the plies in reverse order, so that the stack is symmetric.
    void Mirror();
    void SetMaterial(int row, ZORCompMaterial* material);
    /// Shows names that have changed, and materials that have gone.
    void RefreshMaterials();

    /// What is wrong with the first ply that does not fit; empty for nothing.
    QString FindProblem() const;
    /// Plies and thickness in words.
    QString GetSummary() const;

private:
    int GetNumRows() const override;
    QString GetTitle(int column) const override;
    QVariant GetCell(int row, int column, int role) const override;
    bool SetCell(int row, int column, const QVariant& value) override;
    void EmitRowChanged(int row);

    std::vector<Ply> m_plies;
};
