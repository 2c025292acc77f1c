// Tests of the messages between a process and its helpers.

#include "support/MessageOf.h"
#include "support/Printers.h"

#include <ZORWorker/helper/ZORWorkProtocol_p.h>

#include <gtest/gtest.h>

#include <random>

namespace ZORWorkProtocol {
namespace {

QList<Message> MakeMessages()
{
    Job job{"kind", "input", QString::fromUtf8("/tmp/größe"), 123456789012, true};
    job.hasInterim = true;
    job.interim = "interim";
    return {Hello{kVersion, "1.2.3", {"a", "b"}},
            job,
            Stop(),
            Cancel(),
            Progress{0.25},
            Interim{QByteArray(100000, 'x')},
            Result{{"/a", "/b"}, "data"},
            Failure{"reason", true},
            Canceled(),
            Log{1, "zor.nest", "line"}};
}

QByteArray EncodeAll(const QList<Message>& messages)
{
    QByteArray bytes;
    for (const Message& message : messages)
        bytes += Encode(message);
    return bytes;
}

TEST(ZORWorkProtocolTest, EveryMessageComesBackAsItWas)
{
    const QList<Message> messages = MakeMessages();
    const QByteArray bytes = EncodeAll(messages);
    const QList<Message> decoded = DecodeAll(bytes);
    ASSERT_EQ(std::variant_size_v<Message>, size_t(decoded.size()));
    EXPECT_EQ(bytes, EncodeAll(decoded));
    for (qsizetype i = 0; i < decoded.size(); ++i)
        EXPECT_EQ(messages[i].index(), decoded[i].index());
    const auto& job = std::get<Job>(decoded[1]);
    EXPECT_EQ("kind", job.kind);
    EXPECT_EQ("input", job.input);
    EXPECT_EQ(QString::fromUtf8("/tmp/größe"), job.directory);
    EXPECT_EQ(123456789012, job.memoryLimit);
    EXPECT_TRUE(job.isStopped);
    EXPECT_TRUE(job.hasInterim);
    EXPECT_EQ("interim", job.interim);
    EXPECT_EQ(0.25, std::get<Progress>(decoded[4]).value);
    EXPECT_EQ(QStringList({"/a", "/b"}), std::get<Result>(decoded[6]).files);
    EXPECT_TRUE(std::get<Failure>(decoded[7]).endsHelper);
    EXPECT_EQ("line", std::get<Log>(decoded[9]).text);
}

TEST(ZORWorkProtocolTest, MessagesMayArriveInPiecesOfAnySize)
{
    const QByteArray bytes = EncodeAll(MakeMessages());
    for (const qsizetype size : {1, 3, 7, 1000, 65536}) {
        Decoder decoder;
        QList<Message> decoded;
        for (qsizetype i = 0; i < bytes.size(); i += size) {
            decoder.Append(bytes.mid(i, size));
            while (const std::optional<Message> message = decoder.Take())
                decoded.append(*message);
        }
        EXPECT_EQ(bytes, EncodeAll(decoded)) << size;
    }
}

TEST(ZORWorkProtocolTest, HelloOfAnotherVersionMayContinueInAnyWay)
{
    QByteArray bytes = Encode(Hello{kVersion + 1, "later", {}});
    const auto hello = std::get<Hello>(DecodeAll(bytes).constFirst());
    EXPECT_EQ(kVersion + 1, hello.protocol);
    EXPECT_EQ("", hello.sdkVersion);
}

TEST(ZORWorkProtocolTest, FaultyMessagesAreRefusedWithTheReason)
{
    using namespace std::string_literals;
    const auto decode = [](const std::string& text) {
        return MessageOf([&] { DecodeAll(QByteArray::fromStdString(text)); });
    };
    EXPECT_EQ("message of unknown type 10", decode("\0\0\0\0\x0a"s));
    EXPECT_EQ("message of 4294967295 bytes is too long", decode("\xff\xff\xff\xff\x01"s));
    EXPECT_EQ("message of 1 bytes is too long", decode("\x01\0\0\0\x02"s)); // a stop has no content
    EXPECT_EQ("message is cut off", decode("\x04\0\0\0\x04"s + "\0\0\0\0"s));
    EXPECT_EQ("message is cut off", decode("\x04\0\0\0\x06"s + "\0\0\x10\0"s)); // files
    EXPECT_EQ("message of 1048577 strings is too long", decode("\x04\0\0\0\x06"s + "\x01\0\x10\0"s));
    EXPECT_EQ("message of 4294967295 strings is too long", decode("\x04\0\0\0\x06"s + "\xff\xff\xff\xff"s));
    const QStringList files(qsizetype(kMaximumStrings) + 1, QString());
    EXPECT_EQ("message of 1048577 strings is too long", MessageOf([&] { Encode(Result{files, {}}); }));
    EXPECT_EQ("message has bytes that do not belong to it", decode("\x09\0\0\0\x06"s + "\0\0\0\0\0\0\0\0!"s));
    EXPECT_EQ("", decode("\x04\0\0\0\x06\0\0"s)); // incomplete
}

TEST(ZORWorkProtocolTest, LongTextsAreCutOff)
{
    const QString text(kMaximumText + 1000, u'a');
    const QList<Message> decoded = DecodeAll(Encode(Failure{text}) + Encode(Log{0, "category", text}));
    EXPECT_EQ(kMaximumText, std::get<Failure>(decoded[0]).reason.size());
    EXPECT_EQ(kMaximumText, std::get<Log>(decoded[1]).text.size());
}

TEST(ZORWorkProtocolTest, DamagedBytesNeverDoMoreThanThrow)
{
    const QByteArray whole = EncodeAll(MakeMessages());
    std::mt19937 random(1);
    int refused = 0;
    for (int i = 0; i < 20000; ++i) {
        QByteArray bytes = whole.left(400);
        for (unsigned count = 1 + random() % 5; count > 0; --count)
            bytes[qsizetype(random() % 400)] = char(random());
        refused += !MessageOf([&] { DecodeAll(bytes); }).isEmpty();
    }
    EXPECT_GT(refused, 1000);
}

} // namespace
} // namespace ZORWorkProtocol
