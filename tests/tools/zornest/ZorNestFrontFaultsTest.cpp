// What the command-line front refuses, and what it cannot write.

#include "FrontTest.h"
#include "support/TestData.h"

#include <QDir>

#include <sys/stat.h>

namespace {

using ZorNestFrontFaultsTest = FrontTest;

TEST_F(ZorNestFrontFaultsTest, ARunWithoutMemoryFailsWithAMessage)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer needs the address space";
#endif
    QFile file(GetPath(QStringLiteral("large.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)
                && file.resize(qint64(128) << 20)); // takes no room on the disk
    // A fraction of the file more than what the program needs for itself.
    int limit = 50000;
    while (RunWithin(limit, QStringLiteral("--help")).code != 0 && limit < 4000000)
        limit += 10000;
    const Outcome outcome = RunWithin(limit + 30000, file.fileName());
    EXPECT_EQ(outcome.code, 6);
    EXPECT_EQ(outcome.errors, QLatin1String("out of memory\n"));
}

TEST_F(ZorNestFrontFaultsTest, InstancesThatAreTooLargeOrNotRegularFilesAreRefused)
{
    QFile file(GetPath(QStringLiteral("large.json")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(qint64(4) << 30));
    Outcome outcome = Run({file.fileName()});
    EXPECT_EQ(outcome.code, 3);
    EXPECT_EQ(outcome.errors, file.fileName() + QLatin1String(": file is larger than 128 MB\n"));
    const QString pipe = GetPath(QStringLiteral("pipe"));
    ASSERT_EQ(0, mkfifo(qPrintable(pipe), 0600));
    for (const QString& path : {pipe, QStringLiteral("/dev/zero")}) {
        outcome = Run({path});
        EXPECT_EQ(outcome.code, 3);
        EXPECT_EQ(outcome.errors, path + QLatin1String(": it is not a regular file\n"));
    }
}

TEST_F(ZorNestFrontFaultsTest, ResultsAreNotWrittenToPipes)
{
    const QString pipe = GetPath(QStringLiteral("pipe"));
    ASSERT_EQ(0, mkfifo(qPrintable(pipe), 0600));
    for (const char* option : {"--out", "--html"}) {
        const Outcome outcome = Run({SaveSquares(), QString::fromLatin1(option), pipe});
        EXPECT_EQ(outcome.code, 4);
        EXPECT_TRUE(outcome.errors.endsWith(pipe + QLatin1String(": it is not a regular file\n")));
    }
    const QString pictures = GetPath(QStringLiteral("pictures"));
    ASSERT_TRUE(QDir().mkpath(pictures));
    const QString picture = pictures + QLatin1String("/sheet-0.png");
    ASSERT_EQ(0, mkfifo(qPrintable(picture), 0600));
    const Outcome outcome = Run(
        {SaveSquares(), QStringLiteral("--steps"), QStringLiteral("10"), QStringLiteral("--png"), pictures});
    EXPECT_EQ(outcome.code, 4);
    EXPECT_TRUE(outcome.errors.endsWith(picture + QLatin1String(": it is not a regular file\n")));
}

TEST_F(ZorNestFrontFaultsTest, HostileOutlinesEndSoonWithAReasonOrALayout)
{
    const auto makePath = [](const QString& segments) {
        return QStringLiteral(R"({"demand": 3, "shape": {"type": "path",
            "contours": [{"start": [0, 0], "segs": [%1]}]}})")
            .arg(segments);
    };
    QString scales; // ends that differ by rounding
    for (int i = 0; i < 20000; ++i)
        scales += QStringLiteral(R"(, ["A", %1, 50, %2, -950, "ccw"])")
                      .arg(QString::number(100 - 0.005 * (i + 1), 'g', 17),
                           QString::number(100 - 0.005 * (i + 0.5), 'g', 17));
    const QStringList items = {
        makePath(R"(["L", 100, 0], ["L", 100, 50], ["A", 0, 50, 50, -999999950, "ccw"])"),
        makePath(R"(["A", 1, 0, 0.5, -1e9, "ccw"], ["L", 0.5, 3])"),
        makePath(R"(["L", 100, 0], ["L", 100, 50])" + scales),
        QStringLiteral(R"({"shape": {"data": [[0, 0], [1e-310, 0], [1e-310, 1e-310], [0, 1e-310]]}})"),
        QStringLiteral(R"({"shape": {"data": [[0, 0], [9, 0], [9, 1e-310], [9, 9], [0, 9], [5e-324, 5]]}})"),
        QStringLiteral(R"({"shape": {"data": [[0, 0], [1e300, 0], [1e300, 1e300]]}})")};
    for (const QString& item : items) {
        const QString path =
            Save(QStringLiteral("hostile.json"),
                 QStringLiteral(R"({"items": [%1], "packagings": [{"width": 500, "length": 500}],
                "params": {"item_separation": 2}})")
                     .arg(item)
                     .toUtf8());
        for (const char* limit : {"--cpu", "--time"}) {
            const Outcome outcome = Run({path, QLatin1String(limit), QStringLiteral("0.05")});
            EXPECT_TRUE(outcome.code == 0 || outcome.code == 1) << outcome.errors.toStdString();
            EXPECT_EQ(outcome.code == 1, outcome.output.contains(QLatin1String("not placed: ")));
        }
    }
}

