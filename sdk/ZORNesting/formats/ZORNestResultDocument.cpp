#include "ZORNestResultDocument_p.h"
#include "drawing/ZORNestArc_p.h"

#include <ZORNesting/ZORNestResultReader.h>
#include <ZORSystem/ZORSysDocumentEnvelope.h>
#include <ZORSystem/ZORSysDocumentReader.h>
#include <ZORSystem/ZORSysDocumentWriter.h>

#include <algorithm>
#include <cmath>
#include <span>

namespace {

using Segment = ZORNestResultSegment;

constexpr char kFormatName[] = "ZORNest";
constexpr char kStackKey[] = "stack";
constexpr qsizetype kEntryCount = 4;      // of a file without a stack
constexpr qsizetype kCodesPerSegment = 5; // type, layer, line style, whether it has a colour, ARGB

/// The objects in memory are larger than their documents, so that these must not be much longer than files.
ZORSysDocumentEnvelope Envelope()
{
    return {ZORNestResultDocument::GetKind(), 1, 100};
}

void Append(QList<double>& numbers, const ZORMathPoint& point)
{
    numbers << point.GetX() << point.GetY() << point.GetZ();
}

void WriteSpline(ZORSysDocumentWriter& writer, const Segment& spline)
{
    QList<qint32> types;
    QList<double> numbers;
    for (const Segment::SegmentType type : spline.GetSplineLineTypes())
        types.append(type);
    for (const ZORMathPoint& point : spline.GetSplinePoints())
        Append(numbers, point);
    for (int i = 0; i < spline.GetNumSplineGeometry(); ++i) {
        if (zor::nest::IsArc(spline.GetType(i)))
            Append(numbers, spline.GetArcCenter(i));
    }
    writer.StartArray(2);
    writer.WriteNumbers(types);
    writer.WriteNumbers(numbers);
    writer.EndArray();
}

void WriteText(ZORSysDocumentWriter& writer, const Segment& text)
{
    writer.StartArray(4);
    writer.WriteText(text.GetText());
    writer.WriteBytes(text.GetFont());
    writer.WriteInteger(text.GetTextJustification());
    writer.WriteNumbers(QList<double>{text.GetTextHeight(), text.GetTextAngle(), text.GetTextWidth(),
                                      text.GetTextTiltAngle()});
    writer.EndArray();
}

void WriteShape(ZORSysDocumentWriter& writer, const ZORNestResultShape& shape)
{
    const QList<Segment> segments = shape.GetSegments();
    QList<qint32> codes;
    QList<double> numbers;
    qsizetype details = 0;
    codes.reserve(kCodesPerSegment * segments.size());
    for (const Segment& segment : segments) {
        const QColor color = segment.GetColor();
        const Segment::SegmentType type = segment.GetType();
        codes << type << segment.GetLayer() << segment.GetLineStyle() << color.isValid()
              << (color.isValid() ? qint32(color.rgba()) : 0);
        if (type == Segment::Spline || type == Segment::Text)
            ++details;
        if (type == Segment::Spline)
            continue;
        Append(numbers, segment.GetStartPoint());
        Append(numbers, segment.GetEndPoint());
        if (zor::nest::IsArc(type))
            Append(numbers, segment.GetArcCenter());
    }
    writer.StartArray(4);
    writer.WriteNumbers(
        QList<qint32>{shape.GetRawShapeFather(), shape.GetShapeHole(), shape.GetShapeStatus()});
    writer.WriteNumbers(codes);
    writer.WriteNumbers(numbers);
    writer.StartArray(details);
    for (const Segment& segment : segments) {
        if (segment.GetType() == Segment::Spline)
            WriteSpline(writer, segment);
        else if (segment.GetType() == Segment::Text)
            WriteText(writer, segment);
    }
    writer.EndArray();
    writer.EndArray();
}

void WriteItem(ZORSysDocumentWriter& writer, const ZORNestResultItem& item)
{
    writer.StartArray(4);
    writer.StartArray(6);
    for (const QString& text : {item.GetName(), item.GetPartName(), item.GetAssemblyName(),
                                item.GetSubassemblyName(), item.GetJobName(), item.GetComment()})
        writer.WriteText(text);
    writer.EndArray();
    QList<double> pose;
    Append(pose, item.GetPosition());
    pose.append(item.GetOrientation());
    writer.WriteNumbers(pose);
    writer.WriteBool(item.IsMirrored());
    const QList<const ZORNestResultShape*> shapes = item.GetShapes();
    writer.StartArray(shapes.size());
    for (const ZORNestResultShape* shape : shapes)
        WriteShape(writer, *shape);
    writer.EndArray();
    writer.EndArray();
}

class ResultReader
{
public:
    explicit ResultReader(const QByteArray& document)
        : m_reader(document, ZORNestResultDocument::GetKind())
    {
    }
    ZORNestResult Read();

private:
    /// Gives numbers one by one; fails at their end.
    class Numbers
    {
    public:
        Numbers(const ZORSysDocumentReader& reader, const QList<double>& numbers)
            : m_reader(reader)
            , m_numbers(numbers)
        {
        }
        ZORMathPoint TakePoint()
        {
            m_reader.Check(m_next + 3 <= m_numbers.size());
            m_next += 3;
            return {m_numbers[m_next - 3], m_numbers[m_next - 2], m_numbers[m_next - 1]};
        }
        void Finish() const { m_reader.Check(m_next == m_numbers.size()); }

