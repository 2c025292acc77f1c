#include "ZORNestInstanceReader_p.h"
#include "ZORNestShapeReader_p.h"
#include "solver/base/ZORNestSolverAngle.h"

#include <ZORSystem/ZORSysException.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

using ZORNestSolver::Box;
using ZORNestSolver::Item;
using ZORNestSolver::Job;
using ZORNestSolver::kDegree;
using ZORNestSolver::Polygon;
using ZORNestSolver::SheetKind;
using ZORNestSolver::UsageRule;

namespace {

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr qsizetype kMaximumLists = 4'000'000; // in a translation; each takes up to 300 bytes once it is read

/// Zones of quality 0 are defects.
std::vector<Polygon> ReadDefects(const ZORNestJsonNode& node)
{
    std::vector<Polygon> defects;
    node["defects"].ForEach("defects", [&defects](const ZORNestJsonNode& defect) {
        defects.push_back(ZORNestShapeReader::ReadPolygon(defect));
    });
    node["zones"].ForEach("zones", [&defects](const ZORNestJsonNode& zone) {
        if (zone["quality"].GetInteger(1, 0) == 0)
            defects.push_back(ZORNestShapeReader::ReadPolygon(zone["shape"]));
    });
    return defects;
}

int ReadStock(const ZORNestJsonNode& node)
{
    return node.IsNull() ? -1 : node.GetInteger(1, 0);
}

/// The name of an item, or else its number in the document, or else its place.
QString ReadName(const ZORNestJsonNode& node, qsizetype index)
{
    QString name = node["name"].GetText({});
    if (!name.isEmpty())
        return name;
    const QJsonValue id = node["id"].GetValue();
    return id.isDouble() ? QString::number(id.toInteger(index)) : id.toString(QString::number(index));
}

} // namespace

Item ZORNestInstanceReader::ReadItem(const ZORNestJsonNode& node, int id)
{
    Item item;
    item.name = node["name"].GetText(QString::number(id)).toStdString();
    item.quantity = node["demand"].GetInteger(1, 0);
    item.priority = node["priority"].GetInteger(0, std::numeric_limits<int>::min());
    item.mirrored = node["mirrored"].GetFlag();
    item.flippable = node["flippable"].GetFlag();
    ZORNestShapeReader::ReadContours(node["shape"], item.contours);
    node["allowed_orientations"].ForEach("allowed_orientations", [&item](const ZORNestJsonNode& angle) {
        item.allowedAngles.push_back(angle.GetNumber() * kDegree);
    });
    item.orientation = node["orientation_deg"].GetNumber(0) * kDegree;
    item.grain90 = node["grain90"].GetFlag();
    item.grain180 = node["grain180"].GetFlag();
    item.grain270 = node["grain270"].GetFlag();
    const bool isFree = item.allowedAngles.empty() && node["orientation_deg"].IsAbsent();
    item.maxDeviation = node["max_deviation_deg"].GetSize(isFree ? 180 : 0) * kDegree;
    item.deviationIncrement = node["deviation_increment_deg"].GetSize(0) * kDegree;
    return item;
}

SheetKind ZORNestInstanceReader::ReadKind(const ZORNestJsonNode& node, int id)
{
    SheetKind kind;
    kind.name = node["name"].GetText(QString::number(id)).toStdString();
    kind.cost = node["cost"].GetSize(0);
    kind.defects = ReadDefects(node);
    const ZORNestJsonNode trims = node["trims"];
    kind.leftTrim = trims["left"].GetSize(0);
    kind.rightTrim = trims["right"].GetSize(0);
    kind.topTrim = trims["top"].GetSize(0);
    kind.bottomTrim = trims["bottom"].GetSize(0);
    const bool isBin = !node["stock"].IsAbsent(); // its width lies along x
    const ZORNestJsonNode length = isBin ? node["width"] : node["length"];
    kind.quantity = ReadStock(isBin ? node["stock"] : node["quantity"]);
    kind.width = (isBin ? node["height"] : node["width"]).GetSize(0);
    kind.length = !isBin && (length.IsNull() || length.IsAbsent()) ? kNotANumber : length.GetSize(0);
    for (const char* key : {"outline", "shape"})
        if (!node[key].IsAbsent())
            kind.outline = ZORNestShapeReader::ReadPolygon(node[key]);
    if (!node["shape"].IsAbsent()) {
        const Box box = GetBox(kind.outline);
        kind.length = std::max(0.0, box.max.x);
        kind.width = std::max(0.0, box.max.y);
    }
    return kind;
}

/// Returns the number of the item or sheet in the document, the same for no two of them.
int ZORNestInstanceReader::ReadId(const ZORNestJsonNode& node, size_t index, std::set<int>& known)
{
    const int id = node["id"].GetInteger(static_cast<int>(index), 0);
    if (!known.insert(id).second)
        node["id"].Refuse(tr("%1 is used twice").arg(id));
    return id;
}

