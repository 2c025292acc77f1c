// The stack of plies of a layup while it is made.

#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QPointer>

#include <vector>

class ZORCompMaterial;

/// A row per ply, the first one lies on the support: material and angle.
class ZORStdPlyModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Material, Angle };

    struct Ply
    {
        QPointer<ZORCompMaterial> material; // null: to be chosen
        double angle = 0;                   // radians
    };

    /// \param warning  icon of cells that do not fit
    ZORStdPlyModel(const QIcon& warning, QObject* parent);
    ~ZORStdPlyModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Angles, radians; materials are set by SetMaterial().
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    const std::vector<Ply>& GetPlies() const { return m_plies; }
    void AddPly(const Ply& ply);
    void RemovePly(int row);
    /// Exchanges a ply with the next one.
    void SwapWithNext(int row);
    /// Appends the plies in reverse order, so that the stack is symmetric.
    void Mirror();
    void SetMaterial(int row, ZORCompMaterial* material);
    /// Shows names that have changed, and materials that have gone.
    void RefreshMaterials();

    /// What is wrong with the first ply that does not fit; empty for nothing.
    QString FindProblem() const;
    /// Plies and thickness in words.
    QString GetSummary() const;

private:
    void EmitRowChanged(int row);

    const QIcon m_warning;
    std::vector<Ply> m_plies;
};
