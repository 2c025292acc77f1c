// STL content for tests.

#pragma once

#include <ZORGeometry/ZORGeoStlWriter.h>

#include <QByteArray>
#include <QList>

#include <array>
#include <bit>

using StlFacet = std::array<float, 9>;

/// A binary file: header, the count (the true one unless given) and the facets.
inline QByteArray BinaryStl(const QList<StlFacet>& facets, qint64 count = -1,
                            const QByteArray& header = "part")
{
    const auto number = [](quint32 value) {
        QByteArray bytes;
        for (int shift = 0; shift < 32; shift += 8)
            bytes.append(char(value >> shift & 0xff));
        return bytes;
    };
    QByteArray content = header.leftJustified(80, '\0', true);
    content += number(count < 0 ? quint32(facets.size()) : quint32(count));
    for (const StlFacet& facet : facets) {
        content += QByteArray(12, '\0');
        for (const float value : facet)
            content += number(std::bit_cast<quint32>(value));
        content += QByteArray(2, '\0');
    }
    return content;
}

/// One facet of an ASCII file; the corners as they are to stand there.
inline QByteArray AsciiFacet(const QByteArray& a, const QByteArray& b, const QByteArray& c)
{
    return "facet normal 0 0 1\nouter loop\nvertex " + a + "\nvertex " + b + "\nvertex " + c
           + "\nendloop\nendfacet\n";
}

inline const StlFacet kFirstFacet = {0, 0, 0, 1, 0, 0, 0, 1, 0};
inline const StlFacet kSecondFacet = {1, 0, 0, 1, 1, 0, 0, 1, 0};
