// What came of reading composites files.

#pragma once

#include <ZORComposites/ZORCompositesGlobal.h>

#include <QCoreApplication>
#include <QMap>
#include <QString>
#include <QStringList>

/// Counts of what was made, and all that people should know about the rest.
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORCOMPOSITES_EXPORT ZORCompReadReport
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompReadReport)

public:
    int numMaterials = 0; // made; those that the library had already do not count
    int numLayups = 0;
    int numSequences = 0;
    int numPlies = 0;
    int numRosettes = 0;
    int numContours = 0;

    /// What has no member in the features and was kept as an attribute, with the number of times it occurred:
    /// fields by their path of names ("Sequence.defects"), parts by their type.
    QMap<QString, int> kept;
    /// Lower-case sentences.
    QStringList warnings;

    void Keep(const QString& name) { ++kept[name]; }
    void Warn(const QString& warning) { warnings.append(warning); }
    /// Adds the counts and texts of another report.
    void Add(const ZORCompReadReport& other);
    /// Several lines: the counts, then what was kept, then the warnings.
    QString ToString() const;
};
