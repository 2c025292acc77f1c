#include "ZORStdPlyChange.h"

#include "ZORStdObjects.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompSequence.h>
#include <ZORGeometry/ZORGeoCurve.h>

#include <QCoreApplication>
#include <QSet>

#include <algorithm>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompLayupCmd)
};

} // namespace

ZORStdPlyChange::ZORStdPlyChange(ZORCompLayup& layup, const Plies& originals,
                                 const std::vector<ZORStdPlyModel::Ply>& rows)
    : m_layup(layup)
    , m_originals(originals)
    , m_rows(rows)
{
}

ZORStdPlyChange::Contents ZORStdPlyChange::ContentsOf(const ZORStdPlyModel::Ply& row)
{
    Contents contents;
    contents.material = row.material;
    contents.angle = row.angle;
    if (const ZORCompPly* const ply = row.ply) {
        contents.label = row.isOriginal ? ply->GetLabel() : QString();
        contents.rosette = ply->GetRosette();
        contents.boundaries = ply->GetBoundaries();
        contents.attributes = ply->GetAttributes();
    }
    return contents;
}

void ZORStdPlyChange::Fill(ZORCompPly& ply, const Contents& contents)
{
    if (!contents.label.isEmpty() && contents.label != ply.GetLabel())
        ply.SetLabel(contents.label);
    ply.SetMaterial(contents.material);
    ply.SetAngle(contents.angle);
    ply.SetRosette(contents.rosette);
    ply.SetBoundaries(contents.boundaries);
    if (contents.attributes != ply.GetAttributes())
        ply.SetAttributes(contents.attributes);
}

QList<ZORCompPly*> ZORStdPlyChange::FindKept() const
{
    QSet<const ZORCompPly*> inTable;
    for (const ZORStdPlyModel::Ply& row : m_rows) {
        if (row.isOriginal)
            inTable.insert(row.ply);
    }
    QList<ZORCompPly*> kept = m_layup.GetPlies();
    kept.removeIf([&inTable](const ZORCompPly* ply) { return !inTable.contains(ply); });
    return kept;
}

ZORCompSequence* ZORStdPlyChange::GetLastSequence(ZORStdCreation& creation) const
{
    const QList<ZORCompSequence*> sequences = m_layup.GetSequences();
    const auto last = std::find_if(sequences.rbegin(), sequences.rend(),
                                   [](const ZORCompSequence* sequence) { return sequence->IsActive(); });
    return last != sequences.rend() ? *last
                                    : creation.Add(new ZORCompSequence(&m_layup),
                                                   Texts::tr("Sequence %1").arg(sequences.size() + 1));
}

QString ZORStdPlyChange::MakeLabel() const
{
    QSet<QString> labels;
    for (const ZORFeatObject* child : m_layup.GetAllChildren())
        labels.insert(child->GetLabel());
    for (int number = 1;; ++number) {
        const QString label = Texts::tr("Ply %1").arg(number);
        if (!labels.contains(label))
            return label;
    }
}

void ZORStdPlyChange::Apply()
{
    // Before anything changes: the contents of a row may be those of an object that another row moves into.
    std::vector<Contents> contents;
    for (const ZORStdPlyModel::Ply& row : m_rows)
        contents.push_back(ContentsOf(row));

    QList<ZORCompPly*> plies = FindKept();
    const QSet<const ZORCompPly*> kept(plies.begin(), plies.end());
    ZORStdCreation creation;
    while (size_t(plies.size()) < contents.size()) {
        ZORCompSequence* const sequence = GetLastSequence(creation);
        plies.append(creation.Add(new ZORCompPly(sequence), MakeLabel()));
    }
    creation.Keep();

    for (size_t i = 0; i < contents.size(); ++i)
        Fill(*plies[qsizetype(i)], contents[i]);
    for (const QPointer<ZORCompPly>& ply : m_originals) {
        if (ply && !kept.contains(ply) && ply->GetLayup() == &m_layup)
            ply->Remove();
    }
}
