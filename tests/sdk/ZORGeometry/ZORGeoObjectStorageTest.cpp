// Tests of what classes write to container files and read from them.

#include "support/ContainerFiles.h"
#include "support/Printers.h"
#include "support/Threads.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORSystem/ZORSysException.h>

#include <QCborArray>
#include <QCborMap>
#include <QPointer>

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <optional>

namespace {

/// Holds one value of every kind.
class KeptValues : public ZORGeoGeometry
{
    Q_OBJECT

public:
    explicit KeptValues(ZORGeoContainer* container)
        : ZORGeoGeometry(container)
    {
    }

    QList<double> doubles;
    QList<qint32> ints;
    QList<ZORMathPoint> points;
    double number = 0;
    qint64 integer = 0;
    bool truth = false;
    QString text;
    QCborValue value;
    QPointer<KeptValues> friendOf; // a link
};

struct KeptValuesStorage
{
    static void Write(const KeptValues& kept, ZORGeoObjectWriter& writer)
    {
        writer.WriteDoubles("doubles", kept.doubles);
        writer.WriteInts("ints", kept.ints);
        writer.WritePoints("points", kept.points);
        writer.WriteDouble("number", kept.number);
        writer.WriteInt("integer", kept.integer);
        writer.WriteBool("truth", kept.truth);
        writer.WriteString("text", kept.text);
        writer.WriteValue("value", kept.value);
        writer.WriteLink("friend", kept.friendOf);
    }
    static KeptValues* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        auto kept = std::make_unique<KeptValues>(container);
        kept->doubles = reader.GetDoubles("doubles");
        kept->ints = reader.GetInts("ints");
        kept->points = reader.GetPoints("points");
        kept->number = reader.GetDouble("number");
        kept->integer = reader.GetInt("integer");
        kept->truth = reader.GetBool("truth");
        kept->text = reader.GetString("text");
        kept->value = reader.GetValue("value");
        EXPECT_TRUE(reader.Has("value"));
        EXPECT_FALSE(reader.Has("other"));
        if (readMore)
            readMore(reader);
        return kept.release();
    }
    static void Complete(KeptValues& kept, const ZORGeoObjectReader& reader)
    {
        kept.friendOf = reader.GetLink<KeptValues>("friend");
    }

    static inline std::function<void(const ZORGeoObjectReader&)> readMore;
};

class ZORGeoObjectStorageTest : public testing::Test
{
protected:
    ZORGeoObjectStorageTest()
    {
        registration.emplace(ZORGeoObjectStorage::Make<KeptValues, KeptValuesStorage>());
    }
    ~ZORGeoObjectStorageTest() override { KeptValuesStorage::readMore = nullptr; }

    static KeptValues* Add(ZORGeoContainer& owner)
    {
        auto* const kept = new KeptValues(&owner);
        kept->Initialize();
        return kept;
    }
    static KeptValues* At(int index, const ZORGeoContainer& owner)
    {
        return qobject_cast<KeptValues*>(owner.GetGeometryByIndex(index));
    }
    static bool IsSame(double a, double b) { return std::bit_cast<quint64>(a) == std::bit_cast<quint64>(b); }
    /// What reading that way from an object of the file gives.
    QString FailureOf(std::function<void(const ZORGeoObjectReader&)> read)
    {
        KeptValuesStorage::readMore = std::move(read);
        const QString failure = LoadFailure(loaded, SaveContainer(container));
        EXPECT_EQ(loaded.GetNumGeometry(), 0);
        const QString start = "container file is damaged: object 0 (";
        return failure.startsWith(start) ? failure.section("): ", 1) : failure;
    }

    std::optional<ZORGeoObjectStorageRegistration> registration;
    ZORGeoContainer container;
    ZORGeoContainer loaded;
};

TEST_F(ZORGeoObjectStorageTest, EveryBitOfANumberComesBack)
{
    using Limits = std::numeric_limits<double>;
    double payload = 0;
    const quint64 bits = 0x7ff8dead0000beef;
    std::memcpy(&payload, &bits, sizeof payload);
    const QList<double> numbers{0.0,
                                -0.0,
                                3.0,
                                0.1,
                                Limits::denorm_min(),
                                -Limits::min() / 3,
                                Limits::max(),
                                Limits::lowest(),
                                Limits::infinity(),
                                -Limits::infinity(),
                                Limits::quiet_NaN(),
                                payload};
    for (const double number : numbers)
        Add(container)->number = number;
    At(0, container)->doubles = numbers;
    At(0, container)->points = {{Limits::infinity(), payload, -0.0}, {1, 2, 3}};
    At(0, container)->ints = {0, -1, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()};
    ASSERT_TRUE(RoundTrips(container, loaded));
    for (int i = 0; i < numbers.size(); ++i) {
        EXPECT_TRUE(IsSame(numbers[i], At(i, loaded)->number)) << i;
        EXPECT_TRUE(IsSame(numbers[i], At(0, loaded)->doubles[i])) << i;
    }
    EXPECT_EQ(At(0, container)->ints, At(0, loaded)->ints);
    EXPECT_TRUE(IsSame(payload, At(0, loaded)->points[0].GetY()));
    EXPECT_TRUE(IsSame(-0.0, At(0, loaded)->points[0].GetZ()));
}

