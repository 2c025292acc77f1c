// Tests of ZORNestResultReader and ZORNestResultWriter.

#include "ResultFiles.h"
#include "support/Printers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <malloc.h>

namespace {

QByteArray BytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

TEST(ZORNestResultFileTest, ReadsWhatWasWritten)
{
    const ZORNestResult result = CreateResultOfEverything();
    const ZORNestResult read = Load(Save(result));
    EXPECT_TRUE(read == result);
    const ZORNestResultShape& shape = *read.GetItems().at(0)->GetShapes().at(0);
    const ZORNestResultShape& original = *result.GetItems().at(0)->GetShapes().at(0);
    EXPECT_EQ(original.GetArea(), shape.GetArea());
    EXPECT_EQ(original.GetBoundingBox(), shape.GetBoundingBox());
    EXPECT_TRUE(std::signbit(shape.GetSegments().at(6).GetStartPoint().GetX()));
}

TEST(ZORNestResultFileTest, WritingWhatWasReadGivesTheSameBytes)
{
    const QByteArray file = Save(CreateResultOfEverything());
    EXPECT_EQ(file, Save(Load(file)));
    const QByteArray empty = Save(ZORNestResult(ZORNestResult::Nesting));
    EXPECT_EQ(empty, Save(Load(empty)));
    EXPECT_TRUE(Load(empty).IsValid());
}

TEST(ZORNestResultFileTest, OnlyStacksAreWrittenWithTheirSize)
{
    ZORNestResult result(ZORNestResult::Nesting);
    result.SetStackSize(1);
    const QByteArray plain = MakeDocument({});
    EXPECT_EQ(plain, kEnvelope.Unwrap(Save(result)));
    EXPECT_EQ(1, Load(kEnvelope.Wrap(plain)).GetStackSize());
    EXPECT_EQ(kEnvelope.Wrap(plain), Save(Load(kEnvelope.Wrap(plain))));

    const std::pair<int, QByteArray> stacks[] = {
        {2, "02"}, {99, "1863"}, {std::numeric_limits<int>::max(), "1a7fffffff"}};
    for (const auto& [size, bytes] : stacks) {
        const QByteArray file = kEnvelope.Wrap(MakeDocument(QByteArray::fromHex(bytes)));
        EXPECT_EQ(size, Load(file).GetStackSize());
        EXPECT_EQ(file, Save(Load(file)));
        result.SetStackSize(size);
        EXPECT_EQ(file, Save(result));
    }
}

// Of every type of segment on every layer, with every kind of colour and the largest and smallest numbers.
TEST(ZORNestResultFileTest, KeepsTheBytesOfAllNumbers)
{
    using Segment = ZORNestResultSegment;
    constexpr double kLargest = std::numeric_limits<double>::max();
    constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
    const ZORMathPoint a(kLargest, -kLargest, kSmallest);
    const ZORMathPoint b(-0.0, -kSmallest, 1.0 + 1e-15);
    const QList<QColor> colors = {
        QColor(),          QColor(0, 0, 0, 0),         QColor(1, 2, 3, 4),
        QColor(Qt::white), QColor::fromHsv(300, 9, 7), QColor::fromRgbF(0.1f, 0.2f, 0.3f)};
    ZORNestResultItem item(QString::fromUtf8("\U0001f600\u0301\u202e\ufeff"));
    item.SetComment(QString(QChar(0)) + QStringLiteral("\r\n"));
    item.SetPosition(a);
    item.SetOrientation(-kLargest);
    for (int layer = -1; layer <= 16; ++layer) {
        QList<Segment> segments = {
            Segment::CreateLine(a, b),
            Segment::CreateArc(Segment::ArcClockwise, a, b, a),
            Segment::CreateArc(Segment::ArcCounterClockwise, b, b, a),
            Segment::CreateSpline(
                {Segment::CreateLine(b, b), Segment::CreateArc(Segment::ArcClockwise, b, a, b)}),
            Segment::CreateText(a, b, QString::fromUtf8("\u00e4\U0001f600")),
            Segment::CreateOther(Segment::SegmentType(std::numeric_limits<int>::min()), a, b)};
        segments[4].SetTextHeight(kLargest);
        segments[4].SetTextAngle(-kSmallest);
        segments[4].SetTextWidth(-0.0);
        for (qsizetype i = 0; i < segments.size(); ++i) {
            segments[i].SetLayer(Segment::Layer(layer == 16 ? std::numeric_limits<int>::max() : layer));
            segments[i].SetColor(colors.at((i + layer + 1) % colors.size()));
            segments[i].SetLineStyle(layer == 16 ? std::numeric_limits<int>::min() : layer);
        }
        item.AddShape(ZORNestResultShape(segments));
    }
    ZORNestResult result(ZORNestResult::Nesting);
    result.AddItem(item);
    const QByteArray file = Save(result);
    const ZORNestResult read = Load(file);
    ASSERT_TRUE(read.IsValid());
    EXPECT_TRUE(read == result);
    EXPECT_EQ(file, Save(read));
}

TEST(ZORNestResultFileTest, KeepsEveryNumberOfType)
{
    for (const int type : {0, 1, 2, 99, -1, -2147483647}) {
        const ZORNestResult read = Load(Save(ZORNestResult(ZORNestResult::ResultType(type))));
        EXPECT_TRUE(read.IsValid());
        EXPECT_EQ(type, read.GetResultType());
    }
}

TEST(ZORNestResultFileTest, ReadsFilesByTheirPath)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("sheet \u00e4.msi"));
    ZORNestResultWriter writer(path);
    const qint64 size = writer.Write(CreateResultOfEverything());
    EXPECT_EQ(QFile(path).size(), size);
    EXPECT_EQ(path, writer.GetFilePath());
    ZORNestResultReader reader(path);
    EXPECT_EQ(path, reader.GetFilePath());
    EXPECT_TRUE(reader.Read(nullptr) == CreateResultOfEverything());
    EXPECT_TRUE(reader.Read(nullptr).IsValid()); // a second time
}

