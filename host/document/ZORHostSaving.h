// Writes the document while the window lives on.

#pragma once

#include <QObject>
#include <QString>

#include <memory>

class ZORCmdTask;
class ZORFeatContainer;
class ZORGeoContainerFile;

/// Writes container files in a thread. What is written is the document as it is when Write() is called; what changes in the
/// meantime is not in the file.
///
/// Thread safety: main thread only.
class ZORHostSaving : public QObject
{
    Q_OBJECT

public:
    enum class Outcome { Written, Canceled, Failed };

    explicit ZORHostSaving(QObject* parent);
    /// Cancels what is being written.
    ~ZORHostSaving() override;

    /// Writes a container into a file, all of it or nothing: after anything but Written, the file is as it was. Runs the
    /// event loop meanwhile; one call at a time.
    Outcome Write(const ZORFeatContainer& container, const QString& fileName);
    /// A sentence that names the file; empty unless the last call has failed.
    QString GetError() const { return m_error; }
    /// Whether a file is being written.
    bool IsBusy() const { return m_task != nullptr; }

public slots:
    /// Gives up writing. A file whose content is complete is put into its place all the same.
    void Cancel();

signals:
    void Started(const QString& fileName);
    void ProgressChanged(double progress);
    void Finished();

private:
    bool Run(const ZORGeoContainerFile& content, const QString& fileName);

    std::shared_ptr<ZORCmdTask> m_task;
    QString m_error;
};
