// What every primitive keeps for drawing. Immutable and shared.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>

#include <QList>

enum class ZORVisPrimitiveKind { Lines, Points, Text, Mesh };

/// Data of a primitive; its class follows from its kind.
struct ZORVisPrimitiveData
{
    explicit ZORVisPrimitiveData(ZORVisPrimitiveKind dataKind)
        : kind(dataKind)
    {
    }
    virtual ~ZORVisPrimitiveData();

    const ZORVisPrimitiveKind kind;
    ZORMathBoundingBox box;

protected:
    void AddToBox(const QList<ZORMathPoint>& points);
};