TEST_F(ZORGeoObjectStorageTest, EveryKindOfValueComesBack)
{
    KeptValues* const kept = Add(container);
    kept->integer = std::numeric_limits<qint64>::min();
    kept->truth = true;
    kept->text =
        QString::fromUtf8("l\u00e4nge \U0001F9F5 \"quoted\"\n") + QChar(0) + QString(70000, QChar('x'));
    kept->value =
        QCborMap{{"list", QCborArray{1, 2.5, true, QCborValue(), QByteArray("\0\xff", 2)}}, {7, "seven"}};
    Add(container)->integer = std::numeric_limits<qint64>::max();
    ASSERT_TRUE(RoundTrips(container, loaded));
    EXPECT_EQ(kept->integer, At(0, loaded)->integer);
    EXPECT_TRUE(At(0, loaded)->truth);
    EXPECT_EQ(kept->text, At(0, loaded)->text);
    EXPECT_EQ(kept->value, At(0, loaded)->value);
    EXPECT_EQ(std::numeric_limits<qint64>::max(), At(1, loaded)->integer);
    EXPECT_TRUE(At(1, loaded)->doubles.isEmpty());
}

TEST_F(ZORGeoObjectStorageTest, LinksMayGoInCirclesAndForwards)
{
    KeptValues* const first = Add(container);
    KeptValues* const second = Add(container);
    first->friendOf = second;
    second->friendOf = first;
    KeptValues* const third = Add(container);
    third->friendOf = third;
    ASSERT_TRUE(RoundTrips(container, loaded));
    EXPECT_EQ(At(1, loaded), At(0, loaded)->friendOf);
    EXPECT_EQ(At(0, loaded), At(1, loaded)->friendOf);
    EXPECT_EQ(At(2, loaded), At(2, loaded)->friendOf);
}

TEST_F(ZORGeoObjectStorageTest, WhatIsNotInTheContainerCannotBeLinkedTo)
{
    ZORGeoContainer other;
    Add(container)->friendOf = Add(other);
    try {
        SaveContainer(container);
        FAIL() << "it was saved";
    } catch (const ZORSysException& exception) {
        EXPECT_EQ(QString("'KeptValues.1' uses 'KeptValues.1', which is not in the container"),
                  exception.GetMessage());
    }
}

TEST_F(ZORGeoObjectStorageTest, ReadersFailOnWhatIsNotThere)
{
    Add(container)->doubles = {1, 2};
    using Reader = ZORGeoObjectReader;
    EXPECT_EQ("value 'other' is missing or of the wrong kind",
              FailureOf([](const Reader& reader) { reader.GetDoubles("other"); }));
    EXPECT_EQ("value 'ints' is missing or of the wrong kind",
              FailureOf([](const Reader& reader) { reader.GetDoubles("ints"); }));
    EXPECT_EQ("value 'doubles' is missing or of the wrong kind",
              FailureOf([](const Reader& reader) { reader.GetInts("doubles"); }));
    EXPECT_EQ("value 'doubles' is no number",
              FailureOf([](const Reader& reader) { reader.GetDouble("doubles"); }));
    EXPECT_EQ("value 'other' is missing or of the wrong kind",
              FailureOf([](const Reader& reader) { reader.GetDouble("other"); }));
    EXPECT_EQ("value 'doubles' is no point",
              FailureOf([](const Reader& reader) { reader.GetPoint("doubles"); }));
    EXPECT_EQ("value 'doubles' ends within a point",
              FailureOf([](const Reader& reader) { reader.GetPoints("doubles"); }));
    EXPECT_EQ("value 'number' is no integer",
              FailureOf([](const Reader& reader) { reader.GetInt("number"); }));
    EXPECT_EQ("value 'integer' is no number",
              FailureOf([](const Reader& reader) { reader.GetDouble("integer"); }));
    EXPECT_EQ("value 'text' is no truth value",
              FailureOf([](const Reader& reader) { reader.GetBool("text"); }));
    EXPECT_EQ("value 'truth' is no text", FailureOf([](const Reader& reader) { reader.GetString("truth"); }));
    EXPECT_EQ("reference 'friend' is missing",
              FailureOf([](const Reader& reader) { reader.GetReference<KeptValues>("friend"); }));
}

TEST_F(ZORGeoObjectStorageTest, FailuresOfTheClassAreFailuresOfTheFile)
{
    Add(container);
    EXPECT_EQ("it is too blue",
              FailureOf([](const ZORGeoObjectReader&) { throw ZORSysException("it is too blue"); }));
    EXPECT_EQ("it is too red",
              FailureOf([](const ZORGeoObjectReader& reader) { reader.Fail("it is too red"); }));
}

TEST_F(ZORGeoObjectStorageTest, AClassIsKnownAsLongAsItsRegistration)
{
    Add(container);
    const QByteArray file = SaveContainer(container);
    const char* const name = KeptValues::staticMetaObject.className();
    EXPECT_TRUE(ZORGeoObjectStorage::Find(name));
    registration.reset();
    EXPECT_FALSE(ZORGeoObjectStorage::Find(name));
    EXPECT_TRUE(LoadFailure(loaded, file).startsWith("container file holds objects of unknown classes: "));
    EXPECT_THROW(SaveContainer(container), ZORSysException);
}

TEST_F(ZORGeoObjectStorageTest, AStorageIsFoundWhileOthersAreRegistered)
{
    const char* const name = KeptValues::staticMetaObject.className();
    RunInThreads(3, [&](int thread) {
        for (int i = 0; i < 100; ++i) {
            if (thread == 0)
                const ZORGeoObjectStorageRegistration another(
                    ZORGeoObjectStorage::Make<KeptValues, KeptValuesStorage>());
            EXPECT_TRUE(ZORGeoObjectStorage::Find(name));
        }
    });
}

} // namespace

#include "ZORGeoObjectStorageTest.moc"
