#include "ScriptTest.h"
#include "support/UncheckedLeaks.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <QLabel>
#include <QTimer>

#include <new>
#include <stdexcept>

namespace {

using ZORHostScriptRunnerTest = ScriptTest;

TEST_F(ZORHostScriptRunnerTest, SetsAndReadsEveryKindOfWidget)
{
    EXPECT_TRUE(Play({"in Playground",
                      "set _Combo two",
                      "set _Check on",
                      "set _Radio on",
                      "set _Spin 42",
                      "set _Double 2.5",
                      "set _Edit \"some text\"",
                      "set _Tabs Second",
                      "expect value _Combo is two",
                      "expect value _Check is on",
                      "expect value _Radio is on",
                      "expect value _Spin is 42",
                      "expect value _Double is 2.5",
                      "expect value _Edit is \"some text\"",
                      "expect value _Tabs is Second",
                      "set _Check off",
                      "expect value \"Option A\" is off",
                      "set \"Number\" three",
                      "expect value _Combo is three",
                      "expect title is \"Play Ground\"",
                      "expect enabled _Disabled is no",
                      "expect enabled _Edit is yes"}))
        << report.toStdString();
    EXPECT_TRUE(report.contains("All as expected."));
}

TEST_F(ZORHostScriptRunnerTest, ReadsAndSelectsRows)
{
    EXPECT_TRUE(Play({"in \"Play Ground\"", "expect rows _Table is 3", "expect cell _Table 1 Name is beta",
                      "expect cell _Table -1 0 is gamma", "expect cell _Table beta Count is 1",
                      "select _Table gamma 0"}))
        << report.toStdString();
    QStringList selected;
    for (const QModelIndex& index : window.table->selectionModel()->selectedRows())
        selected.append(index.data().toString());
    selected.sort();
    EXPECT_EQ(QStringList({"alpha", "gamma"}), selected);
    EXPECT_EQ(QString("gamma"), window.table->currentIndex().data().toString());
}

TEST_F(ZORHostScriptRunnerTest, EditsCellsAsTheirKindTakesIt)
{
    window.model.setData(window.model.index(0, 1), 7);
    window.model.setData(window.model.index(1, 1), 0.5);
    window.model.setData(window.model.index(2, 1), true);
    EXPECT_TRUE(Play({"in Playground", "edit _Table alpha Count 12", "edit _Table 1 1 2.25",
                      "edit _Table gamma Count false", "edit _Table -1 Name delta"}))
        << report.toStdString();
    EXPECT_EQ(QVariant(12), window.model.data(window.model.index(0, 1)));
    EXPECT_EQ(QVariant(2.25), window.model.data(window.model.index(1, 1)));
    EXPECT_EQ(QVariant(false), window.model.data(window.model.index(2, 1)));
    EXPECT_EQ(QVariant("delta"), window.model.data(window.model.index(2, 0)));

    EXPECT_EQ("test.zorscript:2: widget '_Table' takes no 'many' in column 'Count'",
              FailureOf({"in Playground", "edit _Table 0 Count many"}));
    EXPECT_EQ("test.zorscript:2: widget '_Table' takes no 'maybe' in column 'Count'",
              FailureOf({"in Playground", "edit _Table 2 Count maybe"}));
    EXPECT_EQ("test.zorscript:2: widget '_Edit' has no rows",
              FailureOf({"in Playground", "edit _Edit 0 0 x"}));
    window.table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    EXPECT_EQ("test.zorscript:2: widget '_Table' has no cell to edit in column 'Name'",
              FailureOf({"in Playground", "edit _Table 0 Name x"}));
    EXPECT_EQ(QVariant("alpha"), window.model.data(window.model.index(0, 0)));
}

TEST_F(ZORHostScriptRunnerTest, TriggersClicksAndPressesKeys)
{
    QStringList done;
    window.Add("&Do It...", [&done] { done.append("action"); })->setObjectName("_DoIt");
    QObject::connect(window.button, &QPushButton::clicked, &window,
                     [list = &done] { list->append("button"); });
    EXPECT_TRUE(Play({"in Playground", "trigger \"Do It\"", "trigger _DoIt", "click Press", "click _Button",
                      "key Space _Button", "key \"Shift+A\" _Edit"}))
        << report.toStdString();
    EXPECT_EQ(QStringList({"action", "action", "button", "button", "button"}), done);
}

TEST_F(ZORHostScriptRunnerTest, FindsActionsOfAnyWindow)
{
    bool done = false;
    window.Add("Elsewhere", [&done] { done = true; });
    EXPECT_TRUE(Play({"trigger Elsewhere"})) << report.toStdString();
    EXPECT_TRUE(done);
}

TEST_F(ZORHostScriptRunnerTest, WaitsForStates)
{
    QTimer::singleShot(100, &window, [this] { window.AddRow("delta"); });
    QTimer::singleShot(200, &window, [] {
        auto* late = new QLabel("late");
        late->setObjectName("Late");
        late->setAttribute(Qt::WA_DeleteOnClose);
        late->show();
    });
    EXPECT_TRUE(Play({"in Playground", "wait 10 rows _Table is 4", "wait 10 window Late is open", "in Late",
                      "close", "wait 10 window Late is closed"}))
        << report.toStdString();
    EXPECT_EQ(QString("test.zorscript:2: waited 0.1 s: rows _Table is '4', wanted: is '9'"),
              FailureOf({"in Playground", "wait 0.1 rows _Table is 9"}));
}

TEST_F(ZORHostScriptRunnerTest, AnUnmetExpectationFailsAndTheScriptGoesOn)
{
    EXPECT_FALSE(Play({"in Playground", "expect rows _Table is 4", "set _Edit reached",
                       "expect value _Combo contains n", "expect value _Combo not one"}));
    EXPECT_EQ(QStringList({"test.zorscript:2: rows _Table is '3', expected: is '4'",
                           "test.zorscript:5: value _Combo is 'one', expected: not 'one'"}),
              failures);
    EXPECT_EQ(QString("reached"), window.findChild<QLineEdit*>("_Edit")->text());
    EXPECT_TRUE(report.contains("2 failure(s).")) << report.toStdString();
}

TEST_F(ZORHostScriptRunnerTest, ComparesNumbers)
{
    EXPECT_TRUE(Play({"expect text 10 above 9.5", "expect text 1e2 below 200"}));
    EXPECT_EQ(QString("test.zorscript:1: 'ten' is no number"), FailureOf({"expect text ten above 9"}));
}

TEST_F(ZORHostScriptRunnerTest, AStepThatCannotBeDoneEndsTheScript)
{
    const std::pair<QString, QString> cases[] = {
        {"click _Nothing", "no widget '_Nothing' in 'Play Ground'"},
        {"click _Edit", "'_Edit' is no button"},
        {"set _Disabled x", "widget '_Disabled' is disabled"},
        {"set _Combo four", "widget '_Combo' has no choice 'four', but: one, two, three"},
        {"set _Spin 1000", "widget '_Spin' takes 0 to 99, not '1000'"},
        {"set _Spin many", "widget '_Spin' takes a number, not 'many'"},
        {"set _Check maybe", "widget '_Check' takes on or off, not 'maybe'"},
        {"set _Tabs Third", "widget '_Tabs' has no tab 'Third'"},
        {"set _Button x", "widget '_Button' cannot be set"},
        {"select _Table 3", "widget '_Table' has no row 3 in its 3 rows"},
        {"select _Table omega", "widget '_Table' has no row 'omega'"},
        {"expect cell _Table 0 Size is 1", "widget '_Table' has no column 'Size'"},
        {"expect rows _Edit is 1", "widget '_Edit' has no rows"},
        {"trigger Nothing", "no action 'Nothing'"},
        {"expect nonsense is 1", "unknown query 'nonsense'"},
        {"expect rows is 1", "the query 'rows' takes 1 words, not 0"},
        {"expect text a like b", "unknown comparison 'like'"},
        {"screenshot moon x.png", "a picture of 'moon' cannot be taken: view, window or screen"},
        {"screenshot window /proc/none/x.png",
         "cannot write the picture '/proc/none/x.png': No such file or directory"},
        {"key Hyper+Foo", "'Hyper+Foo' is no key"},
        {"timeout soon", "'soon' is no number of seconds"},
        {"expect triangles Nothing is 1", "no geometry 'Nothing'"},
        {"expect same /proc/none /proc/none is yes",
         "'/proc/none' cannot be read: No such file or directory"},
        {"expect same /dev/zero /dev/zero is yes", "'/dev/zero' cannot be read: it is not a regular file"},
        {"expect colors /dev/zero is 1", "'/dev/zero' cannot be read: it is not a regular file"},
        {"screenshot window /dev/tty", "cannot write the picture '/dev/tty': it is not a regular file"},
        {"repeat I 1 many\nend", "'many' is no whole number of at most 10000"},
        {"repeat I 1 10001\nend", "'10001' is no whole number of at most 10000"},
    };
    for (const auto& [step, message] : cases) {
        EXPECT_EQ("test.zorscript:2: " + message, FailureOf({"in Playground", step, "set _Edit reached"}));
        EXPECT_NE(QString("reached"), window.findChild<QLineEdit*>("_Edit")->text()) << step.toStdString();
    }
    EXPECT_EQ(QString("test.zorscript:1: no window chosen: use 'in' first"), FailureOf({"click _Button"}));
}

TEST_F(ZORHostScriptRunnerTest, VariablesAreReplacedAndLetReadsValues)
{
    variables = {{"NAME", "alpha"}};
    EXPECT_TRUE(Play({"in Playground", "expect cell _Table 0 0 is ${NAME}", "let N rows _Table",
                      "expect rows _Table is ${N}", "set _Edit \"${NAME}-${N}-${UNKNOWN}\"",
                      "expect value _Edit is \"alpha-3-\\${UNKNOWN}\""}))
        << report.toStdString();
}

TEST_F(ZORHostScriptRunnerTest, AnyExceptionOfAStepEndsTheScript)
{
    const UncheckedLeaks unchecked; // it throws through Qt
    window.Add("Memory", [] { throw std::bad_alloc(); });
    EXPECT_EQ(QString("test.zorscript:2: there is not enough memory for this step"),
              FailureOf({"in Playground", "trigger Memory", "set _Edit reached"}));
    window.Add("Luck", [] { throw std::runtime_error("out of luck"); });
    EXPECT_EQ(QString("test.zorscript:2: out of luck"), FailureOf({"in Playground", "trigger Luck"}));
    EXPECT_NE(QString("reached"), window.findChild<QLineEdit*>("_Edit")->text());
}

TEST_F(ZORHostScriptRunnerTest, AsksAboutTheDocumentAndFiles)
{
    AddBox("Box");
    WriteFile("some.txt", "12345");
    WriteFile("equal.txt", "12345");
    WriteFile("other.txt", "12346");
    variables = {{"FILE", GetPath("some.txt")},
                 {"NONE", GetPath("none.txt")},
                 {"EQUAL", GetPath("equal.txt")},
                 {"OTHER", GetPath("other.txt")}};
    EXPECT_TRUE(Play({"expect geometries is 1", "expect triangles Box is 12", "expect references Box is 0",
                      "expect objects is 1", "expect size ${FILE} is 5", "expect file ${FILE} is there",
                      "expect file ${NONE} is missing", "expect same ${FILE} ${EQUAL} is yes",
                      "expect same ${FILE} ${OTHER} is no"}))
        << report.toStdString();
}

TEST_F(ZORHostScriptRunnerTest, MeasuresCurves)
{
    AddBox("Box");
    const ZORMathSetOfPoints points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 3}};
    auto* const curve = new ZORGeoPolyline(GetEnvironment()->GetContainer(), points, true);
    curve->setObjectName("Curve");
    curve->Initialize();
    EXPECT_TRUE(
        Play({"expect points Curve is 3", "expect length Curve is 4.162278",
              "expect deviation Curve Box above 0.999999", "expect deviation Curve Box below 1.000001"}))
        << report.toStdString();
    EXPECT_EQ(QString("test.zorscript:1: geometry 'Box' is no curve"), FailureOf({"expect length Box is 1"}));
    EXPECT_EQ(QString("test.zorscript:1: geometry 'Curve' is no surface"),
              FailureOf({"expect deviation Curve Curve is 1"}));
}

