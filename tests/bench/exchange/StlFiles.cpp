#include "StlFiles.h"

#include "support/Printers.h"

#include <QFile>

#include <gtest/gtest.h>

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