TEST(ZORNestResultFileTest, ReadsADeviceFromItsPosition)
{
    QBuffer buffer;
    buffer.setData("abc" + Save(CreateResultOfEverything()));
    buffer.open(QIODevice::ReadOnly);
    buffer.seek(3);
    ZORNestResultReader reader(&buffer);
    EXPECT_TRUE(reader.Read(nullptr).IsValid());
    EXPECT_EQ(QString(), reader.GetFilePath());
}

TEST(ZORNestResultFileTest, InvalidResultsAreNotWritten)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("sheet.msi"));
    ZORNestResultWriter writer(path);
    ASSERT_GT(writer.Write(ZORNestResult(ZORNestResult::Nesting)), 0);
    const QByteArray before = BytesOf(path);
    EXPECT_EQ(-1, writer.Write(ZORNestResult()));
    EXPECT_EQ("an invalid result cannot be written", writer.GetFailure());
    EXPECT_EQ(before, BytesOf(path));
    EXPECT_GT(writer.Write(CreateResultOfEverything()), 0);
    EXPECT_EQ(QString(), writer.GetFailure());
    EXPECT_EQ(QStringList(QStringLiteral("sheet.msi")), QDir(dir.path()).entryList(QDir::Files));
}

TEST(ZORNestResultFileTest, AFailedWriteGivesMinusOneAndTheReason)
{
    ZORNestResultWriter nowhere(QStringLiteral("/nowhere/sheet.msi"));
    EXPECT_EQ(-1, nowhere.Write(ZORNestResult(ZORNestResult::Nesting)));
    EXPECT_EQ("cannot open file '/nowhere/sheet.msi': No such file or directory", nowhere.GetFailure());
    ZORNestResultWriter noPath{QString()};
    EXPECT_EQ(-1, noPath.Write(ZORNestResult(ZORNestResult::Nesting)));
    EXPECT_EQ("the path of the result file is empty", noPath.GetFailure());
    QBuffer buffer;
    buffer.open(QIODevice::ReadOnly);
    ZORNestResultWriter readOnly(&buffer);
    EXPECT_EQ(-1, readOnly.Write(ZORNestResult(ZORNestResult::Nesting)));
    EXPECT_EQ("the device is not open for writing", readOnly.GetFailure());
    if (!QFile::exists(QStringLiteral("/dev/full")))
        GTEST_SKIP() << "there is no /dev/full";
    QFile full(QStringLiteral("/dev/full"));
    ASSERT_TRUE(full.open(QIODevice::WriteOnly));
    ZORNestResultWriter fullWriter(&full);
    EXPECT_EQ(-1, fullWriter.Write(CreateResultOfEverything()));
    EXPECT_TRUE(fullWriter.GetFailure().startsWith(QLatin1String("cannot write the result file: ")));
}

} // namespace
