#include "support/TestData.h"

#include <QFileInfo>

QString FindTestData(const QString& relativePath)
{
    const QString folder = qEnvironmentVariable("ZOR_TEST_DATA", QStringLiteral(ZOR_TEST_DATA));
    const QString path = folder + u'/' + relativePath;
    return QFileInfo::exists(path) ? path : QString();
}
