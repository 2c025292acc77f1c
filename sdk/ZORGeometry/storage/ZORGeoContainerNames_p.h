// The object names in use in a container.

#pragma once

#include <QHash>
#include <QString>

/// Counts names and finds free ones. Numbers are never given out twice, so that a name stays that of one
/// geometry for the life of the container.
class ZORGeoContainerNames
{
public:
    /// Stem of the automatic names of a class: its name without namespace and module prefix, for example
    /// "Surface" for "ZORGeoSurface".
    static QString GetStem(const char* className);

    void Insert(const QString& name) { ++m_used[name]; }
    void Remove(const QString& name);
    bool IsUsed(const QString& name) const { return m_used.contains(name); }

    /// "stem.N", N counting from 1.
    QString MakeNumbered(const QString& stem) { return NextFree(stem, 1); }
    /// \a wanted, or "wanted.N", N counting from 2.
    QString MakeUnique(const QString& wanted);

private:
    QString NextFree(const QString& stem, qint64 firstNumber);

    QHash<QString, int> m_used;        // how many geometries bear the name
    QHash<QString, qint64> m_numbered; // last number given out, by stem
};
