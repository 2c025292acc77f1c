// Reads the source files of one format for nesting.

#pragma once

#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

class ZORNestTranslationInput;
class ZORWorkContext;

/// Turns a source file into parts. Those of the library are there from the start: "dxf", "svg", "contour-xml"
/// and "nesting-json", in this order. Others may be added.
///
/// Thread safety: thread-safe.
class ZORNESTING_EXPORT ZORNestSourceProvider
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestSourceProvider)

public:
    /// \param providerId  by which the provider is chosen; unique, not empty
    explicit ZORNestSourceProvider(const QByteArray& providerId);
    /// Takes it out of the list. Nobody may be translating with it.
    virtual ~ZORNestSourceProvider();
    Q_DISABLE_COPY_MOVE(ZORNestSourceProvider)

    /// All providers, in the order in which they were added. Thread-safe.
    static QList<ZORNestSourceProvider*> GetProviders();
    /// \return not owned; null for an unknown id. Thread-safe.
    static ZORNestSourceProvider* GetProvider(const QByteArray& providerId);
    /// Adds a provider, which its maker keeps owning. Thread-safe.
    /// \throws ZORSysException "provider '%1' exists already"
    static void RegisterProvider(ZORNestSourceProvider* provider);

    QByteArray GetProviderId() const;
    /// Name for people.
    virtual QString GetDisplayName() const = 0;

    /// Reads a file; called in threads of jobs, by several at a time.
    /// \param report  gets lines about units, and about what was joined and left out; not owned
    /// \return a result of type translation with one item for each part, named
    /// \throws ZORSysException, whose message becomes the reason of the failed job
    virtual QList<ZORNestResult> Translate(const QString& path, const ZORNestTranslationInput& input,
                                           const ZORWorkContext& context, QStringList* report) const = 0;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
