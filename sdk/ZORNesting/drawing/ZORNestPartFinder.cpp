#include "ZORNestDrawing_p.h"
#include "ZORNestJoiner_p.h"
#include "ZORNestPartFinder_p.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkContext.h>

#include <QCoreApplication>

#include <algorithm>
#include <numeric>
#include <vector>

namespace ZORNestPartFinder {

namespace {

constexpr int kAutomaticLayer = 0;
constexpr int kNestLayer = 1;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestPartFinder)
};

// What a place is searched for: an outline, or something drawn.
struct Thing
{
    ZORNestPlaneBox box;
    double area = 0;                       // of outlines
    QList<ZORNestPlanePoint> witnesses;    // points of the thing
    const ZORNestChain* outline = nullptr; // not owned; null for a mark
    int father = -1;                       // the smallest outline around it
};

// Points in the middle of pieces, spread over the chain: where outlines touch, one may lie on the other.
QList<ZORNestPlanePoint> GetWitnesses(const ZORNestChain& chain)
{
    constexpr qsizetype kWanted = 5;
    QList<const ZORNestPiece*> pieces;
    for (const ZORNestCurve& curve : chain.curves) {
        for (const ZORNestPiece& piece : curve.pieces)
            pieces.append(&piece);
    }
    QList<ZORNestPlanePoint> points;
    const qsizetype count = std::min(kWanted, pieces.size());
    for (qsizetype i = 0; i < count; ++i)
        points.append(pieces[i * pieces.size() / count]->GetMiddle());
    return points;
}

bool IsWithin(const Thing& thing, const Thing& around)
{
    const auto isInside = [&](ZORNestPlanePoint point) { return around.outline->Contains(point); };
    const auto inside = std::count_if(thing.witnesses.cbegin(), thing.witnesses.cend(), isInside);
    return 2 * inside > thing.witnesses.size();
}

// A sweep along x; only outlines that reach over a thing's left side are looked at.
void FindFathers(std::vector<Thing>& things, const ZORWorkContext& context)
{
    std::vector<int> order(things.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return things[a].box.min.x < things[b].box.min.x; });
    std::vector<int> open;
    // Equal left sides: an outline that touches its hole there must be open already.
    for (size_t first = 0; first < order.size();) {
        size_t last = first;
        while (last < order.size() && things[order[last]].box.min.x == things[order[first]].box.min.x) {
            if (things[order[last]].outline)
                open.push_back(order[last]);
            ++last;
        }
        for (; first < last; ++first) {
            context.ThrowIfCanceled();
            Thing& thing = things[order[first]];
            std::erase_if(open, [&](int i) { return things[i].box.max.x < thing.box.min.x; });
            // What opened last is most often what lies closest around: larger outlines need no look then.
            for (auto candidate = open.crbegin(); candidate != open.crend(); ++candidate) {
                const Thing& around = things[*candidate];
                const bool isPossible = *candidate != order[first] && around.box.Contains(thing.box)
                                        && (!thing.outline || around.area > thing.area)
                                        && (thing.father < 0 || around.area < things[thing.father].area);
                if (isPossible && IsWithin(thing, around))
                    thing.father = *candidate;
            }
        }
    }
}

bool IsOutline(const ZORNestChain& chain)
{
    const int layer = GetLayer(chain.curves.constFirst().look.layer);
    return layer == kAutomaticLayer || layer == kNestLayer;
}

class Finder
{
public:
    Finder(QList<ZORNestChain> outlines, QList<ZORNestChain> marks, QList<ZORNestDrawnText> texts)
        : m_outlines(std::move(outlines))
        , m_marks(std::move(marks))
        , m_texts(std::move(texts))
    {
    }

    QList<ZORNestPart> Find(const QString& name, QStringList& report, const ZORWorkContext& context);

private:
    void MakeThings();
    void MakeShapes();
    void AddMarks(QStringList& report);

    QList<ZORNestChain> m_outlines;
    QList<ZORNestChain> m_marks;
    QList<ZORNestDrawnText> m_texts;
    std::vector<Thing> m_things; // outlines, marks, texts
    std::vector<int> m_part;     // of each outline; -1 for holes, until their parts are known
    std::vector<int> m_shape;    // of each outline in its part
    QList<ZORNestPart> m_parts;
};

void Finder::MakeThings()
{
    for (const ZORNestChain& outline : std::as_const(m_outlines))
        m_things.push_back({outline.GetBox(), std::abs(outline.GetArea()), GetWitnesses(outline), &outline});
    for (const ZORNestChain& mark : std::as_const(m_marks))
        m_things.push_back({mark.GetBox(), 0, GetWitnesses(mark)});
    for (const ZORNestDrawnText& text : std::as_const(m_texts)) {
        Thing thing;
        thing.box.Add(text.start);
        thing.witnesses = {text.start};
        m_things.push_back(thing);
    }
}

