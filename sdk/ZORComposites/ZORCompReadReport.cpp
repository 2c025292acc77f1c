#include "ZORCompReadReport.h"

void ZORCompReadReport::Add(const ZORCompReadReport& other)
{
    numMaterials += other.numMaterials;
    numLayups += other.numLayups;
    numSequences += other.numSequences;
    numPlies += other.numPlies;
    numRosettes += other.numRosettes;
    numContours += other.numContours;
    for (auto it = other.kept.begin(); it != other.kept.end(); ++it)
        kept[it.key()] += it.value();
    warnings += other.warnings;
}

QString ZORCompReadReport::ToString() const
{
    QStringList lines;
    lines.append(tr("%1 layups, %2 sequences, %3 plies, %4 materials, %5 rosettes, %6 contours")
                     .arg(QString::number(numLayups), QString::number(numSequences),
                          QString::number(numPlies), QString::number(numMaterials),
                          QString::number(numRosettes), QString::number(numContours)));
    for (auto it = kept.begin(); it != kept.end(); ++it)
        lines.append(tr("kept as attributes: %1 (%2)").arg(it.key(), QString::number(it.value())));
    for (const QString& warning : warnings)
        lines.append(tr("warning: %1").arg(warning));
    return lines.join(QLatin1Char('\n'));
}
