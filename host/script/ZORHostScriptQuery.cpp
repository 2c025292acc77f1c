#include "script/ZORHostScriptQuery.h"

#include "base/ZORHostWindowTitle.h"
#include "document/ZORHostDocument.h"
#include "document/ZORHostDocumentCommands.h"
#include "script/ZORHostDocumentQuery.h"
#include "script/ZORHostScriptError.h"
#include "script/ZORHostWidgetAccess.h"
#include "script/ZORHostWidgetFinder.h"
#include "window/ZORHostMainWindow.h"

#include <ZORSystem/ZORSysFile.h>

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QHash>
#include <QImage>
#include <QImageReader>
#include <QSet>
#include <QWidget>

#include <functional>

namespace {

namespace document = ZORHostDocumentQuery;
using ZORHostWidgetFinder::FindAction;
using ZORHostWidgetFinder::FindWidget;
using ZORHostWidgetFinder::FindWindow;

QString Either(bool first, const char* yes, const char* no)
{
    return QString::fromLatin1(first ? yes : no);
}

[[noreturn]] void ThrowCannotRead(const ZORSysFile& file, const QString& reason)
{
    throw ZORHostScriptError(QStringLiteral("'%1' cannot be read: %2").arg(file.fileName(), reason));
}

void Open(ZORSysFile& file)
{
    if (!file.open(QIODevice::ReadOnly))
        ThrowCannotRead(file, file.errorString());
}

void CheckRead(const ZORSysFile& file)
{
    if (const QString error = file.GetReadError(); !error.isEmpty())
        ThrowCannotRead(file, error);
}

QString IsSameContent(const QString& first, const QString& second)
{
    constexpr qint64 kPiece = 1 << 20; // bytes; files may be larger than the memory
    ZORSysFile files[] = {ZORSysFile(first), ZORSysFile(second)};
    for (ZORSysFile& file : files)
        Open(file);
    bool isSame = files[0].size() == files[1].size();
    while (isSame && !files[0].atEnd())
        isSame = files[0].read(kPiece) == files[1].read(kPiece);
    for (const ZORSysFile& file : files)
        CheckRead(file);
    return Either(isSame, "yes", "no");
}

/// A picture of one colour shows nothing; a count above some tens says that something was drawn.
QString CountColors(const QString& fileName)
{
    ZORSysFile file(fileName);
    Open(file);
    const QImage image = QImageReader(&file).read().convertToFormat(QImage::Format_RGB32);
    CheckRead(file);
    if (image.isNull())
        throw ZORHostScriptError(QStringLiteral("'%1' is no picture").arg(fileName));
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            colors.insert(line[x]);
    }
    return QString::number(colors.size());
}

QString IsEnabled(QWidget* window, const QString& name)
{
    bool enabled = false;
    try {
        enabled = FindWidget(window, name)->isEnabled();
    } catch (const ZORHostScriptError&) {
        enabled = FindAction(window, name)->isEnabled();
    }
    return Either(enabled, "yes", "no");
}

QString ActionState(QWidget* window, const QString& name)
{
    return Either(FindAction(window, name)->isChecked(), "on", "off");
}

const ZORHostDocument* FindDocument()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        if (const auto* main = qobject_cast<const ZORHostMainWindow*>(window))
            return main->GetDocumentCommands()->GetDocument();
    }
    throw ZORHostScriptError("there is no document");
}

struct Query
{
    int numArguments;
    bool needsWindow;
    std::function<QString(QWidget* window, const QStringList& arguments)> evaluate;
};

