// Tests of ZORSysDocumentWriter, ZORSysDocumentReader and ZORSysDocumentEnvelope.

#include "support/Printers.h"

#include <ZORSystem/ZORSysDocumentEnvelope.h>
#include <ZORSystem/ZORSysDocumentReader.h>
#include <ZORSystem/ZORSysDocumentWriter.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QBuffer>

#include <gtest/gtest.h>

#include <limits>

namespace {

// Made when it is needed: as a static object it would be a call before the first one of other tests.
ZORSysDocumentEnvelope Envelope()
{
    return ZORSysDocumentEnvelope(QStringLiteral("test file"), 2, 10);
}

template<class Function>
std::string MessageOf(Function function)
{
    try {
        function();
    } catch (const ZORSysFileException& exception) {
        return exception.GetMessage().toStdString();
    }
    return "no exception";
}

QByteArray Document()
{
    QByteArray document;
    ZORSysDocumentWriter writer(&document);
    writer.StartArray(9);
    writer.WriteText(QStringLiteral("\u00e4"));
    writer.WriteBytes(QByteArray("\0x", 2));
    writer.WriteBool(true);
    writer.WriteInteger(std::numeric_limits<qint64>::min());
    writer.WriteNumbers(QList<double>{0.1, -0.0});
    writer.WriteNumbers(QList<qint32>{-1, 7});
    writer.WriteValue(QStringLiteral("plain"));
    writer.WriteDouble(0.1);
    writer.StartMap(1);
    writer.WriteText(QByteArray("key"));
    writer.WriteInteger(-5);
    writer.EndMap();
    writer.EndArray();
    return document;
}

TEST(ZORSysDocumentTest, ReadsWhatWasWritten)
{
    ZORSysDocumentReader reader(Document(), QStringLiteral("test file"));
    EXPECT_EQ(9, reader.EnterArray());
    EXPECT_EQ("\xc3\xa4", reader.ReadText());
    EXPECT_EQ(QByteArray("\0x", 2), reader.ReadBytes());
    EXPECT_TRUE(reader.ReadBool());
    EXPECT_EQ(std::numeric_limits<qint64>::min(), reader.ReadInteger());
    EXPECT_EQ((QList<double>{0.1, -0.0}), reader.ReadDoubles());
    EXPECT_EQ((QList<qint32>{-1, 7}), reader.ReadIntegers());
    EXPECT_EQ(QCborValue(QStringLiteral("plain")), std::get<QCborValue>(reader.ReadValue()));
    EXPECT_EQ(0.1, std::get<double>(reader.ReadValue()));
    EXPECT_EQ(1, reader.EnterMap());
    EXPECT_EQ("key", reader.ReadText());
    EXPECT_EQ(-5, reader.ReadInteger());
    reader.Leave();
    reader.Leave();
    reader.Finish();
}

TEST(ZORSysDocumentTest, FailsOnAnythingElseThanIsAskedFor)
{
    const auto message = [](auto read) {
        ZORSysDocumentReader reader(Document(), QStringLiteral("test file"));
        return MessageOf([&] { read(reader); });
    };
    const std::string atStart = "test file is damaged: unexpected content at byte 0 of the document";
    EXPECT_EQ(atStart, message([](ZORSysDocumentReader& reader) { reader.ReadText(); }));
    EXPECT_EQ(atStart, message([](ZORSysDocumentReader& reader) { reader.EnterMap(); }));
    EXPECT_EQ(atStart, message([](ZORSysDocumentReader& reader) { reader.Finish(); }));
    EXPECT_EQ("test file is damaged: unexpected content at byte 1 of the document",
              message([](ZORSysDocumentReader& reader) {
                  reader.EnterArray();
                  reader.ReadDoubles();
              }));
}

TEST(ZORSysDocumentTest, RefusesIntegersBeyondTheirRange)
{
    for (const char* const bytes :
         {"\x1b\xff\xff\xff\xff\xff\xff\xff\xff", "\x3b\xff\xff\xff\xff\xff\xff\xff\xff"}) {
        ZORSysDocumentReader reader(QByteArray(bytes, 9), QStringLiteral("test file"));
        EXPECT_THROW(reader.ReadInteger(), ZORSysFileException);
    }
}

TEST(ZORSysDocumentTest, EnvelopeGivesBackItsDocument)
{
    for (const QByteArray& document : {QByteArray(), Document(), QByteArray(100000, 'a')}) {
        const QByteArray file = Envelope().Wrap(document);
        EXPECT_TRUE(ZORSysDocumentEnvelope::HasSignature(file));
        EXPECT_EQ(document, Envelope().Unwrap(file));
        EXPECT_LE(document.size(), 10 * (file.size() - ZORSysDocumentEnvelope::HeaderSize) + 10);
        EXPECT_EQ(file, Envelope().Wrap(document));
    }
    EXPECT_FALSE(ZORSysDocumentEnvelope::HasSignature("\x89ZOR"));
}

TEST(ZORSysDocumentTest, EnvelopeReadsNoMoreThanTheHeaderOfAForeignDevice)
{
    /// Counts what is read of a sparse file.
    class Counter : public QBuffer
    {
    public:
        qint64 readData(char* data, qint64 size) override
        {
            numRead += size;
            return QBuffer::readData(data, size);
        }
        qint64 numRead = 0;
    };
    const QByteArray file = Envelope().Wrap(Document());
    const auto read = [](const QByteArray& bytes, qint64 maximum) {
        Counter device;
        device.setData("before" + bytes);
        device.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        device.seek(6);
        const std::string message =
            MessageOf([&device] { EXPECT_EQ(Document(), Envelope().Unwrap(device)); });
        EXPECT_LE(device.numRead, maximum);
        return message;
    };
    EXPECT_EQ("no exception", read(file, 100000));
    EXPECT_EQ("the file is not a test file", read(QByteArray(100000, '\0'), 64));
    EXPECT_EQ("test file is damaged: it has 100000 bytes of content, not "
                  + std::to_string(file.size() - ZORSysDocumentEnvelope::HeaderSize),
              read(file.first(64) + QByteArray(100000, '\0'), 64));
    EXPECT_EQ("test file is damaged: it ends within its header", read(file.first(63), 64));
}

TEST(ZORSysDocumentTest, EnvelopeReadsOlderVersionsAndRefusesNewerOnes)
{
    const ZORSysDocumentEnvelope older(QStringLiteral("test file"), 1, 10);
    EXPECT_EQ(Document(), Envelope().Unwrap(older.Wrap(Document())));
    EXPECT_EQ("test file is of version 2, up to version 1 can be read",
              MessageOf([&] { older.Unwrap(Envelope().Wrap(Document())); }));
    EXPECT_EQ("the file is not a test file", MessageOf([] { Envelope().Unwrap("solid"); }));
}

TEST(ZORSysDocumentTest, EnvelopeTakesNoMoreMemoryThanItsRatioAllows)
{
    const ZORSysDocumentEnvelope generous(QStringLiteral("test file"), 2, 1000);
    EXPECT_EQ("test file is damaged:",
              MessageOf([&] { Envelope().Unwrap(generous.Wrap(QByteArray(5000, 'a'))); }).substr(0, 21));
}

} // namespace
