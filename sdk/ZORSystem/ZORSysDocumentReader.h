// Reads the document of a binary file.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QByteArray>
#include <QCborValue>
#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QtCborCommon>

#include <memory>
#include <variant>

/// Takes the values of a document one by one, as ZORSysDocumentWriter put them. Reads what it is asked for and
/// fails on anything else; takes no more memory than the document's length for what it gives.
///
/// Everything throws ZORSysFileException "%1 is damaged: unexpected content at byte %2 of the document" when
/// the next value is another one.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORSYSTEM_EXPORT ZORSysDocumentReader
{
    Q_DECLARE_TR_FUNCTIONS(ZORSysDocumentReader)

public:
    // Doubles stand on their own: a QCborValue does not keep the payload of NaN.
    using Value = std::variant<QCborValue, double, QList<double>, QList<qint32>>;

    /// \param kind  what messages call the file: "container file"
    ZORSysDocumentReader(const QByteArray& document, const QString& kind);
    ~ZORSysDocumentReader();

    /// Fails unless \a expected; for checks of the caller.
    void Check(bool expected) const
    {
        if (!expected)
            FailHere();
    }

    /// \return number of entries: pairs of key and value
    qsizetype EnterMap();
    /// \return number of elements
    qsizetype EnterArray();
    /// Leaves a map or array whose content has been read.
    void Leave();

    /// A text as UTF-8, as the keys of maps are.
    QByteArray ReadText();
    QByteArray ReadBytes();
    bool ReadBool();
    /// Of the range of qint64.
    qint64 ReadInteger();
    QList<double> ReadDoubles();
    QList<qint32> ReadIntegers();
    /// A double, bulk numbers, or any value without a tag.
    Value ReadValue();

    /// Fails unless the whole document has been read.
    void Finish() const;

private:
    [[noreturn]] void FailHere() const;
    qsizetype Enter(bool isWanted);
    qsizetype GetLength(bool isWanted) const;
    void ReadContent(char* bytes, qsizetype length);
    QByteArray ReadString(bool isWanted);
    QCborTag ReadTag();
    template<class T>
    QList<T> ReadArray();

    class Private;
    const std::unique_ptr<Private> d;
};
