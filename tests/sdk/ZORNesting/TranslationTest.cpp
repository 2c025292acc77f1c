#include "TranslationTest.h"

#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QFile>

#include <future>

namespace {

QString Number(double value)
{
    const QString text = QString::number(value, 'g', 9);
    return std::abs(value) < 1e-9 ? QStringLiteral("0") : text;
}

QString Point(const ZORMathPoint& point)
{
    return Number(point.GetX()) + u' ' + Number(point.GetY());
}

QString DescribeSegment(const ZORNestResultSegment& segment)
{
    const QString end = Point(segment.GetEndPoint());
    switch (segment.GetType()) {
    case ZORNestResultSegment::Line:
        return "L(" + end + ')';
    case ZORNestResultSegment::ArcCounterClockwise:
        return "A+(" + end + " | " + Point(segment.GetArcCenter()) + ')';
    case ZORNestResultSegment::ArcClockwise:
        return "A-(" + end + " | " + Point(segment.GetArcCenter()) + ')';
    case ZORNestResultSegment::Spline:
        return 'S' + QString::number(segment.GetNumSplineGeometry()) + '(' + end + ')';
    case ZORNestResultSegment::Text:
        return "T(" + end + ' ' + segment.GetText() + ')';
    }
    return QStringLiteral("?");
}

} // namespace

QByteArray Lines(const QByteArray& text)
{
    QByteArray lines = text;
    return lines.replace('|', '\n');
}

void TranslationTest::ExpectFailures(const QList<std::pair<QByteArray, QString>>& contents)
{
    for (const auto& [content, reason] : contents) {
        EXPECT_TRUE(Translate(content).isEmpty());
        EXPECT_EQ(reason, failure);
    }
}

QString TranslationTest::RunAsJob(const std::function<void(const ZORWorkContext&)>& function)
{
    QString reason;
    std::promise<void> done;
    ZORWorkProcessor processor;
    ZORWorkJob job;
    job.name = QStringLiteral("test");
    job.run = [&](const ZORWorkContext& context) {
        try {
            function(context);
        } catch (const ZORSysException& exception) {
            reason = exception.GetMessage();
        }
        done.set_value();
        return ZORWorkResult();
    };
    processor.AddJob(job);
    processor.Execute();
    done.get_future().wait();
    return reason;
}

QString TranslationTest::Write(const QByteArray& content) const
{
    const QString path = directory.filePath(QStringLiteral("drawing.src"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return path;
}

QList<ZORNestResult> TranslationTest::Translate(const QByteArray& content)
{
    return TranslateFile(Write(content));
}

QList<ZORNestResult> TranslationTest::TranslateFile(const QString& path)
{
    QList<ZORNestResult> results;
    report.clear();
    failure = RunAsJob([&](const ZORWorkContext& context) {
        results = ZORNestSourceProvider::GetProvider(provider)->Translate(path, input, context, &report);
    });
    for (const ZORNestResult& result : results) {
        EXPECT_TRUE(result.IsValid());
        EXPECT_EQ(ZORNestResult::Translation, result.GetResultType());
        EXPECT_EQ(1, result.GetItems().size());
    }
    return results;
}

QString TranslationTest::Describe(const ZORNestResultShape& shape)
{
    const QList<ZORNestResultSegment> segments = shape.GetSegments();
    const bool isOutline = shape.GetRawShapeFather() == ZORNestResultShape::noFather;
    QString text = QLatin1String(isOutline ? "outline" : shape.GetShapeHole() == 1 ? "hole" : "mark");
    text += " (" + Point(segments.constFirst().GetStartPoint()) + ')';
    ZORMathPoint last = segments.constFirst().GetStartPoint();
    for (const ZORNestResultSegment& segment : segments) {
        if (segment.GetType() != ZORNestResultSegment::Text) {
            EXPECT_EQ(last, segment.GetStartPoint()) << "the chain has a gap";
        }
        last = segment.GetEndPoint();
        text += ' ' + DescribeSegment(segment);
    }
    return text;
}

QStringList TranslationTest::Describe(const ZORNestResult& result)
{
    QStringList lines;
    for (const ZORNestResultShape* shape : GetItem(result).GetShapes())
        lines.append(Describe(*shape));
    return lines;
}

double TranslationTest::GetArea(const ZORNestResult& result)
{
    double area = 0;
    for (const ZORNestResultShape* shape : GetItem(result).GetShapes()) {
        if (shape->GetRawShapeFather() == ZORNestResultShape::noFather)
            area += shape->GetArea();
        else if (shape->GetShapeHole() == 1)
            area -= shape->GetArea();
    }
    return area;
}

double TranslationTest::GetOnlyArea(const QByteArray& content)
{
    const QList<ZORNestResult> results = Translate(content);
    EXPECT_EQ("", failure);
    EXPECT_EQ(1, results.size());
    return results.isEmpty() ? 0 : GetArea(results.constFirst());
}
