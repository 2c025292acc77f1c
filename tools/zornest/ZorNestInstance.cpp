#include "ZorNestInstance.h"

#include "ZorNestJson.h"

#include <QJsonDocument>

#include <cmath>
#include <numbers>
#include <set>

using namespace ZORNestSolver;

namespace ZorNest {

namespace {

constexpr double Degree = std::numbers::pi / 180;
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

/// Two of the elements as coordinates.
Point ReadPoint(const Node& node, size_t at = 0)
{
    const std::vector<Node> values = node.GetElements();
    if (values.size() < at + 2)
        node.Refuse("coordinates are missing");
    return {values[at].GetNumber(), values[at + 1].GetNumber()};
}

/// Without the repeated first point.
Ring ReadRing(const Node& node)
{
    if (node.IsAbsent())
        node.Refuse("is missing");
    Ring ring;
    for (const Node& point : node.GetElements())
        ring.push_back(ReadPoint(point));
    if (ring.size() > 1 && ring.front() == ring.back())
        ring.pop_back();
    return ring;
}

Polygon ReadPolygon(const Node& shape)
{
    const Node data = shape["data"];
    if (data.IsAbsent() || data.IsArray())
        return {ReadRing(data)};
    Polygon polygon{ReadRing(data["outer"])};
    for (const Node& inner : data["inner"].GetElements())
        polygon.push_back(ReadRing(inner));
    return polygon;
}

/// ["L", x, y] or ["A", x, y, centre x, centre y, "ccw" or "cw"].
Segment ReadSegment(const Node& node)
{
    const std::vector<Node> values = node.GetElements();
    const QString type = values.empty() ? QString() : values[0].GetText({});
    Segment segment;
    segment.end = ReadPoint(node, 1);
    segment.isArc = type == QLatin1String("A");
    if (!segment.isArc && type != QLatin1String("L"))
        node.Refuse("a segment begins with \"L\" or \"A\"");
    if (segment.isArc) {
        segment.centre = ReadPoint(node, 3);
        const QString turn = values.size() > 5 ? values[5].GetText({}) : QString();
        segment.counterClockwise = turn == QLatin1String("ccw");
        if (!segment.counterClockwise && turn != QLatin1String("cw"))
            node.Refuse("an arc ends with \"ccw\" or \"cw\"");
    }
    return segment;
}

std::vector<Contour> ReadContours(const Node& shape)
{
    if (shape.IsAbsent())
        shape.Refuse("is missing");
    const QString type = shape["type"].GetText("simple_polygon");
    std::vector<Contour> contours;
    if (type == QLatin1String("path")) {
        for (const Node& node : shape["contours"].GetElements()) {
            Contour contour;
            contour.start = ReadPoint(node["start"]);
            for (const Node& segment : node["segs"].GetElements())
                contour.segments.push_back(ReadSegment(segment));
            contours.push_back(contour);
        }
    } else if (type == QLatin1String("simple_polygon") || type == QLatin1String("polygon")) {
        for (const Ring& ring : ReadPolygon(shape))
            contours.push_back(MakeContour(ring));
    } else {
        shape["type"].Refuse("must be \"simple_polygon\", \"polygon\" or \"path\"");
    }
    return contours;
}

Item ReadItem(const Node& node, int id)
{
    Item item;
    item.name = node["name"].GetText(QString::number(id)).toStdString();
    item.quantity = node["demand"].GetInteger(1, 0);
    item.priority = node["priority"].GetInteger(0, std::numeric_limits<int>::min());
    item.mirrored = node["mirrored"].GetFlag();
    item.flippable = node["flippable"].GetFlag();
    item.contours = ReadContours(node["shape"]);
    for (const Node& angle : node["allowed_orientations"].GetElements())
        item.allowedAngles.push_back(angle.GetNumber() * Degree);
    item.orientation = node["orientation_deg"].GetNumber(0) * Degree;
    item.grain90 = node["grain90"].GetFlag();
    item.grain180 = node["grain180"].GetFlag();
    item.grain270 = node["grain270"].GetFlag();
    const bool isFree = item.allowedAngles.empty() && node["orientation_deg"].IsAbsent();
    item.maxDeviation = node["max_deviation_deg"].GetSize(isFree ? 180 : 0) * Degree;
    item.deviationIncrement = node["deviation_increment_deg"].GetSize(0) * Degree;
    return item;
}

/// Zones of quality 0 are defects.
std::vector<Polygon> ReadDefects(const Node& node)
{
    std::vector<Polygon> defects;
    for (const Node& defect : node["defects"].GetElements())
        defects.push_back(ReadPolygon(defect));
    for (const Node& zone : node["zones"].GetElements())
        if (zone["quality"].GetInteger(1, 0) == 0)
            defects.push_back(ReadPolygon(zone["shape"]));
    return defects;
}

int ReadStock(const Node& node)
{
    return node.IsNull() ? -1 : node.GetInteger(1, 0);
}

SheetKind ReadKind(const Node& node, int id)
{
    SheetKind kind;
    kind.name = node["name"].GetText(QString::number(id)).toStdString();
    kind.cost = node["cost"].GetSize(0);
    kind.defects = ReadDefects(node);
    const Node trims = node["trims"];
    kind.leftTrim = trims["left"].GetSize(0);
    kind.rightTrim = trims["right"].GetSize(0);
    kind.topTrim = trims["top"].GetSize(0);
    kind.bottomTrim = trims["bottom"].GetSize(0);
    const bool isBin = !node["stock"].IsAbsent(); // its width lies along x
    const Node length = isBin ? node["width"] : node["length"];
    kind.quantity = ReadStock(isBin ? node["stock"] : node["quantity"]);
    kind.width = (isBin ? node["height"] : node["width"]).GetSize(0);
    kind.length = !isBin && (length.IsNull() || length.IsAbsent()) ? NotANumber : length.GetSize(0);
    for (const char* key : {"outline", "shape"})
        if (!node[key].IsAbsent())
            kind.outline = ReadPolygon(node[key]);
    if (!node["shape"].IsAbsent()) {
        const Box box = GetBox(kind.outline);
        kind.length = std::max(0.0, box.max.x);
        kind.width = std::max(0.0, box.max.y);
    }
    return kind;
}

/// The number of the item or sheet in the document, the same for no two of them.
int ReadId(const Node& node, size_t index, std::set<int>& known)
{
    const int id = node["id"].GetInteger(static_cast<int>(index), 0);
    if (!known.insert(id).second)
        node["id"].Refuse(QString("%1 is used twice").arg(id));
    return id;
}

void ReadKinds(const Node& root, Instance& instance)
{
    std::set<int> known;
    if (!root["strip_height"].IsAbsent()) {
        SheetKind strip;
        strip.name = "strip";
        strip.width = root["strip_height"].GetSize(0);
        strip.length = NotANumber;
        instance.job.kinds.push_back(strip);
        instance.kindIds.push_back(0);
        known.insert(0);
    }
    for (const char* key : {"bins", "packagings"}) {
        for (const Node& node : root[key].GetElements()) {
            instance.kindIds.push_back(ReadId(node, instance.kindIds.size(), known));
            instance.job.kinds.push_back(ReadKind(node, instance.kindIds.back()));
        }
    }
}

UsageRule ReadUsageRule(const Node& node)
{
    const QString rule = node.GetText("AsListed");
    if (rule == QLatin1String("AsListed"))
        return UsageRule::AsListed;
    if (rule == QLatin1String("BestMix"))
        return UsageRule::BestMix;
    if (rule != QLatin1String("BestSize"))
        node.Refuse("must be \"AsListed\", \"BestMix\" or \"BestSize\"");
    return UsageRule::BestSize;
}

void ReadParameters(const Node& parameters, Job& job)
{
    job.separation = parameters["item_separation"].GetSize(0);
    job.frameWidth = parameters["frame_width"].GetSize(0);
    job.defectSeparation = parameters["defect_separation"].GetSize(0);
    job.maxDeviation = parameters["max_deviation_deg"].GetSize(0) * Degree;
    job.deviationIncrement = parameters["deviation_increment_deg"].GetSize(0) * Degree;
    job.grain90 = parameters["grain90"].GetFlag();
    job.grain180 = parameters["grain180"].GetFlag();
    job.grain270 = parameters["grain270"].GetFlag();
    job.stackSize = parameters["stack_size"].GetInteger(1, 0);
    job.singleSided = parameters["single_sided"].GetFlag();
    parameters["allow_overproduction"].GetFlag();
    job.usageRule = ReadUsageRule(parameters["usage_rule"]);
}

void Read(const Node& root, Instance& instance)
{
    instance.name = root["name"].GetText({});
    std::set<int> known;
    for (const Node& node : root["items"].GetElements()) {
        instance.itemIds.push_back(ReadId(node, instance.itemIds.size(), known));
        instance.job.items.push_back(ReadItem(node, instance.itemIds.back()));
    }
    ReadKinds(root, instance);
    ReadParameters(root["params"], instance.job);
    if (instance.job.items.empty())
        root["items"].Refuse("there are none");
    if (instance.job.kinds.empty())
        root.Refuse("\"strip_height\", \"bins\" or \"packagings\" are missing");
}

QJsonArray WritePlacements(const Instance& instance, const NestedSheet& sheet)
{
    QJsonArray placements;
    for (const Placement& placement : sheet.placements)
        placements.append(QJsonObject{{"item", instance.itemIds[placement.item]},
                                      {"mirror", placement.pose.mirrored},
                                      {"rotation_deg", placement.pose.angle / Degree},
                                      {"x", placement.pose.position.x},
                                      {"y", placement.pose.position.y}});
    return placements;
}

} // namespace

Instance ReadInstance(const QByteArray& document)
{
    Instance instance;
    QJsonParseError error;
    const QJsonDocument parsed = QJsonDocument::fromJson(document, &error);
    if (error.error != QJsonParseError::NoError) {
        instance.error = QString("%1, at byte %2").arg(error.errorString()).arg(error.offset);
        return instance;
    }
    try {
        Read(Node(parsed.isObject() ? QJsonValue(parsed.object()) : QJsonValue(parsed.array())), instance);
    } catch (const DocumentError& found) {
        instance.error = found.message;
    }
    return instance;
}

QByteArray WriteLayout(const Instance& instance, const Solution& solution)
{
    QJsonArray sheets;
    for (const NestedSheet& sheet : solution.sheets) {
        QJsonObject object{{"packaging", instance.kindIds[sheet.kind]},
                           {"stack", sheet.stack},
                           {"placements", WritePlacements(instance, sheet)}};
        if (instance.job.kinds[sheet.kind].IsRoll())
            object.insert("length", sheet.usedLength);
        sheets.append(object);
    }
    QJsonArray unplaced;
    for (const UnplacedItem& item : solution.unplaced)
        unplaced.append(QJsonObject{{"item", instance.itemIds[item.item]},
                                    {"count", item.count},
                                    {"reason", QString::fromStdString(item.reason)}});
    return QJsonDocument(
               QJsonObject{
                   {"format", "nest-layout"}, {"version", 1}, {"sheets", sheets}, {"unplaced", unplaced}})
        .toJson();
}

} // namespace ZorNest
