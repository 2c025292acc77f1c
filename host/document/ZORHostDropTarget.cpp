#include "document/ZORHostDropTarget.h"

#include "document/ZORHostDocumentCommands.h"

#include <ZORExchange/ZORExcFileKind.h>
#include <ZORSystem/ZORSysFile.h>

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace {

constexpr int kMostNames = 5;
constexpr int kBannerWidth = 480; // pixels, before the names are elided

/// Whether a file may be something that can be read; what is not recognized is left to the STL loader, which decides when the
/// file is dropped.
bool IsReadable(const QString& file)
{
    ZORSysFile content(file);
    return content.open(QIODevice::ReadOnly)
           && ZORExcFileKind::Recognize(content) != ZORExcFileKind::Kind::Empty;
}

QString JoinNames(const QStringList& names)
{
    QStringList quoted;
    for (const QString& name : names.first(std::min(qsizetype(kMostNames), names.size())))
        quoted.append(u'\'' + name + u'\'');
    if (names.size() > kMostNames)
        quoted.append(QStringLiteral("..."));
    return quoted.join(QLatin1String(", "));
}

} // namespace

ZORHostDropTarget::ZORHostDropTarget(QWidget* window, QWidget* area, ZORHostDocumentCommands* commands)
    : QObject(window)
    , m_window(window)
    , m_area(area)
    , m_commands(commands)
    , m_banner(new QLabel(area))
{
    m_banner->setObjectName("_DropBanner");
    m_banner->setTextFormat(Qt::PlainText);
    m_banner->setAlignment(Qt::AlignCenter);
    m_banner->setMargin(12);
    m_banner->setFrameShape(QFrame::Box);
    m_banner->setAutoFillBackground(true);
    m_banner->setBackgroundRole(QPalette::Highlight);
    m_banner->setForegroundRole(QPalette::HighlightedText);
    m_banner->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_banner->hide();
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

bool ZORHostDropTarget::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter: {
        auto* enter = static_cast<QDropEvent*>(event);
        if (!enter->mimeData()->hasUrls() || QApplication::activeModalWidget())
            return false;
        Examine(enter->mimeData());
        ShowBanner();
        Answer(enter);
        enter
            ->accept(); // also files that are refused: else their moves and the end of the drag are not reported
        return true;
    }
    case QEvent::DragMove:
        Answer(static_cast<QDropEvent*>(event));
        return true;
    case QEvent::DragLeave:
        HideBanner();
        return true;
    case QEvent::Drop:
        Drop(static_cast<QDropEvent*>(event));
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

void ZORHostDropTarget::Examine(const QMimeData* data)
{
    m_files.clear();
    m_refused.clear();
    const QList<QUrl> urls = data->urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile() && IsReadable(url.toLocalFile()))
            m_files.append(url.toLocalFile());
        else
            m_refused.append(url.isLocalFile() ? QFileInfo(url.toLocalFile()).fileName()
                                               : url.toDisplayString());
    }
}

// Never a move, after which the source would delete its file.
void ZORHostDropTarget::Answer(QDropEvent* event) const
{
    if (m_files.isEmpty() || m_commands->IsBusy()
        || !(event->possibleActions() & (Qt::CopyAction | Qt::LinkAction))) {
        event->ignore();
        return;
    }
    const bool canLink = event->possibleActions() & Qt::LinkAction;
    const bool canCopy = event->possibleActions() & Qt::CopyAction;
    const bool isLink = canLink && (m_commands->OpensFirst() || !canCopy);
    event->setDropAction(isLink ? Qt::LinkAction : Qt::CopyAction);
    event->accept();
}

void ZORHostDropTarget::Drop(QDropEvent* event)
{
    HideBanner();
    Answer(event);
    if (!event->isAccepted())
        return;
    // Later: the program that the files come from waits for the end of this event.
    QMetaObject::invokeMethod(
        this,
        [this, files = m_files, refused = m_refused] {
            m_commands->Add(files);
            if (!refused.isEmpty())
                m_commands->Report(tr("These files cannot be read: %1").arg(JoinNames(refused)), {});
        },
        Qt::QueuedConnection);
}

QString ZORHostDropTarget::Describe() const
{
    QStringList lines;
    QStringList names;
    for (const QString& file : m_files)
        names.append(QFileInfo(file).fileName());
    if (!names.isEmpty() && m_commands->OpensFirst())
        lines.append(tr("Open %1").arg(JoinNames({names.takeFirst()})));
    if (!names.isEmpty())
        lines.append(tr("Import %1").arg(JoinNames(names)));
    if (!m_refused.isEmpty())
        lines.append(tr("Cannot read %1").arg(JoinNames(m_refused)));
    const int width = std::min(kBannerWidth, m_area->width() - 2 * m_banner->margin());
    for (QString& line : lines)
        line = m_banner->fontMetrics().elidedText(line, Qt::ElideMiddle, width);
    return lines.join(u'\n');
}

void ZORHostDropTarget::ShowBanner()
{
    m_banner->setText(Describe());
    m_banner->adjustSize();
    m_banner->move(m_area->rect().center() - m_banner->rect().center());
    m_banner->raise();
    m_banner->show();
}

void ZORHostDropTarget::HideBanner()
{
    m_banner->hide();
}