    private:
        const ZORSysDocumentReader& m_reader;
        const QList<double>& m_numbers;
        qsizetype m_next = 0;
    };

    QString ReadText();
    QList<double> ReadDoubles(qsizetype count);
    ZORMathBoundingBox ReadSheet();
    int ReadStackSize();
    ZORNestResultItem ReadItem();
    ZORNestResultShape ReadShape();
    Segment ReadSegment(Segment::SegmentType type, Numbers& numbers, qsizetype& details);
    Segment ReadSpline();
    Segment ReadTextSegment(const ZORMathPoint& start, const ZORMathPoint& end);
    void SetLook(Segment& segment, std::span<const qint32> codes);

    ZORSysDocumentReader m_reader;
};

// Refuses what would be another text when it is written again.
QString ResultReader::ReadText()
{
    const QByteArray utf8 = m_reader.ReadText();
    QString text = QString::fromUtf8(utf8);
    m_reader.Check(text.toUtf8() == utf8);
    return text;
}

QList<double> ResultReader::ReadDoubles(qsizetype count)
{
    QList<double> numbers = m_reader.ReadDoubles();
    m_reader.Check(numbers.size() == count);
    return numbers;
}

ZORMathBoundingBox ResultReader::ReadSheet()
{
    const QList<double> numbers = m_reader.ReadDoubles();
    if (numbers.isEmpty())
        return {};
    m_reader.Check(numbers.size() == 6 && std::all_of(numbers.begin(), numbers.end(), [](double number) {
                       return std::isfinite(number);
                   }));
    for (int i = 0; i < 3; ++i)
        m_reader.Check(numbers[i] <= numbers[i + 3]);
    return {{numbers[0], numbers[1], numbers[2]}, {numbers[3], numbers[4], numbers[5]}};
}

// Refuses the 1 that is never written, so that every file that can be read is written again with the same bytes.
int ResultReader::ReadStackSize()
{
    m_reader.Check(m_reader.ReadText() == kStackKey);
    const qint64 count = m_reader.ReadInteger();
    m_reader.Check(count > 1 && count == qint32(count));
    return int(count);
}

Segment ResultReader::ReadSpline()
{
    m_reader.Check(m_reader.EnterArray() == 2);
    const QList<qint32> types = m_reader.ReadIntegers();
    const QList<double> values = m_reader.ReadDoubles();
    m_reader.Leave();
    Numbers numbers(m_reader, values);
    QList<ZORMathPoint> points;
    for (qsizetype i = 0; i < (types.isEmpty() ? 0 : types.size() + 1); ++i)
        points.append(numbers.TakePoint());
    QList<Segment> parts;
    for (qsizetype i = 0; i < types.size(); ++i) {
        const auto type = Segment::SegmentType(types[i]);
        m_reader.Check(type == Segment::Line || zor::nest::IsArc(type));
        parts.append(type == Segment::Line
                         ? Segment::CreateLine(points[i], points[i + 1])
                         : Segment::CreateArc(type, points[i], points[i + 1], numbers.TakePoint()));
    }
    numbers.Finish();
    return Segment::CreateSpline(parts);
}

Segment ResultReader::ReadTextSegment(const ZORMathPoint& start, const ZORMathPoint& end)
{
    m_reader.Check(m_reader.EnterArray() == 4);
    Segment segment = Segment::CreateText(start, end, ReadText());
    segment.SetFont(m_reader.ReadBytes());
    const qint64 justification = m_reader.ReadInteger();
    m_reader.Check(justification == qint32(justification));
    segment.SetTextJustification(Segment::TextJustification(justification));
    const QList<double> numbers = ReadDoubles(4);
    segment.SetTextHeight(numbers[0]);
    segment.SetTextAngle(numbers[1]);
    segment.SetTextWidth(numbers[2]);
    segment.SetTextTiltAngle(numbers[3]);
    m_reader.Leave();
    return segment;
}

Segment ResultReader::ReadSegment(Segment::SegmentType type, Numbers& numbers, qsizetype& details)
{
    if (type == Segment::Spline || type == Segment::Text)
        m_reader.Check(details-- > 0);
    if (type == Segment::Spline)
        return ReadSpline();
    const ZORMathPoint start = numbers.TakePoint();
    const ZORMathPoint end = numbers.TakePoint();
    if (zor::nest::IsArc(type))
        return Segment::CreateArc(type, start, end, numbers.TakePoint());
    if (type == Segment::Text)
        return ReadTextSegment(start, end);
    return Segment::CreateOther(type, start, end);
}

void ResultReader::SetLook(Segment& segment, std::span<const qint32> codes)
{
    segment.SetLayer(Segment::Layer(codes[1]));
    segment.SetLineStyle(codes[2]);
    m_reader.Check(codes[3] == 1 || (codes[3] == 0 && codes[4] == 0));
    if (codes[3] == 1)
        segment.SetColor(QColor::fromRgba(QRgb(codes[4])));
}

ZORNestResultShape ResultReader::ReadShape()
{
    m_reader.Check(m_reader.EnterArray() == 4);
    const QList<qint32> relations = m_reader.ReadIntegers();
    m_reader.Check(relations.size() == 3
                   && std::all_of(relations.begin(), relations.end(),
                                  [](qint32 number) { return number == qint16(number); }));
    const QList<qint32> codes = m_reader.ReadIntegers();
    m_reader.Check(codes.size() % kCodesPerSegment == 0);
    const QList<double> values = m_reader.ReadDoubles();
    Numbers numbers(m_reader, values);
    qsizetype details = m_reader.EnterArray();
    QList<Segment> segments;
    segments.reserve(codes.size() / kCodesPerSegment);
    for (qsizetype i = 0; i < codes.size(); i += kCodesPerSegment) {
        Segment segment = ReadSegment(Segment::SegmentType(codes[i]), numbers, details);
        SetLook(segment, {codes.constData() + i, size_t(kCodesPerSegment)});
        segments.append(segment);
    }
    numbers.Finish();
    m_reader.Check(details == 0);
    m_reader.Leave();
    m_reader.Leave();
    ZORNestResultShape shape(segments);
    shape.SetRawShapeFather(qint16(relations[0]));
    shape.SetShapeHole(qint16(relations[1]));
    shape.SetShapeStatus(qint16(relations[2]));
    return shape;
}

ZORNestResultItem ResultReader::ReadItem()
{
    m_reader.Check(m_reader.EnterArray() == 4);
    m_reader.Check(m_reader.EnterArray() == 6);
    ZORNestResultItem item(ReadText());
    item.SetPartName(ReadText());
    item.SetAssemblyName(ReadText());
    item.SetSubassemblyName(ReadText());
    item.SetJobName(ReadText());
    item.SetComment(ReadText());
    m_reader.Leave();
    const QList<double> pose = ReadDoubles(4);
    item.SetPosition({pose[0], pose[1], pose[2]});
    item.SetOrientation(pose[3]);
    item.SetMirrored(m_reader.ReadBool());
    for (qsizetype left = m_reader.EnterArray(); left > 0; --left)
        item.AddShape(ReadShape());
    m_reader.Leave();
    m_reader.Leave();
    return item;
}

ZORNestResult ResultReader::Read()
{
    const qsizetype entries = m_reader.EnterMap();
    m_reader.Check(entries == kEntryCount || entries == kEntryCount + 1);
    m_reader.Check(m_reader.ReadText() == "format" && m_reader.ReadText() == kFormatName
                   && m_reader.ReadText() == "type");
    const qint64 type = m_reader.ReadInteger();
    m_reader.Check(type == qint32(type) && m_reader.ReadText() == "sheet");
    ZORNestResult result{ZORNestResult::ResultType(type)};
    result.SetSheet(ReadSheet());
    if (entries > kEntryCount)
        result.SetStackSize(ReadStackSize());
    m_reader.Check(m_reader.ReadText() == "items");
    for (qsizetype left = m_reader.EnterArray(); left > 0; --left)
        result.AddItem(ReadItem());
    m_reader.Leave();
    m_reader.Leave();
    m_reader.Finish();
    return result;
}

} // namespace

