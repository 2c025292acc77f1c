#include "ZORGeoContainerDump_p.h"
#include "ZORGeometryLog_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QTextStream>

namespace {

constexpr qsizetype kShownNumbers = 6;

template<class T>
QString TextOf(const QList<T>& numbers)
{
    QStringList shown;
    for (qsizetype i = 0; i < std::min(numbers.size(), kShownNumbers); ++i) {
        if constexpr (std::is_same_v<T, double>)
            shown.append(QString::number(numbers[i], 'g', 17));
        else
            shown.append(QString::number(numbers[i]));
    }
    if (numbers.size() > kShownNumbers)
        shown.append(QStringLiteral("... %1 in all").arg(numbers.size()));
    return QLatin1Char('[') + shown.join(QLatin1String(", ")) + QLatin1Char(']');
}

QString TextOf(const ZORGeoStoredObject::Value& value)
{
    if (const auto* doubles = std::get_if<QList<double>>(&value))
        return TextOf(*doubles);
    if (const auto* integers = std::get_if<QList<qint32>>(&value))
        return TextOf(*integers);
    if (const auto* number = std::get_if<double>(&value))
        return QString::number(*number, 'g', 17);
    return std::get<QCborValue>(value).toDiagnosticNotation();
}

void Write(QTextStream& out, const ZORGeoStoredObject& object, size_t number)
{
    out << number << ' ' << object.className << " \"" << object.name << "\"\n";
    for (const auto& [key, numbers] : object.references)
        out << "    " << key << " -> " << TextOf(numbers) << '\n';
    for (const auto& [key, numbers] : object.links)
        out << "    " << key << " ~> " << TextOf(numbers) << '\n';
    for (const auto& [key, value] : object.values)
        out << "    " << key << " = " << TextOf(value) << '\n';
}

} // namespace

void ZorGeoDumpLoad(const std::vector<ZORGeoStoredObject>& objects, const QString& outcome)
{
    const ZORGeoDebugOptions* const options = ZORGeoDebugOptions::GetInstance();
    const QString path = options->GetContainerLoadDumpFile();
    if (!options->IsContainerLoadDumpEnabled() || path.isEmpty())
        return;
    QByteArray text;
    QTextStream out(&text);
    out << "Objects: " << objects.size() << '\n';
    for (size_t i = 0; i < objects.size(); ++i)
        Write(out, objects[i], i);
    out << "Outcome: " << outcome << '\n';
    out.flush();
    const QString error = ZORSysReplacedFile::Replace(path, text);
    if (!error.isEmpty())
        qCWarning(ZorGeometryLog).noquote()
            << ZORGeoContainer::tr("cannot write the load dump '%1': %2").arg(path, error);
}
