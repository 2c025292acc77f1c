#include "ZORNestJobBytes_p.h"
#include "ZORNestJobDocument_p.h"

namespace {

using zor::nest::JobDocument;
using zor::nest::JobSource;
using zor::nest::ReadList;
using ZORNestSolver::NestedSheet;
using ZORNestSolver::Placement;
using ZORNestSolver::Solution;
using ZORNestSolver::UnplacedItem;

constexpr char kTask[] = "nesting task";
constexpr char kOutcome[] = "nesting outcome";
constexpr char kLayout[] = "nesting layout";
constexpr char kTranslation[] = "translation task";
constexpr char kTranslated[] = "translation outcome";
constexpr qsizetype kNumbersOfPose = 3;

void WriteItem(ZORSysDocumentWriter& writer, const ZORNestNestingInputItem& item)
{
    writer.StartArray(4);
    writer.WriteText(item.GetName());
    writer.WriteBytes(item.GetContents());
    writer.WriteNumbers(QList<qint32>{item.GetQuantity(), item.GetPriority(), item.IsMirrored(),
                                      item.IsFlippable(), item.IsGrain90Set(), item.IsGrain180Set(),
                                      item.IsGrain270Set()});
    writer.WriteNumbers(QList<double>{item.GetOrientation(), item.GetMaxDeviation()});
    writer.EndArray();
}

ZORNestNestingInputItem ReadItem(JobSource& source)
{
    source.Enter(4);
    const QString name = source.ReadText();
    ZORNestNestingInputItem item(name, source->ReadBytes());
    const QList<qint32> integers = source.ReadIntegers(7);
    item.SetQuantity(integers[0]);
    item.SetPriority(integers[1]);
    item.SetMirrored(integers[2] != 0);
    item.SetFlippable(integers[3] != 0);
    item.SetGrain90(integers[4] != 0);
    item.SetGrain180(integers[5] != 0);
    item.SetGrain270(integers[6] != 0);
    const QList<double> doubles = source.ReadDoubles(2);
    item.SetOrientation(doubles[0]);
    item.SetMaxDeviation(doubles[1]);
    source->Leave();
    return item;
}

void WritePackaging(ZORSysDocumentWriter& writer, const ZORNestNestingInputPackaging& packaging)
{
    writer.StartArray(3);
    writer.WriteText(packaging.GetName());
    writer.WriteInteger(packaging.GetQuantity());
    writer.WriteNumbers(QList<double>{packaging.GetWidth(), packaging.GetLength(), packaging.GetLeftTrim(),
                                      packaging.GetRightTrim(), packaging.GetTopTrim(),
                                      packaging.GetBottomTrim(), packaging.GetCost()});
    writer.EndArray();
}

ZORNestNestingInputPackaging ReadPackaging(JobSource& source)
{
    source.Enter(3);
    const QString name = source.ReadText();
    const auto quantity = source.ReadInteger<int>();
    const QList<double> doubles = source.ReadDoubles(7);
    ZORNestNestingInputPackaging packaging(name, doubles[0], doubles[1]);
    packaging.SetQuantity(quantity);
    packaging.SetLeftTrim(doubles[2]);
    packaging.SetRightTrim(doubles[3]);
    packaging.SetTopTrim(doubles[4]);
    packaging.SetBottomTrim(doubles[5]);
    packaging.SetCost(doubles[6]);
    source->Leave();
    return packaging;
}

void ReadSettings(JobSource& source, ZORNestNestingInput& input)
{
    const QList<qint32> integers = source.ReadIntegers(6);
    input.SetSingleSidedMaterial(integers[0] != 0);
    input.SetGrain90(integers[1] != 0);
    input.SetGrain180(integers[2] != 0);
    input.SetGrain270(integers[3] != 0);
    input.SetPackagingUsageRule(ZORNestBaseFeature::PackagingUsageRule(integers[4]));
    input.SetStackSize(integers[5]);
    const QList<double> doubles = source.ReadDoubles(6);
    input.SetMaxDeviation(doubles[0]);
    input.SetDeviationIncrement(doubles[1]);
    input.SetItemSeparation(doubles[2]);
    input.SetFrameWidth(doubles[3]);
    input.SetMaxRunTime(doubles[4]);
    input.SetMinRunTime(doubles[5]);
    input.SetSeed(quint64(source->ReadInteger()));
    input.SetMaxSteps(source->ReadInteger());
}

void WriteSheet(ZORSysDocumentWriter& writer, const NestedSheet& sheet)
{
    QList<qint32> items;
    QList<qint32> hands;
    QList<double> poses;
    for (const Placement& placement : sheet.placements) {
        items << qint32(placement.item);
        hands << qint32(placement.pose.mirrored);
        poses << placement.pose.angle << placement.pose.position.x << placement.pose.position.y;
    }
    writer.StartArray(5);
    writer.WriteNumbers(QList<qint32>{qint32(sheet.kind), sheet.stack});
    writer.WriteNumbers(QList<double>{sheet.usedLength, sheet.remnantLength});
    writer.WriteNumbers(items);
    writer.WriteNumbers(hands);
    writer.WriteNumbers(poses);
    writer.EndArray();
}

/// A negative number becomes an index beyond every list.
size_t ToIndex(qint32 number)
{
    return size_t(qint64(number));
}

NestedSheet ReadSheet(JobSource& source)
{
    source.Enter(5);
    NestedSheet sheet;
    const QList<qint32> integers = source.ReadIntegers(2);
    sheet.kind = ToIndex(integers[0]);
    sheet.stack = integers[1];
    const QList<double> lengths = source.ReadDoubles(2);
    sheet.usedLength = lengths[0];
    sheet.remnantLength = lengths[1];
    const QList<qint32> items = source->ReadIntegers();
    const QList<qint32> hands = source.ReadIntegers(items.size());
    const QList<double> poses = source.ReadDoubles(items.size() * kNumbersOfPose);
    for (qsizetype i = 0; i < items.size(); ++i) {
        const double* const pose = poses.constData() + i * kNumbersOfPose;
        sheet.placements.push_back({ToIndex(items[i]), {hands[i] != 0, pose[0], {pose[1], pose[2]}}});
    }
    source->Leave();
    return sheet;
}

UnplacedItem ReadUnplaced(JobSource& source)
{
    source.Enter(2);
    const QList<qint32> integers = source.ReadIntegers(2);
    UnplacedItem entry{ToIndex(integers[0]), integers[1], source->ReadText().toStdString()};
    source->Leave();
    return entry;
}

} // namespace