void ZORNestInstanceReader::ReadKinds(const ZORNestJsonNode& root)
{
    std::vector<int>& ids = m_instance.kindIds;
    std::vector<SheetKind>& kinds = m_instance.job.kinds;
    std::set<int> known;
    if (!root["strip_height"].IsAbsent()) {
        SheetKind strip;
        strip.name = "strip";
        strip.width = root["strip_height"].GetSize(0);
        strip.length = kNotANumber;
        kinds.push_back(strip);
        ids.push_back(0);
        known.insert(0);
    }
    for (const char* key : {"bins", "packagings"}) {
        root[key].ForEach(key, [&](const ZORNestJsonNode& node) {
            ids.push_back(ReadId(node, ids.size(), known));
            kinds.push_back(ReadKind(node, ids.back()));
        });
    }
}

UsageRule ZORNestInstanceReader::ReadUsageRule(const ZORNestJsonNode& node)
{
    const QString rule = node.GetText(QStringLiteral("AsListed"));
    if (rule == u"AsListed")
        return UsageRule::AsListed;
    if (rule == u"BestMix")
        return UsageRule::BestMix;
    if (rule != u"BestSize")
        node.Refuse(tr("must be \"AsListed\", \"BestMix\" or \"BestSize\""));
    return UsageRule::BestSize;
}

void ZORNestInstanceReader::ReadParameters(const ZORNestJsonNode& parameters)
{
    Job& job = m_instance.job;
    job.separation = parameters["item_separation"].GetSize(0);
    job.frameWidth = parameters["frame_width"].GetSize(0);
    job.defectSeparation = parameters["defect_separation"].GetSize(0);
    job.maxDeviation = parameters["max_deviation_deg"].GetSize(0) * kDegree;
    job.deviationIncrement = parameters["deviation_increment_deg"].GetSize(0) * kDegree;
    job.grain90 = parameters["grain90"].GetFlag();
    job.grain180 = parameters["grain180"].GetFlag();
    job.grain270 = parameters["grain270"].GetFlag();
    job.stackSize = parameters["stack_size"].GetInteger(1, 0);
    job.singleSided = parameters["single_sided"].GetFlag();
    parameters["allow_overproduction"].GetFlag();
    job.usageRule = ReadUsageRule(parameters["usage_rule"]);
}

void ZORNestInstanceReader::ReadJob(const ZORNestJsonNode& root)
{
    m_instance.name = root["name"].GetText({});
    std::vector<int>& ids = m_instance.itemIds;
    std::set<int> known;
    root["items"].ForEach("items", [&](const ZORNestJsonNode& node) {
        ids.push_back(ReadId(node, ids.size(), known));
        m_instance.job.items.push_back(ReadItem(node, ids.back()));
    });
    ReadKinds(root);
    ReadParameters(root["params"]);
    if (m_instance.job.items.empty())
        root["items"].Refuse(tr("there are none"));
    if (m_instance.job.kinds.empty())
        root.Refuse(tr("\"strip_height\", \"bins\" or \"packagings\" are missing"));
}

/// Reads names and contours up to the first fault.
void ZORNestInstanceReader::ReadOutlines(const ZORNestJsonNode& root)
{
    if (!root["items"].IsArray())
        throw ZORSysException(tr("no nesting instance: 'items' is missing"));
    m_instance.name = root["name"].GetText({});
    const QJsonArray list = root["items"].GetList();
    for (qsizetype i = 0; i < list.size() && m_instance.fault.isEmpty(); ++i) {
        const ZORNestJsonNode node = root["items"].GetElement(list, i);
        Item& item = m_instance.job.items.emplace_back();
        item.name = ReadName(node, i).toStdString();
        try {
            ZORNestShapeReader::ReadContours(node["shape"], item.contours);
        } catch (const ZORNestJsonFault& fault) {
            m_instance.fault = fault.message;
        }
    }
}

void ZORNestInstanceReader::Read(const QByteArray& document, ZORNestInstance::Purpose purpose)
{
    const bool isTranslation = purpose == ZORNestInstance::Purpose::Translation;
    if (isTranslation && document.count('[') + document.count('{') > kMaximumLists)
        throw ZORSysException(tr("JSON has more than %1 lists and objects").arg(kMaximumLists));
    QJsonParseError error;
    const QJsonDocument parsed = QJsonDocument::fromJson(document, &error);
    if (error.error != QJsonParseError::NoError) {
        const QString text = isTranslation ? tr("no JSON: %1 (byte %2)") : tr("%1, at byte %2");
        throw ZORSysException(text.arg(error.errorString(), QString::number(error.offset)));
    }
    const QJsonValue value = parsed.isObject() ? QJsonValue(parsed.object()) : QJsonValue(parsed.array());
    const ZORNestJsonNode root(value, purpose);
    if (isTranslation) {
        ReadOutlines(root);
        return;
    }
    try {
        ReadJob(root);
    } catch (const ZORNestJsonFault& fault) {
        throw ZORSysException(fault.message);
    }
}
