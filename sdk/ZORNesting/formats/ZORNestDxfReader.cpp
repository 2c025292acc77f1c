#include "ZORNestDxfEntities_p.h"
#include "ZORNestDxfReader_p.h"
#include "ZORNestDxfText_p.h"
#include "drawing/ZORNestUnits_p.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkContext.h>

#include <algorithm>
#include <numbers>
#include <optional>

using zor::nest::kInch;

namespace {

// Millimetres of the units that $INSUNITS numbers; 0 for those that are none of a drawing.
double GetUnit(int number)
{
    static constexpr double kUnits[] = {0,   kInch,       12 * kInch,  5280 * 12 * kInch, 1,    10,   1000,
                                        1e6, kInch / 1e6, kInch / 1e3, 36 * kInch,        1e-7, 1e-6, 1e-3,
                                        100, 1e4,         1e5};
    return number >= 0 && number < int(std::size(kUnits)) ? kUnits[number] : 0;
}

QString GetKey(QByteArrayView name)
{
    return ZORNestDxfRecord::ToText(name).toUpper();
}

// The color of 24 bits that takes precedence over an indexed one.
std::optional<QColor> GetTrueColor(const ZORNestDxfRecord& record)
{
    if (!record.Has(420))
        return std::nullopt;
    return QColor(QRgb(record.GetInteger(420)) & 0xffffff);
}

// Of UTF-8, which some editors put before the text.
QByteArrayView SkipByteOrderMark(QByteArrayView bytes)
{
    constexpr QByteArrayView kMark("\xEF\xBB\xBF");
    return bytes.startsWith(kMark) ? bytes.sliced(kMark.size()) : bytes;
}

} // namespace

ZORNestDxfReader::ZORNestDxfReader(QByteArrayView bytes, ZORNestDrawing& drawing, QStringList& report,
                                   const ZORWorkContext& context)
    : m_tags(SkipByteOrderMark(bytes))
    , m_size(bytes.size())
    , m_mostEntities(std::min(kMaximumEntities, kMaximumEntitiesOfSmallFile + m_size / 8))
    , m_mostBlockBytes(std::min(kMaximumBlockBytes, kMaximumBlockBytesOfSmallFile + 100 * m_size))
    , m_drawing(drawing)
    , m_report(report)
    , m_context(context)
{
    if (bytes.first(std::min<qsizetype>(bytes.size(), 22)).contains("Binary DXF"))
        throw ZORSysException(tr("binary DXF cannot be read, only ASCII DXF"));
}

void ZORNestDxfReader::Read()
{
    bool hasSection = false;
    ZORNestDxfTag tag;
    while (m_tags.Read(tag)) {
        if (tag.code != 0) // comments
            continue;
        if (tag.value == "EOF") {
            if (!hasSection)
                break;
            if (!m_hasUnits)
                SetUnits(-1, -1);
            return;
        }
        if (tag.value != "SECTION")
            continue;
        hasSection = true;
        ZORNestDxfTag name;
        if (!m_tags.Read(name))
            break;
        if (name.value == "HEADER") {
            ReadHeader(tag);
        } else if (name.value == "TABLES") {
            ReadTables(tag);
        } else if (name.value == "BLOCKS") {
            ReadBlocks(tag);
        } else if (name.value == "ENTITIES") {
            if (!m_hasUnits)
                SetUnits(-1, -1);
            Place place;
            place.map = {{m_unit, 0}, {0, m_unit}, {}};
            if (m_tags.Read(tag))
                ReadEntities(tag, "ENDSEC", place);
        } else {
            SkipSection(tag);
        }
    }
    throw ZORSysException(hasSection ? tr("file is incomplete: EOF is missing")
                                     : tr("no DXF file: SECTION is missing"));
}

void ZORNestDxfReader::SkipSection(ZORNestDxfTag& tag)
{
    while (m_tags.Read(tag)) {
        if (tag.code == 0 && tag.value == "ENDSEC")
            return;
    }
}

void ZORNestDxfReader::ReadHeader(ZORNestDxfTag& tag)
{
    int insertUnits = -1;
    int measurement = -1;
    QByteArrayView variable;
    while (m_tags.Read(tag)) {
        if (tag.code == 0)
            break;
        if (tag.code == 9)
            variable = tag.value;
        else if (tag.code == 70 && variable.toByteArray().trimmed() == "$INSUNITS")
            insertUnits = ZORNestDxfRecord::ToInteger(tag);
        else if (tag.code == 70 && variable.toByteArray().trimmed() == "$MEASUREMENT")
            measurement = ZORNestDxfRecord::ToInteger(tag);
    }
    SetUnits(insertUnits, measurement);
}