QByteArray ZORNestJobBytes::Write(const ZORNestNestingTask& task)
{
    const ZORNestNestingInput& input = task.input;
    JobDocument document(kTask, 9);
    document->WriteBool(task.isKept);
    document->WriteText(input.GetMaterialID());
    document->WriteNumbers(QList<double>{input.GetMaterialThickness()});
    const QList<ZORNestNestingInputItem> items = input.GetItems();
    document->StartArray(items.size());
    for (const ZORNestNestingInputItem& item : items)
        WriteItem(document.GetWriter(), item);
    document->EndArray();
    const QList<ZORNestNestingInputPackaging> packagings = input.GetPackagings();
    document->StartArray(packagings.size());
    for (const ZORNestNestingInputPackaging& packaging : packagings)
        WritePackaging(document.GetWriter(), packaging);
    document->EndArray();
    document->WriteNumbers(QList<qint32>{input.IsSingleSidedMaterial(), input.IsGrain90Set(),
                                         input.IsGrain180Set(), input.IsGrain270Set(),
                                         input.GetPackagingUsageRule(), input.GetStackSize()});
    document->WriteNumbers(QList<double>{input.GetMaxDeviation(), input.GetDeviationIncrement(),
                                         input.GetItemSeparation(), input.GetFrameWidth(),
                                         input.GetMaxRunTime(), input.GetMinRunTime()});
    document->WriteInteger(qint64(input.GetSeed()));
    document->WriteInteger(input.GetMaxSteps());
    return document.Finish();
}

ZORNestNestingTask ZORNestJobBytes::ReadNestingTask(const QByteArray& bytes)
{
    JobSource source(bytes, kTask, 9);
    const bool isKept = source->ReadBool();
    const QString material = source.ReadText();
    const double thickness = source.ReadDoubles(1).constFirst();
    const auto items = ReadList<ZORNestNestingInputItem>(source, ReadItem);
    const auto packagings = ReadList<ZORNestNestingInputPackaging>(source, ReadPackaging);
    ZORNestNestingTask task{ZORNestNestingInput(material, thickness, items, packagings), isKept};
    ReadSettings(source, task.input);
    source.Finish();
    return task;
}

QByteArray ZORNestJobBytes::Write(const ZORNestNestingOutcome& outcome)
{
    JobDocument document(kOutcome, 3);
    document->StartArray(outcome.sheetFiles.size());
    for (const QByteArray& file : outcome.sheetFiles)
        document->WriteBytes(file);
    document->EndArray();
    document->WriteBytes(outcome.report);
    document.WriteTexts(outcome.remarks);
    return document.Finish();
}