TEST_F(ZORHostScriptRunnerTest, RepeatsSteps)
{
    EXPECT_TRUE(Play({"repeat I -1 1", "repeat J 1 2", "print \"round ${I}/${J}\"", "end", "end",
                      "repeat I 2 1", "print never", "end", "print \"I was ${I}\""}))
        << report.toStdString();
    for (const char* text :
         {"round -1/1", "round -1/2", "round 0/1", "round 0/2", "round 1/1", "round 1/2", "I was 1"})
        EXPECT_EQ(1, report.count(QLatin1String(text))) << text;
    EXPECT_FALSE(report.contains("never"));
}

TEST_F(ZORHostScriptRunnerTest, TakesPicturesAndReportsSections)
{
    AddBox("Box");
    view.SetEnvironment(GetEnvironment());
    view.resize(200, 150);
    EXPECT_TRUE(Play({"section \"Part one\"", "print \"hello there\"", "note \"12 things\"", "in Playground",
                      "screenshot window ${OUT}/window.png", "screenshot view ${OUT}/view.png",
                      "section \"Part two\"", "expect file ${OUT}/window.png is there",
                      "expect colors ${OUT}/view.png above 5", "expect colors ${OUT}/window.png above 5"}))
        << report.toStdString();
    EXPECT_EQ(window.size() * window.devicePixelRatioF(), QImage(GetPath("out/window.png")).size());
    for (const char* text : {"hello there", "Summary of test.zorscript", " s  Part one", " s  Part two",
                             "3 expectations", "picture "})
        EXPECT_TRUE(report.contains(QLatin1String(text))) << text;
    EXPECT_EQ(1, report.count("hello there"));
    EXPECT_EQ(2, report.count("12 things"));
    view.SetEnvironment(nullptr);
}

} // namespace
