// Texts of DXF files for tests.

#pragma once

#include "TranslationTest.h"

#include <QByteArray>

/// A whole file; \a header in pairs ("9|$INSUNITS|70|4|" as lines), \a tables a whole section.
inline QByteArray Dxf(const QByteArray& entities, const QByteArray& blocks = {},
                      const QByteArray& header = Lines("9|$INSUNITS|70|4|"), const QByteArray& tables = {})
{
    QByteArray text;
    if (!header.isEmpty())
        text += Lines("0|SECTION|2|HEADER|") + header + Lines("0|ENDSEC|");
    text += tables;
    if (!blocks.isEmpty())
        text += Lines("0|SECTION|2|BLOCKS|") + blocks + Lines("0|ENDSEC|");
    return text + Lines("0|SECTION|2|ENTITIES|") + entities + Lines("0|ENDSEC|0|EOF|");
}

inline QByteArray Block(const QByteArray& name, double x, double y, const QByteArray& entities)
{
    return Lines("0|BLOCK|8|0|2|" + name + "|70|0|10|" + QByteArray::number(x) + "|20|"
                 + QByteArray::number(y) + '|')
           + entities + Lines("0|ENDBLK|8|0|");
}

inline QByteArray Line(double x1, double y1, double x2, double y2, const QByteArray& layer = "0")
{
    const auto number = [](double value) { return QByteArray::number(value, 'g', 17); };
    return Lines("0|LINE|8|" + layer + "|10|" + number(x1) + "|20|" + number(y1) + "|11|" + number(x2)
                 + "|21|" + number(y2) + '|');
}

inline QByteArray Circle(double x, double y, double radius)
{
    return Lines("0|CIRCLE|8|0|10|" + QByteArray::number(x) + "|20|" + QByteArray::number(y) + "|40|"
                 + QByteArray::number(radius) + '|');
}

enum class Turning { CounterClockwise, Clockwise };

/// A closed LWPOLYLINE from the corner (x, y), to the right at first unless it runs clockwise.
inline QByteArray Square(double x, double y, double size, Turning turning = Turning::CounterClockwise)
{
    const bool isClockwise = turning == Turning::Clockwise;
    const auto point = [](double px, double py) {
        return Lines("10|" + QByteArray::number(px, 'g', 17) + "|20|" + QByteArray::number(py, 'g', 17)
                     + '|');
    };
    const QByteArray right = point(x + size, y), left = point(x, y + size);
    return Lines("0|LWPOLYLINE|8|0|90|4|70|1|") + point(x, y) + (isClockwise ? left : right)
           + point(x + size, y + size) + (isClockwise ? right : left);
}