const QHash<QString, Query>& Queries()
{
    using W = QWidget*;
    using A = const QStringList&;
    static const QHash<QString, Query> queries = {
        {"text", {1, false, [](W, A a) { return a[0]; }}},
        {"window", {1, false, [](W, A a) { return Either(FindWindow(a[0]), "open", "closed"); }}},
        {"title", {0, true, [](W window, A) { return ZORHostWindowTitle::GetShown(window); }}},
        {"value",
         {1, true, [](W window, A a) { return ZORHostWidgetAccess::GetValue(FindWidget(window, a[0])); }}},
        {"rows",
         {1, true,
          [](W window, A a) {
              return QString::number(ZORHostWidgetAccess::GetNumRows(FindWidget(window, a[0])));
          }}},
        {"cell",
         {3, true,
          [](W window, A a) { return ZORHostWidgetAccess::GetCell(FindWidget(window, a[0]), a[1], a[2]); }}},
        {"enabled", {1, true, [](W window, A a) { return IsEnabled(window, a[0]); }}},
        {"checked", {1, true, [](W window, A a) { return ActionState(window, a[0]); }}},
        {"document", {0, false, [](W, A) { return FindDocument()->GetFile(); }}},
        {"modified", {0, false, [](W, A) { return Either(FindDocument()->IsModified(), "yes", "no"); }}},
        {"geometries", {0, false, [](W, A) { return QString::number(document::CountGeometries()); }}},
        {"objects", {0, false, [](W, A) { return QString::number(document::CountVirtualObjects()); }}},
        {"references", {1, false, [](W, A a) { return QString::number(document::CountReferences(a[0])); }}},
        {"triangles", {1, false, [](W, A a) { return QString::number(document::CountTriangles(a[0])); }}},
        {"points", {1, false, [](W, A a) { return QString::number(document::CountPoints(a[0])); }}},
        {"length", {1, false, [](W, A a) { return QString::number(document::MeasureLength(a[0]), 'f', 6); }}},
        {"deviation",
         {2, false, [](W, A a) { return QString::number(document::MeasureDeviation(a[0], a[1])); }}},
        {"size", {1, false, [](W, A a) { return QString::number(QFileInfo(a[0]).size()); }}},
        {"file", {1, false, [](W, A a) { return Either(QFileInfo::exists(a[0]), "there", "missing"); }}},
        {"same", {2, false, [](W, A a) { return IsSameContent(a[0], a[1]); }}},
        {"colors", {1, false, [](W, A a) { return CountColors(a[0]); }}},
    };
    return queries;
}

double ToNumber(const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber)
        throw ZORHostScriptError(QStringLiteral("'%1' is no number").arg(text));
    return number;
}

bool IsMet(const ZORHostScriptQuery::Comparison& comparison)
{
    const auto& [query, actual, verb, expected, isMet] = comparison;
    if (verb == QLatin1String("is"))
        return actual == expected;
    if (verb == QLatin1String("not"))
        return actual != expected;
    if (verb == QLatin1String("contains"))
        return actual.contains(expected);
    if (verb == QLatin1String("above"))
        return ToNumber(actual) > ToNumber(expected);
    if (verb == QLatin1String("below"))
        return ToNumber(actual) < ToNumber(expected);
    throw ZORHostScriptError(QStringLiteral("unknown comparison '%1'").arg(verb));
}

} // namespace

QString ZORHostScriptQuery::Evaluate(QWidget* window, const QStringList& words)
{
    const QString& name = words.constFirst();
    const auto query = Queries().constFind(name);
    if (query == Queries().constEnd())
        throw ZORHostScriptError(QStringLiteral("unknown query '%1'").arg(name));
    if (words.size() - 1 != query->numArguments) {
        throw ZORHostScriptError(
            QStringLiteral("the query '%1' takes %2 words, not %3")
                .arg(name, QString::number(query->numArguments), QString::number(words.size() - 1)));
    }
    if (query->needsWindow && !window)
        throw ZORHostScriptError("no window chosen: use 'in' first");
    return query->evaluate(window, words.mid(1));
}

ZORHostScriptQuery::Comparison ZORHostScriptQuery::Compare(QWidget* window, const QStringList& words)
{
    const QStringList query = words.first(words.size() - 2);
    Comparison comparison{query.join(u' '), Evaluate(window, query), words[query.size()], words.constLast()};
    comparison.isMet = IsMet(comparison);
    return comparison;
}
