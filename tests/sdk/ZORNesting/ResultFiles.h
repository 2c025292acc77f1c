// Result files in memory.

#pragma once

#include "NestResults.h"

#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestResultWriter.h>
#include <ZORSystem/ZORSysDocumentEnvelope.h>

#include <QBuffer>

#include <gtest/gtest.h>

inline const ZORSysDocumentEnvelope kEnvelope(QStringLiteral("result file"), 1, 100);

inline QByteArray Save(const ZORNestResult& result)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ZORNestResultWriter writer(&buffer);
    EXPECT_EQ(buffer.data().size(), 0);
    const qint64 size = writer.Write(result);
    EXPECT_EQ(buffer.data().size(), size);
    EXPECT_EQ(QString(), writer.GetFailure());
    return buffer.data();
}

inline ZORNestResult Load(const QByteArray& file, QString* failure = nullptr)
{
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    ZORNestResultReader reader(&buffer);
    ZORNestResultIOBase::FileFormat format = ZORNestResultIOBase::FileFormat(77);
    const ZORNestResult result = reader.Read(&format);
    EXPECT_EQ(result.IsValid() ? ZORNestResultIOBase::MsiFormat : ZORNestResultIOBase::UnknownFormat, format);
    EXPECT_EQ(result.IsValid(), reader.GetFailure().isEmpty());
    EXPECT_TRUE(result.IsValid() || result == ZORNestResult());
    if (failure)
        *failure = reader.GetFailure();
    return result;
}

// A short text as CBOR.
inline QByteArray Text(const QByteArray& text)
{
    return QByteArray(1, char(0x60 + text.size())) + text;
}

// A document without items, with a stack of the encoded size unless that is empty.
inline QByteArray MakeDocument(const QByteArray& stack)
{
    return (stack.isEmpty() ? "\xa4" : "\xa5") + Text("format") + Text("ZORNest") + Text("type") + '\0'
           + Text("sheet") + QByteArray::fromHex("d85640") + (stack.isEmpty() ? stack : Text("stack") + stack)
           + Text("items") + "\x80";
}