TEST_F(ZorNestFrontFaultsTest, EveryBadDocumentIsRefusedWithThePlaceOfItsFault)
{
    const QByteArray item = R"({"shape": {"data": [[0, 0], [1, 0], [0, 1]]}})";
    const std::vector<std::pair<QByteArray, const char*>> documents{
        {"", "illegal value, at byte"},
        {"{\"items\": [", "unterminated array, at byte"},
        {"[1]", "document: an object is expected"},
        {"{}", "items: there are none"},
        {R"({"items": {}})", "items: an array is expected"},
        {R"({"items": [3]})", "items[0]: an object is expected"},
        {R"({"items": [{}]})", "items[0].shape: is missing"},
        {R"({"items": [{"demand": -1}]})", "items[0].demand: must be at least 0"},
        {R"({"items": [{"demand": 1.5}]})", "items[0].demand: an integer is expected"},
        {R"({"items": [{"demand": 1e12}]})", "items[0].demand: an integer is expected"},
        {R"({"items": [{"demand": "many"}]})", "items[0].demand: a number is expected"},
        {R"({"items": [{"mirrored": 1}]})", "items[0].mirrored: true or false is expected"},
        {R"({"items": [{"shape": {}}]})", "items[0].shape.data: is missing"},
        {R"({"items": [{"shape": {"type": "disc"}}]})", "items[0].shape.type: must be"},
        {R"({"items": [{"shape": {"data": [[0, 0], [1]]}}]})",
         "items[0].shape.data[1]: coordinates are missing"},
        {R"({"items": [{"shape": {"data": [[0, 0], [1, null]]}}]})",
         "items[0].shape.data[1][1]: a number is expected"},
        {R"({"items": [{"shape": {"type": "path", "contours": [{"start": [0, 0], "segs": [["Q", 1, 2]]}]}}]})",
         "items[0].shape.contours[0].segs[0]: a segment begins with"},
        {"{\"items\": [" + item + "]}", "document: \"strip_height\", \"bins\" or \"packagings\" are missing"},
        {"{\"strip_height\": -4, \"items\": [" + item + "]}", "strip_height: must not be negative"},
        {"{\"packagings\": [{\"quantity\": 0.5}], \"items\": [" + item + "]}",
         "packagings[0].quantity: an integer is expected"},
        {"{\"packagings\": [{\"id\": 1}, {\"id\": 1}], \"items\": [" + item + "]}",
         "packagings[1].id: 1 is used twice"},
        {"{\"strip_height\": 4, \"params\": {\"usage_rule\": \"Any\"}, \"items\": [" + item + "]}",
         "params.usage_rule: must be"},
        {"{\"strip_height\": 4, \"params\": {\"item_separation\": -1}, \"items\": [" + item + "]}",
         "params.item_separation: must not be negative"}};
    for (const auto& [document, message] : documents) {
        const Outcome outcome = Run({Save(QStringLiteral("bad.json"), document)});
        EXPECT_EQ(outcome.code, 3) << document.constData();
        EXPECT_TRUE(outcome.errors.contains(QLatin1String(message)))
            << message << ": " << outcome.errors.toStdString();
        EXPECT_TRUE(outcome.errors.startsWith(GetPath(QStringLiteral("bad.json"))));
    }
    EXPECT_EQ(Run({GetPath(QStringLiteral("none.json"))}).code, 3);
    EXPECT_EQ(Run({QDir::tempPath()}).code, 3);
}