void ZORNestDxfReader::SetUnits(int insertUnits, int measurement)
{
    m_hasUnits = true;
    if (GetUnit(insertUnits) > 0) {
        m_unit = GetUnit(insertUnits);
        m_report.append(tr("units: %1 mm").arg(m_unit));
    } else if (measurement == 0) {
        m_unit = kInch;
        m_report.append(tr("units: %1 mm, since the file only says that it is not metric").arg(m_unit));
    } else {
        m_report.append(tr("units: 1 mm, since the file names none"));
    }
}

void ZORNestDxfReader::ReadRecord(ZORNestDxfRecord& record, ZORNestDxfTag& tag)
{
    const ZORNestDxfTag type = tag;
    if (!record.Read(m_tags, type, tag))
        throw ZORSysException(tr("file is incomplete: EOF is missing"));
}

bool ZORNestDxfReader::ReadNext(const char* type, ZORNestDxfRecord& record, ZORNestDxfTag& tag)
{
    while (tag.code != 0 || tag.value != type) {
        if ((tag.code == 0 && tag.value == "ENDSEC") || !m_tags.Read(tag))
            return false;
    }
    ReadRecord(record, tag);
    return true;
}

void ZORNestDxfReader::ReadTables(ZORNestDxfTag& tag)
{
    ZORNestDxfRecord record;
    while (ReadNext("LAYER", record, tag)) {
        const int color = record.GetInteger(62, 7); // below 0: off
        const QColor indexed = ZORNestDxfText::GetIndexedColor(std::abs(std::clamp(color, -256, 256)));
        m_layers.insert(GetKey(record.GetValue(2)), {GetTrueColor(record).value_or(indexed),
                                                     color >= 0 && (record.GetInteger(70) & 1) == 0});
    }
}

void ZORNestDxfReader::ReadBlocks(ZORNestDxfTag& tag)
{
    ZORNestDxfRecord record;
    while (ReadNext("BLOCK", record, tag))
        m_blocks.insert(GetKey(record.GetValue(2)), {m_tags.GetPositionOfLast(), record.GetPoint(10)});
}

ZORNestLook ZORNestDxfReader::GetLook(const ZORNestDxfRecord& record, const Place& place) const
{
    ZORNestLook look;
    look.layer = ZORNestDxfRecord::ToText(record.GetValue(8));
    if (place.depth > 0 && (look.layer == u'0' || look.layer.isEmpty()))
        look.layer = place.layer;
    constexpr int kByBlock = 0;
    constexpr int kByLayer = 256;
    const int index = record.GetInteger(62, kByLayer);
    if (const std::optional<QColor> color = GetTrueColor(record))
        look.color = *color;
    else if (index == kByBlock)
        look.color = place.color;
    else if (index == kByLayer)
        look.color = m_layers.value(look.layer.toUpper()).color;
    else
        look.color = ZORNestDxfText::GetIndexedColor(index);
    return look;
}

bool ZORNestDxfReader::IsVisible(const ZORNestDxfRecord& record, const QString& layer)
{
    if (record.GetInteger(67) == 1) // paper space
        return false;
    if (record.GetInteger(60) == 1) {
        m_drawing.Skip(tr("invisible %1").arg(QString::fromLatin1(record.GetType())));
        return false;
    }
    if (m_layers.value(layer.toUpper()).isVisible)
        return true;
    m_drawing.Skip(tr("%1 on hidden layer '%2'").arg(QString::fromLatin1(record.GetType()), layer));
    return false;
}

void ZORNestDxfReader::CountEntity()
{
    if (++m_entities > m_mostEntities)
        throw ZORSysException(tr("drawing has more than %1 entities").arg(m_mostEntities));
    if (m_entities % 256 == 0) {
        m_context.ThrowIfCanceled();
        m_context.SetProgress(0.7 * double(m_tags.GetPosition().offset) / double(m_size));
    }
}