QString ZORNestResultDocument::GetKind()
{
    return ZORNestResultReader::tr("result file");
}

QByteArray ZORNestResultDocument::Write(const ZORNestResult& result)
{
    QByteArray document;
    ZORSysDocumentWriter writer(&document);
    const bool isStack = result.GetStackSize() > 1;
    writer.StartMap(kEntryCount + (isStack ? 1 : 0));
    writer.WriteText(QByteArray("format"));
    writer.WriteText(QByteArray(kFormatName));
    writer.WriteText(QByteArray("type"));
    writer.WriteInteger(result.GetResultType());
    writer.WriteText(QByteArray("sheet"));
    QList<double> sheet;
    if (!result.GetSheet().IsEmpty()) {
        Append(sheet, result.GetSheet().GetLowerPoint());
        Append(sheet, result.GetSheet().GetUpperPoint());
    }
    writer.WriteNumbers(sheet);
    if (isStack) {
        writer.WriteText(QByteArray(kStackKey));
        writer.WriteInteger(result.GetStackSize());
    }
    writer.WriteText(QByteArray("items"));
    const QList<const ZORNestResultItem*> items = result.GetItems();
    writer.StartArray(items.size());
    for (const ZORNestResultItem* item : items)
        WriteItem(writer, *item);
    writer.EndArray();
    writer.EndMap();
    return Envelope().Wrap(document);
}

ZORNestResult ZORNestResultDocument::Read(QIODevice& device)
{
    return ResultReader(Envelope().Unwrap(device)).Read();
}
