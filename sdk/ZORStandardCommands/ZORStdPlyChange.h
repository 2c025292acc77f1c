// Changes of the stack of a layup.

#pragma once

#include "ZORStdPlyModel.h"

#include <QJsonObject>
#include <QList>
#include <QPointer>
#include <QString>

#include <vector>

class ZORCompLayup;
class ZORCompPly;
class ZORCompRosette;
class ZORCompSequence;
class ZORGeoCurve;
class ZORStdCreation;

/// Makes the plies of a layup those of a table. The order of plies is that of their registration, so a ply that moves in
/// the stack leaves its object: the contents of the objects move, from the label to the boundaries. Plies that are not in
/// the table and were not there when it was filled stay, as do inactive ones.
class ZORStdPlyChange
{
public:
    using Plies = QList<QPointer<ZORCompPly>>;

    /// \param layup      not owned
    /// \param originals  the plies that the table was filled with
    /// \param rows       the table
    ZORStdPlyChange(ZORCompLayup& layup, const Plies& originals,
                    const std::vector<ZORStdPlyModel::Ply>& rows);

    /// \throws ZORSysException when the SDK refuses new plies; nothing has changed then
    void Apply();

private:
    /// What makes a ply, but for its place.
    struct Contents
    {
        QString label; // empty: a new one
        ZORCompMaterial* material = nullptr;
        double angle = 0;
        ZORCompRosette* rosette = nullptr;
        QList<const ZORGeoCurve*> boundaries;
        QJsonObject attributes;
    };

    static Contents ContentsOf(const ZORStdPlyModel::Ply& row);
    static void Fill(ZORCompPly& ply, const Contents& contents);
    /// The plies that stay, in the order of the stack.
    QList<ZORCompPly*> FindKept() const;
    ZORCompSequence* GetLastSequence(ZORStdCreation& creation) const;
    QString MakeLabel() const;

    ZORCompLayup& m_layup;
    const Plies m_originals;
    const std::vector<ZORStdPlyModel::Ply>& m_rows;
};
