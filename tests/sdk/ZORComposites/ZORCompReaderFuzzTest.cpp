// Layup files of random content.

#include "ReaderTest.h"
#include "support/OpenWatch.h"
#include "support/TestData.h"

#include <ZORComposites/ZORCompFormat.h>
#include <ZORComposites/ZORCompReadProcessor.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <random>

namespace {

/// Reads content that may be anything; whatever is wrong must be an exception that leaves nothing behind.
class ReaderFuzz : public ReaderTest
{
protected:
    void Try(const QByteArray& content, const QByteArray& format)
    {
        const ZORCompFormat& parser = ZORCompFormat::Find(format);
        ZORCompReadReport report;
        ZORCompReadProcessor processor(root, false);
        try {
            processor.Add(parser.Parse(content, report), "fuzz", report);
            processor.Finalize();
            if (++numGood % 16 == 0)
                ToXml();
        } catch (const ZORSysException& exception) {
            EXPECT_FALSE(exception.GetMessage().isEmpty());
            ++numBad;
        }
        for (ZORFeatObject* child : root->GetChildren())
            child->Remove();
    }
    void Mutate(const QByteArray& good, const QByteArray& format, int numRounds)
    {
        const QByteArray interesting = QByteArrayLiteral("\0\xff<>&\"{}[],:-.e9 tnfalsrue");
        for (int round = 0; round < numRounds; ++round) {
            QByteArray content = good;
            const int numFlips = 1 + int(random() % 4);
            for (int flip = 0; flip < numFlips; ++flip) {
                const auto at = qsizetype(random() % size_t(content.size()));
                if (random() % 2 == 0)
                    content[at] = char(content.at(at) ^ (1 << random() % 8));
                else
                    content[at] = interesting.at(qsizetype(random() % size_t(interesting.size())));
            }
            Try(content, format);
            if (round % 4 == 0)
                Try(good.left(qsizetype(random() % size_t(good.size()))), format);
        }
    }

    std::mt19937 random{11};
    int numGood = 0;
    int numBad = 0;
};

// The sample, cut down to what is quick to read thousands of times.
QJsonObject SmallSample(const QByteArray& content)
{
    QJsonObject file = QJsonDocument::fromJson(content).object();
    QJsonArray geometry = file.value("allGeometry").toArray();
    for (int i = 0; i < 5; ++i) {
        QJsonObject spline = geometry.at(i).toObject();
        QJsonArray points = spline.value("points").toArray();
        while (points.size() > 3)
            points.removeLast();
        spline.insert("points", points);
        geometry[i] = spline;
    }
    geometry.removeLast();
    file.insert("allGeometry", geometry);
    return file;
}

TEST_F(ReaderFuzz, BytesOfJsonMayBeAnything)
{
    ZOR_REQUIRE_TEST_DATA(path, "meshes/layup/compost-x_test_141.json");
    Mutate(QJsonDocument(SmallSample(ReadFile(path))).toJson(QJsonDocument::Compact), kJsonId, 1500);
    EXPECT_GT(numGood, 100);
    EXPECT_GT(numBad, 100);
}

TEST_F(ReaderFuzz, BytesOfXmlMayBeAnything)
{
    ZOR_REQUIRE_TEST_DATA(path, "meshes/layup/compost-x_test_141.json");
    ReadContent(QJsonDocument(SmallSample(ReadFile(path))).toJson(), kJsonId);
    Mutate(ToXml(), kXmlId, 1500);
    EXPECT_GT(numGood, 50);
    EXPECT_GT(numBad, 100);
}

QJsonValue RandomValue(std::mt19937& random)
{
    switch (random() % 10) {
    case 0:
        return QJsonValue();
    case 1:
        return true;
    case 2:
        return 1e308;
    case 3:
        return -1.5;
    case 4:
        return 1;
    case 5:
        return 9;
    case 6:
        return "text\u0001";
    case 7:
        return QJsonArray{5, 7, QJsonObject()};
    case 8:
        return QJsonObject{{"_serialized_type", "Ply"}, {"ID", 5}};
    default:
        return " 7 ";
    }
}

// Replaces one field or element at any depth.
QJsonValue Edit(const QJsonValue& value, std::mt19937& random)
{
    if (random() % 6 == 0)
        return RandomValue(random);
    if (value.isArray() && !value.toArray().isEmpty()) {
        QJsonArray array = value.toArray();
        const auto at = qsizetype(random() % size_t(array.size()));
        if (random() % 8 == 0)
            array.append(array.at(at));
        else
            array[at] = Edit(array.at(at), random);
        return array;
    }
    if (value.isObject() && !value.toObject().isEmpty()) {
        QJsonObject object = value.toObject();
        const QString name = object.keys().at(qsizetype(random() % size_t(object.size())));
        object.insert(name, Edit(object.value(name), random));
        return object;
    }
    return RandomValue(random);
}

TEST_F(ReaderFuzz, FieldsOfJsonMayBeAnything)
{
    ZOR_REQUIRE_TEST_DATA(path, "meshes/layup/compost-x_test_141.json");
    const QJsonObject good = SmallSample(ReadFile(path));
    for (int round = 0; round < 1500; ++round) {
        QJsonValue file = good;
        const int numEdits = 1 + int(random() % 3);
        for (int edit = 0; edit < numEdits; ++edit)
            file = Edit(file, random);
        if (file.isObject())
            Try(QJsonDocument(file.toObject()).toJson(QJsonDocument::Compact), kJsonId);
    }
    EXPECT_GT(numGood, 100);
    EXPECT_GT(numBad, 100);
}

} // namespace
