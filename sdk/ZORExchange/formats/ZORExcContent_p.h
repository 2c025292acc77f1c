// What a file holds, on its way into a container.

#pragma once

#include <ZORExchange/ZORExcFileKind.h>
#include <ZORSystem/ZORSysValue.h>

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QFileDevice;
class ZORFeatContainer;

namespace zor::exc {

/// The file that content is read from.
struct Source
{
    QString path;
    QString name;           // of the file without its suffix, for what it becomes
    ZORSysValue::Unit unit; // of lengths in files that name none
};

/// Content of one kind of file.
class Content
{
public:
    explicit Content(Source source);
    virtual ~Content();
    Q_DISABLE_COPY_MOVE(Content)

    /// Reads the file, in any thread.
    /// \param report  takes the part that is done and returns false to cancel; may be empty
    /// \return false when canceled
    /// \throws ZORSysException
    virtual bool Read(QFileDevice& file, const std::function<bool(double)>& report) = 0;
    /// Adds everything or, when it throws, nothing; in the thread of the container. Called once.
    /// \throws ZORSysException
    virtual void AddTo(ZORFeatContainer& container) = 0;

    QStringList losses;      ///< lower-case sentences about what was left out
    bool isReported = false; ///< whether ZORSysFileNotices has passed them on already

protected:
    /// Returns the name of a part of the file: that of the file alone where it has one part only, or a part has no name.
    QString MakeName(const QString& part, bool isOnly) const;
    const Source& GetSource() const { return m_source; }

private:
    const Source m_source;
};

/// \throws ZORSysFileException "the file is empty"
std::unique_ptr<Content> MakeContent(ZORExcFileKind::Kind kind, const Source& source);

std::unique_ptr<Content> MakeContainerContent(const Source& source);
std::unique_ptr<Content> MakeContoursContent(const Source& source);
std::unique_ptr<Content> MakeLayupContent(const Source& source, const char* format);
std::unique_ptr<Content> MakeResultContent(const Source& source);
std::unique_ptr<Content> MakeStlContent(const Source& source);

} // namespace zor::exc
