#include "CompositesTest.h"

#include <ZORComposites/ZORCompReadProcessor.h>
#include <ZORComposites/ZORCompReader.h>
#include <ZORComposites/ZORCompWriter.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QFile>

CompositesTest::CompositesTest()
    : root(qobject_cast<ZORCompRoot*>(container.GetFeatureRoot(ZORCompRoot::staticMetaObject.className())))
{
}

QString CompositesTest::WriteFile(const QString& name, const QByteArray& content) const
{
    const QString path = folder.filePath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return path;
}

QByteArray CompositesTest::ReadFile(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

ZORCompReadReport CompositesTest::Read(const QString& path, const QByteArray& format, bool replaces)
{
    ZORCompReadProcessor processor(root, replaces);
    ZORCompReader(path, format).Read(&processor);
    processor.Finalize();
    return processor.GetReport();
}

ZORCompReadReport CompositesTest::ReadContent(const QByteArray& content, const QByteArray& format)
{
    return Read(WriteFile(QStringLiteral("content"), content), format);
}

QByteArray CompositesTest::ToXml() const
{
    const QString path = folder.filePath(QStringLiteral("written.xml"));
    ZORCompWriter(path, kXmlId).Write(root);
    return ReadFile(path);
}

QString CompositesTest::FailureOf(const QByteArray& content, const QByteArray& format)
{
    const QString path = WriteFile(QStringLiteral("bad"), content);
    const int numBefore = container.GetNumGeometry();
    try {
        Read(path, format);
    } catch (const ZORSysFileException& exception) {
        EXPECT_EQ(numBefore, container.GetNumGeometry());
        const QString start = QStringLiteral("cannot read '%1': ").arg(path);
        EXPECT_TRUE(exception.GetMessage().startsWith(start)) << exception.what();
        return exception.GetMessage().mid(start.size());
    }
    return {};
}

ZORCompLayup* CompositesTest::GetLayup() const
{
    ZORCompLayup* found = nullptr;
    for (ZORFeatObject* feature : root->GetAllChildren()) {
        auto* const layup = qobject_cast<ZORCompLayup*>(feature);
        EXPECT_FALSE(layup && found) << "there are several layups";
        found = layup ? layup : found;
    }
    return found;
}
