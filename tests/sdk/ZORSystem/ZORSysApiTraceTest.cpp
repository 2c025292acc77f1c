// Tests of ZORSysApiTrace.

#include "ApiTraceTest.h"
#include "TracedCalls.h"
#include "support/Printers.h"

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathPlane.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysApiTracePause.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QMap>

#include <limits>
#include <new>
#include <thread>
#include <vector>

namespace {

using ZORSysApiTraceTest = ApiTraceTest;

/// Records calls while it lives.
class Recorder
{
public:
    Recorder()
    {
        m_connection = QObject::connect(ZORSysApiTrace::GetInstance(), &ZORSysApiTrace::CallTraced,
                                        [this](const QByteArray& line, qint64 nanoseconds) {
                                            lines.append(QString::fromUtf8(line));
                                            durations.append(nanoseconds);
                                        });
        ZORSysApiTrace::GetInstance()->SetEnabled(true);
    }
    ~Recorder()
    {
        ZORSysApiTrace::GetInstance()->SetEnabled(false);
        QObject::disconnect(m_connection);
    }
    Q_DISABLE_COPY_MOVE(Recorder)

    QStringList lines;
    QList<qint64> durations;

private:
    QMetaObject::Connection m_connection;
};

template<class T>
QString TextOf(const T& value)
{
    TracedCalls calls;
    Recorder recorder;
    calls.TakeAny(value);
    if (recorder.lines.size() != 1)
        return recorder.lines.join('\n');
    const QString line = recorder.lines.constLast();
    const QString start = "TracedCalls::TakeAny(";
    if (!line.startsWith(start) || !line.endsWith(')'))
        return line;
    return line.mid(start.size()).chopped(1);
}

TEST_F(ZORSysApiTraceTest, NumbersAreWrittenInFull)
{
    EXPECT_EQ("0", TextOf(0.0));
    EXPECT_EQ("-0", TextOf(-0.0));
    EXPECT_EQ("1", TextOf(1.0));
    EXPECT_EQ("0.10000000000000001", TextOf(0.1));
    EXPECT_EQ("0.10000000149011612", TextOf(0.1F));
    EXPECT_EQ("1.7976931348623157e+308", TextOf(std::numeric_limits<double>::max()));
    EXPECT_EQ("nan", TextOf(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ("nan", TextOf(-std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ("inf", TextOf(std::numeric_limits<double>::infinity()));
    EXPECT_EQ("-inf", TextOf(-std::numeric_limits<double>::infinity()));
    EXPECT_EQ("true", TextOf(true));
    EXPECT_EQ("false", TextOf(false));
    EXPECT_EQ("-2147483648", TextOf(std::numeric_limits<int>::min()));
    EXPECT_EQ("18446744073709551615", TextOf(std::numeric_limits<quint64>::max()));
    EXPECT_EQ("-9223372036854775808", TextOf(std::numeric_limits<qint64>::min()));
    EXPECT_EQ("255", TextOf(quint8(255)));
    EXPECT_EQ("65", TextOf('A'));
    EXPECT_EQ("8", TextOf(TracedCalls::Plain::Eight));
    EXPECT_EQ("4294967295", TextOf(TracedCalls::Unsigned::Largest));
    EXPECT_EQ("-1", TextOf(TracedCalls::Scoped::Minus));
    EXPECT_EQ("34", TextOf(Qt::Alignment(Qt::AlignRight | Qt::AlignTop)));
}

TEST_F(ZORSysApiTraceTest, TextsAreQuotedAndStayOnOneLine)
{
    EXPECT_EQ("\"\"", TextOf(QString()));
    EXPECT_EQ("\"wing skin\"", TextOf(QString("wing skin")));
    EXPECT_EQ("\"wing\"", TextOf(QStringView(QString("wing"))));
    EXPECT_EQ("\"wing\"", TextOf(QLatin1String("wing")));
    EXPECT_EQ("\"wing\"", TextOf("wing"));
    EXPECT_EQ("null", TextOf(static_cast<const char*>(nullptr)));
    EXPECT_EQ(R"("\"a\\b\"")", TextOf(QString("\"a\\b\"")));
    EXPECT_EQ(R"("\n\r\t\000\033\177")", TextOf(QString::fromLatin1("\n\r\t\0\033\177", 6)));
    EXPECT_EQ(QString::fromUtf8("\"\u00e4\u00b5\U0001F6E9\""),
              TextOf(QString::fromUtf8("\u00e4\u00b5\U0001F6E9")));
    EXPECT_EQ("bytes[3]", TextOf(QByteArray("\"\n\0", 3)));
    EXPECT_EQ("bytes[0]", TextOf(QByteArray()));
}

TEST_F(ZORSysApiTraceTest, ObjectsAreNamedAndListsCounted)
{
    QObject object;
    object.setObjectName("Surface.1");
    EXPECT_EQ("<Surface.1>", TextOf(&object));
    object.setObjectName("a\nb");
    EXPECT_EQ("<a\\nb>", TextOf(static_cast<const QObject*>(&object)));
    object.setObjectName({});
    EXPECT_EQ("<>", TextOf(&object));
    EXPECT_EQ("null", TextOf(static_cast<QObject*>(nullptr)));
    EXPECT_EQ("null", TextOf(static_cast<ZORSysApiTrace*>(nullptr)));
    EXPECT_EQ("<QObject>", TextOf(&QObject::staticMetaObject));
    EXPECT_EQ("null", TextOf(static_cast<const QMetaObject*>(nullptr)));
    const ZORMathPoint point(1, -2.5, 0);
    EXPECT_EQ("<object>", TextOf(&point));
    EXPECT_EQ("null", TextOf(static_cast<const ZORMathPoint*>(nullptr)));

    EXPECT_EQ("(1, -2.5, 0)", TextOf(point));
    EXPECT_EQ("(nan, 0, inf)", TextOf(ZORMathVector(std::nan(""), 0, HUGE_VAL)));
    EXPECT_EQ("[(0, 0, 0), (1, 1, 1)]", TextOf(ZORMathBoundingBox({0, 0, 0}, {1, 1, 1})));
    EXPECT_EQ("[(0, 0, 0), (1, 0, 0), (0, 1, 0)]", TextOf(ZORMathPlane()));

    EXPECT_EQ("[2]", TextOf(QList<int>{1, 2}));
    EXPECT_EQ("[0]", TextOf(QList<ZORMathPoint>()));
    EXPECT_EQ("[3]", TextOf(ZORMathSetOfPoints{{}, {}, {}}));
    EXPECT_EQ("[1]", TextOf(QStringList{"a"}));
    EXPECT_EQ("[1]", TextOf(QMap<QString, int>{{"a", 1}}));
    EXPECT_EQ("[4]", TextOf(std::vector<bool>(4)));
}

TEST_F(ZORSysApiTraceTest, CallsAreNamedByClassAndMethod)
{
    Recorder recorder;
    {
        TracedCalls calls;
        calls.SetBoth(1, "two");
        TracedCalls::Static(3.5);
        calls.Get(4);
        calls.GetCallback(5)(1.5);
        calls.GetFunction(6);
        calls(7);
        calls << 8;
        calls < 9;
        calls->Touch();
        static_cast<void>(static_cast<bool>(calls));
        calls.InLambda(10);
        TracedTemplate<QList<int>> tmpl(11);
        tmpl.Take<QMap<int, int>>({});
        TracedNamespace::Function(12);
        CallUnnamed(13);
    }
    const QStringList expected = {
        "TracedCalls::TracedCalls()",  "TracedCalls::SetBoth(1, \"two\")",
        "TracedCalls::Static(3.5)",    "TracedCalls::Get(4)",
        "TracedCalls::GetCallback(5)", "TracedCalls::GetFunction(6)",
        "TracedCalls::operator()(7)",  "TracedCalls::operator<<(8)",
        "TracedCalls::operator<(9)",   "TracedCalls::operator->()",
        "TracedCalls::Touch()",        "TracedCalls::operator bool()",
        "TracedCalls::InLambda(10)",   "TracedTemplate::TracedTemplate(11)",
        "TracedTemplate::Take([0])",   "TracedNamespace::Function(12)",
        "Unnamed::Method(13)",         "TracedCalls::~TracedCalls()",
    };
    EXPECT_EQ(expected, recorder.lines);
}

TEST_F(ZORSysApiTraceTest, OnlyTheOutermostCallIsWritten)
{
    Recorder recorder;
    TracedCalls calls;
    recorder.lines.clear();
    calls.Outer(1);
    EXPECT_EQ(QStringList("TracedCalls::Outer(1)"), recorder.lines);
    calls.SetBoth(2, "b");
    EXPECT_EQ(2, recorder.lines.size());
    for (const qint64 duration : recorder.durations)
        EXPECT_GE(duration, 0);
}

TEST_F(ZORSysApiTraceTest, APauseKeepsCallsOfItsThreadOut)
{
    TracedCalls calls;
    Recorder recorder;
    {
        const ZORSysApiTracePause pause;
        calls.TakeAny(1);
        std::thread([&calls] { calls.TakeAny(2); }).join();
    }
    calls.TakeAny(3);
    EXPECT_EQ(QStringList({"TracedCalls::TakeAny(2)", "TracedCalls::TakeAny(3)"}), recorder.lines);
}

TEST_F(ZORSysApiTraceTest, CallsThatAReceiverMakesAreNested)
{
    TracedCalls calls;
    Recorder recorder;
    const auto connection = QObject::connect(ZORSysApiTrace::GetInstance(), &ZORSysApiTrace::CallTraced,
                                             [&calls] { calls.SetBoth(1, "receiver"); });
    calls.Get(1);
    calls.Get(2);
    QObject::disconnect(connection);
    EXPECT_EQ(QStringList({"TracedCalls::Get(1)", "TracedCalls::Get(2)"}), recorder.lines);
}

TEST_F(ZORSysApiTraceTest, AFailingReceiverHarmsNobody)
{
    TracedCalls calls;
    Recorder recorder;
    const auto connection = QObject::connect(ZORSysApiTrace::GetInstance(), &ZORSysApiTrace::CallTraced,
                                             [] { throw ZORSysException("receiver failed"); });
    calls.Get(1);
    QObject::disconnect(connection);
    calls.Get(2);
    EXPECT_EQ(QStringList({"TracedCalls::Get(1)", "TracedCalls::Get(2)"}), recorder.lines);
}

TEST_F(ZORSysApiTraceTest, AThrownMessageEndsTheLine)
{
    TracedCalls calls;
    Recorder recorder;
    EXPECT_THROW(calls.Throw("surface is empty"), ZORSysException);
    EXPECT_THROW(calls.ThrowNested("inner\nfailure"), ZORSysException);
    EXPECT_THROW(calls.ThrowFile("a.stl", "no such file"), ZORSysFileOpenException);
    EXPECT_EQ(
        QStringList(
            {"TracedCalls::Throw(\"surface is empty\") ! surface is empty",
             "TracedCalls::ThrowNested(\"inner\\nfailure\") ! inner\\nfailure",
             "TracedCalls::ThrowFile(\"a.stl\", \"no such file\") ! cannot open file 'a.stl': no such file"}),
        recorder.lines);
}

TEST_F(ZORSysApiTraceTest, ACaughtMessageIsNotTakenForAnother)
{
    TracedCalls calls;
    Recorder recorder;
    calls.CatchInside("caught");
    EXPECT_THROW(calls.CatchAndThrowOther("caught"), std::bad_alloc);
    EXPECT_THROW(calls.ThrowOther(), std::bad_alloc);
    EXPECT_THROW(calls.CatchAndRethrow("first"), ZORSysException);
    try {
        throw ZORSysException("outside");
    } catch (const ZORSysException&) {
        EXPECT_THROW(calls.ThrowOther(), std::bad_alloc);
        calls.Get(1);
    }
    EXPECT_EQ(QStringList({"TracedCalls::CatchInside(\"caught\")",
                           "TracedCalls::CatchAndThrowOther(\"caught\") ! unknown exception",
                           "TracedCalls::ThrowOther() ! unknown exception",
                           "TracedCalls::CatchAndRethrow(\"first\") ! first",
                           "TracedCalls::ThrowOther() ! unknown exception", "TracedCalls::Get(1)"}),
              recorder.lines);
}

TEST_F(ZORSysApiTraceTest, ACallDuringUnwindingDoesNotReportTheOuterException)
{
    TracedCalls calls;
    Recorder recorder;
    struct Cleaner
    {
        TracedCalls* calls;
        ~Cleaner() { calls->Get(1); }
    };
    try {
        const Cleaner cleaner{&calls};
        throw ZORSysException("outer");
    } catch (const ZORSysException&) {
    }
    EXPECT_EQ(QStringList("TracedCalls::Get(1)"), recorder.lines);
}

TEST_F(ZORSysApiTraceTest, NothingIsRecordedWhileItIsOff)
{
    TracedCalls calls;
    Recorder recorder;
    ZORSysApiTrace::GetInstance()->SetEnabled(false);
    calls.Get(1);
    EXPECT_THROW(calls.Throw("x"), ZORSysException);
    EXPECT_TRUE(recorder.lines.isEmpty());
}

TEST_F(ZORSysApiTraceTest, SwitchingWithinACallIsHarmless)
{
    TracedCalls calls;
    Recorder recorder;
    calls.Switch(false);
    calls.Switch(true);
    calls.Get(1);
    EXPECT_EQ(QStringList("TracedCalls::Get(1)"), recorder.lines);
}

TEST_F(ZORSysApiTraceTest, ThreadsHaveTheirOwnNesting)
{
    const QString fileName = directory.filePath("threads.txt");
    ZORSysApiTrace::GetInstance()->SetFile(fileName);
    constexpr int kThreadCount = 4;
    constexpr int kCallCount = 500;
    {
        std::vector<std::thread> threads;
        threads.reserve(kThreadCount);
        for (int t = 0; t < kThreadCount; ++t) {
            threads.emplace_back([t] {
                for (int i = 0; i < kCallCount; ++i)
                    TracedCalls::StaticOuter(t, i);
            });
        }
        for (std::thread& thread : threads)
            thread.join();
    }
    ZORSysApiTrace::GetInstance()->SetFile({});
    QStringList lines = LinesOf(fileName);
    EXPECT_TRUE(lines.takeLast().isEmpty());
    EXPECT_EQ(kThreadCount * kCallCount, lines.size());
    QList<int> next(kThreadCount, 0);
    for (const QString& line : lines) {
        bool isKnown = false;
        for (int t = 0; t < kThreadCount && !isKnown; ++t) {
            isKnown = line
                      == QString("TracedCalls::StaticOuter(%1, %2)")
                             .arg(QString::number(t), QString::number(next[t]));
            next[t] += isKnown;
        }
        ASSERT_TRUE(isKnown) << line.toStdString();
    }
}

} // namespace
