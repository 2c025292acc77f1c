// Makes features of what was read from composites files.

#pragma once

#include <ZORComposites/ZORCompDocument.h>
#include <ZORComposites/ZORCompReadReport.h>
#include <ZORComposites/ZORCompositesGlobal.h>

#include <QCoreApplication>

#include <memory>

class ZORCompRoot;

/// Gathers what readers read, and adds it to a composites root all at once.
///
/// Materials. One of the library with the same name, properties and attributes is used again. Where the name
///            alone is the same, the new one gets a name of its own ("Twill.2").
/// Replacing. A processor that replaces takes away the layups that an earlier read of the same file made, and
///            gives the materials of the library the properties and attributes of those of the same name.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompReadProcessor
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompReadProcessor)

public:
    /// \param root      not owned; receives the features in Finalize()
    /// \param replaces  false: everything is added to what is there
    /// \throws ZORSysException "composites root is null"
    ZORCompReadProcessor(ZORCompRoot* root, bool replaces);
    /// Forgets what was not finalized.
    ~ZORCompReadProcessor();
    Q_DISABLE_COPY_MOVE(ZORCompReadProcessor)

    /// Keeps a document for Finalize().
    /// \param source  the file that it comes from
    /// \throws ZORSysException as ZORCompDocument::Check(); nothing is kept then
    void Add(const ZORCompDocument& document, const QString& source, const ZORCompReadReport& report);

    /// Makes and registers the features of all documents that were added since the last call. What was kept as
    /// attributes goes to the log as an information of category "zor.composites", the rest as warnings, which
    /// ZORSysFileNotices passes on.
    /// \throws ZORSysException "the composites root does not exist any more", "'%1' was removed while it was being
    ///         read"; the root is as before then, and the documents are forgotten
    void Finalize();

    /// About everything finalized so far.
    const ZORCompReadReport& GetReport() const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
