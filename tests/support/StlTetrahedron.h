// A small STL file.

#pragma once

#include <QByteArray>

/// Returns an ASCII file with the tetrahedron of the origin and the points at \a size mm on the axes.
inline QByteArray MakeAsciiTetrahedron(int size = 1)
{
    const QByteArray far = QByteArray::number(size);
    const QByteArray corners[] = {"0 0 0", far + " 0 0", "0 " + far + " 0", "0 0 " + far};
    const int facets[][3] = {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}};
    QByteArray text = "solid tetrahedron\n";
    for (const auto& facet : facets) {
        text += "facet normal 0 0 0\nouter loop\n";
        for (const int corner : facet)
            text += "vertex " + corners[corner] + '\n';
        text += "endloop\nendfacet\n";
    }
    return text + "endsolid tetrahedron\n";
}