// Even depths are parts, odd ones holes of the part around them.
void Finder::MakeShapes()
{
    const size_t count = size_t(m_outlines.size());
    std::vector<int> byArea(count);
    std::iota(byArea.begin(), byArea.end(), 0);
    std::stable_sort(byArea.begin(), byArea.end(),
                     [&](int a, int b) { return m_things[a].area > m_things[b].area; });
    std::vector<bool> isHole(count);
    for (const int i : byArea) // fathers come first
        isHole[i] = m_things[i].father >= 0 && !isHole[m_things[i].father];

    m_part.assign(count, -1);
    m_shape.assign(count, 0);
    for (size_t i = 0; i < count; ++i) {
        if (isHole[i])
            continue;
        m_part[i] = int(m_parts.size());
        ZORNestPart part;
        part.shapes.append({m_outlines[qsizetype(i)], -1, false, false});
        m_parts.append(part);
    }
    for (size_t i = 0; i < count; ++i) {
        if (isHole[i]) {
            ZORNestPart& part = m_parts[m_part[m_things[i].father]];
            m_shape[i] = int(part.shapes.size());
            part.shapes.append({m_outlines[qsizetype(i)], 0, true, false});
        }
    }
    for (ZORNestPart& part : m_parts) {
        for (ZORNestPart::Shape& shape : part.shapes) {
            if ((shape.chain.GetArea() < 0) != shape.isHole)
                shape.chain.Reverse();
        }
    }
}

void Finder::AddMarks(QStringList& report)
{
    qsizetype lost = 0;
    const qsizetype outlines = m_outlines.size();
    for (qsizetype i = 0; i < m_marks.size() + m_texts.size(); ++i) {
        const int father = m_things[size_t(outlines + i)].father;
        const int part = father < 0 ? -1 : m_part[size_t(father)];
        if (part < 0)
            ++lost;
        else if (i < m_marks.size())
            m_parts[part].shapes.append({m_marks[i], 0, false, true});
        else
            m_parts[part].texts.append(m_texts[i - m_marks.size()]);
    }
    if (lost > 0)
        report.append(Texts::tr("left out: %1 curves and texts that lie on no part").arg(lost));
}

QList<ZORNestPart> Finder::Find(const QString& name, QStringList& report, const ZORWorkContext& context)
{
    MakeThings();
    FindFathers(m_things, context);
    MakeShapes();
    AddMarks(report);
    for (qsizetype i = 0; i < m_parts.size(); ++i)
        m_parts[i].name = m_parts.size() == 1 ? name : name + u'-' + QString::number(i + 1);
    return m_parts;
}

} // namespace

int GetLayer(const QString& name)
{
    static const struct
    {
        const char* name;
        int layer;
    } layers[] = {{"nest", 1},         {"tabs", 2},         {"etch box", 3},     {"etching data", 4},
                  {"non nestable", 5}, {"extra", 6},        {"lead out", 7},     {"lead in", 8},
                  {"line string", 9},  {"grid string", 10}, {"auto nibble", 11}, {"auto bridge", 12},
                  {"grain", 14}};
    QString plain = name.simplified().toLower();
    plain.replace(u'_', u' ').replace(u'-', u' ');
    for (const auto& layer : layers) {
        if (plain == QLatin1String(layer.name))
            return layer.layer;
    }
    return kAutomaticLayer;
}

QList<ZORNestPart> FindParts(ZORNestDrawing& drawing, double tolerance, const QString& name,
                             QStringList& report, const ZORWorkContext& context)
{
    ZORNestJoiner::Outcome joined = ZORNestJoiner::Join(drawing.TakeChains(), tolerance, context);
    report.append(drawing.GetReport());
    if (joined.duplicates > 0)
        report.append(Texts::tr("left out: %1 exact copies").arg(joined.duplicates));
    if (joined.gaps > 0)
        report.append(Texts::tr("closed: %1 gaps of up to %2 mm")
                          .arg(QString::number(joined.gaps), QString::number(joined.largestGap)));

    QList<ZORNestChain> outlines;
    QList<ZORNestChain> marks = std::move(joined.open);
    const qsizetype loose = marks.size();
    for (ZORNestChain& chain : joined.closed) {
        const bool isOutline = IsOutline(chain) && chain.GetArea() != 0;
        (isOutline ? outlines : marks).append(std::move(chain));
    }
    if (outlines.isEmpty()) {
        throw ZORSysException(
            loose == 0 ? Texts::tr("no closed outline found")
                       : Texts::tr("no closed outline found: %1 curves have loose ends").arg(loose));
    }
    if (outlines.size() > kMaximumOutlines)
        throw ZORSysException(Texts::tr("drawing has more than %1 outlines").arg(kMaximumOutlines));
    return Finder(std::move(outlines), std::move(marks), drawing.TakeTexts()).Find(name, report, context);
}

} // namespace ZORNestPartFinder
