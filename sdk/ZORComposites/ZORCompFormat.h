// A format of composites source files, and the registry of them.

#pragma once

#include <ZORComposites/ZORCompDocument.h>
#include <ZORComposites/ZORCompReadReport.h>
#include <ZORComposites/ZORCompositesGlobal.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QList>
#include <QString>

/// Turns the content of a file into a document and, if it can write, a document into the content of a file.
///
/// Registry. Formats are known while a ZORCompFormatRegistration of them lives: a library that brings one holds
///           it at namespace scope, so that its format comes and goes with it.
///
/// Thread safety: thread-safe.
class ZORCOMPOSITES_EXPORT ZORCompFormat
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompFormat)

public:
    virtual ~ZORCompFormat();
    Q_DISABLE_COPY_MOVE(ZORCompFormat)

    /// Of the format, the same for ever: "compost-json".
    virtual QByteArray GetId() const = 0;
    /// Entries of a file dialog: "CompoST Layup (*.json)".
    virtual QList<QString> GetFileFilters() const = 0;
    /// \param report  receives what is kept and warnings; the counts are filled by ZORCompReadProcessor
    /// \throws ZORSysException with the place in the content and what is wrong there
    virtual ZORCompDocument Parse(const QByteArray& content, ZORCompReadReport& report) const = 0;

    /// False by default.
    virtual bool CanWrite() const;
    /// The content of a file.
    /// \throws ZORSysException "composites format '%1' cannot be written" by default
    virtual QByteArray Write(const ZORCompDocument& document) const;

    /// In the order of registration.
    static QList<const ZORCompFormat*> GetFormats();
    /// \throws ZORSysException "composites format '%1' is unknown"
    static const ZORCompFormat& Find(const QByteArray& id);

protected:
    ZORCompFormat();
};

/// Keeps a format known while it lives. One whose identifier is known already stays hidden behind that one.
/// Thread safety: reentrant; one thread at a time per object.
class ZORCOMPOSITES_EXPORT ZORCompFormatRegistration
{
public:
    /// \param format  must outlive the registration
    explicit ZORCompFormatRegistration(const ZORCompFormat& format);
    ~ZORCompFormatRegistration();
    Q_DISABLE_COPY_MOVE(ZORCompFormatRegistration)

private:
    const ZORCompFormat& m_format;
};
