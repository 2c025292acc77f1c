// Tests of ZORNestResultReader on files that are damaged or foreign.

#include "Damage.h"
#include "ResultFiles.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysException.h>

#include <QDir>
#include <QFile>

#include <malloc.h>

namespace {

QString FailureOf(const QByteArray& file)
{
    QString failure;
    Load(file, &failure);
    return failure;
}

TEST(ZORNestDamagedResultFileTest, DamagedSizesOfStacksAreRefused)
{
    // 0, the 1 that is never written, -1, beyond 32 bits, the largest and the least of CBOR, 2.0, "2", true, null,
    // [2], nothing
    for (const char* size : {"00", "01", "20", "1a80000000", "1bffffffffffffffff", "3bffffffffffffffff",
                             "fb4000000000000000", "6132", "f5", "f6", "8102", "f7"})
        EXPECT_FALSE(Load(kEnvelope.Wrap(MakeDocument(QByteArray::fromHex(size)))).IsValid()) << size;

    const QByteArray document = MakeDocument("\x2");
    ASSERT_TRUE(Load(kEnvelope.Wrap(document)).IsValid());
    const QByteArray entry = Text("stack") + "\x2";
    const std::pair<QByteArray, char> replacements[] = {{entry, '\xa4'},
                                                        {entry + entry, '\xa5'},
                                                        {entry + entry, '\xa6'},
                                                        {Text("stock") + "\x2", '\xa5'},
                                                        {QByteArray(), '\xa5'}};
    for (const auto& [replacement, map] : replacements) {
        QByteArray damaged = document;
        damaged[0] = map;
        damaged.replace(entry, replacement);
        EXPECT_FALSE(Load(kEnvelope.Wrap(damaged)).IsValid()) << damaged.toHex().constData();
    }
}

// There are none in files: a reader refuses them as a result does.
TEST(ZORNestDamagedResultFileTest, NumbersThatAreNoneAreRefusedEverywhere)
{
    for (const double number : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        ZORNestResultItem item;
        EXPECT_THROW(item.SetPosition({0, number, 0}), ZORSysException);
        EXPECT_THROW(item.SetOrientation(number), ZORSysException);
        EXPECT_EQ(ZORMathPoint(), item.GetPosition());
        EXPECT_EQ(0, item.GetOrientation());
    }
    const QByteArray file = Save(CreateResultOfEverything());
    const QByteArray document = kEnvelope.Unwrap(file);
    // Every finite double of the file in turn, wherever its bytes lie.
    int refused = 0;
    for (const double wanted : {100.0, 50.0, 0.1, 3.5, -2.0, 0.8, 1e300, 500.0}) {
        const QByteArray bytes(reinterpret_cast<const char*>(&wanted), 8);
        for (qsizetype at = document.indexOf(bytes); at >= 0; at = document.indexOf(bytes, at + 8)) {
            QByteArray changed = document;
            changed.replace(at, 8, QByteArray("\0\0\0\0\0\0\xf8\xff", 8));
            EXPECT_FALSE(Load(kEnvelope.Wrap(changed)).IsValid()) << wanted;
            ++refused;
        }
    }
    EXPECT_GT(refused, 20);
}

TEST(ZORNestDamagedResultFileTest, WhatCannotBeReadIsInvalidAndEmpty)
{
    EXPECT_EQ("the file is not a result file", FailureOf(""));
    EXPECT_EQ("the file is not a result file", FailureOf("G0 X1"));
    ZORNestResultReader missing(QStringLiteral("/nowhere/sheet.msi"));
    EXPECT_FALSE(missing.Read(nullptr).IsValid());
    EXPECT_EQ("cannot open file '/nowhere/sheet.msi': No such file or directory", missing.GetFailure());
    ZORNestResultReader noPath{QString()};
    EXPECT_FALSE(noPath.Read(nullptr).IsValid());
    EXPECT_EQ("the path of the result file is empty", noPath.GetFailure());
    ZORNestResultReader folder(QDir::tempPath());
    EXPECT_FALSE(folder.Read(nullptr).IsValid());
    QBuffer closed;
    ZORNestResultReader closedReader(&closed);
    EXPECT_FALSE(closedReader.Read(nullptr).IsValid());
    EXPECT_EQ("the device is not open for reading", closedReader.GetFailure());
    ZORNestResultReader nothing(static_cast<QIODevice*>(nullptr));
    EXPECT_FALSE(nothing.Read(nullptr).IsValid());
}

TEST(ZORNestDamagedResultFileTest, ForeignFilesWithoutEndAreNotReadToTheirEnd)
{
    if (!QFile::exists(QStringLiteral("/dev/zero")))
        GTEST_SKIP() << "there is no /dev/zero";
    ZORNestResultReader reader(QStringLiteral("/dev/zero"));
    EXPECT_FALSE(reader.Read(nullptr).IsValid());
}

TEST(ZORNestDamagedResultFileTest, NamesTheReason)
{
    const QByteArray file = Save(CreateResultOfEverything());
    EXPECT_EQ("result file is damaged: it ends within its header", FailureOf(file.first(20)));
    QByteArray newer = file;
    newer[8] = 2;
    EXPECT_EQ("result file is of version 2, up to version 1 can be read", FailureOf(newer));
    EXPECT_EQ("result file is damaged: unexpected content at byte 0 of the document",
              FailureOf(kEnvelope.Wrap("text")));
    EXPECT_EQ("a number of the segment is not finite", [&] {
        QByteArray document = kEnvelope.Unwrap(file);
        const double third = 1.0 / 3;
        const qsizetype place = document.indexOf(QByteArray(reinterpret_cast<const char*>(&third), 8));
        document.replace(place, 8, QByteArray("\0\0\0\0\0\0\xf8\x7f", 8));
        return FailureOf(kEnvelope.Wrap(document));
    }());
}

TEST(ZORNestDamagedResultFileTest, EveryTruncatedFileIsInvalid)
{
    const QByteArray file = Save(CreateResultOfEverything());
    for (qsizetype size = 0; size < file.size(); ++size)
        ASSERT_FALSE(Load(file.first(size)).IsValid()) << size;
    EXPECT_FALSE(Load(file + '\0').IsValid());
}

TEST(ZORNestDamagedResultFileTest, EveryFlippedByteMakesTheFileInvalid)
{
    const QByteArray file = Save(CreateResultOfEverything());
    std::mt19937 random(1);
    for (qsizetype i = 0; i < file.size(); ++i) {
        QByteArray damaged = file;
        damaged[i] ^= char(1 + random() % 255);
        ASSERT_FALSE(Load(damaged).IsValid()) << i;
    }
}

TEST(ZORNestDamagedResultFileTest, SurvivesDamageBehindTheChecksum)
{
    const QByteArray document = kEnvelope.Unwrap(Save(CreateResultOfEverything()));
    for (qsizetype size = 0; size < document.size(); ++size)
        ASSERT_FALSE(Load(kEnvelope.Wrap(document.first(size))).IsValid()) << size;
    std::mt19937 random(2);
    int invalid = 0;
    // Lengths and numbers of the format, and bytes of numbers at the borders of their ranges.
    const QList<QByteArray> words = {QByteArray("\xff\xff\xff\xff"),
                                     QByteArray("\0\0\0\0", 4),
                                     QByteArray("\0\0\0\x80", 4),
                                     QByteArray("\x5\0\0\0", 4),
                                     QByteArray("\x1e\0\0\0", 4),
                                     QByteArray("\0\0\0\0\0\0\xf0\x7f", 8),
                                     QByteArray("\xff\xff\xff\xff\xff\xff\xef\x7f"),
                                     QByteArray("\x9b\0\0\0\1\0\0\0\0", 9),
                                     QByteArray("\x5a\x7f\xff\xff\xff"),
                                     QByteArray("\x80"),
                                     QByteArray("\x84"),
                                     QByteArray("\x9f"),
                                     QByteArray("\xd8\x4e\x40"),
                                     QByteArray("\xd8\x56\x40"),
                                     QByteArray("\xf4"),
                                     Text("stack") + "\x2",
                                     QByteArray("\x60")};
    const int runs = GetFuzzRuns(4000);
    for (int i = 0; i < runs; ++i) {
        const ZORNestResult result = Load(kEnvelope.Wrap(Damage(document, words, random)));
        if (!result.IsValid()) {
            ++invalid;
            continue;
        }
        // What can be read has measures and points, and is read again from a file.
        for (const ZORNestResultItem* item : result.GetItems()) {
            for (const ZORNestResultShape* shape : item->GetShapes()) {
                for (const ZORNestResultSegment& segment : shape->GetSegments())
                    EXPECT_LE(segment.GetPoints(0.001).size(), 40000);
            }
        }
        ASSERT_TRUE(Load(Save(result)) == result) << i;
    }
    EXPECT_GT(invalid, runs / 10);
    EXPECT_LT(invalid, runs);
}

TEST(ZORNestDamagedResultFileTest, ClaimedLengthsTakeNoMemory)
{
    // Lists of 2^40 and 2^62 elements, behind a right checksum.
    for (const char* const length : {"\x9b\0\0\1\0\0\0\0\0", "\x9b\x40\0\0\0\0\0\0\0"}) {
        QByteArray document = kEnvelope.Unwrap(Save(ZORNestResult(ZORNestResult::Nesting)));
        ASSERT_TRUE(document.endsWith('\x80'));
        document.chop(1);
        document.append(length, 9);
        EXPECT_EQ("result file is damaged",
                  FailureOf(kEnvelope.Wrap(document)).section(QLatin1Char(':'), 0, 0));
    }
    // A document that claims to be a thousand times as long as its file.
    QByteArray file = kEnvelope.Wrap(QByteArray(90, 'a'));
    const quint64 claimed = 100 * 1000;
    file.replace(16, 8, QByteArray(reinterpret_cast<const char*>(&claimed), 8));
    EXPECT_FALSE(Load(file).IsValid());
}

TEST(ZORNestDamagedResultFileTest, MemoryIsAFixedMultipleOfTheFile)
{
    ZORNestResult result(ZORNestResult::Nesting);
    ZORNestResultItem item;
    // The most memory for the shortest document, and hardly anything that does not repeat.
    ZORNestResultShape shape;
    std::mt19937 random(3);
    for (int i = 0; i < 100000; ++i) {
        if (i % 12 == 0)
            shape.SetShapeStatus(qint16(random()));
        item.AddShape(shape);
    }
    result.AddItem(item);
    const QByteArray file = Save(result);
    const qsizetype document = kEnvelope.Unwrap(file).size();
    ASSERT_GT(document, 20 * file.size());
    const auto used = [] { return qint64(mallinfo2().uordblks + mallinfo2().hblkhd); };
    const qint64 before = used();
    const ZORNestResult read = Load(file);
    ASSERT_TRUE(read.IsValid());
    EXPECT_LT(used() - before, 12 * qint64(document)); // which is at most a hundred times as long as its file
}

} // namespace
