// Traces of calls with a folder for their files.

#pragma once

#include <ZORSystem/ZORSysApiTrace.h>

#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

inline QStringList LinesOf(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {"cannot read " + fileName};
    return QString::fromUtf8(file.readAll()).split('\n');
}

class ApiTraceTest : public testing::Test
{
protected:
    ~ApiTraceTest() override
    {
        ZORSysApiTrace::GetInstance()->SetFile({});
        EXPECT_FALSE(ZORSysApiTrace::IsEnabled());
    }

    QTemporaryDir directory;
};
