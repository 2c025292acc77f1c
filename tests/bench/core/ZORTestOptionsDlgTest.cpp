#include "core/ZORTestOptionsDlg.h"

#include "support/BenchTest.h"

#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORNesting/ZORNestDebugOptions.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

namespace {

/// What the dialog edits.
struct Options
{
    bool constructorTraces = false;
    int constructorLength = 0;
    bool referenceTraces = false;
    int referenceLength = 0;
    bool loadDump = false;
    QString loadDumpFile;
    bool keepTranslation = false;
    bool keepNesting = false;

    friend bool operator==(const Options&, const Options&) = default;
};

Options ReadSdk()
{
    const auto* geometry = ZORGeoDebugOptions::GetInstance();
    const auto* nesting = ZORNestDebugOptions::GetInstance();
    return {geometry->IsConstructorStackTraces(),         geometry->GetConstructorStackTraceLength(),
            geometry->IsReferenceStackTraces(),           geometry->GetReferenceStackTraceLength(),
            geometry->IsContainerLoadDumpEnabled(),       geometry->GetContainerLoadDumpFile(),
            nesting->GetKeepTranslationWorkDirectories(), nesting->GetKeepNestingWorkDirectories()};
}

void WriteSdk(const Options& options)
{
    auto* geometry = ZORGeoDebugOptions::GetInstance();
    geometry->SetConstructorStackTraces(options.constructorTraces);
    geometry->SetConstructorStackTraceLength(options.constructorLength);
    geometry->SetReferenceStackTraces(options.referenceTraces);
    geometry->SetReferenceStackTraceLength(options.referenceLength);
    geometry->SetContainerLoadDumpEnabled(options.loadDump);
    geometry->SetContainerLoadDumpFile(options.loadDumpFile);
    auto* nesting = ZORNestDebugOptions::GetInstance();
    nesting->SetKeepTranslationWorkDirectories(options.keepTranslation);
    nesting->SetKeepNestingWorkDirectories(options.keepNesting);
}

class ZORTestOptionsDlgTest : public BenchTest
{
protected:
    ZORTestOptionsDlgTest()
        : m_before(ReadSdk())
    {
    }
    ~ZORTestOptionsDlgTest() override { WriteSdk(m_before); }

    template<class Widget>
    static Widget* Find(const ZORTestOptionsDlg& dlg, const char* objectName)
    {
        auto* widget = dlg.findChild<Widget*>(QLatin1String(objectName));
        EXPECT_NE(nullptr, widget) << objectName;
        return widget;
    }

