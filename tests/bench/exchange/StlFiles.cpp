#include "StlFiles.h"

#include "support/Printers.h"

#include <QFile>

#include <gtest/gtest.h>

QByteArray MakeAsciiTetrahedron()
{
    const char* corners[4] = {"0 0 0", "1 0 0", "0 1 0", "0 0 1"};
    const int facets[4][3] = {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}};
    QByteArray text = "solid tetrahedron\n";
    for (const auto& facet : facets) {
        text += "facet normal 0 0 0\nouter loop\n";
        for (const int corner : facet)
            text += QByteArray("vertex ") + corners[corner] + '\n';
        text += "endloop\nendfacet\n";
    }
    return text + "endsolid tetrahedron\n";
}

void WriteFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) << path.toStdString();
    ASSERT_EQ(content.size(), file.write(content));
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}
