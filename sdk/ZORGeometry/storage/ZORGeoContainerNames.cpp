#include "ZORGeoContainerNames_p.h"

#include <QByteArrayView>

#include <algorithm>
#include <iterator>

QString ZORGeoContainerNames::GetStem(const char* className)
{
    static constexpr const char* kModules[] = {"Geo",  "Top",  "WF",  "Comp", "Nest", "Vis", "Feat",
                                               "Math", "Work", "Sys", "Cmd",  "Cmn",  "TP"};
    QByteArrayView name(className);
    if (const qsizetype scope = name.lastIndexOf(':'); scope >= 0)
        name = name.sliced(scope + 1);
    if (!name.startsWith("ZOR"))
        return QString::fromLatin1(name);
    const QByteArrayView rest = name.sliced(3);
    const auto module = std::find_if(std::begin(kModules), std::end(kModules),
                                     [rest](const char* prefix) { return rest.startsWith(prefix); });
    const QByteArrayView stem = module == std::end(kModules) ? rest : rest.sliced(qsizetype(strlen(*module)));
    return QString::fromLatin1(stem.isEmpty() ? name : stem);
}

void ZORGeoContainerNames::Remove(const QString& name)
{
    const auto used = m_used.find(name);
    if (used != m_used.end() && --*used == 0)
        m_used.erase(used);
}

QString ZORGeoContainerNames::MakeUnique(const QString& wanted)
{
    return m_used.contains(wanted) ? NextFree(wanted, 2) : wanted;
}

QString ZORGeoContainerNames::NextFree(const QString& stem, qint64 firstNumber)
{
    qint64& number = m_numbered[stem];
    number = std::max(number, firstNumber - 1);
    QString name;
    do {
        name = stem + QLatin1Char('.') + QString::number(++number);
    } while (m_used.contains(name));
    return name;
}