    static Options ReadForm(const ZORTestOptionsDlg& dlg)
    {
        return {Find<QCheckBox>(dlg, "_GeoConstStackChk")->isChecked(),
                Find<QSpinBox>(dlg, "_GeoConstLenSpn")->value(),
                Find<QCheckBox>(dlg, "_GeoRefStackChk")->isChecked(),
                Find<QSpinBox>(dlg, "_GeoRefLenSpn")->value(),
                Find<QCheckBox>(dlg, "_DumpContainerLoadChk")->isChecked(),
                Find<QLineEdit>(dlg, "_ContainerDumpEdit")->text(),
                Find<QCheckBox>(dlg, "_KeepTransChk")->isChecked(),
                Find<QCheckBox>(dlg, "_KeepNestingChk")->isChecked()};
    }

private:
    const Options m_before;
};

const Options kOneSet{true, 7, false, 21, true, QStringLiteral("/tmp/dump one.txt"), true, false};
const Options kOtherSet{false, 0, true, 99, false, QString(), false, true};

TEST_F(ZORTestOptionsDlgTest, HasTheFormWithItsTexts)
{
    const ZORTestOptionsDlg dlg(nullptr);
    EXPECT_EQ(QString("C++ Qt SDK Testing Options"), dlg.windowTitle());
    EXPECT_EQ(QString("ZORTestOptionsDlg"), dlg.objectName());
    EXPECT_EQ(QSize(316, 352), dlg.size());

    const struct
    {
        const char* name;
        const char* className;
        const char* text;
        const char* group;
    } expected[] = {
        {"_GeoConstStackChk", "QCheckBox", "Record stack traces for geometry constructors", "_DebugBox"},
        {"_GeoConstLenLbl", "QLabel", "Constructor Stack Length: ", "_DebugBox"},
        {"_GeoConstLenSpn", "QSpinBox", nullptr, "_DebugBox"},
        {"_GeoRefStackChk", "QCheckBox", "Record stack traces for geometry reference counting", "_DebugBox"},
        {"_GeoRefLenLbl", "QLabel", "Reference Stack Length: ", "_DebugBox"},
        {"_GeoRefLenSpn", "QSpinBox", nullptr, "_DebugBox"},
        {"_DumpContainerLoadChk", "QCheckBox", "Dump debug info during container load", "_DebugBox"},
        {"_ContainerDumpLbl", "QLabel", "Container dump file", "_DebugBox"},
        {"_ContainerDumpEdit", "QLineEdit", "", "_DebugBox"},
        {"_ContainerDumpBtn", "QPushButton", "...", "_DebugBox"},
        {"_DrpLogAPICallsChk", "QCheckBox", "Log API calls", "_DrapingBox"},
        {"_KeepTransChk", "QCheckBox", "Keep translation work directories", "_NestingBox"},
        {"_KeepNestingChk", "QCheckBox", "Keep nesting work directories", "_NestingBox"},
    };
    for (const auto& row : expected) {
        const auto* widget = dlg.findChild<QWidget*>(QLatin1String(row.name));
        ASSERT_NE(nullptr, widget) << row.name;
        EXPECT_STREQ(row.className, widget->metaObject()->className());
        EXPECT_EQ(QString::fromLatin1(row.group), widget->parentWidget()->objectName()) << row.name;
        if (row.text) {
            EXPECT_EQ(QString::fromLatin1(row.text), widget->property("text").toString());
        }
    }
    EXPECT_EQ(QString("Geometry"), Find<QGroupBox>(dlg, "_DebugBox")->title());
    EXPECT_EQ(QString("Draping"), Find<QGroupBox>(dlg, "_DrapingBox")->title());
    EXPECT_EQ(QString("Nesting"), Find<QGroupBox>(dlg, "_NestingBox")->title());
    for (const char* spin : {"_GeoConstLenSpn", "_GeoRefLenSpn"}) {
        EXPECT_EQ(0, Find<QSpinBox>(dlg, spin)->minimum());
        EXPECT_EQ(99, Find<QSpinBox>(dlg, spin)->maximum());
    }
}

TEST_F(ZORTestOptionsDlgTest, DeclaresItsSlotsInOrder)
{
    const QMetaObject& meta = ZORTestOptionsDlg::staticMetaObject;
    ASSERT_EQ(2, meta.methodCount() - meta.methodOffset());
    EXPECT_EQ(QByteArray("OnOkClicked()"), meta.method(meta.methodOffset()).methodSignature());
    EXPECT_EQ(QByteArray("OnContainerDumpFileClicked()"),
              meta.method(meta.methodOffset() + 1).methodSignature());
}

TEST_F(ZORTestOptionsDlgTest, ShowsWhatTheSdkHolds)
{
    for (const Options& options : {kOneSet, kOtherSet}) {
        WriteSdk(options);
        EXPECT_EQ(options, ReadForm(ZORTestOptionsDlg(nullptr)));
    }
}

TEST_F(ZORTestOptionsDlgTest, WritesEverythingOnOkAndCloses)
{
    for (const Options& options : {kOneSet, kOtherSet}) {
        ZORTestOptionsDlg dlg(nullptr);
        dlg.show();
        Find<QCheckBox>(dlg, "_GeoConstStackChk")->setChecked(options.constructorTraces);
        Find<QSpinBox>(dlg, "_GeoConstLenSpn")->setValue(options.constructorLength);
        Find<QCheckBox>(dlg, "_GeoRefStackChk")->setChecked(options.referenceTraces);
        Find<QSpinBox>(dlg, "_GeoRefLenSpn")->setValue(options.referenceLength);
        Find<QCheckBox>(dlg, "_DumpContainerLoadChk")->setChecked(options.loadDump);
        Find<QLineEdit>(dlg, "_ContainerDumpEdit")->setText(options.loadDumpFile);
        Find<QCheckBox>(dlg, "_KeepTransChk")->setChecked(options.keepTranslation);
        Find<QCheckBox>(dlg, "_KeepNestingChk")->setChecked(options.keepNesting);
        dlg.OnOkClicked();
        EXPECT_EQ(options, ReadSdk());
        EXPECT_FALSE(dlg.isVisible());
    }
}

TEST_F(ZORTestOptionsDlgTest, WritesInTheOrderOfTheForm)
{
    WriteSdk({true, 7, true, 21, true, QStringLiteral("dump.txt"), true, true});
    ZORTestOptionsDlg dlg(nullptr);
    EXPECT_EQ(QStringList({"ZORGeoDebugOptions::SetConstructorStackTraces(true)",
                           "ZORGeoDebugOptions::SetConstructorStackTraceLength(7)",
                           "ZORGeoDebugOptions::SetReferenceStackTraces(true)",
                           "ZORGeoDebugOptions::SetReferenceStackTraceLength(21)",
                           "ZORGeoDebugOptions::SetContainerLoadDumpEnabled(true)",
                           "ZORGeoDebugOptions::SetContainerLoadDumpFile(\"dump.txt\")",
                           "ZORNestDebugOptions::SetKeepTranslationWorkDirectories(true)",
                           "ZORNestDebugOptions::SetKeepNestingWorkDirectories(true)"}),
              TraceCalls([&] { dlg.OnOkClicked(); }));
}

TEST_F(ZORTestOptionsDlgTest, WritesNothingWhenItIsMerelyClosed)
{
    WriteSdk(kOneSet);
    ZORTestOptionsDlg dlg(nullptr);
    dlg.show();
    Find<QCheckBox>(dlg, "_GeoConstStackChk")->setChecked(false);
    Find<QSpinBox>(dlg, "_GeoRefLenSpn")->setValue(3);
    dlg.close();
    EXPECT_EQ(kOneSet, ReadSdk());
}

TEST_F(ZORTestOptionsDlgTest, ClampsLongStacksToNinetyNineAndWritesThatBack)
{
    Options options = kOneSet;
    options.constructorLength = 250;
    options.referenceLength = 100;
    WriteSdk(options);
    ZORTestOptionsDlg dlg(nullptr);
    EXPECT_EQ(99, Find<QSpinBox>(dlg, "_GeoConstLenSpn")->value());
    EXPECT_EQ(99, Find<QSpinBox>(dlg, "_GeoRefLenSpn")->value());
    EXPECT_EQ(options, ReadSdk());
    dlg.OnOkClicked();
    options.constructorLength = 99;
    options.referenceLength = 99;
    EXPECT_EQ(options, ReadSdk());
}

TEST_F(ZORTestOptionsDlgTest, WritesAnEmptyDumpFileWhileTheDumpIsOn)
{
    WriteSdk(kOneSet);
    ZORTestOptionsDlg dlg(nullptr);
    Find<QLineEdit>(dlg, "_ContainerDumpEdit")->clear();
    dlg.OnOkClicked();
    EXPECT_TRUE(ReadSdk().loadDump);
    EXPECT_EQ(QString(), ReadSdk().loadDumpFile);
}

TEST_F(ZORTestOptionsDlgTest, LogApiCallsIsAlwaysUncheckedAtFirstAndChangesNothing)
{
    WriteSdk(kOneSet);
    {
        ZORTestOptionsDlg dlg(nullptr);
        dlg.show();
        auto* check = Find<QCheckBox>(dlg, "_DrpLogAPICallsChk");
        EXPECT_FALSE(check->isChecked());
        check->click();
        EXPECT_TRUE(check->isChecked());
        dlg.OnOkClicked();
    }
    EXPECT_EQ(kOneSet, ReadSdk());
    EXPECT_FALSE(Find<QCheckBox>(ZORTestOptionsDlg(nullptr), "_DrpLogAPICallsChk")->isChecked());
}

TEST_F(ZORTestOptionsDlgTest, AsksForTheDumpFileWhenCalledByName)
{
    ZORTestOptionsDlg dlg(nullptr);
    dlg.show();
    const QString path = GetPath(QStringLiteral("dump.txt"));
    answers.AnswerFile(path);
    ASSERT_TRUE(QMetaObject::invokeMethod(&dlg, "OnContainerDumpFileClicked"));
    EXPECT_EQ(path, Find<QLineEdit>(dlg, "_ContainerDumpEdit")->text());
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("Select dump file"), shown.first().title);
    EXPECT_TRUE(shown.first().isSaving);
    EXPECT_EQ(&dlg, shown.first().parent);
    EXPECT_EQ(QString(), shown.first().fileName);
    EXPECT_EQ(QStringList{"All Files (*)"}, shown.first().filters);
}

TEST_F(ZORTestOptionsDlgTest, EmptiesTheFieldWhenTheFileDialogIsCancelled)
{
    WriteSdk(kOneSet);
    ZORTestOptionsDlg dlg(nullptr);
    dlg.show();
    answers.CancelFile();
    ASSERT_TRUE(QMetaObject::invokeMethod(&dlg, "OnContainerDumpFileClicked"));
    EXPECT_EQ(QString(), Find<QLineEdit>(dlg, "_ContainerDumpEdit")->text());
}

TEST_F(ZORTestOptionsDlgTest, LeavesTheBrowseButtonUnconnected)
{
    ZORTestOptionsDlg dlg(nullptr);
    dlg.show();
    QTest::mouseClick(Find<QPushButton>(dlg, "_ContainerDumpBtn"), Qt::LeftButton);
    EXPECT_TRUE(answers.Take().isEmpty());
}

} // namespace