TEST_F(ZorNestFrontFaultsTest, WrongUsageIsExplained)
{
    const std::vector<std::pair<QString, const char*>> uses{
        {QString(), "one instance is needed"},
        {QStringLiteral("a b"), "one instance is needed"},
        {QStringLiteral("a --time soon"), "--time: 'soon' is not a number"},
        {QStringLiteral("a --time -1"), "--time: '-1' is not a number"},
        {QStringLiteral("a --cpu nan"), "--cpu: 'nan' is not a number"},
        {QStringLiteral("a --cpu 3 --time 4"), "--time and --cpu exclude each other"},
        {QStringLiteral("a --seed x"), "--seed: 'x' is not an integer"},
        {QStringLiteral("a --threads 0"), "--threads: '0' is not an integer from 1 to 256"},
        {QStringLiteral("a --threads %2"), "--threads: '%2' is not an integer from 1 to 256"},
        {QStringLiteral("a --fast"), "fast"}};
    for (const auto& [use, message] : uses) {
        const Outcome outcome = Run(use.split(QLatin1Char(' '), Qt::SkipEmptyParts));
        EXPECT_EQ(outcome.code, 2) << use.toStdString();
        EXPECT_TRUE(outcome.errors.contains(QLatin1String(message))) << outcome.errors.toStdString();
    }
    const Outcome help = Run({QStringLiteral("--help")});
    EXPECT_EQ(help.code, 0);
    for (const char* text :
         {"--time", "--cpu", "--steps", "--seed", "--threads", "--out", "--png", "--html", "Exit codes"})
        EXPECT_TRUE(help.output.contains(QLatin1String(text))) << text;
}

TEST_F(ZorNestFrontFaultsTest, CopiesBeyondTheMostAreReported)
{
    const QString path = Save(QStringLiteral("many.json"), R"({
      "items": [{"name": "square", "demand": 2000000000, "orientation_deg": 0,
                 "shape": {"data": [[0, 0], [10, 0], [10, 10], [0, 10]]}},
                {"name": "other", "demand": 2000000000, "orientation_deg": 0,
                 "shape": {"data": [[0, 0], [10, 0], [10, 9], [0, 9]]}}],
      "packagings": [{"quantity": null, "width": 30, "length": 30}]})");
    const Outcome outcome = Run({path, QStringLiteral("--steps"), QStringLiteral("100")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.errors, QString());
    EXPECT_TRUE(outcome.output.contains(
        QStringLiteral("not placed: 1999995000 of item 0 \"square\": one job nests at most 5000 parts")))
        << outcome.output.right(300).toStdString();
    EXPECT_TRUE(outcome.output.contains(QStringLiteral("not placed: 2000000000 of item 1 \"other\"")));
}

TEST_F(ZorNestFrontFaultsTest, AFileThatCannotBeWrittenIsToldBeforeTheRun)
{
    const Outcome outcome =
        Run({SaveSquares(), QStringLiteral("--out"), GetPath(QStringLiteral("no/x.json"))});
    EXPECT_EQ(outcome.code, 4);
    EXPECT_TRUE(outcome.errors.contains(QLatin1String("no/x.json: ")));
    EXPECT_EQ(outcome.output, QString());
}

TEST_F(ZorNestFrontFaultsTest, AFullDiskKeepsTheFilesAndGivesTheReason)
{
    const QString squares = SaveSquares();
    const auto check = [&](const QString& option, const QString& argument, const QString& name) {
        const Outcome outcome = Start("/bin/sh", {"-c", "ulimit -f 0; exec \"$@\"", "sh", ZORNEST_PROGRAM,
                                                  squares, "--steps", "100", option, argument});
        EXPECT_EQ(outcome.code, 4) << option.toStdString();
        EXPECT_TRUE(outcome.errors.endsWith(name + ": File too large\n")) << outcome.errors.toStdString();
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), QByteArray("old"));
    };
    check("--out", Save("layout.json", "old"), GetPath("layout.json"));
    check("--html", Save("report.html", "old"), GetPath("report.html"));
    ASSERT_TRUE(QDir().mkpath(GetPath("pictures")));
    Save("pictures/sheet-0.png", "old");
    check("--png", GetPath("pictures"), GetPath("pictures/sheet-0.png"));
}

} // namespace