ZORNestNestingOutcome ZORNestJobBytes::ReadNestingOutcome(const QByteArray& bytes)
{
    JobSource source(bytes, kOutcome, 3);
    ZORNestNestingOutcome outcome;
    outcome.sheetFiles = ReadList<QByteArray>(source, [](JobSource& list) { return list->ReadBytes(); });
    outcome.report = source->ReadBytes();
    outcome.remarks = source.ReadTexts();
    source.Finish();
    return outcome;
}

QByteArray ZORNestJobBytes::Write(const ZORNestInterimLayout& layout)
{
    const Solution& solution = layout.solution;
    JobDocument document(kLayout, 4);
    document->WriteNumbers(QList<double>{layout.seconds, solution.cost});
    document->StartArray(qsizetype(solution.sheets.size()));
    for (const NestedSheet& sheet : solution.sheets)
        WriteSheet(document.GetWriter(), sheet);
    document->EndArray();
    document->StartArray(qsizetype(solution.unplaced.size()));
    for (const UnplacedItem& entry : solution.unplaced) {
        document->StartArray(2);
        document->WriteNumbers(QList<qint32>{qint32(entry.item), entry.count});
        document->WriteText(QByteArray::fromStdString(entry.reason));
        document->EndArray();
    }
    document->EndArray();
    document->StartArray(qsizetype(solution.remarks.size()));
    for (const std::string& remark : solution.remarks)
        document->WriteText(QByteArray::fromStdString(remark));
    document->EndArray();
    return document.Finish();
}

ZORNestInterimLayout ZORNestJobBytes::ReadInterimLayout(const QByteArray& bytes)
{
    JobSource source(bytes, kLayout, 4);
    ZORNestInterimLayout layout;
    const QList<double> numbers = source.ReadDoubles(2);
    layout.seconds = numbers[0];
    layout.solution.cost = numbers[1];
    for (qsizetype left = source->EnterArray(); left > 0; --left)
        layout.solution.sheets.push_back(ReadSheet(source));
    source->Leave();
    for (qsizetype left = source->EnterArray(); left > 0; --left)
        layout.solution.unplaced.push_back(ReadUnplaced(source));
    source->Leave();
    for (qsizetype left = source->EnterArray(); left > 0; --left)
        layout.solution.remarks.push_back(source->ReadText().toStdString());
    source->Leave();
    source.Finish();
    return layout;
}

QByteArray ZORNestJobBytes::Write(const ZORNestTranslationTask& task)
{
    JobDocument document(kTranslation, 5);
    document->WriteBool(task.isKept);
    document->WriteText(task.path);
    document->WriteNumbers(QList<qint32>{task.input.GetInputFileType(), task.input.GetOutputFileType()});
    document->WriteBytes(task.input.GetPreTranslateProvider());
    document->WriteNumbers(QList<double>{task.input.GetJoinTolerance(), task.input.GetCurveTolerance()});
    return document.Finish();
}

ZORNestTranslationTask ZORNestJobBytes::ReadTranslationTask(const QByteArray& bytes)
{
    JobSource source(bytes, kTranslation, 5);
    ZORNestTranslationTask task;
    task.isKept = source->ReadBool();
    task.path = source.ReadText();
    const QList<qint32> types = source.ReadIntegers(2);
    task.input.SetInputFileType(ZORNestTranslationInput::FileType(types[0]));
    task.input.SetOutputFileType(ZORNestTranslationInput::FileType(types[1]));
    task.input.SetPreTranslateProvider(source->ReadBytes());
    const QList<double> tolerances = source.ReadDoubles(2);
    task.input.SetJoinTolerance(tolerances[0]);
    task.input.SetCurveTolerance(tolerances[1]);
    source.Finish();
    return task;
}

QByteArray ZORNestJobBytes::Write(const ZORNestTranslationOutcome& outcome)
{
    JobDocument document(kTranslated, 2);
    document.WriteTexts(outcome.report);
    document.WriteTexts(outcome.failure ? QStringList{*outcome.failure} : QStringList());
    return document.Finish();
}

ZORNestTranslationOutcome ZORNestJobBytes::ReadTranslationOutcome(const QByteArray& bytes)
{
    JobSource source(bytes, kTranslated, 2);
    ZORNestTranslationOutcome outcome;
    outcome.report = source.ReadTexts();
    const QStringList failure = source.ReadTexts();
    source->Check(failure.size() <= 1);
    if (!failure.isEmpty())
        outcome.failure = failure.constFirst();
    source.Finish();
    return outcome;
}
