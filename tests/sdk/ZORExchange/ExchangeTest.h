// Fixture of the tests of the module: files of all kinds.

#pragma once

#include "support/Printers.h"
#include "support/StlTetrahedron.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestResultWriter.h>

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

class ExchangeTest : public testing::Test
{
protected:
    QString WriteFile(const QString& name, const QByteArray& content) const
    {
        QFile file(m_directory.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(content.size(), file.write(content));
        return file.fileName();
    }
    static QByteArray MakeContainer(int numLines = 1)
    {
        ZORFeatContainer container;
        for (int i = 0; i < numLines; ++i) {
            auto* const line = new ZORGeoLine(&container, {0, 0, 0}, {1, 2, double(i)});
            line->setObjectName("edge");
            line->Initialize();
        }
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        container.Save(buffer);
        return buffer.data();
    }
    static QByteArray MakeResult(const ZORNestResult& result)
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        EXPECT_TRUE(ZORNestResultWriter(&buffer).Write(result));
        return buffer.data();
    }
    static QByteArray MakeContours()
    {
        return "<?xml version='1.0'?>\n<Doc><Length>in</Length><Ply NAME='P1'><OuterContour><Pt>X=0 Y=0 "
               "Z=1</Pt>"
               "<Pt>X=1 Y=0 Z=1</Pt><Pt>X=1 Y=1 Z=2</Pt></OuterContour></Ply><OuterContour><Pt>0 0 0</Pt>"
               "</OuterContour></Doc>";
    }
    static QByteArray MakeLayupXml()
    {
        return "<layups version=\"1\" length=\"mm\" angle=\"deg\" stress=\"MPa\" density=\"t/mm3\" "
               "permeability=\"m2\"><layup/></layups>";
    }
    static QByteArray MakeLayupJson() { return " {\"name\": \"Skin\", \"allComposite\": []}"; }

private:
    QTemporaryDir m_directory;
};
