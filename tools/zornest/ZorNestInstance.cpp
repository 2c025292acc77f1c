#include "ZorNestInstance.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <numbers>

using namespace ZORNestSolver;

namespace ZorNest {

namespace {

constexpr double Degree = std::numbers::pi / 180;
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

Point ReadPoint(const QJsonArray& values, int at = 0)
{
    return {values[at].toDouble(NotANumber), values[at + 1].toDouble(NotANumber)};
}

/// Without the repeated first point.
Ring ReadRing(const QJsonArray& values)
{
    Ring ring;
    for (const QJsonValue& value : values)
        ring.push_back(ReadPoint(value.toArray()));
    if (ring.size() > 1 && ring.front() == ring.back())
        ring.pop_back();
    return ring;
}

Polygon ReadPolygon(const QJsonObject& shape)
{
    const QJsonValue data = shape["data"];
    if (data.isArray())
        return {ReadRing(data.toArray())};
    Polygon polygon{ReadRing(data["outer"].toArray())};
    for (const QJsonValue& inner : data["inner"].toArray())
        polygon.push_back(ReadRing(inner.toArray()));
    return polygon;
}

/// ["L", x, y] or ["A", x, y, centre x, centre y, "ccw" or "cw"].
Contour ReadContour(const QJsonObject& object)
{
    Contour contour;
    contour.start = ReadPoint(object["start"].toArray());
    for (const QJsonValue& value : object["segs"].toArray()) {
        const QJsonArray values = value.toArray();
        Segment segment;
        segment.end = ReadPoint(values, 1);
        segment.isArc = values[0].toString() == QLatin1String("A");
        if (segment.isArc) {
            segment.centre = ReadPoint(values, 3);
            segment.counterClockwise = values[5].toString() != QLatin1String("cw");
        }
        contour.segments.push_back(segment);
    }
    return contour;
}

std::vector<Contour> ReadContours(const QJsonObject& shape)
{
    std::vector<Contour> contours;
    for (const QJsonValue& contour : shape["contours"].toArray())
        contours.push_back(ReadContour(contour.toObject()));
    if (contours.empty())
        for (const Ring& ring : ReadPolygon(shape))
            contours.push_back(MakeContour(ring));
    return contours;
}

Item ReadItem(const QJsonObject& object)
{
    Item item;
    item.name = object["name"].toString(QString::number(object["id"].toInt())).toStdString();
    item.quantity = object["demand"].toInt(1);
    item.priority = object["priority"].toInt();
    item.mirrored = object["mirrored"].toBool();
    item.flippable = object["flippable"].toBool();
    item.contours = ReadContours(object["shape"].toObject());
    for (const QJsonValue& angle : object["allowed_orientations"].toArray())
        item.allowedAngles.push_back(angle.toDouble() * Degree);
    if (object.contains("orientation_deg")) {
        item.orientation = object["orientation_deg"].toDouble() * Degree;
        item.grain90 = object["grain90"].toBool();
        item.grain180 = object["grain180"].toBool();
        item.grain270 = object["grain270"].toBool();
        item.maxDeviation = object["max_deviation_deg"].toDouble() * Degree;
        item.deviationIncrement = object["deviation_increment_deg"].toDouble() * Degree;
    } else if (item.allowedAngles.empty()) {
        item.maxDeviation = std::numbers::pi;
    }
    return item;
}

/// Zones of quality 0 are defects.
std::vector<Polygon> ReadDefects(const QJsonObject& object)
{
    std::vector<Polygon> defects;
    for (const QJsonValue& defect : object["defects"].toArray())
        defects.push_back(ReadPolygon(defect.toObject()));
    for (const QJsonValue& zone : object["zones"].toArray())
        if (zone["quality"].toInt(1) == 0)
            defects.push_back(ReadPolygon(zone["shape"].toObject()));
    return defects;
}

int ReadStock(const QJsonValue& value)
{
    return value.isNull() ? -1 : value.toInt(1);
}

SheetKind ReadKind(const QJsonObject& object)
{
    SheetKind kind;
    kind.name = object["name"].toString(QString::number(object["id"].toInt())).toStdString();
    kind.cost = object["cost"].toDouble();
    kind.defects = ReadDefects(object);
    if (object.contains("outline"))
        kind.outline = ReadPolygon(object["outline"].toObject());
    const QJsonValue trims = object["trims"];
    kind.leftTrim = trims["left"].toDouble();
    kind.rightTrim = trims["right"].toDouble();
    kind.topTrim = trims["top"].toDouble();
    kind.bottomTrim = trims["bottom"].toDouble();
    if (object.contains("stock")) { // a bin: its width lies along x
        kind.quantity = ReadStock(object["stock"]);
        kind.length = object["width"].toDouble();
        kind.width = object["height"].toDouble();
    } else {
        kind.quantity = ReadStock(object["quantity"]);
        kind.width = object["width"].toDouble();
        kind.length = object["length"].toDouble(NotANumber);
    }
    if (object.contains("shape")) {
        kind.outline = ReadPolygon(object["shape"].toObject());
        const Box box = GetBox(kind.outline);
        kind.length = box.max.x;
        kind.width = box.max.y;
    }
    return kind;
}

std::vector<SheetKind> ReadKinds(const QJsonObject& root)
{
    std::vector<SheetKind> kinds;
    if (root.contains("strip_height")) {
        SheetKind strip;
        strip.name = "strip";
        strip.width = root["strip_height"].toDouble();
        strip.length = NotANumber;
        kinds.push_back(strip);
    }
    for (const char* key : {"bins", "packagings"})
        for (const QJsonValue& kind : root[QLatin1String(key)].toArray())
            kinds.push_back(ReadKind(kind.toObject()));
    return kinds;
}

void ReadParameters(const QJsonObject& parameters, Job& job)
{
    job.separation = parameters["item_separation"].toDouble();
    job.frameWidth = parameters["frame_width"].toDouble();
    job.defectSeparation = parameters["defect_separation"].toDouble();
    job.stackSize = parameters["stack_size"].toInt(1);
    job.singleSided = parameters["single_sided"].toBool();
    const QString rule = parameters["usage_rule"].toString();
    job.usageRule = rule == QLatin1String("BestMix")    ? UsageRule::BestMix
                    : rule == QLatin1String("BestSize") ? UsageRule::BestSize
                                                        : UsageRule::AsListed;
}

} // namespace

Instance ReadInstance(const QByteArray& document)
{
    Instance instance;
    QJsonParseError error;
    const QJsonObject root = QJsonDocument::fromJson(document, &error).object();
    if (error.error != QJsonParseError::NoError) {
        instance.error = error.errorString();
        return instance;
    }
    instance.name = root["name"].toString();
    for (const QJsonValue& item : root["items"].toArray())
        instance.job.items.push_back(ReadItem(item.toObject()));
    instance.job.kinds = ReadKinds(root);
    ReadParameters(root["params"].toObject(), instance.job);
    if (instance.job.items.empty())
        instance.error = QLatin1String("no items");
    else if (instance.job.kinds.empty())
        instance.error = QLatin1String("no sheets");
    return instance;
}

QByteArray WriteLayout(const Job& job, const Solution& solution)
{
    QJsonArray sheets;
    for (const NestedSheet& sheet : solution.sheets) {
        QJsonArray placements;
        for (const Placement& placement : sheet.placements)
            placements.append(QJsonObject{{"item", static_cast<int>(placement.item)},
                                          {"mirror", placement.pose.mirrored},
                                          {"rotation_deg", placement.pose.angle / Degree},
                                          {"x", placement.pose.position.x},
                                          {"y", placement.pose.position.y}});
        QJsonObject object{
            {"packaging", static_cast<int>(sheet.kind)}, {"stack", sheet.stack}, {"placements", placements}};
        if (job.kinds[sheet.kind].IsRoll())
            object.insert("length", sheet.usedLength);
        sheets.append(object);
    }
    QJsonArray unplaced;
    for (const UnplacedItem& item : solution.unplaced)
        unplaced.append(QJsonObject{{"item", static_cast<int>(item.item)},
                                    {"count", item.count},
                                    {"reason", QString::fromStdString(item.reason)}});
    return QJsonDocument(
               QJsonObject{
                   {"format", "nest-layout"}, {"version", 1}, {"sheets", sheets}, {"unplaced", unplaced}})
        .toJson();
}

} // namespace ZorNest