void ZORNestDxfReader::ReadEntities(ZORNestDxfTag& tag, const char* end, const Place& place)
{
    ZORNestDxfRecord record;
    while (tag.code != 0 || tag.value != end) {
        CountEntity();
        ReadRecord(record, tag);
        const ZORNestLook look = GetLook(record, place);
        const bool isVisible = IsVisible(record, look.layer);
        if (record.Is("POLYLINE")) {
            ReadPolyline(record, tag, place, isVisible ? &look : nullptr);
            continue;
        }
        if (!isVisible || record.Is("SEQEND") || record.Is("VERTEX"))
            continue;
        if (record.Is("INSERT"))
            Insert(record, place, look);
        else if (!ZORNestDxfEntities::Draw(record, look, place.map, m_drawing))
            m_drawing.Skip(QString::fromLatin1(
                record.GetType().first(std::min<qsizetype>(record.GetType().size(), 40))));
    }
}

// Its vertices follow as records of their own.
void ZORNestDxfReader::ReadPolyline(const ZORNestDxfRecord& polyline, ZORNestDxfTag& tag, const Place& place,
                                    const ZORNestLook* look)
{
    enum { Closed = 1, InSpace = 8, Mesh = 16, FaceMesh = 64, FrameVertex = 16 };
    const int flags = polyline.GetInteger(70);
    ZORNestPlaneMap system;
    const bool isFlat = ZORNestDxfEntities::GetSystem(polyline, system) || (flags & InSpace);
    QList<ZORNestDxfEntities::Vertex> vertices;
    ZORNestDxfRecord vertex;
    while (tag.value == "VERTEX") {
        CountEntity();
        ReadRecord(vertex, tag);
        if ((vertex.GetInteger(70) & FrameVertex) == 0)
            vertices.append({vertex.GetPoint(10), vertex.GetNumber(42)});
    }
    if (!look)
        return;
    if ((flags & (Mesh | FaceMesh)) || !isFlat)
        m_drawing.Skip(isFlat ? tr("POLYLINE that is a mesh")
                              : ZORNestDxfEntities::DescribeOutOfPlane(QStringLiteral("POLYLINE")));
    else
        ZORNestDxfEntities::DrawVertices(vertices, flags & Closed, *look,
                                         flags & InSpace ? place.map : place.map * system,
                                         QStringLiteral("POLYLINE"), m_drawing);
}

void ZORNestDxfReader::Insert(const ZORNestDxfRecord& record, const Place& place, const ZORNestLook& look)
{
    const QByteArrayView name = record.GetValue(2);
    const auto block = m_blocks.constFind(GetKey(name));
    ZORNestPlaneMap system;
    if (block == m_blocks.cend() || !ZORNestDxfEntities::GetSystem(record, system)) {
        m_drawing.Skip(block == m_blocks.cend()
                           ? tr("INSERT of the missing block '%1'").arg(ZORNestDxfRecord::ToText(name))
                           : ZORNestDxfEntities::DescribeOutOfPlane(QStringLiteral("INSERT")));
        return;
    }
    if (place.depth == kMaximumDepth)
        throw ZORSysException(tr("blocks lie in each other more than %1 deep").arg(kMaximumDepth));

    const double angle = record.GetNumber(50) * std::numbers::pi / 180;
    const ZORNestPlanePoint along{std::cos(angle), std::sin(angle)};
    const ZORNestPlaneMap turned{along, GetNormal(along), record.GetPoint(10)};
    const ZORNestPlaneMap scaled{{record.GetNumber(41, 1), 0}, {0, record.GetNumber(42, 1)}, {}};
    const int columns = std::max(1, record.GetInteger(70, 1));
    const int rows = std::max(1, record.GetInteger(71, 1));
    const ZORNestPlanePoint spacing{record.GetNumber(44), record.GetNumber(45)};
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            CountEntity();
            const ZORNestPlaneMap shifted{{1, 0}, {0, 1}, {column * spacing.x, row * spacing.y}};
            const ZORNestPlaneMap based{{1, 0}, {0, 1}, {-block->base.x, -block->base.y}};
            InsertBlock(*block, {place.map * system * turned * shifted * scaled * based, look.layer,
                                 look.color, place.depth + 1});
        }
    }
}

void ZORNestDxfReader::InsertBlock(const Block& block, const Place& place)
{
    const ZORNestDxfTags::Position behind = m_tags.GetPosition();
    m_tags.SetPosition(block.entities);
    ZORNestDxfTag tag;
    if (m_tags.Read(tag))
        ReadEntities(tag, "ENDBLK", place);
    m_blockBytes += m_tags.GetPosition().offset - block.entities.offset;
    if (m_blockBytes > m_mostBlockBytes)
        throw ZORSysException(tr("blocks are inserted too often: more than %1 bytes").arg(m_mostBlockBytes));
    m_tags.SetPosition(behind);
}
