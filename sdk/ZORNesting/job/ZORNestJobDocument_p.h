// Documents that jobs and their callers exchange.

#pragma once

#include <ZORSystem/ZORSysDocumentReader.h>
#include <ZORSystem/ZORSysDocumentWriter.h>

#include <QByteArray>
#include <QList>
#include <QStringList>

namespace zor::nest {

/// Grows with every change of a document.
constexpr qint64 kJobBytesVersion = 1;

/// Writes a document with its name and version before the content.
class JobDocument
{
public:
    /// \param entries  number of values of the content
    JobDocument(const char* name, qsizetype entries)
        : m_writer(&m_bytes)
    {
        m_writer.StartArray(entries + 2);
        m_writer.WriteText(QByteArray(name));
        m_writer.WriteInteger(kJobBytesVersion);
    }
    ZORSysDocumentWriter* operator->() { return &m_writer; }
    ZORSysDocumentWriter& GetWriter() { return m_writer; }
    void WriteTexts(const QStringList& texts)
    {
        m_writer.StartArray(texts.size());
        for (const QString& text : texts)
            m_writer.WriteText(text);
        m_writer.EndArray();
    }
    QByteArray Finish()
    {
        m_writer.EndArray();
        return m_bytes;
    }

private:
    QByteArray m_bytes;
    ZORSysDocumentWriter m_writer;
};

/// Reads such a document.
class JobSource
{
public:
    JobSource(const QByteArray& bytes, const char* name, qsizetype entries)
        : m_reader(bytes, QLatin1String(name))
    {
        Enter(entries + 2);
        m_reader.Check(m_reader.ReadText() == name && m_reader.ReadInteger() == kJobBytesVersion);
    }
    ZORSysDocumentReader* operator->() { return &m_reader; }
    void Enter(qsizetype count) { m_reader.Check(m_reader.EnterArray() == count); }
    QString ReadText() { return QString::fromUtf8(m_reader.ReadText()); }
    template<class T>
    T ReadInteger()
    {
        const qint64 value = m_reader.ReadInteger();
        m_reader.Check(value == qint64(T(value)));
        return T(value);
    }
    QList<double> ReadDoubles(qsizetype count)
    {
        const QList<double> numbers = m_reader.ReadDoubles();
        m_reader.Check(numbers.size() == count);
        return numbers;
    }
    QList<qint32> ReadIntegers(qsizetype count)
    {
        const QList<qint32> numbers = m_reader.ReadIntegers();
        m_reader.Check(numbers.size() == count);
        return numbers;
    }
    QStringList ReadTexts()
    {
        QStringList texts;
        for (qsizetype left = m_reader.EnterArray(); left > 0; --left)
            texts.append(ReadText());
        m_reader.Leave();
        return texts;
    }
    void Finish()
    {
        m_reader.Leave();
        m_reader.Finish();
    }

private:
    ZORSysDocumentReader m_reader;
};

/// Reads a list by a function that reads one entry.
template<class T, class Function>
QList<T> ReadList(JobSource& source, Function read)
{
    QList<T> list;
    for (qsizetype left = source->EnterArray(); left > 0; --left)
        list.append(read(source));
    source->Leave();
    return list;
}

} // namespace zor::nest
